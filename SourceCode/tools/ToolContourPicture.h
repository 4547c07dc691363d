#pragma once

#include <Inventor/SbVec3f.h>

#include <QVector>
#include <QWidget>

/// A plain drawing of a tool's outline: the outline and its mirror image about the tool's axis, spindle side
/// up, with the largest diameter and the height in mm. Needs no OpenGL.
class ToolContourPicture : public QWidget {
    Q_OBJECT
  public:
    explicit ToolContourPicture(QWidget* parent = nullptr);

    /// Outline in mm, see ToolRecord::contour. Points that are not finite are left out.
    void setContour(const QVector<SbVec3f>& contour);
    [[nodiscard]] const QVector<SbVec3f>& contour() const { return contour_; }
    [[nodiscard]] QSize sizeHint() const override { return {180, 220}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QVector<SbVec3f> contour_;
};

#pragma once

#include <QWidget>
#include <vector>

#include "core/calc/WayPoint.h"

/// A tool path drawn from the front, the left and above at once (isometric), its colour telling the speed:
/// blue where the tool stands, through green, to red at the largest speed. Way points of a dense program
/// are one interpolation period apart, so the length of a piece is its speed.
class PathPicture : public QWidget {
  public:
    explicit PathPicture(QWidget* parent = nullptr);

    /// X, Y, Z of each point, mm; drawn in their order.
    void setPath(WayPoints points);

    [[nodiscard]] QSize sizeHint() const override { return {520, 420}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Piece {
        QPointF point;
        float speed = 0;  ///< share of the largest speed
    };
    std::vector<Piece> pieces_;
    QRectF bounds_;
};

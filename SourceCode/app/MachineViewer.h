#pragma once

#include <Inventor/SbVec3f.h>

#include <QColor>
#include <QString>
#include <QWidget>
#include <memory>
#include <optional>

class ClickableViewer;
class QLabel;
class MachineScene;
class SoEventCallback;
class SoPickedPoint;
class SoSeparator;

/// The 3D view of the machine. The viewer is made when the view is shown for the first time; where the
/// display has no OpenGL the area says so, and everything else works.
class MachineViewer : public QWidget {
    Q_OBJECT
  public:
    /// Shows `machine`, of which it takes a reference.
    explicit MachineViewer(SoSeparator& machine, QWidget* parent = nullptr);
    ~MachineViewer() override;
    MachineViewer(const MachineViewer&) = delete;
    MachineViewer& operator=(const MachineViewer&) = delete;

    [[nodiscard]] MachineScene& scene() const { return *scene_; }
    void setBackground(const QColor& color);
    [[nodiscard]] QColor background() const { return background_; }
    /// The viewer's own buttons and wheels.
    void setDecoration(bool shown);
    void viewAll();
    [[nodiscard]] bool hasViewer() const { return viewer_ != nullptr; }

    [[nodiscard]] ClickableViewer* viewer() const { return viewer_.get(); }

    /// What a click with the left button does where it meets the scene first: a path shows itself and the
    /// handle of its nearest control point, a marker is selected, a coordinate system opens its panel. True
    /// when one of them took it; a handle that is already there takes its clicks itself.
    static bool clickOn(const SoPickedPoint& picked);
    /// The right button hides the path that it meets, and takes its handle away.
    static void hideAt(const SoPickedPoint& picked);

  protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void makeViewer();
    static void mouseClickCB(void* view, SoEventCallback* event);

    std::unique_ptr<MachineScene> scene_;
    std::unique_ptr<ClickableViewer> viewer_;
    QLabel* message_;
    QColor background_{230, 235, 240};
    bool decoration_ = false;
    std::optional<SbVec3f> fittedPlace_;  ///< of the camera after the last viewAll
};

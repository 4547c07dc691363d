#pragma once

#include <Inventor/Qt/viewers/SoQtExaminerViewer.h>
#include <Inventor/SbVec2s.h>

#include <QTimer>

/// A view whose camera the mouse moves, and whose scene can be clicked while it does: a press that is let go
/// where it was goes to the scene, and a handle in the scene takes its drags before the camera. Lines are
/// smooth where that costs little.
class ClickableViewer final : public SoQtExaminerViewer {
  public:
    explicit ClickableViewer(QWidget* parent);

    /// Draws when the events at hand are done, and once more after that frame, whenever it comes: after a
    /// change of the window the first frame still goes into a buffer of the size before.
    void renderTwiceSoon();

  protected:
    SbBool processSoEvent(const SoEvent* event) override;
    void actualRedraw() override;

  private:
    [[nodiscard]] bool isHandleAt(const SbVec2s& place);
    SbBool toScene(const SoEvent* event);

    QTimer soon_;
    bool isSecondFrameDue_ = false;
    SbVec2s pressed_{-1, -1};  ///< where a button went down, pixels; negative when none did
    bool isSmoothingChosen_ = false;
    bool isHandleHeld_ = false;  ///< from the press on a handle to the release
};

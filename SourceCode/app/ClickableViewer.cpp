#include "app/ClickableViewer.h"

#include <Inventor/SoPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/SoSceneManager.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/draggers/SoDragger.h>
#include <Inventor/events/SoMouseButtonEvent.h>

#include <QByteArray>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <cstdlib>

namespace {

/// Asked while the view's context is current.
bool isDrawnByProcessor() {
    QOpenGLContext* const context = QOpenGLContext::currentContext();
    if (context == nullptr)
        return false;
    const QByteArray name(reinterpret_cast<const char*>(context->functions()->glGetString(GL_RENDERER)));
    return name.contains("llvmpipe") || name.contains("softpipe") || name.contains("swrast") ||
           name.contains("SwiftShader") || name.contains("GDI Generic");
}

/// Pixels that a hand moves while it clicks.
constexpr int kClickSlack_px = 3;

bool isClick(const SbVec2s& from, const SbVec2s& to) {
    return from[0] >= 0 && std::abs(to[0] - from[0]) <= kClickSlack_px &&
           std::abs(to[1] - from[1]) <= kClickSlack_px;
}

bool isHandle(const SoPath& path) {
    for (int i = 0; i < path.getLength(); ++i) {
        if (path.getNode(i)->isOfType(SoDragger::getClassTypeId()) != FALSE)
            return true;
    }
    return false;
}

bool isClickButton(const SoMouseButtonEvent& event) {
    return event.getButton() == SoMouseButtonEvent::BUTTON1 ||
           event.getButton() == SoMouseButtonEvent::BUTTON2;
}

}  // namespace

ClickableViewer::ClickableViewer(QWidget* parent) : SoQtExaminerViewer(parent) {
    constexpr int kAfterTheEvents_ms = 20;
    soon_.setSingleShot(true);
    soon_.setInterval(kAfterTheEvents_ms);
    QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { render(); });
}

void ClickableViewer::renderTwiceSoon() {
    isSecondFrameDue_ = true;
    soon_.start();
}

/// Smooth lines take nearly half of a frame where the processor draws it, and what a user presses waits for
/// the frame.
void ClickableViewer::actualRedraw() {
    if (!isSmoothingChosen_) {
        isSmoothingChosen_ = true;
        getSceneManager()->setAntialiasing(isDrawnByProcessor() ? FALSE : TRUE, 1);
    }
    SoQtExaminerViewer::actualRedraw();
    if (isSecondFrameDue_) {
        isSecondFrameDue_ = false;
        soon_.start();
    }
}

bool ClickableViewer::isHandleAt(const SbVec2s& place) {
    SoRayPickAction pick(getViewportRegion());
    pick.setPoint(place);
    pick.apply(getSceneGraph());
    const SoPickedPoint* const picked = pick.getPickedPoint();
    return picked != nullptr && isHandle(*picked->getPath());
}

/// Past the camera, which the examiner's own handling would move.
SbBool ClickableViewer::toScene(const SoEvent* event) {
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    return SoQtRenderArea::processSoEvent(event);
}

SbBool ClickableViewer::processSoEvent(const SoEvent* event) {
    const auto* button = dynamic_cast<const SoMouseButtonEvent*>(event);
    if (isViewing() == FALSE && !isHandleHeld_)
        return SoQtExaminerViewer::processSoEvent(event);
    const bool isDown = button != nullptr && button->getState() == SoButtonEvent::DOWN;
    if (isDown && !isHandleHeld_) {
        pressed_ = isClickButton(*button) ? button->getPosition() : SbVec2s(-1, -1);
        isHandleHeld_ =
            button->getButton() == SoMouseButtonEvent::BUTTON1 && isHandleAt(button->getPosition());
    }
    if (isHandleHeld_) {
        isHandleHeld_ = button == nullptr || isDown || button->getButton() != SoMouseButtonEvent::BUTTON1;
        return toScene(event);
    }
    const SbBool isTaken = SoQtExaminerViewer::processSoEvent(event);
    if (button != nullptr && !isDown && isClickButton(*button) && isClick(pressed_, button->getPosition())) {
        SoMouseButtonEvent press(*button);
        press.setState(SoButtonEvent::DOWN);
        press.setPosition(pressed_);
        toScene(&press);
        toScene(button);
    }
    return isTaken;
}

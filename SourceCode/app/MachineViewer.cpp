#include "app/MachineViewer.h"

#include <Inventor/SoPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/draggers/SoDragger.h>
#include <Inventor/events/SoMouseButtonEvent.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoEventCallback.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <QCursor>
#include <QEvent>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include "app/ClickableViewer.h"
#include "app/MachineScene.h"
#include "core/LanguageReader.h"
#include "geometry/modelNode.h"
#include "nc/trajNode.h"
#include "setup/userCoordinateSystem.h"
#include "tools/ViewerLibrary.h"

MachineViewer::MachineViewer(SoSeparator& machine, QWidget* parent)
    : QWidget(parent),
      scene_(std::make_unique<MachineScene>(machine)),
      message_(new QLabel(this)) {             // owned by this widget
    auto* const clicks = new SoEventCallback;  // owned by the scene
    clicks->addEventCallback(SoMouseButtonEvent::getClassTypeId(), mouseClickCB, this);
    scene_->root()->insertChild(clicks, 1);
    auto* layout = new QVBoxLayout(this);  // owned by this widget
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(message_);
    message_->setAlignment(Qt::AlignCenter);
    message_->setWordWrap(true);
    message_->setText(displayHasOpenGl()
                          ? QString()
                          : TORNVALE::LanguageReader::instance().text(QStringLiteral("Tornvale/Viewer"),
                                                                      QStringLiteral("NoOpenGlMsg")));
    setMinimumSize(320, 240);
    setFocusPolicy(Qt::StrongFocus);
    setBackground(background_);
}

MachineViewer::~MachineViewer() = default;

void MachineViewer::setBackground(const QColor& color) {
    background_ = color;
    QPalette colors = palette();
    colors.setColor(QPalette::Window, color);
    setPalette(colors);
    setAutoFillBackground(true);
    if (viewer_ != nullptr) {
        viewer_->setBackgroundColor(SbColor(static_cast<float>(color.redF()),
                                            static_cast<float>(color.greenF()),
                                            static_cast<float>(color.blueF())));
        viewer_->renderTwiceSoon();
    }
}

void MachineViewer::setDecoration(bool shown) {
    decoration_ = shown;
    if (viewer_ != nullptr)
        viewer_->setDecoration(shown ? TRUE : FALSE);
}

void MachineViewer::viewAll() {
    const QSize area = size() * devicePixelRatioF();
    scene_->viewAll(SbViewportRegion(static_cast<short>(qBound(1, area.width(), 16384)),
                                     static_cast<short>(qBound(1, area.height(), 16384))));
    fittedPlace_ = scene_->camera()->position.getValue();
}

// --- viewer ---

void MachineViewer::makeViewer() {
    if (viewer_ != nullptr || !isVisible())
        return;
    startViewerLibrary(window());
    viewer_ = std::make_unique<ClickableViewer>(this);
    viewer_->setAnimationEnabled(FALSE);
    viewer_->setFeedbackVisibility(FALSE);
    viewer_->setPopupMenuEnabled(FALSE);  // English only, and it would keep the right button from the paths
    viewer_->setDecoration(decoration_ ? TRUE : FALSE);
    viewer_->getHeadlight()->intensity = MachineScene::kHeadLight;
    viewer_->setSceneGraph(scene_->root());
    keepSurfaceFilling(*viewer_->getGLWidget());
    viewer_->getGLWidget()->installEventFilter(this);
    setBackground(background_);
    viewer_->show();
    viewer_->getWidget()->show();
    viewer_->getWidget()->resize(size());
    message_->hide();
    viewer_->renderTwiceSoon();
}

void MachineViewer::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (viewer_ == nullptr && displayHasOpenGl())
        makeViewer();
}

void MachineViewer::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (viewer_ != nullptr)
        viewer_->getWidget()->resize(size());
    // The view of all stays one until somebody moves it: the window gets its size only after its start.
    if (fittedPlace_ && *fittedPlace_ == scene_->camera()->position.getValue())
        viewAll();
}

bool MachineViewer::eventFilter(QObject* watched, QEvent* event) {
    if (viewer_ != nullptr && (event->type() == QEvent::Show || event->type() == QEvent::Resize))
        viewer_->renderTwiceSoon();
    return QWidget::eventFilter(watched, event);
}

// --- mouse ---

namespace {

void showPanel(userCoordinateSystem& system) {
    QWidget* const panel = system.panel();
    if (!panel->isVisible()) {
        panel->setWindowFlags(Qt::Tool);
        panel->setWindowTitle(system.name());
        panel->show();
        // Where it was asked for, and whole.
        const QRect room = panel->screen()->availableGeometry().adjusted(
            0, 0, -panel->frameGeometry().width(), -panel->frameGeometry().height());
        panel->move(qBound(room.left(), QCursor::pos().x(), room.right()),
                    qBound(room.top(), QCursor::pos().y(), room.bottom()));
    }
    panel->raise();
    panel->activateWindow();
}

}  // namespace

bool MachineViewer::clickOn(const SoPickedPoint& picked) {
    const SoPath& path = *picked.getPath();
    for (int i = path.getLength() - 1; i >= 0; --i) {
        SoNode* const node = path.getNode(i);
        if (node->isOfType(SoDragger::getClassTypeId()) != FALSE)
            return false;
        if (auto* program = dynamic_cast<trajNode*>(node)) {
            program->setShown(true);
            program->pickPoint(picked.getPoint());
            return true;
        }
        if (auto* point = dynamic_cast<pointShape*>(node)) {
            point->setSelected(true);
            return true;
        }
        if (auto* system = dynamic_cast<userCoordinateSystem*>(node)) {
            showPanel(*system);
            return true;
        }
    }
    return false;
}

void MachineViewer::hideAt(const SoPickedPoint& picked) {
    const SoPath& path = *picked.getPath();
    for (int i = path.getLength() - 1; i >= 0; --i) {
        if (auto* program = dynamic_cast<trajNode*>(path.getNode(i))) {
            program->setShown(false);
            program->removeDragger();
            return;
        }
    }
}

void MachineViewer::mouseClickCB(void* view, SoEventCallback* event) {
    auto* const viewer = static_cast<MachineViewer*>(view);
    const auto* click = dynamic_cast<const SoMouseButtonEvent*>(event->getEvent());
    if (click == nullptr || viewer->viewer_ == nullptr || click->getState() != SoButtonEvent::DOWN)
        return;
    SoRayPickAction pick(viewer->viewer_->getViewportRegion());
    pick.setPoint(click->getPosition());
    pick.apply(viewer->scene_->root());
    const SoPickedPoint* const picked = pick.getPickedPoint();
    if (picked == nullptr)
        return;
    if (click->getButton() == SoMouseButtonEvent::BUTTON1 && clickOn(*picked))
        event->setHandled();
    else if (click->getButton() == SoMouseButtonEvent::BUTTON2)
        hideAt(*picked);
}

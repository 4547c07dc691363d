#include "tools/ToolSceneView.h"

#include <Inventor/Qt/viewers/SoQtExaminerViewer.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <QEvent>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "core/getUniquelyIdentifies.h"
#include "tools/ViewerLibrary.h"

namespace {

/// The tool's axis upright, seen from the front and a little above.
constexpr float kTilt_rad = 1.2F;

}  // namespace

ToolSceneView::ToolSceneView(QWidget* parent) : QWidget(parent), root_(nullptr) {
    getUniquelyIdentifies::instance();  // starts the scene library
    root_ = new SoSeparator;            // owned by its reference
    root_->ref();
    setMinimumSize(120, 120);
}

ToolSceneView::~ToolSceneView() {
    viewer_.reset();
    root_->unref();
}

bool ToolSceneView::canShow() {
    return displayHasOpenGl();
}

void ToolSceneView::setScene(SoSeparator* graph) {
    if (graph != nullptr)
        graph->ref();  // it may be the one that is shown already
    root_->removeAllChildren();
    if (graph != nullptr) {
        root_->addChild(graph);
        graph->unref();
    }
    aimCamera();
}

SoSeparator* ToolSceneView::scene() const {
    return root_->getNumChildren() == 0 ? nullptr : dynamic_cast<SoSeparator*>(root_->getChild(0));
}

void ToolSceneView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (viewer_ == nullptr && canShow())
        QTimer::singleShot(0, this, &ToolSceneView::makeViewer);
    else
        aimCamera();
}

void ToolSceneView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (viewer_ != nullptr)
        viewer_->getWidget()->resize(size());
}

void ToolSceneView::makeViewer() {
    if (viewer_ != nullptr || !isVisible())
        return;
    startViewerLibrary();
    viewer_ = std::make_unique<SoQtExaminerViewer>(this);
    viewer_->setDecoration(false);
    viewer_->setPopupMenuEnabled(FALSE);  // the library speaks English only
    viewer_->setBackgroundColor(SbColor(0.96F, 0.97F, 0.98F));
    viewer_->setCameraType(SoOrthographicCamera::getClassTypeId());
    viewer_->setSceneGraph(root_);
    keepSurfaceFilling(*viewer_->getGLWidget());
    viewer_->getGLWidget()->installEventFilter(this);
    viewer_->show();
    viewer_->getWidget()->show();
    viewer_->getWidget()->resize(size());
    if (QWindow* surface = viewer_->getGLWidget()->windowHandle())
        surface->installEventFilter(this);
    aimCamera();
}

void ToolSceneView::aimCamera() {
    if (viewer_ == nullptr || viewer_->getCamera() == nullptr)
        return;
    viewer_->getCamera()->orientation.setValue(SbVec3f(1, 0, 0), kTilt_rad);
    viewer_->viewAll();
    fillView();
    renderSoon();
}

/// viewAll leaves room for the ball around the graph, which is far too much for a slim tool:
/// magnify by what the graph's own width and height leave free.
void ToolSceneView::fillView() {
    auto* camera = dynamic_cast<SoOrthographicCamera*>(viewer_->getCamera());
    SoGetBoundingBoxAction bounds(viewer_->getViewportRegion());
    bounds.apply(root_);
    const SbBox3f box = bounds.getBoundingBox();
    if (camera == nullptr || box.isEmpty())
        return;
    constexpr float kUsedPart = 0.9F;
    const SbVec3f size = box.getMax() - box.getMin();
    const float across = std::max(size[0], size[1]);
    const float along = size[2] * std::sin(kTilt_rad) + across * std::cos(kTilt_rad);
    const auto width_px = static_cast<float>(std::max(1, this->width()));
    const auto height_px = static_cast<float>(std::max(1, this->height()));
    const float best = std::min(width_px / std::max(across, 1e-6F), height_px / std::max(along, 1e-6F));
    const float now = std::min(width_px, height_px) / std::max(size.length(), 1e-6F);
    camera->height = camera->height.getValue() / std::max(1.0F, kUsedPart * best / now);
}

// The first frame of an embedded viewer keeps a wrong size until it is drawn again after its events, and what
// is drawn before the surface is on the screen is lost.
bool ToolSceneView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show || event->type() == QEvent::Resize || event->type() == QEvent::Expose)
        renderSoon();
    return QWidget::eventFilter(watched, event);
}

void ToolSceneView::renderSoon() {
    constexpr int kAfterTheEvents_ms = 20;
    QTimer::singleShot(kAfterTheEvents_ms, this, [this] {
        if (viewer_ != nullptr)
            viewer_->render();
    });
}

#include "app/MachineScene.h"

#include <Inventor/SbString.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodes/SoAlphaTest.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoEnvironment.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShape.h>

#include <algorithm>
#include <cmath>

#include "app/calc/ViewFit.h"

namespace {

constexpr int kLongestText = 65536;

/// While it lives, messages of the scene library's reader are only counted: the caller tells its user.
class CountedErrors {
  public:
    CountedErrors() : handler_(SoReadError::getHandlerCallback()), data_(SoReadError::getHandlerData()) {
        SoReadError::setHandlerCallback([](const SoError*, void* count) { ++*static_cast<int*>(count); },
                                        &count_);
    }
    ~CountedErrors() { SoReadError::setHandlerCallback(handler_, data_); }
    CountedErrors(const CountedErrors&) = delete;
    CountedErrors& operator=(const CountedErrors&) = delete;
    [[nodiscard]] int count() const { return count_; }

  private:
    SoErrorCB* handler_;
    void* data_;
    int count_ = 0;
};

bool isFinite(const SoPerspectiveCamera& camera) {
    const SbVec3f place = camera.position.getValue();
    float turn[4] = {0, 0, 0, 0};
    camera.orientation.getValue().getValue(turn[0], turn[1], turn[2], turn[3]);
    for (const float number :
         {place[0], place[1], place[2], turn[0], turn[1], turn[2], turn[3], camera.nearDistance.getValue(),
          camera.farDistance.getValue(), camera.focalDistance.getValue(), camera.heightAngle.getValue(),
          camera.aspectRatio.getValue()}) {
        if (!std::isfinite(number))
            return false;
    }
    return camera.aspectRatio.getValue() > 0 && camera.heightAngle.getValue() > 0;
}

void addTriangle(void* fit, SoCallbackAction* action, const SoPrimitiveVertex* one,
                 const SoPrimitiveVertex* two, const SoPrimitiveVertex* three) {
    for (const SoPrimitiveVertex* corner : {one, two, three}) {
        SbVec3f inWorld;
        action->getModelMatrix().multVecMatrix(corner->getPoint(), inWorld);
        static_cast<ViewFit*>(fit)->add(inWorld);
    }
}

/// Every solid that is drawn; marks and texts are no reason to step back.
void addAllDrawn(SoSeparator* root, ViewFit& fit) {
    SoCallbackAction action;
    action.addTriangleCallback(SoShape::getClassTypeId(), addTriangle, &fit);
    action.apply(root);
}

}  // namespace

MachineScene::MachineScene(SoSeparator& machine)
    : root_(new SoSeparator),
      camera_(new SoPerspectiveCamera),  // owned by its reference; owned by the root
      markers_(new SoSeparator) {        // owned by the root
    root_->ref();
    root_->addChild(camera_);
    auto* const surroundings = new SoEnvironment;  // owned by the root
    surroundings->ambientIntensity = 0.4F;
    root_->addChild(surroundings);
    // What lies around the letters of a label must not hide the things behind it.
    auto* const visible = new SoAlphaTest;  // owned by the root
    visible->function = SoAlphaTest::GREATER;
    visible->value = 0.1F;
    root_->addChild(visible);
    // Beside the light at the camera one from above and a weak one from the right, so that faces of each
    // direction differ; all three on one white face stay just below full white.
    addLight(0.15F, 0.25F, -1, 0.5F);
    addLight(-0.8F, 0.2F, -0.25F, 0.18F);
    root_->addChild(&machine);
    root_->addChild(markers_);
}

MachineScene::~MachineScene() {
    root_->unref();
}

void MachineScene::addLight(float x, float y, float z, float intensity) {
    auto* const light = new SoDirectionalLight;  // owned by the root
    light->direction.setValue(x, y, z);
    light->intensity = intensity;
    root_->addChild(light);
}

void MachineScene::addHeadLight() {
    auto* const light = new SoDirectionalLight;  // owned by the root
    SbVec3f ahead;
    camera_->orientation.getValue().multVec(SbVec3f(0, 0, -1), ahead);
    light->direction = ahead;
    light->intensity = kHeadLight;
    root_->insertChild(light, 1);
}

QString MachineScene::cameraText() const {
    SbString text;
    camera_->get(text);
    return QString::fromUtf8(text.getString());
}

bool MachineScene::setCameraText(const QString& text) {
    const bool hasNodes = text.contains(QLatin1Char('{')) || text.contains(QLatin1Char('}'));
    if (text.trimmed().isEmpty() || text.size() > kLongestText || hasNodes)
        return false;
    // What the text leaves out takes its default, so that saving and loading is the same view.
    auto* const read = new SoPerspectiveCamera;  // owned by its reference
    read->ref();
    bool isRead = false;
    {
        const CountedErrors errors;
        SbString fields;
        isRead = read->set(text.toUtf8().constData()) != FALSE && errors.count() == 0 && isFinite(*read);
        read->get(fields);
        isRead = isRead && fields.getLength() > 0;  // words that are no fields read as nothing at all
    }
    if (isRead)
        camera_->copyFieldValues(read);
    read->unref();
    return isRead;
}

void MachineScene::viewAll(const SbViewportRegion& viewport) {
    const SbRotation tilt(SbVec3f(1, 0, 0), 1.15F);
    const SbRotation turn(SbVec3f(0, 0, 1), 0.55F);
    camera_->orientation = tilt * turn;
    fit(viewport);
}

void MachineScene::fit(const SbViewportRegion& viewport) {
    constexpr float kFill = 0.88F;
    ViewFit view(camera_->orientation.getValue(),
                 ViewOpening(camera_->heightAngle.getValue(), viewport.getViewportAspectRatio()), kFill);
    addAllDrawn(root_, view);
    const std::optional<ViewFit::Place> place = view.place();
    if (!place)
        return;
    camera_->position = place->position;
    camera_->focalDistance = place->focalDistance;
    fitClipping(viewport);
}

bool MachineScene::isAllInSight(float aspect) const {
    ViewFit view(camera_->orientation.getValue(), ViewOpening(camera_->heightAngle.getValue(), aspect));
    addAllDrawn(root_, view);
    return view.isAllSeenFrom(camera_->position.getValue());
}

void MachineScene::fitClipping(const SbViewportRegion& viewport) {
    constexpr float kNearest = 0.001F;  // of the far plane: the depth buffer cannot tell more apart
    SoGetBoundingBoxAction bounds(viewport);
    bounds.apply(root_);
    const SbBox3f box = bounds.getBoundingBox();
    if (box.isEmpty())
        return;
    const SbVec3f middle = box.getCenter();
    const float radius = (box.getMax() - middle).length();
    SbVec3f ahead;
    camera_->orientation.getValue().multVec(SbVec3f(0, 0, -1), ahead);
    const float distance = (middle - camera_->position.getValue()).dot(ahead);
    const float farthest = std::max(distance + radius, 1.0F);
    camera_->farDistance = farthest;
    camera_->nearDistance = std::max(distance - radius, kNearest * farthest);
}

void MachineScene::addMarker(SoNode* marker) {
    markers_->addChild(marker);
}

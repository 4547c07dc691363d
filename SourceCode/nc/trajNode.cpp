#include "nc/trajNode.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoIndexedPointSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/sensors/SoFieldSensor.h>

#include <QDebug>
#include <QJsonObject>
#include <QPointer>
#include <QTreeWidgetItem>
#include <algorithm>
#include <cmath>

#include "machine/readConfig.h"
#include "nc/PathLineSet.h"
#include "nc/PathShapeNodes.h"
#include "nc/ProgramItem.h"
#include "nc/calc/ControlPoints.h"
#include "nc/calc/PathArrays.h"
#include "nc/calc/PathShapes.h"
#include "nc/calc/WayPointText.h"
#include "nc/myDragger.h"
#include "setup/userCoordinateSystem.h"

namespace {

constexpr float kPathLineWidth = 1.0F;
constexpr float kCurveLineWidth = 3.0F;
constexpr float kDotSize = 10.0F;

template <typename Node>
Node* add(SoGroup& group) {
    auto* node = new Node;  // owned by the group
    group.addChild(node);
    return node;
}

int whichChild(bool shown) {
    return shown ? SO_SWITCH_ALL : SO_SWITCH_NONE;
}

/// Takes an old body out of the switch and puts the new one, which may be nullptr, in.
void replaceBody(SoSwitch& group, SoSeparator*& body, SoSeparator* next) {
    if (body != nullptr)
        group.removeChild(body);
    body = next;
    if (body != nullptr)
        group.addChild(body);
}

}  // namespace

/// Nodes belong to the scene graph below the node.
struct trajNode::Private {
    explicit Private(trajNode& node);

    SoDrawStyle* drawStyle;
    SoMaterial* material;
    PathLineSet* pathLines;
    SoSwitch* mainSwitch;
    SbColor currentColor{0, 1, 0};
    SbColor pathColor{0, 1, 0};
    SbColor curveColor{0, 1, 1};
    SbColor highlightColor{1, 1, 0};
    QJsonObject itemSettings;  ///< what an item may want to be remembered with its picture; none does so far
    QPointer<userCoordinateSystem> parentNode;
    SoSeparator* shapeNode = nullptr;
    SoSeparator* rectangleNode = nullptr;
    SoMaterial* rectangleMaterial = nullptr;  ///< while there is a rectangle node
    myDragger* dragger = nullptr;
    SoFieldSensor sensor;
    QTreeWidgetItem* item = nullptr;
    TORNVALE::ProgramItem* program = nullptr;  ///< the same item
    SoSwitch* pointsSwitch;
    SoSeparator* pointsSeparator;
    SoCoordinate3* pointCoordinates;
    SoIndexedPointSet* pointSet;
    bool isHighlighted = false;
};

trajNode::Private::Private(trajNode& node) {
    material = add<SoMaterial>(node);
    material->diffuseColor.setValue(currentColor);
    mainSwitch = add<SoSwitch>(node);
    mainSwitch->whichChild = SO_SWITCH_ALL;
    drawStyle = add<SoDrawStyle>(*mainSwitch);
    drawStyle->lineWidth = kPathLineWidth;
    pathLines = add<PathLineSet>(*mainSwitch);
    pointsSwitch = add<SoSwitch>(*mainSwitch);
    pointsSwitch->whichChild = SO_SWITCH_NONE;
    pointsSeparator = add<SoSeparator>(*pointsSwitch);
    pointsSeparator->setName("wayPointsSep");
    add<SoMaterial>(*pointsSeparator)->diffuseColor.setValue(1, 0, 0);
    add<SoDrawStyle>(*pointsSeparator)->pointSize = kDotSize;
    pointCoordinates = add<SoCoordinate3>(*pointsSeparator);
    pointCoordinates->point.setNum(0);
    pointSet = add<SoIndexedPointSet>(*pointsSeparator);
    pointSet->setName("wayPointsNode");
    pointSet->coordIndex.setNum(0);
    sensor.setFunction(&trajNode::draggerMoved);
    sensor.setData(&node);
}

trajNode::trajNode(QTreeWidgetItem* item, SoNode* parent) : pimpl(std::make_shared<Private>(*this)) {
    pimpl->parentNode = dynamic_cast<userCoordinateSystem*>(parent);
    pimpl->program = dynamic_cast<TORNVALE::ProgramItem*>(item);
    if (pimpl->program == nullptr)
        return;
    pimpl->item = item;
    pimpl->program->setTrajNode(this);
    setShown(pimpl->program->isActive());
    UpdateNode();
}

trajNode::~trajNode() {
    pimpl->sensor.detach();
    if (pimpl->program != nullptr && pimpl->program->pathNode() == this)
        pimpl->program->setTrajNode(nullptr);
}

QTreeWidgetItem* trajNode::item() const {
    return pimpl->item;
}

void trajNode::forgetItem() {
    removeDragger();
    pimpl->item = nullptr;
    pimpl->program = nullptr;
}

// --- place in the scene ---

trajNode* trajNode::addProgram(userCoordinateSystem& system, QTreeWidgetItem* item) {
    auto* const program = dynamic_cast<TORNVALE::ProgramItem*>(item);
    if (program == nullptr)
        return nullptr;
    trajNode* node = program->pathNode();
    if (node != nullptr) {
        node->moveTo(&system);
        node->UpdateNode();
    } else {
        node = new trajNode(item, &system);  // owned by the system
        system.addTrajNode(node);
    }
    return node;
}

void trajNode::moveTo(userCoordinateSystem* system) {
    removeDragger();
    ref();  // between the systems nobody else may hold it
    userCoordinateSystem* const old = pimpl->parentNode;
    if (old != nullptr && old != system)
        old->removeTrajNode(this);
    pimpl->parentNode = system;
    if (system != nullptr)
        system->addTrajNode(this);
    unref();
}

userCoordinateSystem* trajNode::parentSystem() const {
    return pimpl->parentNode;
}

// --- what the item says ---

void trajNode::UpdateNode() {
    if (pimpl->program == nullptr)
        return;
    if (displayName() != pimpl->program->itemName())
        setDisplayName(pimpl->program->itemName());
    switch (pimpl->program->itemType()) {
        case TORNVALE::kIsoItem:
            pimpl->drawStyle->lineWidth = kPathLineWidth;
            updatePath();
            break;
        case TORNVALE::kCurveItem:
            updateCurve();
            break;
        case TORNVALE::kDrillItem:
            updateHole();
            break;
        case TORNVALE::kRectangleItem:
            updateRectangle();
            break;
        default:
            break;
    }
    updateColors();
}

bool trajNode::hasChain() const {
    if (pimpl->program != nullptr && !pimpl->program->chainName().isEmpty())
        return true;
    qWarning() << "chain is empty";
    return false;
}

void trajNode::extract_waypoints_from_string(const QString& code, QVector<QVector<double>>& points) const {
    constexpr int kValues = 5;
    points.clear();
    if (!hasChain())
        return;
    const WayPoints read =
        WayPointsFromCode(ConfigReader::instance().description(), pimpl->program->chainName(), code, nullptr);
    points.reserve(static_cast<int>(read.size()));
    for (const WayPoint& point : read) {
        const int count = std::min(point.size(), kValues);
        points.append(QVector<double>(point.values.begin(), point.values.begin() + count));
    }
}

void trajNode::updatePath() {
    const QString& code = pimpl->program->IsoCode();
    if (code.isEmpty() || !hasChain())
        return;
    const MachineDescription& machine = ConfigReader::instance().description();
    const QString& chain = pimpl->program->chainName();
    WayPoints points = WayPointsFromCode(machine, chain, code, nullptr);
    pimpl->program->toScene(points);
    const PathArrays path = pathArrays(points, machine.axisMap(chain, false));
    if (!path.vertices.empty())
        pimpl->pathLines->setPath(path);
}

void trajNode::updateCurve() {
    pimpl->drawStyle->lineWidth = kCurveLineWidth;
    updatePath();
    const ControlPoints* const points = pimpl->program->controlPoints();
    const std::vector<SbVec3f> places =
        points == nullptr ? std::vector<SbVec3f>() : controlPointPlaces(*points);
    const int count = static_cast<int>(places.size());
    SoMFInt32& index = pimpl->pointSet->coordIndex;
    index.setNum(0);
    pimpl->pointCoordinates->point.setNum(0);
    pimpl->pointCoordinates->point.setValues(0, count, places.data());
    index.setNum(count);
    std::int32_t* const values = index.startEditing();
    for (int i = 0; i < count; ++i)
        values[i] = i;
    index.finishEditing();
    const int rows = points == nullptr ? 0 : points->size();
    if (pimpl->dragger != nullptr && !isMovableControlPoint(pimpl->dragger->index(), rows))
        removeDragger();
}

void trajNode::updateHole() {
    constexpr int kMilledHole = 1;
    const HoleShape* const hole = pimpl->program->holeShape();
    SoSeparator* const body = hole == nullptr ? nullptr : makeHoleNode(*hole, getName());
    replaceBody(*pimpl->mainSwitch, pimpl->shapeNode, body);
    if (hole != nullptr && hole->drillType == kMilledHole)
        updatePath();
    else
        pimpl->pathLines->clearPath();  // that of a milled hole which has become a drilled one
}

void trajNode::updateRectangle() {
    const RectangleShape* const rectangle = pimpl->program->rectangleShape();
    auto* material = new SoMaterial;  // owned by the plates, which may be none
    material->ref();
    material->specularColor.setValue(0.2F, 0.2F, 0.2F);
    material->transparency = 0.2F;
    SoSeparator* const body =
        rectangle == nullptr ? nullptr : makeRectangleNode(*rectangle, getName(), *material);
    replaceBody(*pimpl->mainSwitch, pimpl->rectangleNode, body);
    pimpl->rectangleMaterial = body == nullptr ? nullptr : material;
    material->unref();
}

// --- looks ---

void trajNode::updateColors() {
    const bool isCurve = pimpl->program != nullptr && pimpl->program->itemType() == TORNVALE::kCurveItem;
    const SbColor& normal = isCurve ? pimpl->curveColor : pimpl->pathColor;
    pimpl->currentColor = pimpl->isHighlighted ? pimpl->highlightColor : normal;
    pimpl->material->diffuseColor.setValue(pimpl->currentColor);
    if (pimpl->rectangleMaterial != nullptr) {
        pimpl->rectangleMaterial->diffuseColor.setValue(pimpl->currentColor);
        pimpl->rectangleMaterial->ambientColor.setValue(pimpl->currentColor);
        pimpl->rectangleMaterial->emissiveColor.setValue(pimpl->currentColor);
    }
}

void trajNode::setHighlighted(bool highlighted) {
    pimpl->isHighlighted = highlighted;
    pimpl->pointsSwitch->whichChild = whichChild(highlighted);
    updateColors();
}

bool trajNode::isHighlighted() const {
    return pimpl->isHighlighted;
}

void trajNode::setShown(bool shown) {
    pimpl->mainSwitch->whichChild = whichChild(shown);
}

bool trajNode::isShown() const {
    return pimpl->mainSwitch->whichChild.getValue() == SO_SWITCH_ALL;
}

// --- control points ---

myDragger* trajNode::dragger() const {
    return pimpl->dragger;
}

void trajNode::removeDragger() {
    pimpl->sensor.detach();
    if (pimpl->dragger != nullptr)
        removeChild(pimpl->dragger);
    pimpl->dragger = nullptr;
}

void trajNode::pickPoint(const SbVec3f& point) {
    removeDragger();
    const ControlPoints* const points = pimpl->program == nullptr ? nullptr : pimpl->program->controlPoints();
    if (points == nullptr)
        return;
    SbVec3f place = point;
    if (pimpl->parentNode != nullptr) {
        const Eigen::Vector3f own =
            pimpl->parentNode->worldTransform().inverse() * Eigen::Vector3f(point[0], point[1], point[2]);
        place.setValue(own.x(), own.y(), own.z());
    }
    const int index = nearestControlPoint(*points, place);
    if (!isMovableControlPoint(index, points->size()) || !controlPointPlace(*points, index, place))
        return;
    pimpl->dragger = myDragger::create(index, place);
    addChild(pimpl->dragger);
    pimpl->sensor.attach(&pimpl->dragger->translation);
}

void trajNode::draggerMoved(void* node, SoSensor* /*sensor*/) {
    auto* const self = static_cast<trajNode*>(node);
    Private& own = *self->pimpl;
    if (own.dragger == nullptr || own.program == nullptr)
        return;
    const SbVec3f place = own.dragger->translation.getValue();
    if (!std::isfinite(place[0]) || !std::isfinite(place[1]) || !std::isfinite(place[2]))
        return;
    // The item regenerates, and may let go of its node while it does. The sensor that has called must not
    // go before it is done.
    self->ref();
    own.program->moveControlPoint(own.dragger->index(), double{place[0]}, double{place[1]}, double{place[2]});
    self->unrefNoDelete();
    if (self->getRefCount() > 0)
        return;
    self->ref();
    QMetaObject::invokeMethod(
        self, [self] { self->unref(); }, Qt::QueuedConnection);
}

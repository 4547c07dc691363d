#include "machine/SpindleClass.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>

#include <QDebug>

#include "core/LanguageReader.h"
#include "geometry/CollisionHolder.h"
#include "geometry/ShapeGenerator.h"
#include "geometry/collisionDetector.h"
#include "machine/AxisBase.h"
#include "machine/ChainListener.h"
#include "machine/NodeTreeItem.h"
#include "machine/SpindlePanel.h"
#include "machine/SpindleStatusWidget.h"
#include "machine/breathingLight.h"
#include "tools/ToolData.h"

struct SpindleNode::Private {
    ToolData tool;
    SoMatrixTransform* transform = nullptr;
    SoMaterial* material = nullptr;
    SoIndexedFaceSet* toolShape = nullptr;
    CollisionHolder toolHolder;
    SpindleRecord record;
    CollisionTransform local = CollisionTransform::Identity();  ///< `transform` as a pose
};

SpindleNode::SpindleNode() : pimpl_(std::make_shared<Private>()) {}

SpindleNode::~SpindleNode() {
    delete treeItem_;
    delete panel_;
    delete status_;
}

void SpindleNode::Setup(spindleStruct* spindle) {
    Diagnostics diagnostics;
    pimpl_->record = readSpindle(*spindle, diagnostics);
    for (const Diagnostic& entry : diagnostics.entries) {
        if (entry.key.isEmpty())
            qDebug().noquote() << Q_FUNC_INFO << __LINE__ << entry.text;
        else
            qDebug().noquote() << TORNVALE::LanguageReader::instance().text(
                                      entry.key.section(QLatin1Char('/'), 0, 0),
                                      entry.key.section(QLatin1Char('/'), 1))
                               << entry.text;
    }
    commands_ = SpindleCommands(pimpl_->record);
    buildScene();
}

void SpindleNode::buildScene() {
    constexpr int kSmallestMesh = 5;
    setDisplayName(pimpl_->record.name);
    pimpl_->material = new SoMaterial;  // owned by this group
    pimpl_->material->diffuseColor.setValue(pimpl_->record.color);
    addChild(pimpl_->material);
    pimpl_->transform = new SoMatrixTransform;  // owned by this group
    pimpl_->transform->matrix = SbMatrix::identity();
    addChild(pimpl_->transform);
    pimpl_->toolShape = new SoIndexedFaceSet;  // owned by this group
    addChild(pimpl_->toolShape);
    mount(kSmallestMesh);
}

SpindleNode* SpindleNode::clone() const {
    auto* copy = new SpindleNode;  // owned by the caller
    copy->pimpl_->record = pimpl_->record;
    copy->pimpl_->tool = pimpl_->tool;
    copy->commands_ = commands_;
    copy->buildScene();
    return copy;
}

// --- place and tool ---

int SpindleNode::setParentNode(AxisBase* axis) {
    if (axis == nullptr)
        return -1;
    if (parentAxis_ != nullptr) {
        qInfo().noquote() << QStringLiteral("SpindleNode::setParentNode()已有父节点") << __FILE__ << __LINE__;
        return -1;
    }
    parentAxis_ = axis;
    rebuildNameChains();
    place();
    return 0;
}

void SpindleNode::setTool(const ToolData& tool) {
    pimpl_->tool = tool;
    if (pimpl_->transform != nullptr)
        mount(0);
    if (listener_ != nullptr)
        listener_->refreshCollisionGroup({});
    for (SpindleNode* repeat : repeats())
        repeat->setTool(tool);
}

/// A mesh of fewer vertices than `smallestMesh` gets no collision object.
void SpindleNode::mount(int smallestMesh) {
    const MeshArrays mesh = pimpl_->tool.collisionMesh();
    const SbName name = getName();
    SoIndexedFaceSet* shape = ShapeGenerator().createFaceSet(mesh.vertices, mesh.indices, &name);
    SoSeparator::replaceChild(pimpl_->toolShape, shape);
    pimpl_->toolShape = shape;
    place();
    CollisionHolder& holder = pimpl_->toolHolder;
    fcl::CollisionObject<float>* object = nullptr;
    if (mesh.vertices.size() >= smallestMesh) {
        const CollisionTransform carrier =
            parentAxis_ == nullptr ? CollisionTransform::Identity() : parentAxis_->worldMatrix();
        object = CollisionObjectBuilder().createCollisionObject(mesh.vertices, mesh.indices,
                                                                holder.name(name), carrier * pimpl_->local);
    }
    holder.take(object);
    rebuildNameChains();
    updateToolTexts();
}

/// The spindle's own direction plays no part: where the tool points is its mounting and the spindle angle.
void SpindleNode::place() {
    if (pimpl_->transform == nullptr)
        return;
    SbMatrix matrix = pimpl_->tool.mountMatrix();
    if (parentAxis_ != nullptr) {
        matrix = spindleMatrix(matrix, pimpl_->record.offset, parentAxis_->record().direction,
                               pimpl_->record.angle_deg);
    }
    pimpl_->transform->matrix = matrix;
    pimpl_->local = toCollisionTransform(matrix);
    followCarrier(parentAxis_ == nullptr ? CollisionTransform::Identity() : parentAxis_->worldMatrix());
}

void SpindleNode::joinCarrier(AxisBase& axis) {
    setParentNode(&axis);
}

void SpindleNode::leaveCarrier(AxisBase& axis) {
    if (parentAxis_ != &axis)
        return;
    parentAxis_ = nullptr;
    rebuildNameChains();
    place();
}

void SpindleNode::followCarrier(const CollisionTransform& carrier) {
    pimpl_->toolHolder.setTransform(carrier * pimpl_->local);
}

void SpindleNode::appendCollisionObjects(CollisionObjects& objects) {
    objects.append(pimpl_->toolHolder.get());
}

QStringList SpindleNode::nodeChain() const {
    QStringList chain = parentAxis_ == nullptr ? QStringList() : parentAxis_->nodeChain();
    chain.append(QString::fromUtf8(getName().getString()));
    return chain;
}

void SpindleNode::rebuildNameChains() {
    const QStringList chain = nodeChain();
    pimpl_->toolHolder.setNameChain(chain);
    if (panel_ != nullptr)
        panel_->setPath(chain.join(QStringLiteral("->")));
}

void SpindleNode::setChainListener(ChainListener* listener) {
    listener_ = listener;
}

// --- commands ---

QMap<QString, SoNode*> SpindleNode::commandMap() {
    QMap<QString, SoNode*> map;
    const SpindleRecord& record = pimpl_->record;
    const QString start = firstMCode(record.startString);
    if (!start.isEmpty())
        map.insert(start, this);
    map.insert(record.stopString, this);
    if (!record.checkString.isEmpty())
        map.insert(record.checkString, this);
    return map;
}

QMap<QString, SoNode*> SpindleNode::toolChangeMap() {
    QMap<QString, SoNode*> map;
    const QString code = firstMCode(pimpl_->record.toolChangeString);
    if (hasToolChanger() && !code.isEmpty())
        map.insert(code, this);
    return map;
}

void SpindleNode::onCommand(const QString& line) {
    const SpindleReaction reaction = commands_.reactionTo(line);
    show(reaction);
    if (partner_ != nullptr && partner_ != this)
        partner_->show(reaction);
}

void SpindleNode::show(const SpindleReaction& reaction) {
    SpindlePanel& information = *panel();
    SpindleStatusWidget& status = *statusWidget();
    switch (reaction.kind) {
        case SpindleReaction::Start:
            information.setSpeed(reaction.speedText);
            status.showRunning(reaction.speed);
            break;
        case SpindleReaction::Stop:
            information.setSpeed(reaction.speedText);
            status.showStopped();
            break;
        case SpindleReaction::Check:
            status.showChecked();
            break;
        case SpindleReaction::None:
            break;
    }
}

// --- widgets ---

void SpindleNode::updateToolTexts() {
    const ToolRecord& tool = pimpl_->tool.record();
    if (treeItem_ != nullptr)
        treeItem_->setText(NodeTreeItem::kInfoColumn, pimpl_->tool.displayText());
    if (status_ != nullptr)
        status_->setTool(tool.toolNo, tool.length, tool.diameter);
    if (panel_ != nullptr)
        panel_->setTool(tool, pimpl_->tool.typeText());
}

QTreeWidgetItem* SpindleNode::treeItem() {
    if (treeItem_ == nullptr) {
        treeItem_ = new NodeTreeItem(treeItem_, pimpl_->record.name, {});  // owned until a tree takes it
        updateToolTexts();
    }
    return treeItem_;
}

SpindleStatusWidget* SpindleNode::statusWidget() {
    if (status_ == nullptr) {
        status_ = new SpindleStatusWidget;  // owned by this node, or by the widget that takes it
        status_->setSpindle(pimpl_->record.name, pimpl_->record.number);
        status_->showStopped();
        updateToolTexts();
    }
    return status_;
}

SpindlePanel* SpindleNode::panel() {
    if (panel_ == nullptr) {
        panel_ = new SpindlePanel;  // owned by this node, or by the widget that takes it
        panel_->setSpindle(pimpl_->record);
        panel_->setPath(nodeChain().join(QStringLiteral("->")));
        updateToolTexts();
    }
    return panel_;
}

// --- what others ask ---

int SpindleNode::number() const {
    return pimpl_->record.number;
}

const SpindleRecord& SpindleNode::record() const {
    return pimpl_->record;
}

const ToolData& SpindleNode::tool() const {
    return pimpl_->tool;
}

bool SpindleNode::hasToolChanger() const {
    return pimpl_->record.hasToolChanger;
}

void SpindleNode::addRepeat(SpindleNode& clone) {
    if (&clone != this && !repeats_.contains(&clone))
        repeats_.append(&clone);
}

QVector<SpindleNode*> SpindleNode::repeats() const {
    QVector<SpindleNode*> alive;
    for (const QPointer<SpindleNode>& repeat : repeats_) {
        if (!repeat.isNull())
            alive.append(repeat.data());
    }
    return alive;
}

void SpindleNode::setCollided(bool collided) {
    static const SbColor collisionColor(1, 0, 0);
    if (pimpl_->material != nullptr)
        pimpl_->material->diffuseColor.setValue(collided ? collisionColor : pimpl_->record.color);
    for (SpindleNode* repeat : repeats())
        repeat->setCollided(collided);
}

fcl::CollisionObject<float>* SpindleNode::collisionObject() const {
    return pimpl_->toolHolder.get();
}

SoMaterial* SpindleNode::material() const {
    return pimpl_->material;
}

SoMatrixTransform* SpindleNode::transform() const {
    return pimpl_->transform;
}

SoNode* SpindleNode::toolShape() const {
    return pimpl_->toolShape;
}

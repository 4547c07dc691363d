#include "setup/userCoordinateSystem.h"

#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTranslation.h>

#include <QDebug>
#include <QElapsedTimer>
#include <cmath>

#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "core/SceneName.h"
#include "core/UserDialogs.h"
#include "core/getUniquelyIdentifies.h"
#include "geometry/FieldText.h"
#include "geometry/ShapeGenerator.h"
#include "geometry/collisionDetector.h"
#include "geometry/modelNode.h"
#include "machine/AxisBase.h"
#include "machine/ChainListener.h"
#include "machine/NodeTreeItem.h"
#include "setup/UserCoordinateSystemPanel.h"
#include "setup/calc/PlacementSearch.h"

namespace {

constexpr int kMaxIterations = 100;

QString nameOf(const SoBase* node) {
    return node == nullptr ? QString() : QString::fromUtf8(node->getName().getString());
}

SoNode* frameMarker(const SbName& name) {
    return ShapeGenerator().createCoordinateFrame(&name);
}

QString coordinateText(float value) {
    return QString::number(static_cast<double>(value), 'f', 3);
}

}  // namespace

userCoordinateSystem::userCoordinateSystem(int id, SoNode* parent)
    : translation_(new SoTranslation), switcher_(new SoSwitch), parent_(parent) {  // owned by this group
    switcher_->whichChild = SO_SWITCH_ALL;
    addChild(translation_);
    addChild(switcher_);
    setId(id);
}

userCoordinateSystem::~userCoordinateSystem() {
    for (UserModelNode* model : qAsConst(userModels_))
        model->setParentNode(nullptr);
    delete treeItem_;
    delete panel_;
}

void userCoordinateSystem::setId(int id) {
    id_ = id;
    rename(getUniquelyIdentifies::instance().names().userCoordinateSystem + QString::number(id));
}

void userCoordinateSystem::rename(const QString& name) {
    if (name == displayName())
        return;
    setDisplayName(name);
    SoNode* marker = frameMarker(getName());
    if (switcher_->getNumChildren() == 0)
        switcher_->addChild(marker);
    else
        switcher_->replaceChild(0, marker);
    if (treeItem_ != nullptr)
        NodeTreeItem::rename(*treeItem_, name);
    rebuildNameChains();
}

void userCoordinateSystem::setParentNode(SoNode* parent) {
    parent_ = parent;
    rebuildNameChains();
    writePose(worldTransform());
}

// --- place ---

void userCoordinateSystem::setTranslation(const SbVec3f& translation) {
    if (!std::isfinite(translation[0]) || !std::isfinite(translation[1]) || !std::isfinite(translation[2]))
        return;
    translation_->translation.setValue(translation);
    updateRow();
    writePose(worldTransform());
    Q_EMIT originMoved();
}

SbVec3f userCoordinateSystem::translation() const {
    return translation_->translation.getValue();
}

CollisionTransform userCoordinateSystem::worldTransform() const {
    const SbVec3f offset = translation();
    const Eigen::Translation3f shift(offset[0], offset[1], offset[2]);
    const auto* carrier = dynamic_cast<const ModelCarrier*>(parent_);
    return carrier == nullptr ? CollisionTransform(shift) : carrier->carrierTransform() * shift;
}

void userCoordinateSystem::followCarrier(const CollisionTransform& carrier) {
    const SbVec3f offset = translation();
    writePose(carrier * Eigen::Translation3f(offset[0], offset[1], offset[2]));
}

void userCoordinateSystem::writePose(const CollisionTransform& world) {
    for (UserModelNode* model : qAsConst(userModels_)) {
        if (model->collisionObject() != nullptr)
            model->collisionObject()->setTransform(world);
    }
}

void userCoordinateSystem::appendCollisionObjects(CollisionObjects& objects) {
    if (userModels_.isEmpty())
        return;
    writePose(worldTransform());
    for (UserModelNode* model : qAsConst(userModels_))
        objects.append(model->collisionObject());
}

CollisionObjects userCoordinateSystem::collisionObjects() {
    CollisionObjects objects;
    appendCollisionObjects(objects);
    return objects;
}

void userCoordinateSystem::joinCarrier(AxisBase& axis) {
    setParentNode(&axis);
}

void userCoordinateSystem::leaveCarrier(AxisBase& axis) {
    if (parent_ == static_cast<SoNode*>(&axis))
        setParentNode(nullptr);
}

QStringList userCoordinateSystem::carrierChain() const {
    const auto* carrier = dynamic_cast<const ModelCarrier*>(parent_);
    QStringList chain = carrier == nullptr ? QStringList() : carrier->carrierChain();
    chain.append(nameOf(this));
    return chain;
}

void userCoordinateSystem::rebuildNameChains() {
    for (UserModelNode* model : qAsConst(userModels_))
        model->setParentNode(this);
}

// --- work pieces ---

void userCoordinateSystem::AddWorkPiece(const QString& path) {
    QString file = path;
    if (file.isEmpty()) {
        const QString caption = TORNVALE::LanguageReader::instance().text(
            QStringLiteral("UserCoordinateSystem"), QStringLiteral("AddWorkPiece"));
        const QString folder = ParaReader().value(QStringLiteral("MainInterface/DefaultPath")).toString();
        file = userDialogs().openFile(caption, folder, QStringLiteral("STL(*.stl)"));
    }
    if (file.isEmpty())
        return;
    auto* model = new UserModelNode;  // owned by the switch
    model->setName(sceneName(nextModelName()));
    model->loadFromStl(file);
    insertModel(model);
    contentChanged();
}

QString userCoordinateSystem::nextModelName() const {
    const getUniquelyIdentifies& unique = getUniquelyIdentifies::instance();
    const QString& prefix = unique.names().userModelNamePrefix;
    QVector<SoNode*> nodes;
    QVector<int> taken;
    for (UserModelNode* model : userModels_) {
        nodes.append(model);
        bool isNumber = false;
        const int number = nameOf(model).mid(prefix.size()).toInt(&isNumber);
        if (isNumber)
            taken.append(number);
    }
    return prefix + QString::number(numberNotTaken(unique.makeUniquelyIdentifies(nodes), taken));
}

void userCoordinateSystem::insertModel(UserModelNode* model) {
    switcher_->addChild(model);
    userModels_.append(model);
    model->setParentNode(this);
    if (treeItem_ != nullptr)
        treeItem_->addChild(model->treeItem());
}

bool userCoordinateSystem::removeWorkPiece(const QString& name) {
    auto* model = dynamic_cast<UserModelNode*>(findChild(name));
    if (model == nullptr)
        return false;
    if (listener_ != nullptr)
        listener_->ResetCollided();
    takeOut(model);
    contentChanged();
    return true;
}

void userCoordinateSystem::removeWorkPieces() {
    if (userModels_.isEmpty())
        return;
    if (listener_ != nullptr)
        listener_->ResetCollided();
    while (!userModels_.isEmpty())
        takeOut(userModels_.last());
    contentChanged();
}

void userCoordinateSystem::takeOut(UserModelNode* model) {
    if (model->collisionObject() == placement_.workPiece)
        placement_ = {};
    userModels_.removeAll(model);
    NodeTreeItem::detach(model->treeItem());
    model->setParentNode(nullptr);
    switcher_->removeChild(model);
}

void userCoordinateSystem::contentChanged() {
    if (listener_ != nullptr)
        listener_->refreshCollisionGroup({});
    Q_EMIT workPiecesChanged();
}

SoNode* userCoordinateSystem::findChild(const QString& name) const {
    for (UserModelNode* model : userModels_) {
        if (nameOf(model) == name)
            return model;
    }
    for (SoNode* node : trajNodes_) {
        if (nameOf(node) == name)
            return node;
    }
    return nullptr;
}

void userCoordinateSystem::addTrajNode(SoNode* node) {
    if (node == nullptr || trajNodes_.contains(node))
        return;
    trajNodes_.append(node);
    switcher_->addChild(node);
}

void userCoordinateSystem::removeTrajNode(SoNode* node) {
    if (trajNodes_.removeAll(node) > 0)
        switcher_->removeChild(node);
}

bool userCoordinateSystem::AutoTransform(const QString& workPieceName, fcl::CollisionObject<float>* fixture,
                                         const Eigen::Vector3f& direction) {
    QElapsedTimer timer;
    timer.start();
    bool isFound = false;
    auto* model = dynamic_cast<UserModelNode*>(findChild(workPieceName));
    if (model != nullptr)
        model->updateCollisionTransform();
    if (model != nullptr && fixture != nullptr && model->collisionObject() != nullptr) {
        placement_ = {fixture, model->collisionObject(),
                      SbVec3f(direction.x(), direction.y(), direction.z())};
        const auto touches = [this] {
            return collisionDetector::collide(placement_.fixture, placement_.workPiece);
        };
        if (touches())
            return true;
        const auto moveInto = [this, &touches](const SbVec3f& place) {
            setTranslation(place);
            return touches();
        };
        isFound = searchPlacement(translation(), placement_.direction, kMaxIterations, moveInto).found;
    }
    placement_ = {};
    qInfo().noquote() << "\t\tName:"
                      << "AutoTransformWorkPieceObject"
                      << "Time:" << timer.elapsed() << " ms";
    return isFound;
}

// --- project forms ---

QJsonObject userCoordinateSystem::toJson() {
    SystemData system;
    system.id = id_;
    system.name = name();
    system.moveTranslation = fieldText(translation_->translation);
    system.switcher = fieldText(switcher_->whichChild);
    for (UserModelNode* model : qAsConst(userModels_))
        system.models.insert(nameOf(model), model->toJson());
    return writeSystem(system, nameOf(parent_));
}

void userCoordinateSystem::fromJson(const QJsonObject& object) {
    const SystemData system = readSystem(object);
    removeWorkPieces();
    setId(system.id.value_or(id_));
    if (!system.name.isEmpty())
        rename(system.name);
    SoSFVec3f offset;
    if (setFieldText(offset, system.moveTranslation))
        setTranslation(offset.getValue());
    SoSFInt32 whichChild;
    if (setFieldText(whichChild, system.switcher))
        switcher_->whichChild = whichChild.getValue() == SO_SWITCH_NONE ? SO_SWITCH_NONE : SO_SWITCH_ALL;
    for (const QJsonValue& value : system.models) {
        auto* model = new UserModelNode;  // owned by the switch
        model->loadFromJson(value.toObject());
        if (nameOf(model).isEmpty() || findChild(nameOf(model)) != nullptr)
            model->setName(sceneName(nextModelName()));
        insertModel(model);
    }
    contentChanged();
}

void userCoordinateSystem::fromOldData(int id, const OldSystemData& system) {
    removeWorkPieces();
    setId(id);
    setTranslation(system.translation);
    const QString& prefix = getUniquelyIdentifies::instance().names().userModelNamePrefix;
    for (const OldModelData& texts : system.models) {
        auto* model = new UserModelNode;  // owned by the switch
        const QString number = QString::number(userModels_.size());
        model->loadOldVersionData(prefix + number, texts.verticesProperty, texts.coordIndex);
        insertModel(model);
    }
    contentChanged();
}

// --- widgets ---

void userCoordinateSystem::updateRow() {
    if (treeItem_ == nullptr)
        return;
    const SbVec3f place = translation();
    treeItem_->setText(NodeTreeItem::kInfoColumn, QStringLiteral("X:%1 Y:%2 Z:%3")
                                                      .arg(coordinateText(place[0]), coordinateText(place[1]),
                                                           coordinateText(place[2])));
}

QTreeWidgetItem* userCoordinateSystem::treeItem() {
    if (treeItem_ != nullptr)
        return treeItem_;
    const QString& flag = getUniquelyIdentifies::instance().names().ucsFlag;
    treeItem_ = new NodeTreeItem(treeItem_, name(), flag);  // owned by this node until a tree takes it
    updateRow();
    for (UserModelNode* model : qAsConst(userModels_)) {
        NodeTreeItem::detach(model->treeItem());
        treeItem_->addChild(model->treeItem());
    }
    return treeItem_;
}

QWidget* userCoordinateSystem::panel() {
    if (panel_ == nullptr)
        panel_ = new UserCoordinateSystemPanel(*this);  // owned by this node, or by the widget that takes it
    return panel_;
}

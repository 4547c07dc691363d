#include "setup/WorkCoordinateSystem.h"

#include <Inventor/nodes/SoMatrixTransform.h>

#include <cmath>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "core/getUniquelyIdentifies.h"
#include "machine/AxisBase.h"
#include "machine/ChainListener.h"
#include "machine/NodeTreeItem.h"
#include "machine/calc/MachineDescription.h"
#include "setup/WorkCoordinateSystemPanel.h"
#include "setup/userCoordinateSystem.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("WorkCoordinateSystem"),
                                                     QString::fromLatin1(key));
}

void tell(UserDialogs::Kind kind, const char* key) {
    userDialogs().tell(kind, textOf("Title"), textOf(key));
}

SbVec3f originFrom(const QString& text) {
    SbVec3f origin = threeNumbers(text).value_or(SbVec3f(0, 0, 0));
    for (int i = 0; i < 3; ++i)
        origin[i] = std::isfinite(origin[i]) ? origin[i] : 0.0F;
    return origin;
}

}  // namespace

WorkCoordinateSystem::WorkCoordinateSystem() : matrix_(new SoMatrixTransform) {  // owned by this group
    matrix_->matrix = SbMatrix::identity();
    addChild(matrix_);
    insertSystem(nextNumber());
}

WorkCoordinateSystem::~WorkCoordinateSystem() {
    for (::userCoordinateSystem* system : qAsConst(ucsList_)) {
        system->setChainListener(nullptr);
        system->setParentNode(nullptr);
    }
    delete treeItem_;
    delete panel_;
}

void WorkCoordinateSystem::set(const workCoordinateSystemStruct& system) {
    record_ = system;
    origin_ = originFrom(system.initialization);
    setDisplayName(system.name);
    if (treeItem_ != nullptr)
        NodeTreeItem::rename(*treeItem_, system.name);
    rebuildNameChains();
}

void WorkCoordinateSystem::standAtOrigin() {
    matrix_->matrix = translationMatrix(origin_);
    for (::userCoordinateSystem* system : qAsConst(ucsList_))
        system->followCarrier(carrierTransform());
}

// --- systems ---

int WorkCoordinateSystem::nextNumber() const {
    QVector<SoNode*> nodes;
    QVector<int> taken;
    for (::userCoordinateSystem* system : ucsList_) {
        nodes.append(system);
        taken.append(system->id());
    }
    return numberNotTaken(getUniquelyIdentifies::instance().makeUniquelyIdentifies(nodes), taken);
}

/// A system without a number, or with the number or name of another one, takes the next free number.
void WorkCoordinateSystem::keepApart(::userCoordinateSystem& system) {
    QVector<SoNode*> others;
    QVector<int> taken;
    bool isApart = system.id() >= 0;
    for (::userCoordinateSystem* other : qAsConst(ucsList_)) {
        if (other == &system)
            continue;
        others.append(other);
        taken.append(other->id());
        isApart = isApart && other->id() != system.id() && other->name() != system.name();
    }
    if (!isApart)
        system.setId(numberNotTaken(getUniquelyIdentifies::instance().makeUniquelyIdentifies(others), taken));
}

::userCoordinateSystem* WorkCoordinateSystem::insertSystem(int id) {
    auto* system = new ::userCoordinateSystem(id, this);  // owned by this group
    addChild(system);
    ucsList_.append(system);
    system->setChainListener(listener_);
    if (treeItem_ != nullptr)
        treeItem_->addChild(system->treeItem());
    return system;
}

::userCoordinateSystem* WorkCoordinateSystem::addUserCoordinateSystem() {
    const int id = nextNumber();
    if (id < 0)
        return nullptr;
    ::userCoordinateSystem* system = insertSystem(id);
    contentChanged();
    if (ucsList_.size() > 1)
        tell(UserDialogs::Kind::Information, "AddUserCoordinateSystemSucessful");
    return system;
}

void WorkCoordinateSystem::removeUserCoordinateSystem(int id) {
    ::userCoordinateSystem* system = userCoordinateSystem(id);
    if (system == nullptr || !userDialogs().ask(textOf("Title"), textOf("AskedRemoveUCS")))
        return;
    if (ucsList_.size() < 2) {
        tell(UserDialogs::Kind::Warning, "RemoveUCSErrorMsg1");
        return;
    }
    if (!system->userModels().isEmpty() || !system->trajNodes().isEmpty()) {
        tell(UserDialogs::Kind::Warning, "RemoveUCSErrorMsg2");
        return;
    }
    takeOut(system);
    contentChanged();
}

void WorkCoordinateSystem::takeOut(::userCoordinateSystem* system) {
    ucsList_.removeAll(system);
    if (treeItem_ != nullptr)
        NodeTreeItem::detach(system->treeItem());
    system->setChainListener(nullptr);
    system->setParentNode(nullptr);
    removeChild(system);
}

void WorkCoordinateSystem::removeSystems() {
    if (listener_ != nullptr)
        listener_->ResetCollided();
    while (!ucsList_.isEmpty())
        takeOut(ucsList_.last());
}

void WorkCoordinateSystem::reset() {
    removeSystems();
    insertSystem(nextNumber());
    contentChanged();
}

void WorkCoordinateSystem::contentChanged() {
    if (listener_ != nullptr)
        listener_->refreshCollisionGroup({});
    Q_EMIT systemsChanged();
}

::userCoordinateSystem* WorkCoordinateSystem::userCoordinateSystem(int id) const {
    for (::userCoordinateSystem* system : ucsList_) {
        if (system->id() == id)
            return system;
    }
    return nullptr;
}

QMap<int, SbVec3f> WorkCoordinateSystem::ucsTranslations() const {
    QMap<int, SbVec3f> translations;
    for (const ::userCoordinateSystem* system : ucsList_)
        translations.insert(system->id(), system->translation());
    return translations;
}

// --- project forms ---

QJsonObject WorkCoordinateSystem::toJson() const {
    QJsonObject object;
    for (::userCoordinateSystem* system : ucsList_)
        object.insert(system->name(), system->toJson());
    return object;
}

void WorkCoordinateSystem::fromJson(const QJsonObject& object) {
    removeSystems();
    for (const QJsonValue& member : object) {
        ::userCoordinateSystem* system = insertSystem(-1);
        system->fromJson(member.toObject());
        keepApart(*system);
    }
    if (ucsList_.isEmpty())
        insertSystem(nextNumber());
    contentChanged();
}

void WorkCoordinateSystem::fromJsonArray(const QJsonArray& array) {
    removeSystems();
    for (const OldSystemData& entry : readOldSystems(array)) {
        ::userCoordinateSystem* system = insertSystem(-1);
        system->fromOldData(entry.id.value_or(-1), entry);
        keepApart(*system);
    }
    if (ucsList_.isEmpty())
        insertSystem(nextNumber());
    contentChanged();
}

// --- on an axis or fixed ---

CollisionTransform WorkCoordinateSystem::carrierTransform() const {
    return parentAxis_ == nullptr ? toCollisionTransform(matrix_->matrix.getValue())
                                  : parentAxis_->worldMatrix();
}

QStringList WorkCoordinateSystem::nodeChain() const {
    QStringList chain = parentAxis_ == nullptr ? QStringList() : parentAxis_->nodeChain();
    chain.append(QString::fromUtf8(getName().getString()));
    return chain;
}

/// The axis, not the zone, takes the origin: that is how a table's zero point reaches the scene.
void WorkCoordinateSystem::joinCarrier(AxisBase& axis) {
    parentAxis_ = &axis;
    rebuildNameChains();
    axis.applyOffsetMatrix(translationMatrix(origin_));
}

void WorkCoordinateSystem::leaveCarrier(AxisBase& axis) {
    if (parentAxis_ != &axis)
        return;
    parentAxis_ = nullptr;
    rebuildNameChains();
    for (::userCoordinateSystem* system : qAsConst(ucsList_))
        system->followCarrier(carrierTransform());
}

void WorkCoordinateSystem::followCarrier(const CollisionTransform& carrier) {
    for (::userCoordinateSystem* system : qAsConst(ucsList_))
        system->followCarrier(carrier);
}

void WorkCoordinateSystem::appendCollisionObjects(CollisionObjects& objects) {
    for (::userCoordinateSystem* system : qAsConst(ucsList_))
        system->appendCollisionObjects(objects);
}

CollisionObjects WorkCoordinateSystem::collisionObjects() {
    CollisionObjects objects;
    appendCollisionObjects(objects);
    return objects;
}

void WorkCoordinateSystem::rebuildNameChains() {
    for (::userCoordinateSystem* system : qAsConst(ucsList_))
        system->rebuildNameChains();
}

void WorkCoordinateSystem::setChainListener(ChainListener* listener) {
    listener_ = listener;
    for (::userCoordinateSystem* system : qAsConst(ucsList_))
        system->setChainListener(listener);
}

// --- widgets ---

QTreeWidgetItem* WorkCoordinateSystem::treeItem() {
    if (treeItem_ != nullptr)
        return treeItem_;
    const QString& flag = getUniquelyIdentifies::instance().names().wcsFlag;
    treeItem_ = new NodeTreeItem(treeItem_, displayName(), flag);  // owned by this node until a tree takes it
    for (::userCoordinateSystem* system : qAsConst(ucsList_)) {
        NodeTreeItem::detach(system->treeItem());
        treeItem_->addChild(system->treeItem());
    }
    return treeItem_;
}

QWidget* WorkCoordinateSystem::panel() {
    if (panel_ == nullptr)
        panel_ = new WorkCoordinateSystemPanel(*this);  // owned by this node, or by the widget that takes it
    return panel_;
}

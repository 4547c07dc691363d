#include "setup/WorkCoordinateSystem.h"

#include <Inventor/nodes/SoMatrixTransform.h>

#include <QSet>
#include <cmath>
#include <limits>

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

/// Number and name both tell a system from the others of its zone, the name in the project too.
class TakenNumbers {
  public:
    void add(::userCoordinateSystem& system) {
        ids_.insert(system.id());
        names_.insert(system.name());
        nodes_.append(&system);
    }
    [[nodiscard]] bool isApart(const ::userCoordinateSystem& system) const {
        return system.id() >= 0 && !ids_.contains(system.id()) && !names_.contains(system.name());
    }
    /// The first number from this one on that is free, and whose name is; -1 when they are used up.
    [[nodiscard]] int freeFrom(int number) const {
        const QString& prefix = getUniquelyIdentifies::instance().names().userCoordinateSystem;
        while (number >= 0 && (ids_.contains(number) || names_.contains(prefix + QString::number(number))))
            number = number == std::numeric_limits<int>::max() ? -1 : number + 1;
        return number;
    }
    [[nodiscard]] int nextFree() const {
        return freeFrom(getUniquelyIdentifies::instance().makeUniquelyIdentifies(nodes_));
    }

  private:
    QSet<int> ids_;
    QSet<QString> names_;
    QVector<SoNode*> nodes_;
};

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
    TakenNumbers taken;
    for (::userCoordinateSystem* system : ucsList_)
        taken.add(*system);
    return taken.nextFree();
}

/// Systems without a number, or with the number or name of an earlier one, take the next free numbers.
void WorkCoordinateSystem::keepApart() {
    TakenNumbers taken;
    QVector<::userCoordinateSystem*> others;
    for (::userCoordinateSystem* system : qAsConst(ucsList_)) {
        if (taken.isApart(*system))
            taken.add(*system);
        else
            others.append(system);
    }
    int number = 0;
    for (::userCoordinateSystem* system : qAsConst(others)) {
        number = system == others.first() ? taken.nextFree() : taken.freeFrom(number + 1);
        system->setId(number);
    }
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
    leave(system);
    removeChild(system);
}

void WorkCoordinateSystem::leave(::userCoordinateSystem* system) {
    if (treeItem_ != nullptr)
        NodeTreeItem::detach(system->treeItem());
    system->setChainListener(nullptr);
    system->setParentNode(nullptr);
}

void WorkCoordinateSystem::removeSystems() {
    if (listener_ != nullptr)
        listener_->ResetCollided();
    // From the end and by index: each search would walk all of them.
    while (!ucsList_.isEmpty()) {
        leave(ucsList_.takeLast());
        removeChild(getNumChildren() - 1);
    }
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

/// A system that is being read: the collision groups follow once, when all are there.
::userCoordinateSystem* WorkCoordinateSystem::insertUnread() {
    ::userCoordinateSystem* system = insertSystem(-1);
    system->setChainListener(nullptr);
    return system;
}

void WorkCoordinateSystem::allRead() {
    keepApart();
    if (ucsList_.isEmpty())
        insertSystem(nextNumber());
    setChainListener(listener_);
    contentChanged();
}

void WorkCoordinateSystem::fromJson(const QJsonObject& object) {
    removeSystems();
    for (const QJsonValue& member : object)
        insertUnread()->fromJson(member.toObject());
    allRead();
}

void WorkCoordinateSystem::fromJsonArray(const QJsonArray& array) {
    removeSystems();
    for (const OldSystemData& entry : readOldSystems(array))
        insertUnread()->fromOldData(entry.id.value_or(-1), entry);
    allRead();
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

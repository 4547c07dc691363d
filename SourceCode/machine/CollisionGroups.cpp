#include "machine/CollisionGroups.h"

#include <QSet>

#include "machine/MachineNodes.h"
#include "machine/calc/ChainText.h"

CollisionGroups::CollisionGroups(const MachineDescription& machine, const MachineNodes& nodes)
    : machine_(machine), nodes_(nodes) {}

/// Axes and zones first: a search of the scene walks all of it, and what a project has named like an axis is
/// none.
SoNode* CollisionGroups::nodeOf(const QString& key) const {
    if (AxisBase* const axis = nodes_.findAxis(key))
        return axis;
    if (WorkCoordinateSystem* const zone = nodes_.findZone(key))
        return zone;
    return nodes_.findNode(key);
}

CollisionObjects CollisionGroups::collect(const QString& key) const {
    CollisionObjects objects;
    if (auto* carried = dynamic_cast<CarriedNode*>(nodeOf(key)))
        carried->appendCollisionObjects(objects);
    objects.removeAll(nullptr);
    return objects;
}

void CollisionGroups::make() {
    groups_.clear();
    for (const QString& head : chainHeads(machine_.machineParameters.kinematicChain)) {
        if (dynamic_cast<AxisBase*>(nodeOf(head)) != nullptr)
            groups_.insert(head, collect(head));
    }
    QSet<const fcl::CollisionObject<float>*> grouped;
    for (const CollisionObjects& objects : qAsConst(groups_)) {
        for (const fcl::CollisionObject<float>* object : objects)
            grouped.insert(object);
    }
    for (AxisBase* axis : nodes_.axes()) {
        const bool isPart = axis->record().kind == AxisRecord::NonNumerical;
        if (isPart && !grouped.contains(axis->collisionObject()) &&
            machine_.collisionObjectList.value(axis->name(), false))
            groups_.insert(axis->name(), collect(axis->name()));
    }
    findSpindleHeads();
    for (WorkCoordinateSystem* zone : nodes_.zones()) {
        if (zone->parentAxis() == nullptr)
            groups_.insert(zone->displayName(), collect(zone->displayName()));
    }
    plan_ = makeCollisionPlan(groups_.keys(), toolChainRoots_);
    ordered_.reserve(static_cast<std::size_t>(groups_.size()));
}

void CollisionGroups::findSpindleHeads() {
    spindleParents_.clear();
    toolChainRoots_.clear();
    for (const auto& spindle : machine_.spindles) {
        if (!spindleParents_.contains(spindle->parent))
            spindleParents_.append(spindle->parent);
    }
    for (const QString& parent : qAsConst(spindleParents_)) {
        const QString head = headOfCarrier(parent, machine_.machineParameters.kinematicChain);
        if (!head.isEmpty() && !toolChainRoots_.contains(head))
            toolChainRoots_.append(head);
    }
}

void CollisionGroups::refresh(const QStringList& chain) {
    if (chain.isEmpty()) {
        for (auto group = groups_.begin(); group != groups_.end(); ++group)
            group.value() = collect(group.key());
        return;
    }
    // Every played axis word comes here: no look-up in the scene, no allocation when nothing has changed.
    AxisBase* const head = nodes_.findHead(chain.constFirst());
    if (head == nullptr)
        return;
    const auto group = groups_.find(head->name());
    if (group == groups_.end())
        return;
    scratch_.clear();
    head->appendCollisionObjects(scratch_);
    scratch_.removeAll(nullptr);
    if (group.value() != scratch_)
        group.value() = scratch_;
}

void CollisionGroups::refreshSpindleGroups() {
    for (const QString& head : qAsConst(toolChainRoots_)) {
        if (dynamic_cast<AxisBase*>(nodeOf(head)) != nullptr)
            groups_.insert(head, collect(head));
    }
    plan_ = makeCollisionPlan(groups_.keys(), toolChainRoots_);
}

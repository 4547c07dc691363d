#include "machine/MachineNodes.h"

#include <Inventor/SbName.h>
#include <Inventor/SoPath.h>
#include <Inventor/actions/SoSearchAction.h>

#include "core/SceneName.h"
#include "core/getUniquelyIdentifies.h"

namespace {

/// A name as the scene keeps it, which has no blanks and the like.
SbName sceneNameOf(const QString& name) {
    auto* const probe = new SoSeparator;  // owned by its reference
    probe->ref();
    probe->setName(sceneName(name));
    const SbName kept = probe->getName();
    probe->unref();
    return kept;
}

SoNode* searchBelow(SoNode* from, const QString& name) {
    if (from == nullptr || name.isEmpty())
        return nullptr;
    SoSearchAction search;
    search.setName(sceneNameOf(name));
    search.setInterest(SoSearchAction::FIRST);
    search.setSearchingAll(true);  // a hidden work piece can be meant as well
    search.apply(from);
    SoPath* const path = search.getPath();
    SoNode* const found = path == nullptr ? nullptr : path->getTail();
    search.reset();  // its path holds references
    return found;
}

}  // namespace

MachineNodes::MachineNodes(const QString& rootName) : root_(nullptr) {
    getUniquelyIdentifies::instance();  // starts the scene library
    root_ = new SoSeparator;            // owned by its reference
    root_->ref();
    root_->setName(sceneName(rootName));
}

MachineNodes::~MachineNodes() {
    root_->unref();
    for (WorkCoordinateSystem* zone : qAsConst(zones_))
        zone->unref();
    for (SpindleNode* spindle : qAsConst(spindles_))
        spindle->unref();
    for (AxisBase* axis : qAsConst(axes_))
        axis->unref();
}

void MachineNodes::add(AxisBase* axis) {
    axis->ref();
    axes_.append(axis);
}

void MachineNodes::add(SpindleNode* spindle) {
    spindle->ref();
    spindles_.append(spindle);
}

void MachineNodes::add(WorkCoordinateSystem* zone) {
    zone->ref();
    zones_.append(zone);
}

AxisBase* MachineNodes::findAxis(const QString& name) const {
    if (name.isEmpty())
        return nullptr;
    for (AxisBase* axis : axes_) {
        if (axis->name() == name)
            return axis;
    }
    return nullptr;
}

AxisBase* MachineNodes::findHead(const QString& sceneName) const {
    for (AxisBase* axis : axes_) {
        if (axis->parentAxis() == nullptr && axis->nodeChain().constLast() == sceneName)
            return axis;
    }
    return nullptr;
}

SpindleNode* MachineNodes::findSpindle(int number) const {
    for (SpindleNode* spindle : spindles_) {
        if (spindle->number() == number)
            return spindle;
    }
    return nullptr;
}

WorkCoordinateSystem* MachineNodes::findZone(const QString& name) const {
    for (WorkCoordinateSystem* zone : zones_) {
        if (zone->displayName() == name)
            return zone;
    }
    return nullptr;
}

SoNode* MachineNodes::findNode(const QString& name, const QString& underName) const {
    return searchBelow(underName.isEmpty() ? root_ : findNode(underName), name);
}

SoNode* MachineNodes::findNodeByPath(const QStringList& path) const {
    SoNode* node = nullptr;
    for (const QString& name : path) {
        node = searchBelow(node == nullptr ? root_ : node, name);
        if (node == nullptr)
            return nullptr;
    }
    return node;
}

#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSwitch.h>

#include <QDebug>
#include <QSet>
#include <algorithm>

#include "geometry/modelNode.h"
#include "machine/AxisBase.h"
#include "machine/ChainListener.h"
#include "machine/NodeTreeItem.h"

// Children and repeats of an axis. Invariant: whatever is in `children_` is a scene child too, so the scene's
// reference keeps it; repeats stand elsewhere and are watched.

namespace {

/// True when `target` is `from` or stands somewhere below it.
bool reaches(SoNode* from, const SoNode* target) {
    QSet<SoNode*> seen;
    QVector<SoNode*> open{from};
    while (!open.isEmpty()) {
        SoNode* const node = open.takeLast();
        if (node == target)
            return true;
        if (seen.contains(node))
            continue;
        seen.insert(node);
        SoChildList* children = node->getChildren();
        for (int i = 0; children != nullptr && i < children->getLength(); ++i)
            open.append((*children)[i]);
    }
    return false;
}

}  // namespace

bool AxisBase::refuses(SoNode* node) const {
    if (node == nullptr)
        return true;
    if (reaches(node, this)) {
        qDebug().noquote() << "AxisBase::addChild" << record_.name
                           << "cannot carry what carries it:" << node->getName().getString();
        return true;
    }
    // Chains of a machine file share their upper axes and name each pair again.
    return dynamic_cast<AxisBase*>(node) != nullptr && SoSeparator::findChild(node) >= 0;
}

void AxisBase::addChild(SoNode* node) {
    if (refuses(node))
        return;
    SoSeparator::addChild(node);
    carry(node);
}

void AxisBase::carry(SoNode* node) {
    if (auto* axis = dynamic_cast<AxisBase*>(node))
        adopt(*axis);
    else if (auto* carried = dynamic_cast<CarriedNode*>(node))
        take({node, carried, nullptr});
    else if (auto* model = dynamic_cast<UserModelNode*>(node))
        take({node, nullptr, model});
}

void AxisBase::adopt(AxisBase& axis) {
    if (axis.parentAxis_ != nullptr)
        return;
    if (!axis.isClone_) {
        take({&axis, &axis, nullptr});
        return;
    }
    repeats_.append(&axis);
    axis.joinCarrier(*this);
    if (listener_ != nullptr)
        axis.setChainListener(listener_);
}

void AxisBase::take(const Child& child) {
    const bool isThere = std::any_of(children_.cbegin(), children_.cend(),
                                     [&child](const Child& other) { return other.node == child.node; });
    if (isThere)
        return;
    children_.append(child);
    if (child.carried == nullptr) {
        child.model->setParentNode(this);
        return;
    }
    if (listener_ != nullptr)
        child.carried->setChainListener(listener_);
    child.carried->joinCarrier(*this);
    QTreeWidgetItem* row = treeItem_ == nullptr ? nullptr : child.carried->machineTreeItem();
    if (row != nullptr) {
        NodeTreeItem::detach(row);
        treeItem_->addChild(row);
    }
}

void AxisBase::joinCarrier(AxisBase& axis) {
    parentAxis_ = &axis;
    rebuildNameChains();
    followCarrier(axis.worldMatrix());
}

void AxisBase::leaveCarrier(AxisBase& axis) {
    if (parentAxis_ != &axis)
        return;
    parentAxis_ = nullptr;
    rebuildNameChains();
    followCarrier(CollisionTransform::Identity());
}

void AxisBase::forget(SoNode* node) {
    const auto isNode = [node](const Child& child) { return child.node == node; };
    const auto found = std::find_if(children_.cbegin(), children_.cend(), isNode);
    if (found != children_.cend()) {
        const Child child = *found;
        children_.erase(std::remove_if(children_.begin(), children_.end(), isNode), children_.end());
        if (child.carried != nullptr) {
            QTreeWidgetItem* row = treeItem_ == nullptr ? nullptr : child.carried->machineTreeItem();
            if (row != nullptr && row->parent() == treeItem_)
                NodeTreeItem::detach(row);
            child.carried->setChainListener(nullptr);
            child.carried->leaveCarrier(*this);
        } else {
            child.model->setParentNode(nullptr);
        }
    }
    auto* axis = dynamic_cast<AxisBase*>(node);
    if (axis != nullptr && axis->parentAxis_ == this) {
        repeats_.removeAll(axis);
        axis->setChainListener(nullptr);
        axis->leaveCarrier(*this);
    }
}

void AxisBase::letGo(SoNode* node) {
    if (listener_ != nullptr)
        listener_->ResetCollided();
    forget(node);
    forgetOwn(node);
    if (listener_ != nullptr)
        listener_->refreshCollisionGroup(chain_);
}

void AxisBase::forgetOwn(const SoNode* node) {
    material_ = node == material_ ? nullptr : material_;
    offset_ = node == offset_ ? nullptr : offset_;
    motion_ = node == motion_ ? nullptr : motion_;
    if (node == switch_) {
        switch_ = nullptr;
        shape_ = nullptr;
    }
}

void AxisBase::removeChild(int index) {
    if (index < 0 || index >= getNumChildren())
        return;
    letGo(getChild(index));
    SoSeparator::removeChild(index);
}

void AxisBase::removeChild(SoNode* node) {
    removeChild(SoSeparator::findChild(node));
}

void AxisBase::replaceChild(int index, SoNode* node) {
    if (index < 0 || index >= getNumChildren() || refuses(node))
        return;
    letGo(getChild(index));
    SoSeparator::replaceChild(index, node);
    carry(node);
}

void AxisBase::replaceChild(SoNode* oldNode, SoNode* node) {
    replaceChild(SoSeparator::findChild(oldNode), node);
}

void AxisBase::removeAllChildren() {
    while (getNumChildren() > 0)
        removeChild(getNumChildren() - 1);
}

void AxisBase::addRepeat(AxisBase& clone) {
    if (&clone == this || repeats_.contains(&clone))
        return;
    repeats_.append(&clone);
    if (motion_ != nullptr && clone.motion_ != nullptr)
        clone.motion_->matrix.connectFrom(&motion_->matrix);
}

QVector<SoNode*> AxisBase::childNodes() const {
    QVector<SoNode*> nodes;
    nodes.reserve(children_.size());
    for (const Child& child : children_)
        nodes.append(child.node);
    return nodes;
}

QVector<AxisBase*> AxisBase::repeats() const {
    QVector<AxisBase*> alive;
    for (const QPointer<AxisBase>& repeat : repeats_) {
        if (!repeat.isNull())
            alive.append(repeat.data());
    }
    return alive;
}

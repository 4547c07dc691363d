#pragma once

#include <QVector>

#include "geometry/calc/CollisionEngine.h"

class AxisBase;
class ChainListener;
class QTreeWidgetItem;

/// Collision objects of a subtree, owned by their nodes; entries may be nullptr.
using CollisionObjects = QVector<fcl::CollisionObject<float>*>;

/// What can stand on an axis and goes where the axis goes: axes, spindles, work zones, coordinate systems.
/// Implemented beside the scene node, which is where AxisBase::addChild looks for it. A new kind of thing on
/// an axis needs this interface and nothing in the axis.
class CarriedNode {
  public:
    CarriedNode() = default;
    CarriedNode(const CarriedNode&) = delete;
    CarriedNode& operator=(const CarriedNode&) = delete;
    virtual ~CarriedNode() = default;

    /// The axis has just taken this node among its children.
    virtual void joinCarrier(AxisBase& axis) = 0;
    /// The axis lets this node go, or goes itself; the node may still be carried elsewhere.
    virtual void leaveCarrier(AxisBase& axis) = 0;
    /// Runs per played line: writes the pose of everything in this subtree to the collision objects, whose
    /// boxes stay as they were made. `carrier` is the pose of what carries this node, mm.
    virtual void followCarrier(const CollisionTransform& carrier) = 0;
    /// Appends the collision objects of this subtree, own one first.
    virtual void appendCollisionObjects(CollisionObjects& objects) = 0;
    /// A name or a parent above has changed: the name paths of this subtree are made anew.
    virtual void rebuildNameChains() = 0;
    /// For this node and all below it; nullptr for none.
    virtual void setChainListener(ChainListener* listener) = 0;
    /// The row below the carrier's row in the machine tree; nullptr for what has none there.
    virtual QTreeWidgetItem* machineTreeItem() = 0;
};

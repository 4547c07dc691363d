#pragma once

#include <Inventor/SbVec3f.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include "geometry/ModelCarrier.h"
#include "geometry/SceneWidget.h"
#include "machine/CarriedNode.h"
#include "machine/calc/MachineRecords.h"

class SoMatrixTransform;
class userCoordinateSystem;

/// A work zone of the machine ("G54"): stands on an axis or fixed in the machine and holds at least one user
/// coordinate system. Scene children: its own placement, then the systems.
class WorkCoordinateSystem : public SceneWidget, public CarriedNode, public ModelCarrier {
    Q_OBJECT
  public:
    /// With one system, number 0.
    WorkCoordinateSystem();

    /// Takes names, chains and origin from the machine file. The zone then goes under its axis with
    /// AxisBase::addChild, which shifts the axis by the origin, or is placed with `standAtOrigin`.
    void set(const workCoordinateSystemStruct& system);
    /// For a zone without an axis: its own placement becomes the origin.
    void standAtOrigin();

    /// Adds a system with the next free number at (0, 0, 0); tells the user when the zone then has more than
    /// one. nullptr when no number was free.
    ::userCoordinateSystem* addUserCoordinateSystem();
    /// Asks first. The last system stays, and so does one that holds work pieces or programs.
    void removeUserCoordinateSystem(int id);
    /// nullptr for an unknown number.
    [[nodiscard]] ::userCoordinateSystem* userCoordinateSystem(int id) const;
    [[nodiscard]] QMap<int, SbVec3f> ucsTranslations() const;
    [[nodiscard]] const QVector<::userCoordinateSystem*>& ucsList() const { return ucsList_; }
    /// Those of all systems, each at its present place. Entries may be nullptr.
    [[nodiscard]] CollisionObjects collisionObjects();
    /// Back to a single empty system, as after construction.
    void reset();

    /// One member per system, keyed by its name.
    [[nodiscard]] QJsonObject toJson() const;
    /// Both replace all systems; a form without any leaves one empty system.
    void fromJson(const QJsonObject& object);
    void fromJsonArray(const QJsonArray& array);

    [[nodiscard]] const workCoordinateSystemStruct& record() const { return record_; }
    [[nodiscard]] const SbVec3f& origin() const { return origin_; }
    [[nodiscard]] AxisBase* parentAxis() const { return parentAxis_; }
    [[nodiscard]] SoMatrixTransform* matrix() const { return matrix_; }
    /// Scene names from the top of the chain down, own name last.
    [[nodiscard]] QStringList nodeChain() const;

    /// Made on demand and deleted with this node, unless a tree or a host has deleted them.
    [[nodiscard]] QTreeWidgetItem* treeItem();
    [[nodiscard]] QWidget* panel();

    void joinCarrier(AxisBase& axis) override;
    void leaveCarrier(AxisBase& axis) override;
    void followCarrier(const CollisionTransform& carrier) override;
    void appendCollisionObjects(CollisionObjects& objects) override;
    void rebuildNameChains() override;
    void setChainListener(ChainListener* listener) override;
    QTreeWidgetItem* machineTreeItem() override { return treeItem(); }
    [[nodiscard]] CollisionTransform carrierTransform() const override;
    [[nodiscard]] QStringList carrierChain() const override { return nodeChain(); }

  Q_SIGNALS:
    void systemsChanged();

  protected:
    ~WorkCoordinateSystem() override;

  private:
    [[nodiscard]] int nextNumber() const;
    ::userCoordinateSystem* insertSystem(int id);
    ::userCoordinateSystem* insertUnread();
    void allRead();
    void keepApart();
    void takeOut(::userCoordinateSystem* system);
    void leave(::userCoordinateSystem* system);
    void removeSystems();
    void contentChanged();

    workCoordinateSystemStruct record_;
    SbVec3f origin_{0, 0, 0};
    QVector<::userCoordinateSystem*> ucsList_;
    AxisBase* parentAxis_ = nullptr;
    SoMatrixTransform* matrix_;
    ChainListener* listener_ = nullptr;
    QTreeWidgetItem* treeItem_ = nullptr;
    QPointer<QWidget> panel_;
};

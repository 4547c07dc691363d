#pragma once

#include <Inventor/SbVec3f.h>

#include <QJsonObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include "geometry/ModelCarrier.h"
#include "geometry/SceneWidget.h"
#include "machine/CarriedNode.h"
#include "setup/calc/SystemJson.h"

class SoSwitch;
class SoTranslation;
class UserModelNode;

/// A numbered origin of a work zone with its work pieces. Scene children: translation, switch with the frame
/// marker, the work pieces and the way-point nodes of programs.
class userCoordinateSystem : public SceneWidget, public CarriedNode, public ModelCarrier {
    Q_OBJECT
  public:
    /// `parent` is the zone, or in older data the axis, that it stands in. Its name is the prefix and the id.
    userCoordinateSystem(int id, SoNode* parent);

    /// An empty path asks the user; nothing happens when that is cancelled. A file that cannot be read makes
    /// a work piece without a shape, which never collides.
    void AddWorkPiece(const QString& path = {});
    /// False when there is none of this name.
    bool removeWorkPiece(const QString& name);
    void removeWorkPieces();

    /// Offset from the zone, mm; not finite: ignored.
    void setTranslation(const SbVec3f& translation);
    [[nodiscard]] SbVec3f translation() const;
    /// Pose of this system in the machine.
    [[nodiscard]] CollisionTransform worldTransform() const;
    /// Those of the work pieces, each at its present place. Entries may be nullptr.
    [[nodiscard]] CollisionObjects collisionObjects();
    using SceneWidget::findChild;
    /// The work piece or way-point node of this scene name; nullptr when there is none.
    [[nodiscard]] SoNode* findChild(const QString& name) const;

    /// Shifts this system along `direction` (in its zone's frame) in steps of 5, then back in steps of 0.2,
    /// mm for a unit direction, until the work piece just clears `fixture`. True when it touched the fixture
    /// at the start (it then stays where it is) or was brought near. False otherwise: nothing was met on the
    /// way, and the system stays at the end of it, or there is no such work piece, shape or fixture.
    bool AutoTransform(const QString& workPieceName, fcl::CollisionObject<float>* fixture,
                       const Eigen::Vector3f& direction);

    [[nodiscard]] QJsonObject toJson();
    /// Replaces number, name, offset, visibility and work pieces by the form of `toJson`; members that cannot
    /// be read keep what was.
    void fromJson(const QJsonObject& object);
    /// The same for one system of the older form, whose number the zone has decided.
    void fromOldData(int id, const OldSystemData& system);

    /// Way-point nodes of programs; the switch holds the reference.
    void addTrajNode(SoNode* node);
    void removeTrajNode(SoNode* node);
    [[nodiscard]] const QVector<SoNode*>& trajNodes() const { return trajNodes_; }
    [[nodiscard]] const QVector<UserModelNode*>& userModels() const { return userModels_; }

    [[nodiscard]] int id() const { return id_; }
    void setId(int id);
    [[nodiscard]] const QString& name() const { return displayName(); }
    [[nodiscard]] SoNode* parentNode() const { return parent_; }
    void setParentNode(SoNode* parent);
    [[nodiscard]] SoSwitch* switcher() const { return switcher_; }
    [[nodiscard]] SoTranslation* translationNode() const { return translation_; }

    /// Made on demand and deleted with this node, unless a tree or a host has deleted them.
    [[nodiscard]] QTreeWidgetItem* treeItem();
    [[nodiscard]] QWidget* panel();

    void joinCarrier(AxisBase& axis) override;
    void leaveCarrier(AxisBase& axis) override;
    void followCarrier(const CollisionTransform& carrier) override;
    void appendCollisionObjects(CollisionObjects& objects) override;
    void rebuildNameChains() override;
    void setChainListener(ChainListener* listener) override { listener_ = listener; }
    QTreeWidgetItem* machineTreeItem() override { return nullptr; }
    [[nodiscard]] CollisionTransform carrierTransform() const override { return worldTransform(); }
    [[nodiscard]] QStringList carrierChain() const override;

  Q_SIGNALS:
    /// The origin stands elsewhere: programs in this system must be placed anew.
    void originMoved();
    void workPiecesChanged();

  protected:
    ~userCoordinateSystem() override;

  private:
    /// What a running placement works on; an immediate contact leaves it as it is.
    struct Placement {
        fcl::CollisionObject<float>* fixture = nullptr;
        fcl::CollisionObject<float>* workPiece = nullptr;
        SbVec3f direction{0, 0, 0};
    };
    void rename(const QString& name);
    void insertModel(UserModelNode* model);
    void takeOut(UserModelNode* model);
    void writePose(const CollisionTransform& world);
    void updateRow();
    void contentChanged();
    [[nodiscard]] QString nextModelName() const;

    QVector<UserModelNode*> userModels_;
    QVector<SoNode*> trajNodes_;
    int id_ = -1;
    SoTranslation* translation_;
    SoSwitch* switcher_;
    SoNode* parent_ = nullptr;
    Placement placement_;
    ChainListener* listener_ = nullptr;
    QTreeWidgetItem* treeItem_ = nullptr;
    QPointer<QWidget> panel_;
};

#pragma once

#include <Inventor/SbMatrix.h>

#include <QJsonObject>
#include <QPointer>
#include <QStringList>
#include <QStringView>
#include <QVector>

#include "geometry/CollisionHolder.h"
#include "geometry/ModelCarrier.h"
#include "geometry/SceneWidget.h"
#include "machine/CarriedNode.h"
#include "machine/calc/AxisRecord.h"

class SoIndexedFaceSet;
class SoMaterial;
class SoMatrixTransform;
class SoSwitch;
class UserModelNode;

/// A moving or fixed part of the machine, scene group and widget at once. Scene children, always in this
/// order: material, offset transform, motion transform, shape switch, then what was added. A point p of the
/// mesh, or of anything below, stands at p * M * O * (parent's matrix), see NodeKinematics.h.
class AxisBase : public SceneWidget, public CarriedNode, public ModelCarrier {
    Q_OBJECT
  public:
    /// A node of the same kind, with a scene and a collision object of its own and no parent; nullptr when it
    /// cannot be built. The caller takes the first reference.
    [[nodiscard]] virtual AxisBase* clone() const = 0;
    [[nodiscard]] virtual QJsonObject toJson() const;
    /// Moves to the value of an ISO word such as "X12.5"; without a number behind the letter nothing happens.
    virtual void setValueFromText(QStringView word) = 0;
    /// Own object first, then those of the children in their order. Entries may be nullptr.
    [[nodiscard]] virtual CollisionObjects collisionObjects();
    /// Appends the lines of the information box.
    virtual void information(QString& text) const;
    /// O becomes `matrix` * O, which is also the new initial offset.
    virtual void applyOffsetMatrix(const SbMatrix& matrix);
    /// Moves the node and the collision objects below it; mm or degrees. Kinds that do not move keep their
    /// matrix, a value that is not finite is ignored. Runs per played line.
    virtual void setValue(float value);

    /// Restores the motion from the form of `toJson`. A text that is no matrix changes nothing.
    void fromJson(const QJsonObject& object);

    /// Adds to the scene and, for what can be carried, to the children (a clone: to the repeats). A node that
    /// would close a circle is refused, an axis that is a child already is not added again.
    void addChild(SoNode* node) override;
    void removeChild(int index) override;
    void removeChild(SoNode* node) override;
    void removeAllChildren() override;
    void replaceChild(int index, SoNode* node) override;
    void replaceChild(SoNode* oldNode, SoNode* node) override;

    /// A clone that stands elsewhere and moves with this node through its connected motion field. Its
    /// collision object does not follow.
    void addRepeat(AxisBase& clone);

    /// M * O as a pose.
    [[nodiscard]] CollisionTransform localMatrix() const;
    /// Pose in the machine, computed up the parents.
    [[nodiscard]] CollisionTransform worldMatrix() const;
    /// Scene names from the top of the chain down to this node, own name last.
    [[nodiscard]] QStringList nodeChain() const { return chain_; }
    /// From the motion matrix, not from the stored value; see motionValue.
    [[nodiscard]] double currentValue() const;

    /// Shows or hides the shape in the scene. The widget itself is never shown: its panels are.
    void setVisible(bool visible) override;
    [[nodiscard]] bool isShapeVisible() const;
    void setCollided(bool collided);
    void setSelected(bool selected);
    void resetColour();

    /// The row of the machine tree; a tree that takes it may delete it.
    [[nodiscard]] QTreeWidgetItem* treeItem();
    /// Made on demand; deleted with this node unless a host has deleted them.
    [[nodiscard]] QWidget* operationPanel();
    [[nodiscard]] QWidget* manualWindow();

    [[nodiscard]] const AxisRecord& record() const { return record_; }
    [[nodiscard]] const QString& name() const { return record_.name; }
    [[nodiscard]] bool isClone() const { return isClone_; }
    [[nodiscard]] AxisBase* parentAxis() const { return parentAxis_; }
    [[nodiscard]] QVector<SoNode*> childNodes() const;
    [[nodiscard]] QVector<AxisBase*> repeats() const;
    [[nodiscard]] const SbMatrix& initialOffset() const { return initialOffset_; }
    /// nullptr on a node that was never set up.
    [[nodiscard]] SoMaterial* material() const { return material_; }
    [[nodiscard]] SoMatrixTransform* offsetTransform() const { return offset_; }
    [[nodiscard]] SoMatrixTransform* motionTransform() const { return motion_; }
    [[nodiscard]] SoSwitch* shapeSwitch() const { return switch_; }
    [[nodiscard]] SoIndexedFaceSet* shapeNode() const { return shape_; }
    [[nodiscard]] fcl::CollisionObject<float>* collisionObject() const { return collision_.get(); }

    void joinCarrier(AxisBase& axis) override;
    void leaveCarrier(AxisBase& axis) override;
    void followCarrier(const CollisionTransform& carrier) override;
    void appendCollisionObjects(CollisionObjects& objects) override;
    void rebuildNameChains() override;
    void setChainListener(ChainListener* listener) override;
    QTreeWidgetItem* machineTreeItem() override { return treeItem(); }
    [[nodiscard]] CollisionTransform carrierTransform() const override { return worldMatrix(); }
    [[nodiscard]] QStringList carrierChain() const override { return chain_; }

  protected:
    explicit AxisBase(int kind);
    ~AxisBase() override;

    /// Makes the scene's nodes and the collision object; `moveToHome` comes before the latter.
    void buildScene(const QString& modelFile, bool moveToHome);
    [[nodiscard]] QString modelFile() const;
    void setRecord(const AxisRecord& record) { record_ = record; }
    /// Name, kind, motion, place, direction, colour, limits and model; of a numerical axis id and home too.
    void copyForClone(const AxisBase& source);
    void moveToWord(QStringView word);

  private:
    struct Child {
        SoNode* node;
        CarriedNode* carried;
        UserModelNode* model;
    };
    [[nodiscard]] bool refuses(SoNode* node) const;
    void carry(SoNode* node);
    void adopt(AxisBase& axis);
    void take(const Child& child);
    void letGo(SoNode* node);
    void forget(SoNode* node);
    void forgetOwn(const SoNode* node);
    [[nodiscard]] CollisionTransform carrierPose() const;
    void setColor(const SbColor& color);
    void addMeshShape(const QString& modelFile, QVector<SbVec3f>& vertices, QVector<int>& indices);

    AxisRecord record_;
    AxisBase* parentAxis_ = nullptr;
    SoMaterial* material_ = nullptr;
    SoMatrixTransform* offset_ = nullptr;
    SoMatrixTransform* motion_ = nullptr;
    SoIndexedFaceSet* shape_ = nullptr;
    SoSwitch* switch_ = nullptr;
    CollisionHolder collision_;
    QVector<Child> children_;
    bool isClone_ = false;
    QVector<QPointer<AxisBase>> repeats_;
    SbMatrix initialOffset_ = SbMatrix::identity();
    QStringList chain_;
    ChainListener* listener_ = nullptr;
    QTreeWidgetItem* treeItem_ = nullptr;
    QPointer<QWidget> panel_;
    QPointer<QWidget> manualWindow_;
};

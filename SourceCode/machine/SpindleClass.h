#pragma once

#include <QMap>
#include <QPointer>
#include <QStringList>
#include <memory>

#include "geometry/SceneWidget.h"
#include "machine/CarriedNode.h"
#include "machine/calc/SpindleRecord.h"

class SpindlePanel;
class SpindleStatusWidget;
class SoMaterial;
class SoMatrixTransform;
class ToolData;

/// A spindle: holds the mounted tool's shape and collision object under its carrier axis and reacts to the
/// spindle's M commands. Scene children: material, transform (mount * T(offset) * Rw), tool shape.
class SpindleNode : public SceneWidget, public CarriedNode {
    Q_OBJECT
  public:
    SpindleNode();

    /// Reads the record and builds the scene with an empty tool; called once.
    void Setup(spindleStruct* spindle);
    /// The first carrier stays: 0 when it was taken, -1 and no change otherwise.
    int setParentNode(AxisBase* axis);
    /// Mounts a copy of the tool: mesh and collision object are made anew, for the repeats too.
    void setTool(const ToolData& tool);
    /// Shows what a line of the program does to the spindle and its coaxial partner.
    void onCommand(const QString& line);
    /// M codes that this spindle answers to, and those that change its tool. Every value is this spindle.
    [[nodiscard]] QMap<QString, SoNode*> commandMap();
    [[nodiscard]] QMap<QString, SoNode*> toolChangeMap();
    /// A spindle with the same record, tool and patterns and a scene of its own, without a carrier. The
    /// caller takes the first reference.
    [[nodiscard]] SpindleNode* clone() const;
    /// Scene names of the carriers from the top down, own name last.
    [[nodiscard]] QStringList nodeChain() const;

    [[nodiscard]] int number() const;
    [[nodiscard]] const SpindleRecord& record() const;
    [[nodiscard]] const ToolData& tool() const;
    [[nodiscard]] bool hasToolChanger() const;
    [[nodiscard]] AxisBase* parentAxis() const { return parentAxis_; }

    void setCoaxialPartner(SpindleNode* partner) { partner_ = partner; }
    [[nodiscard]] SpindleNode* coaxialPartner() const { return partner_; }
    /// A clone under a repeat node, which mounts and colours what this spindle does.
    void addRepeat(SpindleNode& clone);
    [[nodiscard]] QVector<SpindleNode*> repeats() const;

    /// Colour of the tool; the carriers' colours are the caller's matter.
    void setCollided(bool collided);
    /// nullptr without a tool that has a mesh.
    [[nodiscard]] fcl::CollisionObject<float>* collisionObject() const;
    [[nodiscard]] SoMaterial* material() const;
    [[nodiscard]] SoMatrixTransform* transform() const;
    /// The tool shape, never nullptr once set up.
    [[nodiscard]] SoNode* toolShape() const;

    /// Made on demand and deleted with this node, unless a tree or a host has deleted them.
    [[nodiscard]] QTreeWidgetItem* treeItem();
    [[nodiscard]] SpindleStatusWidget* statusWidget();
    [[nodiscard]] SpindlePanel* panel();

    void joinCarrier(AxisBase& axis) override;
    void leaveCarrier(AxisBase& axis) override;
    void followCarrier(const CollisionTransform& carrier) override;
    void appendCollisionObjects(CollisionObjects& objects) override;
    void rebuildNameChains() override;
    void setChainListener(ChainListener* listener) override;
    QTreeWidgetItem* machineTreeItem() override { return treeItem(); }

  protected:
    ~SpindleNode() override;

  private:
    struct Private;
    void buildScene();
    void mount(int smallestMesh);
    void place();
    void updateToolTexts();
    void show(const SpindleReaction& reaction);

    AxisBase* parentAxis_ = nullptr;
    QVector<QPointer<SpindleNode>> repeats_;
    std::shared_ptr<Private> pimpl_;
    QPointer<SpindlePanel> panel_;
    QPointer<SpindleStatusWidget> status_;
    QPointer<SpindleNode> partner_;
    QTreeWidgetItem* treeItem_ = nullptr;
    ChainListener* listener_ = nullptr;
    SpindleCommands commands_;
};

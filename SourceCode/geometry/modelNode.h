#pragma once

#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoSeparator.h>

#include <QJsonObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include "geometry/CollisionHolder.h"

class ModelPanel;
class QTreeWidgetItem;
class QWidget;
class SoIndexedFaceSet;
class SoMaterial;
class SoSwitch;
class SoTexture2;

/// A model loaded from a mesh file that hangs on a coordinate system, an axis or a work zone. Reference
/// counted by the scene. Lengths in mm; the mesh is in the frame of the node it hangs on.
class UserModelNode : public SoSeparator {
  public:
    /// Without geometry. Logs when the texture "oak.jpg" of the installation cannot be read.
    UserModelNode();

    /// False, and nothing changed, when there is no mesh in the file.
    bool loadFromStl(const QString& path);
    /// The form of `toJson`. A member that cannot be read keeps its start value; without a readable mesh the
    /// node is without geometry, which the log tells.
    void loadFromJson(const QJsonObject& object);
    /// The older project form, two field texts; the same holds.
    void loadOldVersionData(const QString& name, const QString& vertices, const QString& indices);
    [[nodiscard]] QJsonObject toJson() const;

    /// Takes the name path and the pose that the parent gives; nullptr and nodes that carry no models give
    /// the own name and the identity.
    void setParentNode(SoNode* parent);
    [[nodiscard]] SoNode* parentNode() const { return parentNode_; }
    [[nodiscard]] CollisionTransform worldTransform() const;
    /// Writes the present `worldTransform` to the collision object.
    void updateCollisionTransform();
    /// Scene names from the top of the chain down, own name last.
    [[nodiscard]] QStringList nodeChain() const;

    void setVisible(bool visible);
    [[nodiscard]] bool isVisible() const;
    /// Both change the colour unless the model is hidden.
    void setSelected(bool selected);
    void setCollided(bool collided);

    /// nullptr until there is geometry.
    [[nodiscard]] fcl::CollisionObject<float>* collisionObject() const { return collision_.get(); }
    /// The row of the machine tree; a tree that takes it may delete it.
    [[nodiscard]] QTreeWidgetItem* treeItem();
    /// The property panel with the present values.
    [[nodiscard]] QWidget* panel();

    [[nodiscard]] SoSwitch* switcher() const { return switcher_; }
    [[nodiscard]] SoMaterial* material() const { return material_; }
    [[nodiscard]] SoIndexedFaceSet* faceSet() const { return faceSet_; }
    [[nodiscard]] SoTexture2* texture() const { return texture_; }

  protected:
    ~UserModelNode() override;

  private:
    friend class ModelTreeItem;
    void loadTexture();
    void setGeometry(const QString& vertices, const QString& indices);
    void replaceFaceSet(SoIndexedFaceSet* faceSet);
    void buildCollisionObject();
    void attachCollisionObject();
    void setColor(const SbColor& color);

    SoNode* parentNode_ = nullptr;
    SoSwitch* switcher_;
    SoMaterial* material_;
    SoIndexedFaceSet* faceSet_;
    SoTexture2* texture_;
    CollisionHolder collision_;
    QTreeWidgetItem* treeItem_ = nullptr;
    QPointer<ModelPanel> panel_;
    QString texturePath_;
    SbColor normalColor_{0.81F, 0.81F, 0.81F};
    SbColor highlightColor_{1, 1, 0};
    SbColor collidedColor_{1, 0, 0};
};

/// A small marker in the scene.
class shape : public SoSeparator {
  public:
    /// Makes the marker's nodes; called once.
    virtual void build() = 0;
    [[nodiscard]] int kind() const { return kind_; }

  protected:
    explicit shape(int kind) : kind_(kind) {}
    ~shape() override;
    int kind_;
};

/// A ball that marks a point, mm. Prints "construct pointShape" on standard output when it is made.
class pointShape : public shape {
  public:
    explicit pointShape(const SbVec3f& position, const SbColor& color = SbColor(1, 0, 0),
                        float radius = 5.0F);
    void build() override;
    /// Yellow while it is selected.
    void setSelected(bool selected);
    [[nodiscard]] bool isSelected() const { return isSelected_; }

  protected:
    ~pointShape() override;

  private:
    SbColor color_;
    SbVec3f position_;
    float radius_;
    SoMaterial* material_ = nullptr;  ///< owned by the marker
    bool isSelected_ = false;
};

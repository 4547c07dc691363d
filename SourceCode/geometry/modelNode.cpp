#include "geometry/modelNode.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTexture2.h>

#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <QImage>
#include <QTreeWidgetItem>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/SceneName.h"
#include "core/getUniquelyIdentifies.h"
#include "geometry/FieldText.h"
#include "geometry/ModelCarrier.h"
#include "geometry/ModelPanel.h"
#include "geometry/ShapeGenerator.h"
#include "geometry/collisionDetector.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("UserModelNode"),
                                                     QString::fromLatin1(key));
}

QString nameOf(const SoBase* node) {
    return node == nullptr ? QString() : QString::fromUtf8(node->getName().getString());
}

/// The picture as the scene library takes it: its rows start at the bottom. It is read once for all models,
/// and again when the file has changed.
QImage textureImage(const QString& path) {
    constexpr int kLargestSide = 2048;
    static QString known;
    static QDateTime modified;
    static QImage image;
    const QFileInfo file(path);
    if (path == known && file.lastModified() == modified)
        return image;
    known = path;
    modified = file.lastModified();
    image = QImage(path);
    if (image.width() > kLargestSide || image.height() > kLargestSide)
        image = image.scaled(kLargestSide, kLargestSide, Qt::KeepAspectRatio);
    image = image.convertToFormat(QImage::Format_RGB888).mirrored();
    return image;
}

void setImage(SoTexture2& texture, const QImage& image) {
    constexpr int kComponents = 3;
    const SbVec2s size(static_cast<short>(image.width()), static_cast<short>(image.height()));
    texture.image.setValue(size, kComponents, nullptr);
    SbVec2s used;
    int components = 0;
    unsigned char* bytes = texture.image.startEditing(used, components);
    for (int row = 0; row < image.height(); ++row) {
        const std::size_t rowBytes = std::size_t{kComponents} * static_cast<std::size_t>(image.width());
        std::copy_n(image.constScanLine(row), rowBytes, bytes + rowBytes * static_cast<std::size_t>(row));
    }
    texture.image.finishEditing();
}

}  // namespace

/// The node's row. Rows die with their tree, so each side tells the other when it goes.
class ModelTreeItem final : public QTreeWidgetItem {
  public:
    explicit ModelTreeItem(UserModelNode& node) : node_(&node) {
        const QString name = nameOf(&node);
        setText(1, name);
        setData(1, Qt::UserRole, name);
        setData(1, Qt::UserRole + 1, getUniquelyIdentifies::instance().names().workPieceFlag);
    }
    ModelTreeItem(const ModelTreeItem&) = delete;
    ModelTreeItem& operator=(const ModelTreeItem&) = delete;
    ~ModelTreeItem() override { node_->treeItem_ = nullptr; }

  private:
    UserModelNode* node_;
};

UserModelNode::UserModelNode()
    : switcher_(new SoSwitch),         // owned by this group
      material_(new SoMaterial),       // owned by the switch
      faceSet_(new SoIndexedFaceSet),  // owned by the switch
      texture_(new SoTexture2),        // owned by the switch
      texturePath_(installationPath(QStringLiteral("oak.jpg"))) {
    switcher_->whichChild = SO_SWITCH_ALL;
    material_->diffuseColor.setValue(normalColor_);
    texture_->wrapS = SoTexture2::CLAMP;
    texture_->wrapT = SoTexture2::CLAMP;
    loadTexture();
    switcher_->addChild(material_);
    switcher_->addChild(texture_);
    switcher_->addChild(faceSet_);
    addChild(switcher_);
}

UserModelNode::~UserModelNode() {
    delete treeItem_;
    delete panel_;
}

void UserModelNode::loadTexture() {
    const QImage image = textureImage(texturePath_);
    if (image.isNull()) {
        qDebug().noquote() << textOf("PixmapNotExistedErrorMsg") + '\t' + texturePath_;
        return;
    }
    setImage(*texture_, image);
}

bool UserModelNode::loadFromStl(const QString& path) {
    SoIndexedFaceSet* loaded = ShapeGenerator().createStlShape(path);
    if (loaded == nullptr)
        return false;
    replaceFaceSet(loaded);
    buildCollisionObject();
    attachCollisionObject();
    return true;
}

void UserModelNode::loadFromJson(const QJsonObject& object) {
    const auto member = [&object](const char* key) { return object.value(QLatin1String(key)).toString(); };
    setName(sceneName(member("name")));
    SoSFInt32 whichChild;
    if (setFieldText(whichChild, member("switcher")))
        setVisible(whichChild.getValue() != SO_SWITCH_NONE);
    SoMFColor color;
    if (setFieldText(color, member("material")) && color.getNum() > 0)
        material_->diffuseColor = color;
    setGeometry(member("verticesProperty"), member("coordIndex"));
}

void UserModelNode::loadOldVersionData(const QString& name, const QString& vertices, const QString& indices) {
    setName(sceneName(name));
    setGeometry(vertices, indices);
}

QJsonObject UserModelNode::toJson() const {
    return {
        {QStringLiteral("name"), nameOf(this)},
        {QStringLiteral("parentNodeName"), nameOf(parentNode_)},
        {QStringLiteral("switcher"), fieldText(switcher_->whichChild)},
        {QStringLiteral("material"), fieldText(material_->diffuseColor)},
        {QStringLiteral("coordIndex"), fieldText(faceSet_->coordIndex)},
        {QStringLiteral("verticesProperty"), fieldText(faceSet_->vertexProperty)},
    };
}

void UserModelNode::setGeometry(const QString& vertices, const QString& indices) {
    const std::optional<MeshArrays> mesh = meshFromFieldTexts(vertices, indices);
    if (mesh) {
        replaceFaceSet(ShapeGenerator().createFaceSet(mesh->vertices, mesh->indices, nullptr));
        buildCollisionObject();
        return;
    }
    qDebug().noquote() << textOf("VerticesIndicesIsEmptyErrorMsg") + '\t' + nameOf(this);
    replaceFaceSet(new SoIndexedFaceSet);  // owned by the switch
    collision_.take(nullptr);
}

void UserModelNode::replaceFaceSet(SoIndexedFaceSet* faceSet) {
    switcher_->replaceChild(faceSet_, faceSet);
    faceSet_ = faceSet;
}

void UserModelNode::buildCollisionObject() {
    collision_.take(CollisionObjectBuilder().createCollisionObject(faceSet_, collision_.name(getName()),
                                                                   CollisionTransform::Identity()));
}

void UserModelNode::attachCollisionObject() {
    if (parentNode_ == nullptr)
        return;
    collision_.setNameChain(nodeChain());
    updateCollisionTransform();
}

void UserModelNode::setParentNode(SoNode* parent) {
    parentNode_ = parent;
    collision_.setNameChain(nodeChain());
    updateCollisionTransform();
}

CollisionTransform UserModelNode::worldTransform() const {
    const auto* carrier = dynamic_cast<const ModelCarrier*>(parentNode_);
    return carrier == nullptr ? CollisionTransform::Identity() : carrier->carrierTransform();
}

void UserModelNode::updateCollisionTransform() {
    collision_.setTransform(worldTransform());
}

QStringList UserModelNode::nodeChain() const {
    const auto* carrier = dynamic_cast<const ModelCarrier*>(parentNode_);
    QStringList chain = carrier == nullptr ? QStringList() : carrier->carrierChain();
    chain.append(nameOf(this));
    return chain;
}

void UserModelNode::setVisible(bool visible) {
    switcher_->whichChild = visible ? SO_SWITCH_ALL : SO_SWITCH_NONE;
}

bool UserModelNode::isVisible() const {
    return switcher_->whichChild.getValue() != SO_SWITCH_NONE;
}

void UserModelNode::setSelected(bool selected) {
    setColor(selected ? highlightColor_ : normalColor_);
}

void UserModelNode::setCollided(bool collided) {
    setColor(collided ? collidedColor_ : normalColor_);
}

void UserModelNode::setColor(const SbColor& color) {
    if (isVisible())
        material_->diffuseColor.setValue(color);
}

QTreeWidgetItem* UserModelNode::treeItem() {
    if (treeItem_ == nullptr)
        treeItem_ = new ModelTreeItem(*this);  // owned by this node until a tree takes it
    return treeItem_;
}

QWidget* UserModelNode::panel() {
    if (panel_ == nullptr)
        panel_ = new ModelPanel;  // owned by this node, or by the widget that takes it
    panel_->refresh(nodeChain(), nameOf(parentNode_), collision_.get());
    return panel_;
}

#include "machine/AxisBase.h"

#include <Inventor/fields/SoSFVec3f.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSwitch.h>

#include <QDebug>
#include <cmath>

#include "core/InstallationFolder.h"
#include "core/getUniquelyIdentifies.h"
#include "geometry/FieldText.h"
#include "geometry/ShapeGenerator.h"
#include "geometry/SharedMethods.h"
#include "geometry/collisionDetector.h"
#include "geometry/modelNode.h"
#include "machine/AxisPanel.h"
#include "machine/ChainListener.h"
#include "machine/NodeTreeItem.h"

AxisBase::AxisBase(int kind) {
    record_.kind = kind;
    rebuildNameChains();
}

AxisBase::~AxisBase() {
    for (const Child& child : qAsConst(children_)) {
        if (child.carried != nullptr)
            child.carried->leaveCarrier(*this);
        else
            child.model->setParentNode(nullptr);
    }
    for (AxisBase* repeat : repeats())
        repeat->leaveCarrier(*this);
    delete treeItem_;
    delete panel_;
    delete manualWindow_;
    if (isClone_)
        qInfo().noquote() << record_.name + QStringLiteral(" is deleted");
}

void AxisBase::buildScene(const QString& modelFile, bool moveToHome) {
    setDisplayName(record_.name);
    material_ = new SoMaterial;  // owned by this group
    material_->diffuseColor.setValue(record_.color);
    SoSeparator::addChild(material_);
    offset_ = new SoMatrixTransform;  // owned by this group
    offset_->matrix = translationMatrix(record_.offset);
    SoSeparator::addChild(offset_);
    motion_ = new SoMatrixTransform;  // owned by this group
    motion_->matrix = SbMatrix::identity();
    SoSeparator::addChild(motion_);
    switch_ = new SoSwitch;  // owned by this group
    switch_->whichChild = SO_SWITCH_ALL;
    SoSeparator::addChild(switch_);
    QVector<SbVec3f> vertices;
    QVector<int> indices;
    addMeshShape(modelFile, vertices, indices);
    if (moveToHome)
        setValue(static_cast<float>(record_.home));
    collision_.take(CollisionObjectBuilder().createCollisionObject(
        vertices, indices, collision_.name(getName()), worldMatrix()));
    rebuildNameChains();
}

void AxisBase::addMeshShape(const QString& modelFile, QVector<SbVec3f>& vertices, QVector<int>& indices) {
    SharedMethods::ReadSTLFile(modelFile, vertices, indices);
    const SbName name = getName();
    shape_ = ShapeGenerator().createFaceSet(vertices, indices, &name);
    switch_->addChild(shape_);
}

QString AxisBase::modelFile() const {
    return installationPath(record_.modelPath);
}

void AxisBase::copyForClone(const AxisBase& source) {
    const AxisRecord& other = source.record_;
    record_ = {};
    record_.name = other.name;
    record_.kind = other.kind;
    record_.motionType = other.motionType;
    record_.offset = other.offset;
    record_.direction = other.direction;
    record_.color = other.color;
    record_.lower = other.lower;
    record_.upper = other.upper;
    record_.modelPath = other.modelPath;
    if (other.kind == AxisRecord::Numerical) {
        record_.id = other.id;
        record_.home = other.home;
    }
    isClone_ = true;
}

// --- motion ---

void AxisBase::setValue(float value) {
    if (!std::isfinite(value))
        return;
    record_.value = static_cast<double>(value);
    const auto motion = motionMatrix(record_.motionType, record_.direction, record_.offset, value);
    if (motion && motion_ != nullptr)
        motion_->matrix.setValue(*motion);
    followCarrier(carrierPose());
    if (listener_ != nullptr)
        listener_->refreshCollisionGroup(chain_);
}

void AxisBase::moveToWord(QStringView word) {
    if (const std::optional<float> value = wordValue(word))
        setValue(*value);
}

void AxisBase::applyOffsetMatrix(const SbMatrix& matrix) {
    if (offset_ == nullptr)
        return;
    SbMatrix offset = matrix;
    offset.multRight(offset_->matrix.getValue());
    offset_->matrix = offset;
    initialOffset_ = offset;
    followCarrier(carrierPose());
}

CollisionTransform AxisBase::localMatrix() const {
    if (motion_ == nullptr || offset_ == nullptr)
        return CollisionTransform::Identity();
    SbMatrix local = motion_->matrix.getValue();
    local.multRight(offset_->matrix.getValue());
    return toCollisionTransform(local);
}

CollisionTransform AxisBase::carrierPose() const {
    return parentAxis_ == nullptr ? CollisionTransform::Identity() : parentAxis_->worldMatrix();
}

CollisionTransform AxisBase::worldMatrix() const {
    return parentAxis_ == nullptr ? localMatrix() : parentAxis_->worldMatrix() * localMatrix();
}

double AxisBase::currentValue() const {
    if (motion_ == nullptr)
        return 0;
    return motionValue(record_.motionType, record_.direction, motion_->matrix.getValue());
}

void AxisBase::followCarrier(const CollisionTransform& carrier) {
    const CollisionTransform world = carrier * localMatrix();
    collision_.setTransform(world);
    for (const Child& child : qAsConst(children_)) {
        if (child.carried != nullptr)
            child.carried->followCarrier(world);
        else if (child.model->collisionObject() != nullptr)
            child.model->collisionObject()->setTransform(world);
    }
}

// --- collision objects ---

CollisionObjects AxisBase::collisionObjects() {
    CollisionObjects objects;
    appendCollisionObjects(objects);
    return objects;
}

void AxisBase::appendCollisionObjects(CollisionObjects& objects) {
    objects.append(collision_.get());
    for (const Child& child : qAsConst(children_)) {
        if (child.carried != nullptr) {
            child.carried->appendCollisionObjects(objects);
            continue;
        }
        child.model->updateCollisionTransform();
        objects.append(child.model->collisionObject());
    }
}

void AxisBase::rebuildNameChains() {
    chain_ = parentAxis_ == nullptr ? QStringList() : parentAxis_->chain_;
    chain_.append(QString::fromUtf8(getName().getString()));
    collision_.setNameChain(chain_);
    for (const Child& child : qAsConst(children_)) {
        if (child.carried != nullptr)
            child.carried->rebuildNameChains();
        else
            child.model->setParentNode(this);
    }
    for (AxisBase* repeat : repeats()) {
        if (repeat->parentAxis_ == this)
            repeat->rebuildNameChains();
    }
}

void AxisBase::setChainListener(ChainListener* listener) {
    listener_ = listener;
    for (const Child& child : qAsConst(children_)) {
        if (child.carried != nullptr)
            child.carried->setChainListener(listener);
    }
    for (AxisBase* repeat : repeats())
        repeat->setChainListener(listener);
}

// --- looks ---

void AxisBase::setColor(const SbColor& color) {
    if (material_ != nullptr)
        material_->diffuseColor.setValue(color);
}

void AxisBase::setVisible(bool visible) {
    if (switch_ != nullptr)
        switch_->whichChild = visible ? SO_SWITCH_ALL : SO_SWITCH_NONE;
    for (AxisBase* repeat : repeats())
        repeat->setVisible(visible);
}

bool AxisBase::isShapeVisible() const {
    return switch_ != nullptr && switch_->whichChild.getValue() != SO_SWITCH_NONE;
}

void AxisBase::setCollided(bool collided) {
    setColor(collided ? record_.collisionColor : record_.color);
    for (const Child& child : qAsConst(children_)) {
        if (auto* axis = dynamic_cast<AxisBase*>(child.node))
            axis->setCollided(collided);
    }
    for (AxisBase* repeat : repeats())
        repeat->setCollided(collided);
}

void AxisBase::setSelected(bool selected) {
    setColor(selected ? record_.highlightColor : record_.color);
    for (AxisBase* repeat : repeats())
        repeat->setSelected(selected);
}

void AxisBase::resetColour() {
    setColor(record_.color);
    for (AxisBase* repeat : repeats())
        repeat->resetColour();
}

// --- forms ---

QJsonObject AxisBase::toJson() const {
    QJsonObject object;
    if (motion_ != nullptr)
        object.insert(QStringLiteral("transform"), fieldText(motion_->matrix));
    return object;
}

void AxisBase::fromJson(const QJsonObject& object) {
    if (motion_ == nullptr)
        return;
    setFieldText(motion_->matrix, object.value(QStringLiteral("transform")).toString());
    followCarrier(carrierPose());
}

void AxisBase::information(QString& text) const {
    const auto line = [&text](const char* title, const QString& value) {
        text += QString::fromLatin1(title) + value + QLatin1Char('\n');
    };
    const auto matrixText = [](SoMatrixTransform* transform) {
        return transform == nullptr ? QString() : fieldText(transform->matrix);
    };
    SoSFMatrix initial;
    initial.setValue(initialOffset_);
    SoSFVec3f direction;
    direction.setValue(record_.direction);
    line("Axis Name: ", record_.name);
    line("Axis Type: ",
         QString::fromLatin1(record_.kind == AxisRecord::Numerical ? "Numerical" : "Non-Numerical"));
    line("Motion Type: ",
         QString::fromLatin1(record_.motionType == MotionType::Rotation ? "Rotation" : "Linear"));
    line("Id: ", QString::number(record_.id));
    line("Direction: ", fieldText(direction));
    line("Lower: ", QString::number(record_.lower));
    line("Upper: ", QString::number(record_.upper));
    line("Home: ", QString::number(record_.home));
    line("Current Position: ", QString::number(currentValue()));
    line("Model Path: ", record_.modelPath);
    line("Parent: ", parentAxis_ == nullptr ? QStringLiteral("None") : parentAxis_->name());
    line("Initial Transform: ", fieldText(initial));
    line("Transform: ", matrixText(motion_));
}

QTreeWidgetItem* AxisBase::treeItem() {
    if (treeItem_ != nullptr)
        return treeItem_;
    const UniqueNames& names = getUniquelyIdentifies::instance().names();
    treeItem_ = new NodeTreeItem(
        treeItem_, record_.name,  // owned by this node until a tree takes it
        record_.kind == AxisRecord::Numerical ? names.numericalAxisFlag : names.nonNumericalAxisFlag);
    for (const Child& child : qAsConst(children_)) {
        QTreeWidgetItem* row = child.carried == nullptr ? nullptr : child.carried->machineTreeItem();
        if (row != nullptr) {
            NodeTreeItem::detach(row);
            treeItem_->addChild(row);
        }
    }
    return treeItem_;
}

QWidget* AxisBase::operationPanel() {
    if (panel_ == nullptr)
        panel_ = new AxisPanel(*this);  // owned by this node, or by the widget that takes it
    return panel_;
}

QWidget* AxisBase::manualWindow() {
    if (manualWindow_ == nullptr)
        manualWindow_ = new AxisManualWindow(*this);  // owned by this node
    return manualWindow_;
}

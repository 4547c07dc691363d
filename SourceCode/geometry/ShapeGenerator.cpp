#include "geometry/ShapeGenerator.h"

#include <Inventor/nodes/SoCone.h>
#include <Inventor/nodes/SoCylinder.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoRotationXYZ.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSphere.h>
#include <Inventor/nodes/SoText2.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <QDebug>

#include "geometry/calc/MeshReader.h"
#include "geometry/calc/RevolvedMesh.h"

namespace {

void fill(SoIndexedFaceSet& faceSet, const QVector<SbVec3f>& vertices, const QVector<int>& indices) {
    auto* property = new SoVertexProperty;  // owned by the face set's field
    property->vertex.setNum(0);
    property->vertex.setValues(0, vertices.size(), vertices.constData());
    faceSet.vertexProperty = property;
    faceSet.coordIndex.setNum(0);
    faceSet.coordIndex.setValues(0, indices.size(), indices.constData());
}

template <typename Node>
Node* add(SoGroup& group) {
    auto* node = new Node;  // owned by the group
    group.addChild(node);
    return node;
}

void addArrow(SoGroup& frame, const SbColor& color, SoRotationXYZ::Axis axis, float angle_rad) {
    auto* arrow = add<SoSeparator>(frame);
    add<SoMaterial>(*arrow)->diffuseColor.setValue(color);
    auto* rotation = add<SoRotationXYZ>(*arrow);
    rotation->axis = axis;
    rotation->angle = angle_rad;
    add<SoTranslation>(*arrow)->translation.setValue(0, 40, 0);
    auto* shaft = add<SoCylinder>(*arrow);
    shaft->height = 80;
    shaft->radius = 5;
    add<SoTranslation>(*arrow)->translation.setValue(0, 55, 0);
    auto* head = add<SoCone>(*arrow);
    head->height = 30;
    head->bottomRadius = 15;
}

/// The first run of digits, "0" when there is none.
QString firstNumber(const QString& name) {
    QString number;
    for (const QChar letter : name) {
        const bool isDigit = letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
        if (isDigit)
            number.append(letter);
        else if (!number.isEmpty())
            break;
    }
    return number.isEmpty() ? QStringLiteral("0") : number;
}

void addLabel(SoGroup& frame, const QString& text) {
    auto* label = add<SoSeparator>(frame);
    add<SoTranslation>(*label)->translation.setValue(0, 0, 100);
    auto* font = add<SoFont>(*label);
    font->name = "Microsoft YaHei";
    font->size = 20;
    add<SoText2>(*label)->string.setValue(text.toUtf8().constData());
}

}  // namespace

SoIndexedFaceSet* ShapeGenerator::createStlShape(const QString& path) const {
    const MeshReading reading = readMesh(path);
    if (!reading.hasScene || !reading.isComplete) {
        qDebug().noquote() << QStringLiteral("读取STL模型失败..文件:%1 行号:%2 错误信息:%3")
                                  .arg(QStringLiteral(__FILE__), QString::number(__LINE__), reading.error);
        return nullptr;
    }
    if (reading.mesh.isEmpty())
        return nullptr;
    auto* shape = new SoIndexedFaceSet;  // owned by the caller
    fill(*shape, reading.mesh.vertices, reading.mesh.indices);
    return shape;
}

SoIndexedFaceSet* ShapeGenerator::createFaceSet(const QVector<SbVec3f>& vertices, const QVector<int>& indices,
                                                const SbName* name) const {
    auto* faceSet = new SoIndexedFaceSet;  // owned by the caller
    if (name != nullptr)
        faceSet->setName(*name);
    if (indicesFit(indices.constData(), indices.size(), vertices.size())) {
        fill(*faceSet, vertices, indices);
    } else {
        qDebug().noquote() << "ShapeGenerator::createFaceSet"
                           << "Index out of range: " +
                                  QString::fromUtf8(name != nullptr ? name->getString() : "");
        fill(*faceSet, {}, {});
    }
    return faceSet;
}

void ShapeGenerator::createToolMesh(const QVector<SbVec3f>& contour, QVector<SbVec3f>& vertices,
                                    QVector<int>& indices) const {
    MeshArrays mesh = revolvedMesh(contour);
    vertices = std::move(mesh.vertices);
    indices = std::move(mesh.indices);
}

SoSeparator* ShapeGenerator::createCoordinateFrame(const SbName* name) const {
    auto* frame = new SoSeparator;  // owned by the caller
    if (name != nullptr)
        frame->setName(*name);
    auto* origin = add<SoSeparator>(*frame);
    add<SoMaterial>(*origin)->diffuseColor.setValue(1, 0, 0);
    add<SoSphere>(*origin)->radius = 10;
    // Not quite a quarter turn, and it stays so.
    addArrow(*frame, SbColor(1, 0, 0), SoRotationXYZ::Z, -1.57F);
    addArrow(*frame, SbColor(0, 1, 0), SoRotationXYZ::Y, 0);
    addArrow(*frame, SbColor(0, 0, 1), SoRotationXYZ::X, 1.57F);
    addLabel(*frame, "UCS" + firstNumber(QString::fromUtf8(name != nullptr ? name->getString() : "")));
    return frame;
}

SoIndexedFaceSet* ShapeGenerator::createRoundedRectangle(const RoundedRectangle& rectangle,
                                                         const SbVec3f& direction, float depth,
                                                         const SbName* name) const {
    const MeshArrays body = extrudedRoundedRectangle(rectangle, direction, depth);
    return createFaceSet(body.vertices, body.indices, name);
}

#include "geometry/ShapeGenerator.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoRotationXYZ.h>
#include <Inventor/nodes/SoSphere.h>
#include <Inventor/nodes/SoText2.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

#include <limits>

#include "GeometryTestSupport.h"

namespace {

SbBox3f boxOf(SoNode* node) {
    SoGetBoundingBoxAction action{SbViewportRegion(100, 100)};
    action.apply(node);
    return action.getBoundingBox();
}

const SoVertexProperty* propertyOf(SoIndexedFaceSet* faceSet) {
    return dynamic_cast<SoVertexProperty*>(faceSet->vertexProperty.getValue());
}

void expectNoShape(const QByteArray& content, const char* what) {
    SCOPED_TRACE(what);
    const GeometryInstallation installation;
    const QString path = installation.stl(QStringLiteral("bad.stl"), content);
    const LogCapture log;
    EXPECT_EQ(ShapeGenerator().createStlShape(path), nullptr);
    EXPECT_EQ(log.count(QStringLiteral("读取STL模型失败..文件:")), 1) << log.all().toStdString();
    EXPECT_EQ(log.contains(QStringLiteral("错误信息:")), true);
}

template <typename Node>
Node* childOf(SoNode* group, int index) {
    auto* parent = dynamic_cast<SoGroup*>(group);
    return parent == nullptr || parent->getNumChildren() <= index
               ? nullptr
               : dynamic_cast<Node*>(parent->getChild(index));
}

}  // namespace

TEST(ShapeGenerator, StlShape_HoldsVerticesAndIndicesOfTheFile) {
    const GeometryInstallation installation;
    const QString path = installation.stl(QStringLiteral("a.stl"), binaryStl(twoTriangles()));
    const Held<SoIndexedFaceSet> shape(ShapeGenerator().createStlShape(path));
    ASSERT_NE(shape.get(), nullptr);
    ASSERT_NE(propertyOf(shape.get()), nullptr);
    EXPECT_EQ(propertyOf(shape.get())->vertex.getNum(), 6);
    EXPECT_EQ(propertyOf(shape.get())->vertex[4], SbVec3f(10.125F, 10.5F, 0));
    ASSERT_EQ(shape->coordIndex.getNum(), 8);
    EXPECT_EQ(shape->coordIndex[3], -1);
    EXPECT_EQ(shape->coordIndex[5], 4);
    EXPECT_EQ(boxOf(shape.get()).getMax(), SbVec3f(10.125F, 10.5F, 0));
}

// The missing offset stays here, too.
TEST(ShapeGenerator, StlShapeOfTwoSolids_KeepsEachSolidsNumbering) {
    const GeometryInstallation installation;
    const QString path =
        installation.stl(QStringLiteral("two.stl"), textStl({twoTriangles(), twoTriangles()}));
    const Held<SoIndexedFaceSet> shape(ShapeGenerator().createStlShape(path));
    ASSERT_NE(shape.get(), nullptr);
    EXPECT_EQ(propertyOf(shape.get())->vertex.getNum(), 12);
    ASSERT_EQ(shape->coordIndex.getNum(), 16);
    EXPECT_EQ(shape->coordIndex[8], 0);
    EXPECT_EQ(shape->coordIndex[14], 5);
}

TEST(ShapeGenerator, UnreadableFile_GivesNoShapeAndOneMessage) {
    expectNoShape("", "no byte");
    expectNoShape("\x89PNG\r\n\x1a\n" + QByteArray(500, 'x'), "a picture");
    expectNoShape(binaryStl(twoTriangles()).left(150), "truncated");
    expectNoShape(stlClaiming(1000000), "a million triangles claimed");
    expectNoShape(stlClaiming(0xFFFFFFFFU), "four thousand million triangles claimed");
    QVector<Triangle> triangles = twoTriangles();
    triangles[0][0][1] = std::numeric_limits<float>::quiet_NaN();
    expectNoShape(binaryStl(triangles), "not a number");
}

TEST(ShapeGenerator, MissingFileAndDirectory_GiveNoShape) {
    const GeometryInstallation installation;
    for (const QString& path : {installation.file(QStringLiteral("none.stl")), installation.path()}) {
        const LogCapture log;
        EXPECT_EQ(ShapeGenerator().createStlShape(path), nullptr);
        EXPECT_EQ(log.count(QStringLiteral("读取STL模型失败..文件:")), 1);
    }
}

TEST(ShapeGenerator, EmptySolid_GivesNoShapeWithoutMessage) {
    const GeometryInstallation installation;
    const QString path = installation.stl(QStringLiteral("e.stl"), "solid empty\nendsolid empty\n");
    const LogCapture log;
    EXPECT_EQ(ShapeGenerator().createStlShape(path), nullptr);
    EXPECT_EQ(log.lines().size(), 0U) << log.all().toStdString();
}

TEST(ShapeGenerator, FaceSet_IsNamedAndCopiesTheArrays) {
    const MeshArrays box = boxMesh(SbVec3f(1, 2, 3));
    const SbName name("Y");
    const Held<SoIndexedFaceSet> faceSet(ShapeGenerator().createFaceSet(box.vertices, box.indices, &name));
    EXPECT_EQ(faceSet->getName(), name);
    ASSERT_EQ(propertyOf(faceSet.get())->vertex.getNum(), 8);
    ASSERT_EQ(faceSet->coordIndex.getNum(), box.indices.size());
    for (int i = 0; i < box.indices.size(); ++i)
        EXPECT_EQ(faceSet->coordIndex[i], box.indices[i]);
    EXPECT_EQ(boxOf(faceSet.get()).getMax(), SbVec3f(1, 2, 3));
}

TEST(ShapeGenerator, FaceSetWithAnIndexOutOfRange_HasNoGeometry) {
    const LogCapture log;
    const SbName name("Y");
    const Held<SoIndexedFaceSet> faceSet(
        ShapeGenerator().createFaceSet({SbVec3f(0, 0, 0)}, {0, 0, 1, -1}, &name));
    EXPECT_EQ(propertyOf(faceSet.get())->vertex.getNum(), 0);
    EXPECT_EQ(faceSet->coordIndex.getNum(), 0);
    EXPECT_EQ(log.contains(QStringLiteral("Index out of range: Y")), true);
    EXPECT_EQ(boxOf(faceSet.get()).isEmpty(), true);
}

TEST(ShapeGenerator, FaceSetOfNothing_IsEmptyAndUnnamed) {
    const Held<SoIndexedFaceSet> faceSet(ShapeGenerator().createFaceSet({}, {}, nullptr));
    EXPECT_EQ(faceSet->coordIndex.getNum(), 0);
    EXPECT_EQ(faceSet->getName().getLength(), 0);
}

TEST(ShapeGenerator, CoordinateFrame_HasBallThreeArrowsAndLabel) {
    const SbName name("UCS12_3");
    const Held<SoSeparator> frame(ShapeGenerator().createCoordinateFrame(&name));
    EXPECT_EQ(frame->getName(), name);
    ASSERT_EQ(frame->getNumChildren(), 5);
    ASSERT_NE(childOf<SoSphere>(frame->getChild(0), 1), nullptr);
    EXPECT_EQ(childOf<SoSphere>(frame->getChild(0), 1)->radius.getValue(), 10);
    EXPECT_EQ(childOf<SoMaterial>(frame->getChild(0), 0)->diffuseColor[0], SbColor(1, 0, 0));
    auto* label = frame->getChild(4);
    EXPECT_EQ(childOf<SoTranslation>(label, 0)->translation.getValue(), SbVec3f(0, 0, 100));
    EXPECT_EQ(childOf<SoFont>(label, 1)->name.getValue(), SbName("Microsoft YaHei"));
    EXPECT_EQ(childOf<SoFont>(label, 1)->size.getValue(), 20);
    EXPECT_EQ(childOf<SoText2>(label, 2)->string[0], SbString("UCS12"));
}

TEST(ShapeGenerator, CoordinateFrameArrows_ReachAlongTheirAxes) {
    const SbName name("UCS0");
    const Held<SoSeparator> frame(ShapeGenerator().createCoordinateFrame(&name));
    for (int axis = 0; axis < 3; ++axis) {
        auto* arrow = frame->getChild(1 + axis);
        SbColor color(0, 0, 0);
        color[axis] = 1;
        EXPECT_EQ(childOf<SoMaterial>(arrow, 0)->diffuseColor[0], color);
        const SbVec3f tip = boxOf(arrow).getMax();
        const SbVec3f tail = boxOf(arrow).getMin();
        // Shaft 0 to 80, cone of height 30 about 95; the angle is 0.0008 rad short of a quarter turn.
        EXPECT_NEAR(tip[axis], 110, 0.1) << "axis " << axis;
        EXPECT_NEAR(tail[axis], 0, 0.1);
        EXPECT_NEAR(tip[(axis + 1) % 3], 15, 0.2);
        EXPECT_NEAR(tail[(axis + 2) % 3], -15, 0.2);
    }
}

TEST(ShapeGenerator, CoordinateFrameOfANameWithoutDigits_IsLabelledZero) {
    const SbName name("System");
    const Held<SoSeparator> frame(ShapeGenerator().createCoordinateFrame(&name));
    EXPECT_EQ(childOf<SoText2>(frame->getChild(4), 2)->string[0], SbString("UCS0"));
}

TEST(ShapeGenerator, RoundedRectangle_ReachesItsSizes) {
    const SbName name("Plate");
    const Held<SoIndexedFaceSet> plate(
        ShapeGenerator().createRoundedRectangle({100, 60, 12, 8}, SbVec3f(0, -1, 0), 25, &name));
    const SbBox3f box = boxOf(plate.get());
    EXPECT_LT((box.getMin() - SbVec3f(-50, -25, -30)).length(), 1e-3F);
    EXPECT_LT((box.getMax() - SbVec3f(50, 0, 30)).length(), 1e-3F);
}

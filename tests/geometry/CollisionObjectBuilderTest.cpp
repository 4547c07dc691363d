#include <Inventor/SbMatrix.h>
#include <Inventor/SbRotation.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "GeometryTestSupport.h"
#include "geometry/CollisionHolder.h"
#include "geometry/ShapeGenerator.h"
#include "geometry/collisionDetector.h"

namespace {

using Object = std::unique_ptr<fcl::CollisionObject<float>>;

CollisionTransform at(float x, float y, float z) {
    CollisionTransform transform = CollisionTransform::Identity();
    transform.translation() = Eigen::Vector3f(x, y, z);
    return transform;
}

Object build(const MeshArrays& mesh, SbName* name,
             const CollisionTransform& transform = CollisionTransform::Identity()) {
    return Object(
        CollisionObjectBuilder().createCollisionObject(mesh.vertices, mesh.indices, name, transform));
}

}  // namespace

TEST(CollisionObjectBuilder, ObjectOfABox_HasItsBoxAndItsUserData) {
    SbName name("Y");
    const Object object = build(boxMesh(SbVec3f(1, 2, 3)), &name, at(10, 0, 0));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->getUserData(), &name);
    EXPECT_NEAR(object->getAABB().center().x(), 10, 1e-4);
    EXPECT_NEAR(object->getAABB().min_.x(), 9, 1e-4);
    EXPECT_NEAR(object->getAABB().max_.z(), 3, 1e-4);
}

TEST(CollisionObjectBuilder, Box_IsNotRefreshedWhenTheObjectMoves) {
    SbName name("Y");
    const Object object = build(boxMesh(SbVec3f(1, 2, 3)), &name);
    const Eigen::Vector3f before = object->getAABB().max_;
    object->setTransform(at(1000, 0, 0));
    EXPECT_EQ(object->getAABB().max_, before);
    EXPECT_EQ(object->getTransform().translation().x(), 1000);
}

TEST(CollisionObjectBuilder, Model_CarriesTheNameAsUserData) {
    SbName name("Y");
    const std::vector<Eigen::Vector3f> vertices{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const auto model = CollisionObjectBuilder().createCollisionModel(vertices, {{0, 1, 2}}, &name);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(CollisionEngine::userData(*model), &name);
    EXPECT_EQ(CollisionEngine::triangleCount(*model), 1);
}

TEST(CollisionObjectBuilder, EmptyVertexOrIndexArray_GivesNoObjectAndOneLine) {
    SbName name("Y");
    const GeometryInstallation installation;
    const MeshArrays box = boxMesh(SbVec3f(1, 1, 1));
    for (const MeshArrays& mesh : {MeshArrays{{}, box.indices}, MeshArrays{box.vertices, {}},
                                   MeshArrays{box.vertices, {0, 1}}, MeshArrays{}}) {
        const LogCapture log;
        EXPECT_EQ(build(mesh, &name), nullptr);
        ASSERT_EQ(log.lines().size(), 1U) << log.all().toStdString();
        EXPECT_EQ(log.lines()[0].text, QStringLiteral("Vertices or Traiangles is empty."));
    }
}

TEST(CollisionObjectBuilder, FaceSetWithoutVertexProperty_GivesNoObjectAndOneLine) {
    SbName name("Y");
    const GeometryInstallation installation;
    const Held<SoIndexedFaceSet> faceSet(new SoIndexedFaceSet);
    const LogCapture log;
    EXPECT_EQ(
        CollisionObjectBuilder().createCollisionObject(faceSet.get(), &name, CollisionTransform::Identity()),
        nullptr);
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0].text, QStringLiteral("Collision objects Y No vertices"));
}

TEST(CollisionObjectBuilder, FaceSetWithoutVertices_GivesNoObjectAndOneLine) {
    SbName name("Y");
    const GeometryInstallation installation;
    const Held<SoIndexedFaceSet> faceSet(ShapeGenerator().createFaceSet({}, {}, nullptr));
    const LogCapture log;
    EXPECT_EQ(
        CollisionObjectBuilder().createCollisionObject(faceSet.get(), &name, CollisionTransform::Identity()),
        nullptr);
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0].text, QStringLiteral("Collision objects Y No vertices"));
}

TEST(CollisionObjectBuilder, FaceSetOfABox_GivesAnObject) {
    SbName name("Y");
    const MeshArrays box = boxMesh(SbVec3f(1, 1, 1));
    const Held<SoIndexedFaceSet> faceSet(ShapeGenerator().createFaceSet(box.vertices, box.indices, nullptr));
    const Object object(CollisionObjectBuilder().createCollisionObject(faceSet.get(), &name, at(0, 0, 5)));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->getTransform().translation().z(), 5);
}

TEST(CollisionObjectBuilder, Indices_AreReadWithStrideFourWhateverTheyHold) {
    SbName name("Y");
    const GeometryInstallation installation;
    // Twice the same triangle; in face-set form the second would be (2, 0, 1), and its end is missing.
    const QVector<SbVec3f> vertices{SbVec3f(0, 0, 0), SbVec3f(1, 0, 0), SbVec3f(0, 1, 0)};
    EXPECT_NE(build({vertices, {0, 1, 2, 0, 1, 2, 0, 1}}, &name), nullptr);
    const LogCapture log;
    // A separator where the stride expects a vertex.
    EXPECT_EQ(build({vertices, {0, 1, -1, 2}}, &name), nullptr);
    EXPECT_EQ(log.lines().size(), 1U) << log.all().toStdString();
}

TEST(CollisionObjectBuilder, MeshThatCannotBeBuilt_GivesNoObjectAndALine) {
    SbName name("Y");
    const GeometryInstallation installation;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const QVector<SbVec3f> good{SbVec3f(0, 0, 0), SbVec3f(1, 0, 0), SbVec3f(0, 1, 0)};
    QVector<MeshArrays> bad{{good, {0, 1, 3, -1}}, {good, {0, 1, 2147483647, -1}}, {good, {-5, 1, 2, -1}}};
    for (const float value : {nan, infinity, 1e30F, -1e8F})
        bad.append({{SbVec3f(0, 0, value), SbVec3f(1, 0, 0), SbVec3f(0, 1, 0)}, {0, 1, 2, -1}});
    for (const MeshArrays& mesh : bad) {
        const LogCapture log;
        EXPECT_EQ(build(mesh, &name), nullptr);
        ASSERT_EQ(log.lines().size(), 1U) << log.all().toStdString();
        EXPECT_EQ(log.lines()[0].text, QStringLiteral("Y Not built"));
    }
}

TEST(CollisionObjectBuilder, EmptyModel_LogsAndIsBuiltWhenTheLibraryTakesIt) {
    SbName name("Y");
    const GeometryInstallation installation;
    const LogCapture log;
    EXPECT_EQ(CollisionObjectBuilder().createCollisionModel({}, {}, &name), nullptr);
    ASSERT_EQ(log.lines().size(), 2U);
    EXPECT_EQ(log.lines()[0].text, QStringLiteral("Collision objects Y No vertices"));
    EXPECT_EQ(log.lines()[1].text, QStringLiteral("Y Not built"));
}

TEST(CollisionHolder, NameChain_ReplacesTheNameAsUserData) {
    SbName name("Y");
    CollisionHolder holder;
    holder.setNameChain({QStringLiteral("A")});
    EXPECT_EQ(holder.get(), nullptr);
    const MeshArrays box = boxMesh(SbVec3f(1, 1, 1));
    holder.take(CollisionObjectBuilder().createCollisionObject(box.vertices, box.indices, &name,
                                                               CollisionTransform::Identity()));
    ASSERT_NE(holder.get(), nullptr);
    EXPECT_EQ(holder.get()->getUserData(), &name);
    const QStringList chain{QStringLiteral("Base"), QStringLiteral("Y")};
    holder.setNameChain(chain);
    EXPECT_EQ(*static_cast<QStringList*>(holder.get()->getUserData()), chain);
    const void* first = holder.get()->getUserData();
    holder.setNameChain(chain);
    EXPECT_NE(holder.get()->getUserData(), first);
    holder.take(nullptr);
    EXPECT_EQ(holder.get(), nullptr);
}

TEST(CollisionEngine, SceneMatrix_IsTransposed) {
    SbMatrix matrix = SbMatrix::identity();
    matrix.setTranslate(SbVec3f(1, 2, 3));
    SbMatrix turn;
    turn.setRotate(SbRotation(SbVec3f(0, 0, 1), 0.5F));
    matrix.multRight(turn);
    SbVec3f expected;
    matrix.multVecMatrix(SbVec3f(4, 5, 6), expected);
    const Eigen::Vector3f point = toCollisionTransform(matrix) * Eigen::Vector3f(4, 5, 6);
    EXPECT_NEAR(point.x(), expected[0], 1e-5);
    EXPECT_NEAR(point.y(), expected[1], 1e-5);
    EXPECT_NEAR(point.z(), expected[2], 1e-5);
}

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <random>

#include "GeometryTestSupport.h"
#include "geometry/collisionDetector.h"

namespace {

using Object = std::unique_ptr<fcl::CollisionObject<float>>;

Object box(const SbVec3f& halfSize, const CollisionTransform& transform) {
    static SbName name("box");
    const MeshArrays mesh = boxMesh(halfSize);
    return Object(
        CollisionObjectBuilder().createCollisionObject(mesh.vertices, mesh.indices, &name, transform));
}

CollisionTransform pose(const Eigen::Vector3f& place,
                        const Eigen::Quaternionf& turn = Eigen::Quaternionf::Identity()) {
    CollisionTransform transform = CollisionTransform::Identity();
    transform.linear() = turn.toRotationMatrix();
    transform.translation() = place;
    return transform;
}

bool boxesTouch(const SbVec3f& halfSize, const CollisionTransform& a, const CollisionTransform& b) {
    return collisionDetector::collide(box(halfSize, a).get(), box(halfSize, b).get());
}

/// Largest gap between two boxes over the fifteen axes of the separating axis theorem; negative when they
/// overlap.
float gap(const Eigen::Vector3f& half, const CollisionTransform& a, const CollisionTransform& b) {
    const Eigen::Matrix3f turnA = a.linear();
    const Eigen::Matrix3f turnB = b.linear();
    const Eigen::Vector3f way = b.translation() - a.translation();
    std::vector<Eigen::Vector3f> axes;
    for (int i = 0; i < 3; ++i) {
        axes.push_back(turnA.col(i));
        axes.push_back(turnB.col(i));
        for (int k = 0; k < 3; ++k) {
            const Eigen::Vector3f cross = turnA.col(i).cross(turnB.col(k));
            if (cross.norm() > 1e-3F)
                axes.push_back(cross.normalized());
        }
    }
    float largest = -std::numeric_limits<float>::max();
    for (const Eigen::Vector3f& axis : axes) {
        const float reach =
            (turnA.transpose() * axis).cwiseAbs().dot(half) + (turnB.transpose() * axis).cwiseAbs().dot(half);
        largest = std::max(largest, std::abs(way.dot(axis)) - reach);
    }
    return largest;
}

}  // namespace

TEST(CollisionTruth, BoxesFaceToFace_CollideOnlyWhenTheyOverlap) {
    const SbVec3f half(1, 1, 1);
    const CollisionTransform fixed = pose({0, 0, 0});
    for (int axis = 0; axis < 3; ++axis) {
        Eigen::Vector3f place = Eigen::Vector3f(0.1F, 0.2F, 0.3F);
        place[axis] = 2.001F;
        EXPECT_EQ(boxesTouch(half, fixed, pose(place)), false) << "axis " << axis;
        place[axis] = 1.999F;
        EXPECT_EQ(boxesTouch(half, fixed, pose(place)), true) << "axis " << axis;
        place[axis] = -2.001F;
        EXPECT_EQ(boxesTouch(half, fixed, pose(place)), false) << "axis " << axis;
    }
}

TEST(CollisionTruth, EdgeAgainstFace_CollidesAtHalfTheDiagonal) {
    const SbVec3f half(1, 1, 1);
    const Eigen::Quaternionf eighth(Eigen::AngleAxisf(0.785398163F, Eigen::Vector3f::UnitZ()));
    const float contact = 1 + std::sqrt(2.0F);
    EXPECT_EQ(boxesTouch(half, pose({0, 0, 0}), pose({contact + 1e-3F, 0, 0}, eighth)), false);
    EXPECT_EQ(boxesTouch(half, pose({0, 0, 0}), pose({contact - 1e-3F, 0, 0}, eighth)), true);
}

// Meshes are surfaces: what is wholly inside touches nothing.
TEST(CollisionTruth, SmallBoxInsideALargeOne_DoesNotCollide) {
    const Object large = box(SbVec3f(10, 10, 10), pose({0, 0, 0}));
    const Object small = box(SbVec3f(1, 1, 1), pose({0, 0, 0}));
    EXPECT_EQ(collisionDetector::collide(large.get(), small.get()), false);
    small->setTransform(pose({9.5F, 0, 0}));
    EXPECT_EQ(collisionDetector::collide(large.get(), small.get()), true);
}

TEST(CollisionTruth, MovedObject_IsTestedWhereItStandsNow) {
    const Object one = box(SbVec3f(1, 1, 1), pose({0, 0, 0}));
    const Object other = box(SbVec3f(1, 1, 1), pose({100, 0, 0}));
    EXPECT_EQ(collisionDetector::collide(one.get(), other.get()), false);
    other->setTransform(pose({1.5F, 0, 0}));
    EXPECT_EQ(collisionDetector::collide(one.get(), other.get()), true);
    EXPECT_EQ(collisionDetector::collide(other.get(), one.get()), true);
}

TEST(CollisionTruth, RandomBoxes_AgreeWithTheSeparatingAxes) {
    std::mt19937 random(11);  // NOLINT(cert-msc51-cpp): the same poses each time
    std::uniform_real_distribution<float> place(-4, 4);
    std::normal_distribution<float> turn(0, 1);
    const Eigen::Vector3f half(1, 1.5F, 2);
    int touching = 0;
    for (int round = 0; round < 1000; ++round) {
        const CollisionTransform a = pose({0, 0, 0});
        const Eigen::Quaternionf attitude =
            Eigen::Quaternionf(turn(random), turn(random), turn(random), turn(random)).normalized();
        const CollisionTransform b = pose({place(random), place(random), place(random)}, attitude);
        const float distance = gap(half, a, b);
        if (std::abs(distance) < 1e-3F)
            continue;
        ASSERT_EQ(boxesTouch(SbVec3f(half.x(), half.y(), half.z()), a, b), distance < 0)
            << "round " << round << ", gap " << distance;
        touching += distance < 0 ? 1 : 0;
    }
    EXPECT_GT(touching, 200);
    EXPECT_LT(touching, 900);
}

TEST(CollisionTruth, MissingObject_TouchesNothing) {
    const Object one = box(SbVec3f(1, 1, 1), pose({0, 0, 0}));
    EXPECT_EQ(collisionDetector::collide(one.get(), nullptr), false);
    EXPECT_EQ(collisionDetector::collide(nullptr, one.get()), false);
    EXPECT_EQ(collisionDetector::collide(nullptr, nullptr), false);
}

TEST(CollisionTruth, PoseThatIsNoNumber_TouchesNothing) {
    const Object one = box(SbVec3f(1, 1, 1), pose({0, 0, 0}));
    const Object other = box(SbVec3f(1, 1, 1), pose({0.5F, 0, 0}));
    EXPECT_EQ(collisionDetector::collide(one.get(), other.get()), true);
    other->setTransform(pose({std::numeric_limits<float>::quiet_NaN(), 0, 0}));
    EXPECT_EQ(collisionDetector::collide(one.get(), other.get()), false);
}

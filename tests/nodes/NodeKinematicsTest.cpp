#include "machine/calc/NodeKinematics.h"

#include <gtest/gtest.h>

#include <random>

#include "nodes/NodesTestSupport.h"

namespace {
constexpr double kSingle = 1e-5;
}

TEST(NodeKinematics, MotionTypeFromText_KnowsThreeTexts) {
    EXPECT_EQ(motionTypeFromText(QStringLiteral("LINEAR")), MotionType::Linear);
    EXPECT_EQ(motionTypeFromText(QStringLiteral(" ROTATION\n")), MotionType::Rotation);
    EXPECT_EQ(motionTypeFromText(QStringLiteral("FIXED")), MotionType::Fixed);
    EXPECT_EQ(motionTypeFromText(QStringLiteral("linear")), MotionType::Other);
    EXPECT_EQ(motionTypeFromText(QString()), MotionType::Other);
    EXPECT_EQ(static_cast<int>(MotionType::Other), 3);
}

TEST(NodeKinematics, LinearMotion_IsDirectionTimesValue) {
    const auto motion = motionMatrix(MotionType::Linear, SbVec3f(0, -2, 0), SbVec3f(1, 2, 3), 12.5F);
    ASSERT_TRUE(motion);
    EXPECT_LT(deviation(*motion, shifted(0, -25, 0)), kSingle);
}

TEST(NodeKinematics, RotaryMotion_TurnsThenShiftsByTheOffset) {
    // By hand: 90 degrees about Z takes (1, 0, 0) to (0, 1, 0), the offset comes behind.
    const auto motion = motionMatrix(MotionType::Rotation, SbVec3f(0, 0, 1), SbVec3f(10, 20, 30), 90.0F);
    ASSERT_TRUE(motion);
    SbVec3f place;
    motion->multVecMatrix(SbVec3f(1, 0, 0), place);
    EXPECT_NEAR(place[0], 10, kSingle);
    EXPECT_NEAR(place[1], 21, kSingle);
    EXPECT_NEAR(place[2], 30, kSingle);
}

TEST(NodeKinematics, RotaryMotion_AgreesWithDoublePrecision) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> part(-1, 1);
    std::uniform_real_distribution<float> angle(-720, 720);
    for (int round = 0; round < 500; ++round) {
        const SbVec3f direction(part(random), part(random), part(random) + 1.5F);
        const SbVec3f offset(part(random) * 500, part(random) * 500, part(random) * 500);
        const float value = angle(random);
        const auto motion = motionMatrix(MotionType::Rotation, direction, offset, value);
        ASSERT_TRUE(motion);
        const Eigen::Affine3d expected =
            shifted(double{offset[0]}, double{offset[1]}, double{offset[2]}) *
            turned(Eigen::Vector3d(double{direction[0]}, double{direction[1]}, double{direction[2]}),
                   double{value});
        EXPECT_LT(deviation(*motion, expected), 1e-4) << "angle " << value << " seed 7 round " << round;
    }
}

TEST(NodeKinematics, OtherKinds_DoNotMove) {
    EXPECT_FALSE(motionMatrix(MotionType::Fixed, SbVec3f(0, 0, 1), SbVec3f(1, 2, 3), 5));
    EXPECT_FALSE(motionMatrix(MotionType::Other, SbVec3f(0, 0, 1), SbVec3f(1, 2, 3), 5));
    EXPECT_EQ(motionValue(MotionType::Fixed, SbVec3f(0, 0, 1), translationMatrix(SbVec3f(0, 0, 5))), 0.0);
}

TEST(NodeKinematics, ZeroDirection_StandsStill) {
    const auto linear = motionMatrix(MotionType::Linear, SbVec3f(0, 0, 0), SbVec3f(1, 2, 3), 50);
    ASSERT_TRUE(linear);
    EXPECT_LT(deviation(*linear, shifted(0, 0, 0)), kSingle);
    const auto rotary = motionMatrix(MotionType::Rotation, SbVec3f(0, 0, 0), SbVec3f(1, 2, 3), 50);
    ASSERT_TRUE(rotary);
    EXPECT_LT(deviation(*rotary, shifted(1, 2, 3)), kSingle);
}

TEST(NodeKinematics, MotionValue_OfALinearMatrixIsTheDotProduct) {
    const SbVec3f direction(0, 0.6F, 0.8F);
    const auto motion = motionMatrix(MotionType::Linear, direction, SbVec3f(9, 9, 9), -40);
    EXPECT_NEAR(motionValue(MotionType::Linear, direction, *motion), -40.0, 1e-4);
    const SbVec3f twice(0, 0, 2);
    EXPECT_NEAR(motionValue(MotionType::Linear, twice, *motionMatrix(MotionType::Linear, twice, {}, 10)),
                40.0, 1e-4)
        << "a direction of length 2 counts twice on the way there and back";
}

TEST(NodeKinematics, MotionValue_OfANegativeAngleReadsPositive) {
    const SbVec3f direction(0, 0, 1);
    const auto value = [&direction](float angle_deg) {
        return motionValue(MotionType::Rotation, direction,
                           *motionMatrix(MotionType::Rotation, direction, SbVec3f(0, 0, 0), angle_deg));
    };
    EXPECT_NEAR(value(30), 30.0, 1e-3);
    EXPECT_NEAR(value(-30), 30.0, 1e-3);
    EXPECT_NEAR(value(0), 0.0, 1e-3);
}

TEST(NodeKinematics, MotionValue_OfASingularMatrix_ComesBackWithZero) {
    const SbMatrix zeros(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    EXPECT_EQ(motionValue(MotionType::Linear, SbVec3f(0, 0, 1), zeros), 0.0);
}

TEST(NodeKinematics, SpindleMatrix_MountsThenOffsetsThenTurns) {
    SbMatrix mount;
    mount.setTranslate(SbVec3f(0, 0, -5));
    const SbMatrix matrix = spindleMatrix(mount, SbVec3f(10, 0, 0), SbVec3f(0, 0, 1), 90);
    EXPECT_LT(deviation(matrix, turned({0, 0, 1}, 90) * shifted(10, 0, 0) * shifted(0, 0, -5)), kSingle);
}

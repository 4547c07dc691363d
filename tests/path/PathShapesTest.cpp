#include "nc/calc/PathShapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

const SbColor kGreen(0, 1, 0);
const SbColor kYellow(1, 1, 0);
const SbColor kRed(1, 0, 0);

HoleShape hole(int type) {
    HoleShape shape;
    shape.drillType = type;
    shape.diameter = 10;
    shape.depth = 30;
    shape.sinkDiameter = 24;
    shape.sinkDepth = 6;
    shape.safetyLength = 50;
    return shape;
}

void expectPart(const HolePart& part, const char* name, const SbColor& color, float radius, float height,
                float centreY) {
    EXPECT_EQ(std::string(part.name), name);
    EXPECT_EQ(part.color, color) << name;
    EXPECT_FLOAT_EQ(part.radius, radius) << name;
    EXPECT_FLOAT_EQ(part.height, height) << name;
    EXPECT_FLOAT_EQ(part.centreY, centreY) << name;
}

}  // namespace

TEST(HoleParts, SimpleHole_SafetyAndHole) {
    for (const int type : {0, 1}) {
        const std::vector<HolePart> parts = holeParts(hole(type));
        ASSERT_EQ(parts.size(), 2U) << type;
        expectPart(parts[0], "saftySep", kGreen, 5, 50, 25);
        expectPart(parts[1], "drillSep", kRed, 5, 30, -15);
    }
}

TEST(HoleParts, CountersunkHole_SafetyHeadAndHoleBelowIt) {
    const std::vector<HolePart> parts = holeParts(hole(2));
    ASSERT_EQ(parts.size(), 3U);
    expectPart(parts[0], "saftySep", kGreen, 12, 50, 25);
    expectPart(parts[1], "sinkingSep", kYellow, 12, 6, -3);
    expectPart(parts[2], "drillSep", kRed, 5, 30, -21);
}

TEST(HoleParts, UnknownTypes_HaveNoBody) {
    for (const int type : {-1, 3, 1000})
        EXPECT_TRUE(holeParts(hole(type)).empty()) << type;
}

TEST(HoleParts, NegativeLengths_StandOnTheOtherSide) {
    HoleShape shape = hole(0);
    shape.depth = -30;
    shape.safetyLength = -50;
    const std::vector<HolePart> parts = holeParts(shape);
    ASSERT_EQ(parts.size(), 2U);
    expectPart(parts[0], "saftySep", kGreen, 5, 50, -25);
    expectPart(parts[1], "drillSep", kRed, 5, 30, 15);
}

TEST(HoleParts, PartsWithoutSize_AreLeftOut) {
    HoleShape shape = hole(2);
    shape.safetyLength = 0;
    shape.sinkDepth = std::nan("");
    EXPECT_TRUE(holeParts(shape).empty()) << "without the depth of its head the hole has no place";
    shape.sinkDepth = 0;
    ASSERT_EQ(holeParts(shape).size(), 1U);
    expectPart(holeParts(shape)[0], "drillSep", kRed, 5, 30, -15);
    shape.diameter = HUGE_VAL;
    EXPECT_TRUE(holeParts(shape).empty());
    shape.diameter = 0;
    EXPECT_TRUE(holeParts(shape).empty());
}

TEST(HoleParts, HugeSizes_StayWithinReach) {
    HoleShape shape = hole(2);
    shape.diameter = shape.depth = shape.sinkDiameter = shape.sinkDepth = shape.safetyLength = 1e300;
    const std::vector<HolePart> parts = holeParts(shape);
    ASSERT_EQ(parts.size(), 3U);
    for (const HolePart& part : parts) {
        EXPECT_LE(part.radius, kSceneReach_mm) << part.name;
        EXPECT_LE(part.height, kSceneReach_mm) << part.name;
        EXPECT_LE(std::abs(part.centreY), kSceneReach_mm) << part.name;
    }
}

TEST(HoleParts, PlacementThatIsNone_LeavesNoBody) {
    for (const float bad : {std::nanf(""), HUGE_VALF, -1e30F}) {
        HoleShape shape = hole(0);
        shape.placement[3][1] = bad;
        EXPECT_TRUE(holeParts(shape).empty()) << bad;
    }
}

TEST(PlateOf, TakesTheSizes) {
    RectangleShape shape;
    shape.length = 30;
    shape.width = -10;
    shape.depth = 25;
    shape.cornerRadius = 4;
    RectanglePlate plate;
    ASSERT_TRUE(plateOf(shape, plate));
    EXPECT_FLOAT_EQ(plate.outline.length, 30);
    EXPECT_FLOAT_EQ(plate.outline.width, 10);
    EXPECT_FLOAT_EQ(plate.outline.cornerRadius, 4);
    EXPECT_FLOAT_EQ(plate.depth, 25);
}

TEST(PlateOf, SizesThatAreNone_AreRefused) {
    const RectangleShape good{30, 10, 25, 4, SbMatrix::identity()};
    RectanglePlate plate;
    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        for (double RectangleShape::*member : {&RectangleShape::length, &RectangleShape::width,
                                               &RectangleShape::depth, &RectangleShape::cornerRadius}) {
            RectangleShape shape = good;
            shape.*member = bad;
            EXPECT_FALSE(plateOf(shape, plate)) << bad;
        }
        RectangleShape shape = good;
        shape.placement[0][2] = static_cast<float>(bad);
        EXPECT_FALSE(plateOf(shape, plate)) << bad;
    }
    for (double RectangleShape::*member :
         {&RectangleShape::length, &RectangleShape::width, &RectangleShape::depth}) {
        RectangleShape shape = good;
        shape.*member = 0;
        EXPECT_FALSE(plateOf(shape, plate));
    }
    EXPECT_FLOAT_EQ(plate.depth, 0) << "untouched";
}

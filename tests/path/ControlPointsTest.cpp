#include "nc/calc/ControlPoints.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

const ControlPoints kFour{{0, 0, 0, 1, 2}, {10, 0, 0, 1, 2}, {20, 0, 5, 1, 2}, {30, 0, 0, 1, 2}};

}  // namespace

TEST(ControlPoints, PlacesAreTheFirstThreeValues) {
    const std::vector<SbVec3f> places = controlPointPlaces(kFour);
    ASSERT_EQ(places.size(), 4U);
    EXPECT_EQ(places[2], SbVec3f(20, 0, 5));
}

TEST(ControlPoints, RowsThatAreNoPointsAreLeftOut) {
    const ControlPoints points{{1, 2}, {}, {3, 4, 5}, {std::nan(""), 0, 0}, {0, HUGE_VAL, 0}, {0, 0, -1e30}};
    const std::vector<SbVec3f> places = controlPointPlaces(points);
    ASSERT_EQ(places.size(), 1U);
    EXPECT_EQ(places[0], SbVec3f(3, 4, 5));
    EXPECT_EQ(nearestControlPoint(points, SbVec3f(0, 0, 0)), 2) << "rows keep their index";
}

TEST(ControlPoints, NearestIsTheSmallestDistance) {
    EXPECT_EQ(nearestControlPoint(kFour, SbVec3f(11, 1, 1)), 1);
    EXPECT_EQ(nearestControlPoint(kFour, SbVec3f(21, 1, 9)), 2);
    EXPECT_EQ(nearestControlPoint(kFour, SbVec3f(-1000, 0, 0)), 0);
    EXPECT_EQ(nearestControlPoint(kFour, SbVec3f(1000, 0, 0)), 3);
}

TEST(ControlPoints, FirstOfEqualsWins) {
    EXPECT_EQ(nearestControlPoint(kFour, SbVec3f(5, 0, 0)), 0);
    EXPECT_EQ(nearestControlPoint({{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}, SbVec3f(1, 0, 0)), 0);
}

TEST(ControlPoints, NothingNearAtAll_GivesNone) {
    EXPECT_EQ(nearestControlPoint({}, SbVec3f(0, 0, 0)), -1);
    EXPECT_EQ(nearestControlPoint(kFour, SbVec3f(std::numeric_limits<float>::max(), 0, 0)), -1)
        << "the distance is no number below the start value";
    EXPECT_EQ(nearestControlPoint(kFour, SbVec3f(std::nanf(""), 0, 0)), -1);
}

TEST(ControlPoints, EndsStay) {
    EXPECT_FALSE(isMovableControlPoint(0, 4));
    EXPECT_TRUE(isMovableControlPoint(1, 4));
    EXPECT_TRUE(isMovableControlPoint(2, 4));
    EXPECT_FALSE(isMovableControlPoint(3, 4));
    EXPECT_FALSE(isMovableControlPoint(4, 4));
    EXPECT_FALSE(isMovableControlPoint(-1, 4));
    for (int count = 0; count <= 2; ++count) {
        for (int index = -1; index <= 2; ++index)
            EXPECT_FALSE(isMovableControlPoint(index, count)) << index << " of " << count;
    }
}

TEST(ControlPoints, PlaceOfAnUnknownIndex_KeepsTheValue) {
    SbVec3f place(7, 7, 7);
    EXPECT_FALSE(controlPointPlace(kFour, -1, place));
    EXPECT_FALSE(controlPointPlace(kFour, 4, place));
    EXPECT_EQ(place, SbVec3f(7, 7, 7));
    EXPECT_TRUE(controlPointPlace(kFour, 3, place));
    EXPECT_EQ(place, SbVec3f(30, 0, 0));
}

#include "setup/calc/PlacementSearch.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

/// Touches from `wall` on along X.
struct Wall {
    float wall;
    std::vector<float> visited;
    bool operator()(const SbVec3f& place) {
        visited.push_back(place[0]);
        return place[0] >= wall;
    }
};

}  // namespace

TEST(PlacementSearch, StopsOneFineStepShortOfTheContact) {
    Wall wall{12.3F, {}};
    const PlacementResult result = searchPlacement(SbVec3f(0, 0, 0), SbVec3f(1, 0, 0), 100, std::ref(wall));
    EXPECT_TRUE(result.found);
    // 5, 10, 15 touches; back over 14.8 ... 12.4 to 12.2, which is free, and one step more.
    EXPECT_NEAR(result.place[0], 12.0, 1e-4);
    EXPECT_FLOAT_EQ(wall.visited[2], 15.0F);
    EXPECT_FLOAT_EQ(wall.visited.back(), result.place[0]);
}

TEST(PlacementSearch, ContactIsLeftByOneToTwoFineSteps) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> distance(0.5F, 490.0F);
    for (int round = 0; round < 300; ++round) {
        Wall wall{distance(random), {}};
        const PlacementResult result =
            searchPlacement(SbVec3f(0, 0, 0), SbVec3f(1, 0, 0), 100, std::ref(wall));
        EXPECT_TRUE(result.found) << wall.wall;
        const float gap = wall.wall - result.place[0];
        EXPECT_GE(gap, 0.2F - 1e-3F) << wall.wall;
        EXPECT_LE(gap, 0.4F + 1e-3F) << wall.wall;
    }
}

TEST(PlacementSearch, NothingMet_EndsAtTheLastOf99Rounds) {
    Wall wall{1000, {}};
    const PlacementResult result = searchPlacement(SbVec3f(1, 2, 3), SbVec3f(1, 0, 0), 100, std::ref(wall));
    EXPECT_FALSE(result.found);
    EXPECT_EQ(wall.visited.size(), 99U);
    EXPECT_EQ(result.place, SbVec3f(496, 2, 3));
}

TEST(PlacementSearch, ZeroDirection_MovesNothingAndRunsAllRounds) {
    Wall wall{10, {}};
    const PlacementResult result = searchPlacement(SbVec3f(1, 2, 3), SbVec3f(0, 0, 0), 100, std::ref(wall));
    EXPECT_FALSE(result.found);
    EXPECT_EQ(wall.visited.size(), 99U);
    EXPECT_EQ(result.place, SbVec3f(1, 2, 3));
}

TEST(PlacementSearch, StepsLostInRounding_ComeToAnEnd) {
    // At this size a step of 5 still counts and one of 0.2 does not.
    Wall wall{1.00000005e8F, {}};
    const PlacementResult result =
        searchPlacement(SbVec3f(1e8F, 0, 0), SbVec3f(1, 0, 0), 100, std::ref(wall));
    EXPECT_FALSE(result.found);
    EXPECT_LT(wall.visited.size(), 200U);
}

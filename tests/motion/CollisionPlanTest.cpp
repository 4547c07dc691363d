#include "machine/calc/CollisionPlan.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "support/TestSupport.h"

namespace {

/// Groups of sizes, and the pairs that touch ("0.1-2.0": object 1 of group 0 and object 0 of group 2).
struct Bench {
    std::vector<int> sizes;
    std::set<std::string> contacts;
    std::vector<std::string> asked;

    bool run(const CollisionPlan& plan) {
        return runCollisionPass(
            plan, [this](int group) { return sizes[static_cast<std::size_t>(group)]; },
            [this](int g, int i, int h, int j) {
                const std::string pair = std::to_string(g) + '.' + std::to_string(i) + '-' +
                                         std::to_string(h) + '.' + std::to_string(j);
                asked.push_back(pair);
                return contacts.count(pair) > 0;
            });
    }
};

using Pairs = std::vector<std::string>;

}  // namespace

TEST(CollisionPlan, HeadsAreTheKeysThatCarrySpindles) {
    const CollisionPlan plan = makeCollisionPlan({"A", "B", "C", "D"}, {"C", "A", "Q"});
    EXPECT_EQ(plan.heads, (QVector<int>{0, 2}));
    EXPECT_EQ(plan.others, (QVector<int>{1, 3}));
}

TEST(CollisionPass, WithoutASpindleNothingIsTested) {
    Bench bench{{2, 2}, {}, {}};
    EXPECT_FALSE(bench.run({{}, {0, 1}}));
    EXPECT_TRUE(bench.asked.empty());
}

TEST(CollisionPass, OneHeadMeetsEveryOtherObjectAndNothingInsideAGroup) {
    Bench bench{{2, 1, 2}, {}, {}};
    EXPECT_FALSE(bench.run({{0}, {1, 2}}));
    EXPECT_EQ(bench.asked, (Pairs{"0.0-1.0", "0.1-1.0", "0.0-2.0", "0.0-2.1", "0.1-2.0", "0.1-2.1"}));
}

TEST(CollisionPass, AContactEndsTheHeadsTests) {
    Bench bench{{2, 2, 1}, {"0.0-1.1"}, {}};
    EXPECT_TRUE(bench.run({{0}, {1, 2}}));
    EXPECT_EQ(bench.asked, (Pairs{"0.0-1.0", "0.0-1.1"}));
}

TEST(CollisionPass, HeadsBehindAContactAreOnlySampledAgainstTheFirstOtherGroup) {
    Bench bench{{1, 2, 3, 1, 2}, {"0.0-3.0"}, {}};
    EXPECT_TRUE(bench.run({{0, 1, 2}, {3, 4}}));
    EXPECT_EQ(bench.asked, (Pairs{"0.0-3.0", "1.0-3.0", "2.0-3.0"}));
}

TEST(CollisionPass, TheSampleEndsAtItsFirstContact) {
    Bench bench{{1, 1, 3}, {"0.0-2.0", "1.0-2.1"}, {}};
    EXPECT_TRUE(bench.run({{0, 1}, {2}}));
    EXPECT_EQ(bench.asked, (Pairs{"0.0-2.0", "1.0-2.0", "1.0-2.1"}));
}

TEST(CollisionPass, HeadsMeetOnlyWithoutOtherContactsAndOnlyFirstAgainstLast) {
    Bench free{{1, 1, 1, 1}, {"0.0-2.0"}, {}};
    EXPECT_TRUE(free.run({{0, 1, 2}, {3}}));
    EXPECT_EQ(free.asked, (Pairs{"0.0-3.0", "1.0-3.0", "2.0-3.0", "0.0-2.0"}));

    Bench hit{{1, 1, 1}, {"1.0-2.0"}, {}};
    EXPECT_TRUE(hit.run({{0, 1}, {2}}));
    EXPECT_EQ(hit.asked, (Pairs{"0.0-2.0", "1.0-2.0"}));
}

TEST(CollisionPass, TwoHeadsWithoutOtherGroupsMeetEachOther) {
    Bench bench{{2, 2}, {"0.1-1.0"}, {}};
    EXPECT_TRUE(bench.run({{0, 1}, {}}));
    EXPECT_EQ(bench.asked, (Pairs{"0.0-1.0", "0.0-1.1", "0.1-1.0"}));
}

TEST(CollisionPass, EmptyGroupsAreNoTrouble) {
    Bench bench{{0, 0, 1}, {}, {}};
    EXPECT_FALSE(bench.run({{0, 1}, {2}}));
    EXPECT_TRUE(bench.asked.empty());
}

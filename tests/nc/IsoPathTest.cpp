#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "IsoTestProgram.h"
#include "nc/calc/FeedRuns.h"
#include "nc/calc/PathSplit.h"
#include "support/TestSupport.h"

namespace {

constexpr double kRapid = 20000;

/// A path along X with these feeds.
WayPoints pathOf(const std::vector<double>& feeds) {
    WayPoints path;
    for (const double feed : feeds)
        path.push_back(wayPoint({static_cast<double>(path.size()), 0, 0, 0, 0, feed}));
    return path;
}

/// "0@20000 1@500": X and feed of every point.
std::string textOf(const WayPoints& path) {
    std::string text;
    for (const WayPoint& point : path)
        text += (text.empty() ? "" : " ") + std::to_string(std::lround(point[0])) + "@" +
                std::to_string(std::lround(point.back()));
    return text;
}

struct Split {
    std::string head;
    std::string body;
    std::string tail;
};

Split split(const std::vector<double>& feeds) {
    WayPoints path = pathOf(feeds);
    Split result;
    result.head = textOf(splitHead(path, kRapid));
    result.tail = textOf(splitTail(path, kRapid));
    result.body = textOf(path);
    return result;
}

}  // namespace

TEST(PathSplit, RapidFeedRapid_SharesItsSeams) {
    const Split parts = split({kRapid, kRapid, 500, 600, kRapid, kRapid});
    EXPECT_EQ(parts.head, "0@20000 1@20000 2@20000");
    EXPECT_EQ(parts.body, "2@500 3@600");
    EXPECT_EQ(parts.tail, "3@20000 4@20000 5@20000");
}

TEST(PathSplit, OnlyRapidMoves_GiveOnePointEachAndTheWholePath) {
    const Split parts = split({kRapid, kRapid, kRapid});
    EXPECT_EQ(parts.head, "0@20000");
    EXPECT_EQ(parts.body, "0@20000 1@20000 2@20000");
    EXPECT_EQ(parts.tail, "2@20000");
}

TEST(PathSplit, OneRapidAndOneFeedMove_KeepThePathWholeByTheCount) {
    const Split parts = split({kRapid, 500});
    EXPECT_EQ(parts.head, "0@20000");
    EXPECT_EQ(parts.body, "0@20000 1@500");
    EXPECT_EQ(parts.tail, "1@20000");
}

TEST(PathSplit, OneFeedAndOneRapidMove_KeepThePathWholeByTheCount) {
    const Split parts = split({500, kRapid});
    EXPECT_EQ(parts.head, "0@20000");
    EXPECT_EQ(parts.body, "0@500 1@20000");
    EXPECT_EQ(parts.tail, "1@20000");
}

TEST(PathSplit, OnlyFeedMoves_GiveTheirEndsAtRapidFeed) {
    const Split parts = split({500, 600, 700});
    EXPECT_EQ(parts.head, "0@20000");
    EXPECT_EQ(parts.body, "0@500 1@600 2@700");
    EXPECT_EQ(parts.tail, "2@20000");
}

TEST(PathSplit, OnePoint_IsHeadBodyAndTail) {
    const Split parts = split({500});
    EXPECT_EQ(parts.head, "0@20000");
    EXPECT_EQ(parts.body, "0@500");
    EXPECT_EQ(parts.tail, "0@20000");
}

TEST(PathSplit, SeamOfOneFeedMove_EndsTheHeadAndStartsTheTail) {
    const Split parts = split({kRapid, 500, kRapid});
    EXPECT_EQ(parts.head, "0@20000 1@20000");
    EXPECT_EQ(parts.body, "1@500 2@20000");  // what the head left is all collected from behind
    EXPECT_EQ(parts.tail, "2@20000");
}

TEST(PathSplit, FeedWithinATenthOfRapid_IsRapid) {
    const Split parts = split({kRapid, kRapid + 0.09, kRapid - 0.09, kRapid - 0.2, 500});
    EXPECT_EQ(parts.head, "0@20000 1@20000 2@20000 3@20000");
    EXPECT_EQ(parts.body, "3@20000 4@500");
}

TEST(PathSplit, EmptyPath_GivesNothing) {
    const Split parts = split({});
    EXPECT_EQ(parts.head + parts.body + parts.tail, "");
}

TEST(ShorterFifth, NearerAfterATurn_TurnsEveryPointByItsOwnSign) {
    WayPoints path{wayPoint({0, 0, 0, 0, 170, 1}), wayPoint({0, 0, 0, 0, -10, 1}),
                   wayPoint({0, 0, 0, 0, 0, 1})};
    takeShorterFifth(path, -180);
    EXPECT_EQ(path[0][4], -190.0);
    EXPECT_EQ(path[1][4], 350.0);
    EXPECT_EQ(path[2][4], 360.0);
}

TEST(ShorterFifth, NotNearer_StaysAsItIs) {
    for (const auto& [first, previous] :
         {std::pair{170.0, 0.0}, {180.0, 0.0}, {-170.0, -10.0}, {0.0, 180.0}, {0.0, 0.0}}) {
        WayPoints path{wayPoint({0, 0, 0, 0, first, 1})};
        takeShorterFifth(path, previous);
        EXPECT_EQ(path[0][4], first) << previous;
    }
    WayPoints zero{wayPoint({0, 0, 0, 0, 0, 1})};
    takeShorterFifth(zero, 181);
    EXPECT_EQ(zero[0][4], 360.0);
    WayPoints none;
    takeShorterFifth(none, 500);
    EXPECT_EQ(none.size(), 0U);
}

TEST(AllFinite, FindsOneBadEntry) {
    WayPoints path = pathOf({1, 2, 3});
    EXPECT_EQ(allFinite(path), true);
    path[1][4] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(allFinite(path), false);
    path[1][4] = std::numeric_limits<double>::infinity();
    EXPECT_EQ(allFinite(path), false);
}

TEST(FeedRuns, FeedChanges_CutThePathAndShareTheSeam) {
    const std::vector<FeedRun> runs = feedRuns(pathOf({100, 100, 200, 200, 200, 100}));
    ASSERT_EQ(runs.size(), 3U);
    const std::vector<std::array<double, 3>> expected{{0, 2, 100}, {1, 5, 200}, {4, 6, 100}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(static_cast<double>(runs[i].begin), expected[i][0]);
        EXPECT_EQ(static_cast<double>(runs[i].end), expected[i][1]);
        EXPECT_EQ(runs[i].feed_mmPerMin, expected[i][2]);
    }
    EXPECT_EQ(feedRuns({}).size(), 0U);
}

TEST(PlannerPoints, HaveTheEntriesOfTheChainAndNoFeed) {
    const WayPoints path{wayPoint({1, 2, 3, 4, 5, 100}), wayPoint({6, 7, 8, 9, 10, 11, 100})};
    const WayPoints linear = plannerPoints(path, {0, 2, 100}, {1, 2, 3}, 0);
    EXPECT_EQ(entries(linear[0]), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(entries(linear[1]), (std::vector<double>{6, 7, 8}));
    const WayPoints all = plannerPoints(path, {0, 2, 100}, {1, 2, 3, 4, 5, 6}, 77);
    EXPECT_EQ(entries(all[0]), (std::vector<double>{1, 2, 3, 4, 5, 77}));
    EXPECT_EQ(entries(all[1]), (std::vector<double>{6, 7, 8, 9, 10, 11}));
    EXPECT_EQ(plannerPoints(path, {1, 2, 100}, {1}, 0).size(), 1U);
}

TEST(PlannerAxes, OfAChain_StandByRisingId) {
    const auto machine = makeTestMachine({{"A", 5, "500", "1", "50"},
                                          {"Z", 3, "300", "1", "30"},
                                          {"X", 1, "100", "1", "10"},
                                          {"W", 6, "600", "1", "60", "-5"}});
    const PlannerAxes axes = plannerAxes(*machine, "AWZX", nullptr);
    EXPECT_EQ(axes.ids, (std::vector<int>{1, 3, 5, 6}));
    EXPECT_EQ(axes.letters, (QVector<QChar>{'X', 'Z', 'A', 'W'}));
    EXPECT_EQ(axes.accelerations, (std::vector<double>{100, 300, 500, 600}));
    EXPECT_EQ(axes.jerks, (std::vector<double>{10, 30, 50, 60}));
    const AuxiliaryAxis auxiliary{"W", 1, 6.5, 0.5};
    EXPECT_EQ(plannerAxes(*machine, "AWZX", &auxiliary).accelerations,
              (std::vector<double>{100, 300, 500, 6.5}));
    EXPECT_EQ(plannerAxes(*machine, "AWZX", &auxiliary).jerks, (std::vector<double>{10, 30, 50, 0.5}));
    EXPECT_EQ(plannerAxes(*machine, "ZX", &auxiliary).accelerations, (std::vector<double>{100, 300}));
}

TEST(LeastRunTime, IsNeverAboveTheTrueTime) {
    const WayPoints path{wayPoint({0, 0}), wayPoint({300, 400}), wayPoint({0, 0})};
    EXPECT_NEAR(leastRunTime_s(path, 6000, {1e12, 1e12}), 10.0, 1e-6);
    EXPECT_NEAR(leastRunTime_s(path, 1e9, {3, 4}), 2.0 * std::sqrt(200.0), 1e-9);
    EXPECT_EQ(leastRunTime_s({wayPoint({1, 2}), wayPoint({1, 2})}, 0, {1, 1}), 0.0);
    EXPECT_EQ(std::isinf(leastRunTime_s(path, 0, {1, 1})), true);
    EXPECT_EQ(std::isinf(leastRunTime_s(path, -100, {1, 1})), true);
    EXPECT_EQ(std::isinf(leastRunTime_s({wayPoint({1e300}), wayPoint({-1e300})}, 100, {1})), true);
}

TEST(MostCharacters, IsAnUpperBound) {
    for (const double value : {0.0, -1.0, 9.9999, -99999.0, 1e15, -1e300}) {
        const WayPoints path{wayPoint({value, value, value, value, value, value})};
        const int written = QStringLiteral("G1 ").size() +
                            5 * QStringLiteral("X%1 ").arg(value, 0, 'f', 3).size() +
                            QStringLiteral("F%1\n").arg(value, 0, 'f', 0).size();
        EXPECT_GE(mostCharacters(path, 5), written) << value;
        EXPECT_LE(mostCharacters(path, 5), written + 30) << value;
    }
}

#include "nc/calc/IsoPlacement.h"

#include <gtest/gtest.h>

#include <cmath>

#include "IsoTestProgram.h"
#include "support/TestSupport.h"

namespace {

using Entries = std::vector<double>;

struct Placed {
    PlacementOutcome outcome;
    WayPoints points;
    Diagnostics diagnostics;
};

Placed place(const MachineDescription& machine, const SbVec3f& translation, const SbVec3f& offset,
             const WayPoints& points, const QString& chain = "XYZCA") {
    Placed result{PlacementOutcome::Done, points, {}};
    result.outcome = placeByUser(machine, chain, translation, offset, result.points, result.diagnostics);
    return result;
}

void expectPoint(const WayPoint& point, const Entries& expected) {
    ASSERT_EQ(static_cast<std::size_t>(point.size()), expected.size());
    for (int i = 0; i < point.size(); ++i)
        EXPECT_NEAR(point[i], expected[static_cast<std::size_t>(i)], 1e-5) << i;
}

}  // namespace

TEST(PlaceByUser, Translation_IsAddedToEveryPoint) {
    const Placed placed = place(*isoMachine(), {1, 2, 3}, {0, 0, 0},
                                {wayPoint({10, 20, 30, 5, 6, 100}), wayPoint({0, 0, 0, 50, 60, 100})});
    EXPECT_EQ(placed.outcome, PlacementOutcome::Done);
    expectPoint(placed.points[0], {11, 22, 33, 5, 6, 100});
    expectPoint(placed.points[1], {1, 2, 3, 50, 60, 100});
}

TEST(PlaceByUser, OffsetOfAThreeAxisProgram_IsAddedAsItIs) {
    const Placed placed = place(*isoMachine(), {1, 0, 0}, {0, 0, 7}, {wayPoint({0, 0, 0, 0, 0, 100})});
    expectPoint(placed.points[0], {1, 0, 7, 0, 0, 100});
}

TEST(PlaceByUser, OffsetOfAThreePlusTwoProgram_TurnsByAxis4ThenByAxis5) {
    // C 90 about Z takes (1, 0, 0) to (0, 1, 0); A 90 about X takes that to (0, 0, 1).
    const Placed placed =
        place(*isoMachine(), {0, 0, 0}, {1, 0, 0},
              {wayPoint({0, 0, 0, 90, 90, 100}), wayPoint({5, 0, 0, 90.0009, 89.9995, 100})});
    EXPECT_EQ(placed.outcome, PlacementOutcome::Done);
    expectPoint(placed.points[0], {0, 0, 1, 90, 90, 100});
    expectPoint(placed.points[1], {5, 0, 1, 90.0009, 89.9995, 100});
}

TEST(PlaceByUser, OffsetWithChangingRotaryValues_IsIgnoredAndTold) {
    const WayPoints points{wayPoint({0, 0, 0, 0, 0, 100}), wayPoint({0, 0, 0, 0, 0.01, 100})};
    const Placed placed = place(*isoMachine(), {1, 0, 0}, {0, 0, 7}, points);
    EXPECT_EQ(placed.outcome, PlacementOutcome::OffsetIgnored);
    expectPoint(placed.points[0], {1, 0, 0, 0, 0, 100});
    // A tiny offset is not worth a word.
    EXPECT_EQ(place(*isoMachine(), {1, 0, 0}, {0, 0, 0.0009F}, points).outcome, PlacementOutcome::Done);
}

TEST(PlaceByUser, NothingToDo_NeedsNoRotaryAxes) {
    const auto machine = makeTestMachine({{"X", 1}, {"Y", 2}, {"Z", 3}});
    const WayPoints points{wayPoint({1, 2, 3, 0, 0, 100})};
    const Placed placed = place(*machine, {0, 0, 9e-7F}, {9e-7F, 0, 0}, points, "XYZ");
    EXPECT_EQ(placed.outcome, PlacementOutcome::Done);
    EXPECT_EQ(placed.points[0] == points[0], true);
    EXPECT_EQ(place(*machine, {1, 1, 1}, {0, 0, 0}, {}, "XYZ").outcome, PlacementOutcome::Done);
}

TEST(PlaceByUser, WithoutRotaryAxes_IsFatal) {
    const auto machine = makeTestMachine({{"X", 1}, {"Y", 2}, {"Z", 3}, {"C", 4}});
    const Placed placed = place(*machine, {1, 0, 0}, {0, 0, 0}, {wayPoint({0, 0, 0, 0, 0, 1})}, "XYZC");
    EXPECT_EQ(placed.outcome, PlacementOutcome::Failed);
    ASSERT_EQ(placed.diagnostics.entries.size(), 1U);
    EXPECT_EQ(placed.diagnostics.entries[0].severity, Severity::Fatal);
    EXPECT_EQ(placed.diagnostics.entries[0].text, QStringLiteral("axis 4 or 5 is not found"));
}

TEST(PlaceByUser, WithADirectionThatIsNotThreeNumbers_IsFatal) {
    for (const char* direction : {"", "0 0", "0 0 1 0"}) {
        auto machine = isoMachine();
        machine->numericalAxes[4]->direction = QString::fromLatin1(direction);
        const Placed placed = place(*machine, {1, 0, 0}, {0, 0, 0}, {wayPoint({0, 0, 0, 0, 0, 1})});
        EXPECT_EQ(placed.outcome, PlacementOutcome::Failed);
        ASSERT_EQ(placed.diagnostics.entries.size(), 1U);
        EXPECT_EQ(placed.diagnostics.entries[0].severity, Severity::Fatal);
        EXPECT_EQ(placed.diagnostics.entries[0].text, QStringLiteral("axis 4 or 5 direction is not found"));
    }
}

TEST(PlaceByUser, DirectionWithoutLength_TurnsNothing) {
    auto machine = isoMachine();
    machine->numericalAxes[3]->direction = QStringLiteral("0 0 0");
    const Placed placed = place(*machine, {0, 0, 0}, {1, 2, 3}, {wayPoint({0, 0, 0, 90, 0, 1})});
    expectPoint(placed.points[0], {1, 2, 3, 90, 0, 1});
}

TEST(MirrorByUser, MachineWithCAboutZAndAAboutX_IsMirrored) {
    WayPoints points{wayPoint({1, 2, 3, 10, 20, 100}), wayPoint({1, 2, 3, -10, -20, 100})};
    Diagnostics diagnostics;
    EXPECT_EQ(mirrorByUser(*isoMachine(), "XYZCA", 180, points, diagnostics), true);
    EXPECT_EQ(entries(points[0]), (Entries{1, 2, 3, 190, -20, 100}));
    EXPECT_EQ(entries(points[1]), (Entries{1, 2, 3, 170, 20, 100}));
}

TEST(MirrorByUser, AnyOtherMachine_StaysAsItIsWithoutAWord) {
    for (const char* direction : {"0 1 0", "0 0 -1", "0 0 1.0001"}) {
        auto machine = isoMachine();
        machine->numericalAxes[3]->direction = QString::fromLatin1(direction);
        WayPoints points{wayPoint({1, 2, 3, 10, 20, 100})};
        Diagnostics diagnostics;
        EXPECT_EQ(mirrorByUser(*machine, "XYZCA", 180, points, diagnostics), true);
        EXPECT_EQ(entries(points[0]), (Entries{1, 2, 3, 10, 20, 100})) << direction;
        EXPECT_EQ(diagnostics.entries.size(), 0U);
    }
}

TEST(MirrorByUser, AngleZero_NeedsNoRotaryAxes) {
    WayPoints points{wayPoint({1, 2, 3, 10, 20, 100})};
    Diagnostics diagnostics;
    EXPECT_EQ(mirrorByUser(*isoMachine(), "XYZ", 0, points, diagnostics), true);
    EXPECT_EQ(points[0][4], 20.0);
}

TEST(MirrorByUser, WithoutRotaryAxesOrDirections_IsFatal) {
    WayPoints points{wayPoint({1, 2, 3, 10, 20, 100})};
    Diagnostics diagnostics;
    EXPECT_EQ(mirrorByUser(*isoMachine(), "XYZ", 90, points, diagnostics), false);
    auto machine = isoMachine();
    machine->numericalAxes[3]->direction = QStringLiteral("up");
    EXPECT_EQ(mirrorByUser(*machine, "XYZCA", 90, points, diagnostics), false);
    ASSERT_EQ(diagnostics.entries.size(), 2U);
    EXPECT_EQ(diagnostics.entries[0].text, QStringLiteral("axis 4 or 5 is not found"));
    EXPECT_EQ(diagnostics.entries[1].text, QStringLiteral("axis 4 or 5 direction is not found"));
}

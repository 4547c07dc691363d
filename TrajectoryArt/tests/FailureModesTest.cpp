// Twelve ways in which planners of this kind are known to fail, each with what must hold instead.

#include "MotionSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

using namespace support;

namespace {

const double pi = std::acos(-1.0);

Points zigzag(std::size_t count) {
    Points points;
    for (std::size_t i = 0; i < count; ++i)
        points.push_back({static_cast<double>(i) * 6.0, static_cast<double>(i % 2) * 8.0,
                          static_cast<double>(i % 3) * 2.0, 0.3 * static_cast<double>(i), 0.0});
    return points;
}

Points arc(std::size_t count, double radius, double angle) {
    Points points;
    for (std::size_t i = 0; i <= count; ++i) {
        const double phi = angle * static_cast<double>(i) / static_cast<double>(count);
        points.push_back({radius * std::cos(phi), radius * std::sin(phi)});
    }
    return points;
}

double slowestInside(const TA::Trajectory& motion, double from, double to) {
    const double h = 1e-3;
    double slowest = std::numeric_limits<double>::infinity();
    for (int i = 0; from + (i + 1) * h < to; ++i) {
        const double t = from + i * h;
        const auto a = motion.GetPosition(t);
        const auto b = motion.GetPosition(t + h);
        double square = 0.0;
        for (std::size_t k = 0; k < a.size(); ++k)
            square += (b[k] - a[k]) * (b[k] - a[k]);
        slowest = std::min(slowest, std::sqrt(square) / h);
    }
    return slowest;
}

}  // namespace

TEST(FailureModes, AbsoluteTolerances_EveryUnitGivesTheSameMotion) {
    Points points = zigzag(40);
    points.push_back(points.back());
    points.push_back({240.0, 1e-4, 0.0, 9.0, 0.0});
    const reference::Limits limits = equalLimits(5, 90.0, 1000.0, 0.3);
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto inMillimetres = plan(algorithm, points, limits);
        for (const double factor : {1e-9, 1e-3, 0.1, 1.0 / 25.4, 1e3, 1e9}) {
            const auto motion = plan(algorithm, scaled(points, factor), scaled(limits, factor));
            ASSERT_NEAR(motion->GetDuration() / inMillimetres->GetDuration(), 1.0, 1e-9) << factor;
            for (int i = 0; i < 200; ++i) {
                const double t = i * motion->GetDuration() / 200.0;
                const auto expected = inMillimetres->GetPosition(t);
                const auto position = motion->GetPosition(t);
                for (std::size_t k = 0; k < expected.size(); ++k)
                    ASSERT_NEAR(position[k] / factor, expected[k], 1e-6) << factor << " at " << t;
            }
        }
    }
}

TEST(FailureModes, HiddenSpeedCaps_AnySpeedIsReached) {
    for (const double speed : {1e3, 1e6, 1e9, 1e300}) {
        const double acceleration = 1e5;
        const double length = speed < 1e10 ? 2.0 * speed * speed / acceleration : 1e12;
        const double expected =
            speed < 1e10 ? 3.0 * speed / acceleration : 2.0 * std::sqrt(length / acceleration);
        for (const Algorithm algorithm : everyAlgorithm) {
            const auto motion = plan(algorithm, {{0.0}, {length}}, equalLimits(1, speed, acceleration, 0.5));
            EXPECT_NEAR(motion->GetDuration() / expected, 1.0, 1e-9) << speed;
        }
    }
    EXPECT_EQ(faultsOfAll(zigzag(20), equalLimits(5, 1e300, 1000.0, 0.5)), "");
}

TEST(FailureModes, DuplicatePoints_ChangeNothing) {
    const Points single = zigzag(12);
    Points repeated{single.front()};
    for (const auto& point : single)
        for (int i = 0; i < 3; ++i)
            repeated.push_back(point);
    const reference::Limits limits = equalLimits(5, 90.0, 1000.0, 0.3);
    for (const Algorithm algorithm : everyAlgorithm)
        EXPECT_EQ(plan(algorithm, repeated, limits)->GetDuration(),
                  plan(algorithm, single, limits)->GetDuration());
    EXPECT_EQ(faultsOfAll(repeated, limits), "");
}

TEST(FailureModes, FullReversal_IsAStopAtTheProgrammedPoint) {
    const Points points{{0.0, 0.0}, {30.0, 10.0}, {6.0, 2.0}};
    const reference::Limits limits = equalLimits(2, 100.0, 1000.0, 0.5);
    EXPECT_EQ(faultsOfAll(points, limits), "");
    for (const Algorithm algorithm : everyAlgorithm) {
        const double there = plan(algorithm, {points[0], points[1]}, limits)->GetDuration();
        const double back = plan(algorithm, {points[1], points[2]}, limits)->GetDuration();
        const auto motion = plan(algorithm, points, limits);
        EXPECT_NEAR(motion->GetDuration(), there + back, 1e-9);
        EXPECT_NEAR(motion->GetPosition(there)[0], 30.0, 1e-9);
        EXPECT_NEAR(motion->GetPosition(there)[1], 10.0, 1e-9);
    }
}

TEST(FailureModes, NearReversals_KeepTheirLimits) {
    for (const double side : {1e-9, 1e-7, 1e-6, 3e-6, 1e-5, 1e-3, 0.1, 1.0})
        EXPECT_EQ(
            faultsOfAll({{0.0, 0.0}, {10.0, side}, {0.0, 2.0 * side}}, equalLimits(2, 100.0, 1000.0, 0.5)),
            "")
            << side;
}

TEST(FailureModes, MicrometreSegments_AreIntegrated) {
    for (const double length : {1e-3, 1e-5, 1e-6, 1e-9}) {
        Points points;
        for (int i = 0; i < 60; ++i)
            points.push_back({i * length, i % 2 * 0.3 * length, 0.0});
        points.push_back({100.0 * length, 0.0, 5.0});
        EXPECT_EQ(faultsOfAll(points, equalLimits(3, 100.0, 1000.0, 0.5)), "") << length;
    }
}

TEST(FailureModes, NearCoincidentSwitchingPoints_GiveNoSpikes) {
    // Corners of equal sharpness a hair apart: braking for one and speeding up from the other meet.
    for (const double gap : {1e-8, 1e-6, 1e-4, 1e-2, 0.3, 0.9999999, 1.0, 1.0000001}) {
        const Points points{{0.0, 0.0},  {20.0, 0.0},       {20.0, gap},
                            {40.0, gap}, {40.0, 2.0 * gap}, {60.0, 2.0 * gap}};
        for (const double speed : {20.0, 53.0, 500.0})
            EXPECT_EQ(faultsOfAll(points, equalLimits(2, speed, 1000.0, 0.5)), "") << gap << " " << speed;
    }
}

TEST(FailureModes, ZeroOrNanLimits_AreRefusedAtOnce) {
    const Points points = zigzag(5);
    for (const double bad : {0.0, -1.0, std::nan("")}) {
        reference::Limits limits = equalLimits(5, 100.0, 1000.0, 0.5);
        limits.axisAccelerations[3] = bad;
        EXPECT_THROW(plan(Algorithm::Toppra, points, limits), std::invalid_argument);
        EXPECT_THROW(plan(Algorithm::Trapezoidal, points, limits), std::invalid_argument);
        limits = equalLimits(5, bad, 1000.0, 0.5);
        for (const Algorithm algorithm : everyAlgorithm)
            EXPECT_THROW(plan(algorithm, points, limits), std::invalid_argument);
        limits = equalLimits(5, 100.0, bad, 0.5);
        for (const Algorithm algorithm : everyAlgorithm)
            EXPECT_THROW(plan(algorithm, points, limits), std::invalid_argument);
    }
}

TEST(FailureModes, BetweenGridPoints_LimitsHoldToo) {
    // Strong turns on long blends, sampled far finer than the grid of a blend.
    const Points points{{0.0, 0.0}, {50.0, 0.0}, {50.0, 50.0}, {10.0, 20.0}, {60.0, -10.0}, {0.0, -5.0}};
    for (const double speed : {15.0, 60.0, 150.0, 1000.0}) {
        reference::Limits limits = equalLimits(2, speed, 1000.0, 5.0);
        EXPECT_EQ(faultsOfAll(points, limits, 40000), "") << speed;
        limits.axisAccelerations = {1000.0, 120.0};
        limits.axisSpeeds = {0.7 * speed, 0.4 * speed};
        EXPECT_EQ(faultsOfAll(points, limits, 40000), "") << speed;
    }
}

TEST(FailureModes, SmoothPath_HasNoSpuriousStop) {
    const Points points = arc(2000, 50.0, pi);
    const reference::Limits limits = equalLimits(2, 100.0, 1000.0, 0.5);
    EXPECT_EQ(faultsOfAll(points, limits), "");
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto motion = plan(algorithm, points, limits);
        EXPECT_GE(slowestInside(*motion, 0.12, motion->GetDuration() - 0.12), 99.9);
        EXPECT_NEAR(motion->GetDuration(), 50.0 * pi / 100.0 + 0.1, 2e-3);
    }
}

TEST(FailureModes, ForwardPassAfterBackwardPass_IsAlwaysFeasible) {
    // Short segments with limits far apart: the speed that can be left is often just reached.
    Points points{{0.0, 0.0, 0.0}};
    for (int i = 1; i < 200; ++i)
        points.push_back({points.back()[0] + 0.2 + 0.15 * std::sin(7.0 * i), 0.3 * std::sin(1.7 * i),
                          0.2 * std::cos(2.9 * i)});
    reference::Limits limits = equalLimits(3, 300.0, 2000.0, 0.2);
    limits.axisAccelerations = {2000.0, 150.0, 20.0};
    EXPECT_EQ(faultsOfAll(points, limits, 20000), "");
}

TEST(FailureModes, NearlyAllRotaryMove_RunsAtItsSpeed) {
    const Points points{
        {0.0, 0.0, 0.0, 0.0}, {5e-9, 0.0, 0.0, 100.0}, {1e-8, 0.0, 0.0, 0.0}, {10.0, 0.0, 0.0, 0.0}};
    const reference::Limits limits = equalLimits(4, 100.0, 1000.0, 0.5);
    EXPECT_EQ(faultsOfAll(points, limits), "");
    for (const Algorithm algorithm : everyAlgorithm)
        EXPECT_NEAR(plan(algorithm, {points[0], points[1]}, limits)->GetDuration(), 1.1, 1e-9);
}

TEST(FailureModes, DenseTinySegments_NeitherRaceNorCrawl) {
    // A quarter turn of 20 mm radius in chords of 1.6 micrometres: sqrt(a r) = 141 mm/s.
    const Points points = arc(20000, 20.0, 0.5 * pi);
    const reference::Limits limits = equalLimits(2, 100.0, 1000.0, 0.5);
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto motion = plan(algorithm, points, limits);
        const Measured measured = measure(*motion, algorithm, {points.front(), points.back()}, limits, 1e-3);
        EXPECT_LE(measured.acceleration, 1.0001);
        EXPECT_LE(measured.speed, 1.0001);
        EXPECT_NEAR(motion->GetDuration(), 10.0 * pi / 100.0 + 0.1, 0.01);
    }
}

TEST(FailureModes, DensePointsOnALine_LeaveItsCornerRoom) {
    // The rounding of emitted code, three decimals, bends the line a little at every point.
    Points points;
    for (int i = 0; i <= 500; ++i)
        points.push_back({std::round(i * 31.0) / 1000.0, std::round(i * 17.0 + 0.3 * (i % 3)) / 1000.0});
    points.push_back({15.5, 30.0});
    const Points sparse{points.front(), points[500], points.back()};
    const reference::Limits limits = equalLimits(2, 100.0, 1000.0, 0.5);
    EXPECT_EQ(faultsOfAll(points, limits), "");
    for (const Algorithm algorithm : everyAlgorithm)
        EXPECT_NEAR(
            plan(algorithm, points, limits)->GetDuration() / plan(algorithm, sparse, limits)->GetDuration(),
            1.0, 0.01);
}

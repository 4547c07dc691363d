#include "MotionSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

using namespace support;

namespace {

const Points corner{{0.0, 0.0, 0.0}, {100.0, 0.0, 0.0}, {100.0, 80.0, 0.0}};

}  // namespace

TEST(Trajectory, StraightLine_TakesTheTimeOfTheTrapezoid) {
    // 100 mm at 100 mm/s with 1000 mm/s^2: 0.1 s and 5 mm each way, 90 mm in between.
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto motion = plan(algorithm, {{0.0, 0.0}, {100.0, 0.0}}, equalLimits(2, 100.0, 1000.0, 0.5));
        EXPECT_NEAR(motion->GetDuration(), 1.1, 1e-12);
        EXPECT_NEAR(motion->GetPosition(0.05)[0], 1.25, 1e-12);
        EXPECT_NEAR(motion->GetPosition(0.1)[0], 5.0, 1e-12);
        EXPECT_NEAR(motion->GetPosition(0.55)[0], 50.0, 1e-12);
        EXPECT_NEAR(motion->GetPosition(1.05)[0], 98.75, 1e-12);
    }
}

TEST(Trajectory, ShortLine_DoesNotReachItsSpeed) {
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto motion = plan(algorithm, {{0.0}, {4.0}}, equalLimits(1, 100.0, 1000.0, 0.5));
        EXPECT_NEAR(motion->GetDuration(), 2.0 * std::sqrt(4.0 / 1000.0), 1e-12);
    }
}

TEST(Trajectory, SlantedLine_IsLimitedByTheSlowerAxis) {
    reference::Limits limits = equalLimits(2, 1e6, 1000.0, 0.5);
    limits.axisAccelerations = {1000.0, 300.0};
    const auto motion = plan(Algorithm::Trapezoidal, {{0.0, 0.0}, {30.0, 40.0}}, limits);
    // Axis 1 has 4/5 of the path: 375 along it.
    EXPECT_NEAR(motion->GetDuration(), 2.0 * std::sqrt(50.0 / 375.0), 1e-9);
}

TEST(Trajectory, AxisSpeeds_LimitTheSpeedOfALine) {
    reference::Limits limits = equalLimits(2, 100.0, 1e9, 0.5);
    limits.axisSpeeds = {100.0, 40.0};
    const auto motion = plan(Algorithm::Toppra, {{0.0, 0.0}, {30.0, 40.0}}, limits);
    EXPECT_NEAR(motion->GetDuration(), 1.0, 1e-6);
}

TEST(Trajectory, AxisSpeedsOfTheTrapezoid_LimitTheAxesToo) {
    reference::Limits limits = equalLimits(2, 100.0, 1e9, 0.5);
    auto options = optionsOf(Algorithm::Trapezoidal, limits);
    options["vel_limits"] = std::vector<double>{100.0, 40.0};
    EXPECT_NEAR(TA::Trajectory::Create({{0.0, 0.0}, {30.0, 40.0}}, options)->GetDuration(), 1.0, 1e-6);
    options["speed"] = 25.0;
    EXPECT_NEAR(TA::Trajectory::Create({{0.0, 0.0}, {30.0, 40.0}}, options)->GetDuration(), 2.0, 1e-6);
}

TEST(Trajectory, TimesOutsideTheMotion_AreItsEnds) {
    const double never = std::numeric_limits<double>::infinity();
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto motion = plan(algorithm, corner, equalLimits(3, 100.0, 1000.0, 0.5));
        const double duration = motion->GetDuration();
        EXPECT_EQ(motion->GetPosition(0.0), corner.front());
        EXPECT_EQ(motion->GetPosition(-1.0), corner.front());
        EXPECT_EQ(motion->GetPosition(-never), corner.front());
        EXPECT_EQ(motion->GetPosition(std::nan("")), corner.front());
        EXPECT_EQ(motion->GetPosition(duration), corner.back());
        EXPECT_EQ(motion->GetPosition(duration + 1.0), corner.back());
        EXPECT_EQ(motion->GetPosition(never), corner.back());
    }
}

TEST(Trajectory, BothEnds_AreAtRest) {
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto motion = plan(algorithm, corner, equalLimits(3, 100.0, 1000.0, 0.5));
        const double h = 1e-4;
        EXPECT_NEAR(motion->GetPosition(h)[0], 0.5 * 1000.0 * h * h, 1e-9);
        EXPECT_NEAR(motion->GetPosition(motion->GetDuration() - h)[1], 80.0 - 0.5 * 1000.0 * h * h, 1e-9);
    }
}

TEST(Trajectory, EmptyAndEqualPoints_HaveNoDuration) {
    for (const Algorithm algorithm : everyAlgorithm) {
        const reference::Limits limits = equalLimits(2, 100.0, 1000.0, 0.5);
        EXPECT_EQ(plan(algorithm, {}, limits)->GetDuration(), 0.0);
        EXPECT_EQ(plan(algorithm, {}, limits)->GetPosition(0.0), std::vector<double>{});
        const std::vector<double> point{3.0, -4.0};
        for (const Points& points : {Points{point}, Points{point, point}, Points{point, point, point}}) {
            EXPECT_EQ(plan(algorithm, points, limits)->GetDuration(), 0.0);
            EXPECT_EQ(plan(algorithm, points, limits)->GetPosition(1.0), point);
        }
    }
}

TEST(Trajectory, PointsWithoutEntries_HaveNoDuration) {
    const auto motion = plan(Algorithm::Trapezoidal, {{}, {}}, equalLimits(0, 100.0, 1000.0, 0.5));
    EXPECT_EQ(motion->GetDuration(), 0.0);
    EXPECT_EQ(motion->GetPosition(0.0).size(), 0u);
}

TEST(Trajectory, PositionIntoAVector_IsThatReturned) {
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto motion = plan(algorithm, corner, equalLimits(3, 100.0, 1000.0, 0.5));
        std::vector<double> position{1.0};
        for (int i = -10; i < 160; ++i) {
            const double t = i * motion->GetDuration() / 150.0;
            motion->GetPosition(t, position);
            EXPECT_EQ(position, motion->GetPosition(t)) << t;
        }
    }
}

TEST(Trajectory, OrderOfReading_DoesNotMatter) {
    Points points;
    for (int i = 0; i < 300; ++i)
        points.push_back({i * 3.0, i % 2 * 5.0, i % 3 * 1.0});
    for (const Algorithm algorithm : everyAlgorithm) {
        const reference::Limits limits = equalLimits(3, 100.0, 1000.0, 0.5);
        const auto forward = plan(algorithm, points, limits);
        const auto backward = plan(algorithm, points, limits);
        const auto jumping = plan(algorithm, points, limits);
        const int count = 5000;
        const double step = forward->GetDuration() / count;
        std::vector<std::vector<double>> expected;
        expected.reserve(count + 1);
        for (int i = 0; i <= count; ++i)
            expected.push_back(forward->GetPosition(i * step));
        for (int i = count; i >= 0; --i)
            ASSERT_EQ(backward->GetPosition(i * step), expected[static_cast<std::size_t>(i)]) << i;
        for (int i = 0; i <= count; ++i) {
            const int at = i * 3187 % (count + 1);
            ASSERT_EQ(jumping->GetPosition(at * step), expected[static_cast<std::size_t>(at)]) << at;
        }
    }
}

TEST(Trajectory, SeveralThreads_ReadTheSamePositions) {
    const auto motion = plan(Algorithm::Trapezoidal, corner, equalLimits(3, 100.0, 1000.0, 0.5));
    const double step = motion->GetDuration() / 20000.0;
    std::vector<double> sums(4, 0.0);
    std::vector<std::thread> threads;
    threads.reserve(sums.size());
    for (double& sum : sums) {
        threads.emplace_back([&] {
            for (int i = 0; i <= 20000; ++i)
                sum += motion->GetPosition(i * step)[0];
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const double sum : sums)
        EXPECT_EQ(sum, sums.front());
}

TEST(Trajectory, RightAngle_DeviatesByTheTolerance) {
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto motion = plan(algorithm, corner, equalLimits(3, 100.0, 1000.0, 0.5));
        double nearest = 1e9;
        for (int i = 0; i < 20000; ++i) {
            const auto p = motion->GetPosition(i * motion->GetDuration() / 20000.0);
            nearest = std::min(nearest, std::hypot(p[0] - 100.0, p[1]));
        }
        EXPECT_NEAR(nearest, 0.5, 1e-4);
    }
}

TEST(Trajectory, ZeroTolerance_StopsAtEveryCorner) {
    for (const Algorithm algorithm : everyAlgorithm) {
        const auto motion = plan(algorithm, corner, equalLimits(3, 100.0, 1000.0, 0.0));
        EXPECT_NEAR(motion->GetDuration(), 1.1 + 0.9, 1e-9);
        const auto stop = motion->GetPosition(1.1);
        EXPECT_NEAR(stop[0], 100.0, 1e-9);
        EXPECT_NEAR(stop[1], 0.0, 1e-9);
    }
}

TEST(Trajectory, EveryDimension_KeepsItsLimits) {
    for (std::size_t dimension = 1; dimension <= 12; ++dimension) {
        Points points;
        for (std::size_t i = 0; i < 12; ++i) {
            std::vector<double> point(dimension);
            for (std::size_t k = 0; k < dimension; ++k)
                point[k] = 10.0 * std::sin(static_cast<double>(1 + i * (k + 2)));
            points.push_back(point);
        }
        reference::Limits limits = equalLimits(dimension, 80.0, 900.0, 0.4);
        for (std::size_t k = 0; k < dimension; ++k)
            limits.axisAccelerations[k] = 900.0 / static_cast<double>(1 + k % 3);
        EXPECT_EQ(faultsOfAll(points, limits), "") << dimension;
    }
}

TEST(Trajectory, LoggerAndInitialize_AcceptAnyText) {
    TA::Initialize("zh");
    TA::SetLoggerLevel("nonsense");
    testing::internal::CaptureStderr();
    plan(Algorithm::Trapezoidal, corner, equalLimits(3, 100.0, 1000.0, 0.5));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    TA::SetLoggerLevel("debug");
    testing::internal::CaptureStderr();
    plan(Algorithm::Trapezoidal, corner, equalLimits(3, 100.0, 1000.0, 0.5));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("3 points, 3 kept"), std::string::npos);
    TA::SetLoggerLevel("error");
}

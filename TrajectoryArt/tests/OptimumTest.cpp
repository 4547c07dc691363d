#include "MotionSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace support;

namespace {

/// What a duration may be above the optimum.
constexpr double toppraExcess = 0.003;
constexpr double trapezoidalExcess = 0.005;

Points zigzag(int count) {
    Points points;
    for (int i = 0; i < count; ++i)
        points.push_back({i * 6.0, i % 2 * 7.0, i % 3 * 2.0, i % 2 * -3.0, i % 5 * 1.0});
    return points;
}

Points circle(int count, double chord) {
    const double radius = 0.5 * chord / std::sin(std::acos(-1.0) / count);
    Points points;
    for (int i = 0; i <= count / 2; ++i) {
        const double angle = 2.0 * std::acos(-1.0) * i / count;
        points.push_back(
            {radius * std::cos(angle), radius * std::sin(angle), 5.0, 20.0 * std::sin(angle), 30.0 * angle});
    }
    return points;
}

/// Compares with grids that have converged: 200 and 400 intervals per piece differ by less than 5e-4.
void expectNearOptimum(const Points& points, const reference::Limits& limits) {
    for (const Algorithm algorithm : everyAlgorithm) {
        reference::Limits used = limits;
        used.circle = algorithm == Algorithm::ConstantSpeed;
        if (algorithm != Algorithm::Toppra)
            used.axisSpeeds.clear();
        const double coarse = reference::optimalDuration(points, used, 200);
        const double optimum = reference::optimalDuration(points, used, 400);
        ASSERT_NEAR(coarse / optimum, 1.0, 5e-4);
        const double excess = plan(algorithm, points, used)->GetDuration() / optimum - 1.0;
        EXPECT_LE(excess, algorithm == Algorithm::Toppra ? toppraExcess : trapezoidalExcess)
            << static_cast<int>(algorithm) << " speed " << limits.speed << " of " << print(points);
        // Faster than the optimum of the same path would be a limit that is not kept.
        EXPECT_GE(excess, -5e-4) << static_cast<int>(algorithm) << " speed " << limits.speed;
    }
}

Points randomPath(std::mt19937& random, std::size_t dimension, double turn) {
    std::uniform_real_distribution<double> share(-1.0, 1.0);
    std::vector<double> direction(dimension, 0.0);
    direction[0] = 1.0;
    std::vector<double> at(dimension, 0.0);
    Points points{at};
    for (int i = 0; i < 9; ++i) {
        double length = 0.0;
        for (double& value : direction) {
            value += turn * share(random);
            length += value * value;
        }
        for (std::size_t k = 0; k < dimension; ++k) {
            direction[k] /= std::sqrt(length);
            at[k] += direction[k] * (6.0 + 4.0 * share(random));
        }
        points.push_back(at);
    }
    return points;
}

}  // namespace

TEST(Optimum, Zigzag_IsWithinTheBarAtEverySpeed) {
    for (const double speed : {10.0, 30.0, 50.0, 80.0, 300.0})
        expectNearOptimum(zigzag(30), equalLimits(5, speed, 1000.0, 0.5));
}

TEST(Optimum, RightAngles_AreWithinTheBarAtEverySpeed) {
    const Points stairs{{0, 0}, {10, 0}, {10, 10}, {20, 10}, {20, 20}, {30, 20}, {30, 30}};
    for (const double speed : {20.0, 45.0, 50.0, 53.0, 60.0, 200.0})
        expectNearOptimum(stairs, equalLimits(2, speed, 1000.0, 0.5));
}

TEST(Optimum, CircleOfChords_IsWithinTheBar) {
    for (const double speed : {100.0, 400.0, 1000.0})
        expectNearOptimum(circle(300, 1.0), equalLimits(5, speed, 500.0, 0.5));
}

TEST(Optimum, RandomPaths_AreWithinTheBar) {
    std::mt19937 random(20240611);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    for (int i = 0; i < 45; ++i) {
        const std::size_t dimension = 2 + static_cast<std::size_t>(i) % 4;
        const Points points = randomPath(random, dimension, i % 3 == 0 ? 0.3 : 1.5);
        reference::Limits limits =
            equalLimits(dimension, std::pow(10.0, 1.0 + 1.7 * share(random)), 800.0, 0.4);
        for (double& value : limits.axisAccelerations)
            value *= i % 2 == 0 ? 1.0 : 0.2 + 0.8 * share(random);
        if (i % 4 == 1)
            for (std::size_t k = 0; k < dimension; ++k)
                limits.axisSpeeds.push_back(limits.speed * (0.5 + 0.7 * share(random)));
        expectNearOptimum(points, limits);
    }
}

// The parts inside the library, where their promise is stronger than what a motion shows.

#include "BezierBlend.h"
#include "BlendGrid.h"
#include "Pair.h"
#include "Polyline.h"
#include "Simplify.h"
#include "SpeedCaps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace TA;

TEST(SpeedCaps, ProductOfLinearAndConvex_StaysBelowOne) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    for (int i = 0; i < 2000; ++i) {
        const double g0 = share(random);
        const double g1 = g0 * share(random);
        const double sag = (g0 - g1) * share(random);  // g stays monotone
        const bool rising = i % 2 == 0;
        const EndCaps caps = intervalCaps(rising ? g1 : g0, rising ? g0 : g1, sag);
        for (int step = 0; step <= 100; ++step) {
            const double w = 0.01 * step;
            const double g = (rising ? g1 : g0) * (1.0 - w) + (rising ? g0 : g1) * w - sag * w * (1.0 - w);
            const double x = caps.first * (1.0 - w) + caps.second * w;
            ASSERT_LE(g * x, 1.0 + 1e-12) << g0 << " " << g1 << " " << sag << " " << w;
        }
    }
}

TEST(SpeedCaps, GentleChange_CostsNearlyNothing) {
    const EndCaps caps = intervalCaps(1.0, 0.9, 0.0);
    EXPECT_NEAR(caps.first, 1.0, 0.003);
    EXPECT_NEAR(caps.second, 1.0 / 0.9, 0.004);
}

TEST(BlendGrid, Places_RiseSymmetricallyFromZeroToOne) {
    BlendGrid grid;
    for (const unsigned intervals : {1u, 2u, 4u, 8u, 64u}) {
        const double* places = grid.places(intervals);
        EXPECT_EQ(places[0], 0.0);
        EXPECT_EQ(places[intervals], 1.0);
        for (unsigned j = 0; j < intervals; ++j) {
            EXPECT_LT(places[j], places[j + 1]);
            EXPECT_NEAR(places[j] + places[intervals - j], 1.0, 1e-15);
        }
    }
}

TEST(BlendGrid, Refinement_IsForPathsWithFewBlends) {
    EXPECT_EQ(refinement(1), 8u);
    EXPECT_EQ(refinement(60), 4u);
    EXPECT_EQ(refinement(1000), 1u);
}

TEST(Pair, Rows_HaveTheirLengths) {
    const double a[] = {1.0, 2.0, 3.0, 0.0};
    const double b[] = {1.0, -2.0, 0.0, 0.0};
    EXPECT_EQ(dot(a, b, 4), -3.0);
    EXPECT_EQ(distance(a, b, 4), 5.0);
}

TEST(Polyline, CoincidingLastPoint_TakesThePlaceOfTheKeptOne) {
    const Polyline line = readPolyline({{0.0, 0.0}, {1.0, 0.0}, {1.05, 0.0}}, 0.1);
    ASSERT_EQ(line.count, 2u);
    EXPECT_EQ(line.point(1)[0], 1.05);
    EXPECT_EQ(line.lengths[0], 1.05);
    EXPECT_NEAR(line.dropped, 0.1, 1e-12);  // a bound: 0.05 to the kept point and 0.05 from there
}

TEST(Polyline, CoincidingLastPoint_MayTakeSeveralPlaces) {
    const Polyline line = readPolyline({{0.0}, {1.0}, {1.11}, {1.02}}, 0.1);
    ASSERT_EQ(line.count, 2u);
    EXPECT_EQ(line.point(1)[0], 1.02);
}

TEST(Polyline, AllPointsCoincidingButNotEqual_KeepTheTwoEnds) {
    const Polyline line = readPolyline({{0.0}, {0.01}, {0.02}}, 0.1);
    ASSERT_EQ(line.count, 2u);
    EXPECT_EQ(line.point(1)[0], 0.02);
    EXPECT_EQ(readPolyline({{0.0}, {0.01}, {0.0}}, 0.1).count, 1u);
}

TEST(Polyline, RoundingOfLargeCoordinates_IsNoSegment) {
    const double next = std::nextafter(1e6, 2e6);
    EXPECT_EQ(readPolyline({{0.0}, {1e6}, {next}, {2e6}}, 0.0).count, 3u);
}

TEST(Polyline, TinyStepsAtLargeCoordinates_AreKept) {
    EXPECT_EQ(readPolyline({{0.0}, {200.0}, {200.0 + 1e-9}, {201.0}}, 0.0).count, 4u);
}

TEST(Simplify, PointsOnALine_AreDropped) {
    Polyline line = readPolyline({{0.0, 0.0}, {1.0, 1e-4}, {2.0, -1e-4}, {3.0, 0.0}, {3.0, 5.0}}, 0.0);
    dropCollinear(line, 1e-3, 0.5);
    ASSERT_EQ(line.count, 3u);
    EXPECT_NEAR(line.sagOf(0), 1e-4, 1e-7);
    EXPECT_EQ(line.sagOf(1), 0.0);
    EXPECT_NEAR(line.lengths[0], 3.0, 1e-12);
}

TEST(Simplify, Reversal_StaysAPoint) {
    Polyline line = readPolyline({{0.0, 0.0}, {3.0, 0.0}, {1.0, 0.0}, {6.0, 0.0}}, 0.0);
    dropCollinear(line, 1e-3, 0.5);
    EXPECT_EQ(line.count, 4u);
}

TEST(Simplify, SmoothCurve_KeepsItsPoints) {
    std::vector<std::vector<double>> points;
    points.reserve(2000);
    for (int i = 0; i < 400; ++i)
        points.push_back({100.0 * std::cos(0.002 * i), 100.0 * std::sin(0.002 * i)});
    Polyline line = readPolyline(points, 0.0);
    dropCollinear(line, 0.005, 0.5);
    EXPECT_EQ(line.count, 400u);
}

TEST(Simplify, LineIntoCurve_KeepsTheCurve) {
    std::vector<std::vector<double>> points;
    points.reserve(2000);
    for (int i = 0; i < 100; ++i)
        points.push_back({0.0, -0.2 * (100 - i)});
    for (int i = 0; i < 200; ++i)
        points.push_back({20.0 * std::cos(0.01 * i) - 20.0, 20.0 * std::sin(0.01 * i)});
    Polyline line = readPolyline(points, 0.0);
    dropCollinear(line, 0.005, 0.5);
    EXPECT_GE(line.count, 200u);
}

TEST(Simplify, RoundingNoiseOnATinyStep_IsSmoothed) {
    std::vector<std::vector<double>> points;
    points.reserve(2000);
    for (int i = 0; i < 2000; ++i)
        points.push_back({0.01 * i, 0.0005 * (i * 7 % 3 - 1)});
    Polyline line = readPolyline(points, 0.0);
    dropCollinear(line, 0.005, 0.5);
    EXPECT_LE(line.count, 3u);
}

TEST(BezierBlend, BothPasses_KeepEveryLoadOfRandomBlends) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> share(-1.0, 1.0);
    for (int i = 0; i < 3000; ++i) {
        std::vector<std::vector<double>> points(3, std::vector<double>(3, 0.0));
        for (std::size_t k = 0; k < 3; ++k) {
            points[1][k] = 5.0 * share(random);
            points[2][k] = points[1][k] + 5.0 * share(random);
        }
        PlanOptions options;
        options.speed = std::pow(10.0, 1.5 + share(random));
        for (int k = 0; k < 3; ++k)
            options.axisAccelerations.push_back(std::pow(10.0, 2.0 + share(random)));
        const Path path(readPolyline(points, 0.0), BlendShape::Bezier, 0.5);
        BezierBlend<4> blend(path, options);
        blend.load(1);
        blend.setIntervals(8);
        const unsigned j = random() % 8;
        const double next = std::pow(10.0, 2.0 + 2.0 * share(random));
        const double x = blend.entry(j, 1e5, next);
        const double y = blend.exit(j, x, next);
        ASSERT_GT(x, 0.0);
        ASSERT_LE(y, next);
        const Corner& corner = path.corners()[1];
        for (std::size_t k = 0; k < 3; ++k) {
            const double t1 = path.polyline().direction(0)[k];
            const double bend = (path.polyline().direction(1)[k] - t1) / (2.0 * corner.cut);
            const double u = (y - x) / (2.0 * (blend.place(j + 1) - blend.place(j)));
            for (const double w : {0.0, 0.25, 0.5, 0.75, 1.0}) {
                const double s = blend.place(j) + w * (blend.place(j + 1) - blend.place(j));
                const double load = (t1 + bend * s) * u + bend * (x + (y - x) * w);
                ASSERT_LE(std::abs(load), options.axisAccelerations[k] * (1.0 + 1e-6))
                    << i << " " << k << " " << w;
            }
        }
        // No larger x has a successor.
        const double more = blend.entry(j, x * 1.001, next);
        ASSERT_NEAR(more, x, 1e-6 * x) << i;
    }
}

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

#include "IsoTestProgram.h"
#include "nc/calc/ArcPoints.h"
#include "support/TestSupport.h"

// The oracle is geometry: which circle, which way round, how far from point to point. It shares no formula
// with the code: the centre is fitted to the points, not computed from the chord.

namespace {

constexpr std::size_t kMany = 1'000'000;

std::string textOf(const Arc& arc) {
    std::ostringstream text;
    text.precision(17);
    text << (arc.clockwise ? "G2 " : "G3 ") << arc.start[0] << ' ' << arc.start[1] << ' ' << arc.start[2]
         << " to " << arc.end[0] << ' ' << arc.end[1] << ' ' << arc.end[2] << " R" << arc.radius_mm;
    return text.str();
}

double distance(const ArcPoint& a, const ArcPoint& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1]);
}

/// Centre of the circle through three points.
ArcPoint circleCentre(const ArcPoint& a, const ArcPoint& b, const ArcPoint& c) {
    const double bx = b[0] - a[0];
    const double by = b[1] - a[1];
    const double cx = c[0] - a[0];
    const double cy = c[1] - a[1];
    const double d = 2.0 * (bx * cy - by * cx);
    const double b2 = bx * bx + by * by;
    const double c2 = cx * cx + cy * cy;
    return {a[0] + (cy * b2 - by * c2) / d, a[1] + (bx * c2 - cx * b2) / d, 0.0};
}

/// Twice the signed area of the triangle: negative when a, b, c turn clockwise.
double turn(const ArcPoint& a, const ArcPoint& b, const ArcPoint& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

void expectArc(const Arc& arc, const std::vector<ArcPoint>& points) {
    const std::string input = textOf(arc);
    const double radius = arc.radius_mm;
    ASSERT_GE(points.size(), 3U) << input;
    for (std::size_t i = 0; i < 3; ++i) {
        ASSERT_NEAR(points.front()[i], arc.start[i], 1e-8) << input;
        ASSERT_EQ(points.back()[i], arc.end[i]) << input;
    }
    const ArcPoint centre = circleCentre(points.front(), points[points.size() / 2], points.back());
    const double chordOf1mm = 2.0 * radius * std::sin(0.5 / radius);
    double length = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        ASSERT_NEAR(distance(points[i], centre), radius, 1e-6) << input << " point " << i;
        if (i == 0)
            continue;
        const double step = distance(points[i - 1], points[i]);
        length += 2.0 * radius * std::asin(std::min(1.0, step / (2.0 * radius)));
        if (i + 1 < points.size()) {
            ASSERT_NEAR(step, chordOf1mm, 1e-8) << input << " point " << i;
            const double way = turn(points[i - 1], points[i], points[i + 1]);
            ASSERT_LE(arc.clockwise ? way : -way, 1e-9) << input << " point " << i;
        } else {
            ASSERT_LE(step, chordOf1mm + 1e-9) << input;
        }
    }
    // The shorter of the two arcs: asin of the half chord gives it at once.
    const double chord = distance(arc.start, arc.end);
    EXPECT_NEAR(length, 2.0 * radius * std::asin(chord / (2.0 * radius)), 1e-5) << input;
    EXPECT_EQ(points.size(), static_cast<std::size_t>(std::floor(length + 1e-9)) + 2) << input;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const double part = static_cast<double>(i) / length;
        ASSERT_NEAR(points[i][2], arc.start[2] + (arc.end[2] - arc.start[2]) * part, 1e-6) << input;
    }
}

/// Rounded to single precision. Through memory, since g++ 12 drops the rounding of two such values side by
/// side (vectorised at -O2).
double single(double value) {
    volatile float rounded = static_cast<float>(value);
    return rounded;
}

double inThousandths(double value) {
    return std::round(value * 1000.0) / 1000.0;
}

/// `leastRatio` of half the chord to the radius: flat arcs are hard to measure in single precision.
Arc randomArc(std::mt19937& random, double leastRatio = 0.02) {
    std::uniform_real_distribution<double> place(-500, 500);
    std::uniform_real_distribution<double> ratio(leastRatio, 0.95);
    Arc arc;
    for (std::size_t i = 0; i < 3; ++i) {
        arc.start[i] = single(inThousandths(place(random)));
        arc.end[i] = single(inThousandths(place(random)));
    }
    arc.radius_mm = inThousandths(distance(arc.start, arc.end) / 2.0 / ratio(random) + 0.001);
    arc.clockwise = random() % 2 == 0;
    return arc;
}

ArcPoint placeOf(const WayPoint& point) {
    return {point[0], point[1], point[2]};
}

}  // namespace

TEST(ArcPoints, QuarterCircle_IsOneMillimetreApart) {
    std::vector<ArcPoint> points;
    const Arc arc{{10, 0, 0}, {0, 10, 5}, 10, false};
    ASSERT_EQ(arcPoints(arc, kMany, points), ArcFault::None);
    expectArc(arc, points);
    EXPECT_EQ(points.size(), 17U);  // 15.7 mm: 0 to 15, and the end
    EXPECT_NEAR(points[5][0], 10 * std::cos(0.5), 1e-12);
    EXPECT_NEAR(points[5][1], 10 * std::sin(0.5), 1e-12);
}

TEST(ArcPoints, Directions_RunOnOppositeSidesOfTheChord) {
    std::vector<ArcPoint> points;
    ASSERT_EQ(arcPoints({{0, 0, 0}, {20, 0, 0}, 10, true}, kMany, points), ArcFault::None);
    EXPECT_NEAR(points[points.size() / 2][1], 10, 0.1);
    ASSERT_EQ(arcPoints({{0, 0, 0}, {20, 0, 0}, 10, false}, kMany, points), ArcFault::None);
    EXPECT_NEAR(points[points.size() / 2][1], -10, 0.1);
}

TEST(ArcPoints, RandomArcs_AreArcs) {
    std::mt19937 random(2024);
    std::vector<ArcPoint> points;
    for (int i = 0; i < 3000; ++i) {
        const Arc arc = randomArc(random);
        if (distance(arc.start, arc.end) < 3.0)
            continue;
        ASSERT_EQ(arcPoints(arc, kMany, points), ArcFault::None) << textOf(arc);
        ASSERT_NO_FATAL_FAILURE(expectArc(arc, points));
    }
}

TEST(ArcPoints, ShortArc_IsStartAndEnd) {
    std::vector<ArcPoint> points;
    ASSERT_EQ(arcPoints({{0, 0, 1}, {0.5, 0, 2}, 10, true}, kMany, points), ArcFault::None);
    ASSERT_EQ(points.size(), 2U);
    EXPECT_NEAR(points[0][0], 0.0, 1e-12);
    EXPECT_EQ(points[0][2], 1.0);
    EXPECT_EQ(points[1], (ArcPoint{0.5, 0, 2}));
}

TEST(ArcPoints, ChordAboveTwiceTheRadius_IsAFault) {
    std::vector<ArcPoint> points;
    EXPECT_EQ(arcPoints({{0, 0, 0}, {20.01, 0, 0}, 10, true}, kMany, points), ArcFault::ChordTooLong);
    EXPECT_EQ(arcPoints({{0, 0, 0}, {1, 0, 0}, 0, true}, kMany, points), ArcFault::ChordTooLong);
    EXPECT_EQ(arcPoints({{0, 0, 0}, {1, 0, 0}, -10, true}, kMany, points), ArcFault::ChordTooLong);
    EXPECT_EQ(points.size(), 0U);
}

TEST(ArcPoints, HalfCircleRoundedToSinglePrecision_IsAHalfCircle) {
    std::mt19937 random(8);
    std::uniform_int_distribution<int> thousandths(-3'000'000, 3'000'000);
    std::vector<ArcPoint> points;
    for (int i = 0; i < 5000; ++i) {
        const double x = thousandths(random) / 1000.0;
        const double y = thousandths(random) / 1000.0;
        const double r = 12.345;
        const Arc arc{{single(x), single(y), 0}, {single(x + 2 * r), single(y), 0}, r, i % 2 == 0};
        ASSERT_EQ(arcPoints(arc, kMany, points), ArcFault::None) << textOf(arc);
        // A chord that lacks d of the diameter puts the centre sqrt(R d) beside its middle.
        ASSERT_NEAR(static_cast<double>(points.size()), M_PI * r + 2.0, 1.1) << textOf(arc);
        for (const ArcPoint& point : points)
            ASSERT_NEAR(std::hypot(point[0] - x - r, point[1] - y), r, 0.07) << textOf(arc);
    }
}

TEST(ArcPoints, NoChord_IsAFault) {
    std::vector<ArcPoint> points;
    EXPECT_EQ(arcPoints({{5, 5, 0}, {5, 5, 9}, 10, true}, kMany, points), ArcFault::NoChord);
    EXPECT_EQ(arcPoints({{5, 5, 0}, {5, 5, 0}, 0, true}, kMany, points), ArcFault::NoChord);
}

TEST(ArcPoints, ArcOfTooManyPoints_IsAFaultWithoutMemory) {
    std::vector<ArcPoint> points;
    EXPECT_EQ(arcPoints({{0, 0, 0}, {1e9, 0, 0}, 1e9, true}, kMany, points), ArcFault::TooManyPoints);
    EXPECT_EQ(arcPoints({{0, 0, 0}, {10, 0, 0}, 10, true}, 12, points), ArcFault::TooManyPoints);
    EXPECT_EQ(arcPoints({{0, 0, 0}, {10, 0, 0}, 10, true}, 13, points), ArcFault::None);
    EXPECT_EQ(arcPoints({{0, 0, 0}, {10, 0, 0}, 1e300, true}, kMany, points), ArcFault::RadiusTooLarge);
}

TEST(ArcPoints, VeryFlatOrTinyArcs_StayFiniteAndShort) {
    std::vector<ArcPoint> points;
    for (const double chord : {1e-30, 1e-13, 1e-6, 1.0, 100.0}) {
        for (const double radius : {1.0, 1e3, 1e6, 1e9}) {
            if (chord > 2 * radius)
                continue;
            const Arc arc{{0, 0, 0}, {chord, 0, 0}, radius, false};
            ASSERT_EQ(arcPoints(arc, kMany, points), ArcFault::None) << textOf(arc);
            ASSERT_LE(static_cast<double>(points.size()), chord * 2 + 2.0) << textOf(arc);
            for (const ArcPoint& point : points)
                ASSERT_NEAR(std::hypot(point[0], point[1]), 0.0, chord * 1.6 + 1e-5) << textOf(arc);
        }
    }
}

TEST(IsoInterpreter, RandomArcsInTheWorkFrame_AreArcsWithHeldRotariesAndFeed) {
    std::mt19937 random(77);
    for (int i = 0; i < 300; ++i) {
        const Arc arc = randomArc(random);
        if (distance(arc.start, arc.end) < 3.0)
            continue;
        const auto word = [](double value) { return QString::number(value, 'f', 3); };
        const IsoProgram program(QStringLiteral("G0 X%1 Y%2 Z%3\nG%4 X%5 Y%6 Z%7 R%8 F1500")
                                     .arg(word(arc.start[0]), word(arc.start[1]), word(arc.start[2]),
                                          arc.clockwise ? "2" : "3", word(arc.end[0]), word(arc.end[1]),
                                          word(arc.end[2]), word(arc.radius_mm)));
        ASSERT_EQ(program.done, true) << textOf(arc);
        std::vector<ArcPoint> points;
        for (std::size_t k = 1; k < program.points().size(); ++k) {
            const WayPoint& point = program.points()[k];
            ASSERT_EQ(point.size(), 6);
            ASSERT_EQ(point[3], 0.0);
            ASSERT_EQ(point[4], 0.0);
            ASSERT_EQ(point[5], 1500.0);
            points.push_back(placeOf(point));
        }
        ASSERT_NO_FATAL_FAILURE(expectArc(arc, points));
    }
}

TEST(IsoInterpreter, RandomArcsInAnInclinedPlane_AreArcsSeenFromThePlane) {
    std::mt19937 random(78);
    for (int i = 0; i < 300; ++i) {
        const Arc arc = randomArc(random, 0.4);
        if (distance(arc.start, arc.end) < 3.0)
            continue;
        const auto word = [](double value) { return QString::number(value, 'f', 3); };
        // A quarter turn about X and a shift: (u, v, w) lies at (u + 1, -w + 2, v + 3).
        const IsoProgram program(
            QStringLiteral("G0 X0 C30 A40\n(UPR,XYZ,90,0,0,1,2,3)\nG16 U V\nG1 U%1 V%2 W%3\n"
                           "G%4 U%5 V%6 W%7 R%8 F1500")
                .arg(word(arc.start[0]), word(arc.start[1]), word(arc.start[2]), arc.clockwise ? "2" : "3",
                     word(arc.end[0]), word(arc.end[1]), word(arc.end[2]), word(arc.radius_mm)));
        ASSERT_EQ(program.done, true) << textOf(arc);
        double length = 0.0;
        const WayPoints& points = program.points();
        ASSERT_GT(points.size(), 4U);
        const auto inPlane = [](const WayPoint& p) { return ArcPoint{p[0] - 1, p[2] - 3, 2 - p[1]}; };
        const ArcPoint centre =
            circleCentre(inPlane(points[2]), inPlane(points[points.size() / 2 + 1]), inPlane(points.back()));
        for (std::size_t k = 2; k < points.size(); ++k) {
            const ArcPoint place = inPlane(points[k]);
            ASSERT_NEAR(distance(place, centre), arc.radius_mm, 0.02) << textOf(arc);
            ASSERT_EQ(points[k][3], 30.0);
            ASSERT_EQ(points[k][4], 40.0);
            ASSERT_EQ(points[k].back(), 1500.0);
            if (k > 2)
                length += distance(place, inPlane(points[k - 1]));
        }
        const ArcPoint last = inPlane(points.back());
        for (std::size_t k = 0; k < 3; ++k)
            ASSERT_NEAR(last[k], arc.end[k], 2e-3) << textOf(arc);
        const double chord = distance(arc.start, arc.end);
        ASSERT_NEAR(length, 2 * arc.radius_mm * std::asin(chord / 2 / arc.radius_mm), 0.01 * length)
            << textOf(arc);
    }
}

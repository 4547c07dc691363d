#include "nc/calc/WayPointText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "nc/TestMachine.h"
#include "support/TestSupport.h"

namespace {

std::vector<double> entriesOf(const WayPoint& point) {
    return {point.values.begin(), point.values.begin() + point.size()};
}

WayPoint pointOf(std::initializer_list<double> values) {
    WayPoint point;
    for (const double value : values)
        point.append(value);
    return point;
}

WayPoints readCode(const QString& code, const AuxiliaryAxis* auxiliary = nullptr) {
    return WayPointsFromCode(*fiveAxisMachine(), QStringLiteral("X->Y->Z->C->A"), code, auxiliary);
}

double distance(const WayPoint& a, const WayPoint& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

using Entries = std::vector<double>;

}  // namespace

TEST(WayPointsFromCode, FullLine_ReadsEveryAxisAndNoFeed) {
    const WayPoints points = readCode("G1 X100.000 Y20.000 Z-3.000 C90.000 A-45.500 F5000\n");
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(entriesOf(points[0]), (Entries{100, 20, -3, 90, -45.5}));
}

TEST(WayPointsFromCode, AbsentWords_KeepTheirLastValue) {
    const WayPoints points = readCode("G1 X1 Y2\nG1 Z3\nG1 X-4\n");
    ASSERT_EQ(points.size(), 3U);
    EXPECT_EQ(entriesOf(points[1]), (Entries{1, 2, 3, 0, 0}));
    EXPECT_EQ(entriesOf(points[2]), (Entries{-4, 2, 3, 0, 0}));
}

TEST(WayPointsFromCode, LineWithoutAxisWord_RepeatsThePreviousPoint) {
    const WayPoints points = readCode("G1 X1\nM8\n");
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(entriesOf(points[1]), entriesOf(points[0]));
}

TEST(WayPointsFromCode, EmptyLines_MakeNoPointButBlankOnesDo) {
    EXPECT_EQ(readCode("\n\nG1 X1\n\n").size(), 1U);
    EXPECT_EQ(readCode(" \n").size(), 1U);
    EXPECT_EQ(readCode("").size(), 0U);
}

TEST(WayPointsFromCode, LastLineWithoutLineFeed_IsRead) {
    const WayPoints points = readCode("G1 X1\nG1 X2");
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[1][0], 2.0);
}

TEST(WayPointsFromCode, SmallLetters_AreNoKeys) {
    EXPECT_EQ(entriesOf(readCode("G1 x5 Y1").at(0)), (Entries{0, 1, 0, 0, 0}));
}

TEST(WayPointsFromCode, LetterTwice_CountsItsFirstOccurrence) {
    EXPECT_EQ(readCode("X1 X2").at(0)[0], 1.0);
}

TEST(WayPointsFromCode, BadNumber_CountsAsAbsentWord) {
    const WayPoints points = readCode("X7\nX1-2\nX\nXX3\nX1.2.3\nX-\nX.\n");
    ASSERT_EQ(points.size(), 7U);
    for (const WayPoint& point : points)
        EXPECT_EQ(point[0], 7.0);
}

TEST(WayPointsFromCode, FirstOccurrenceBad_TheSecondIsNotTried) {
    EXPECT_EQ(readCode("X7\nX Y2 X9").at(1)[0], 7.0);
}

TEST(WayPointsFromCode, NumberForms_AreReadAsWritten) {
    const WayPoints points = readCode("X-.5 Y+3 Z00012.2500");
    EXPECT_EQ(points.at(0)[0], -0.5);
    EXPECT_EQ(points.at(0)[1], 0.0);  // "+" is no character of a number here
    EXPECT_EQ(points.at(0)[2], 12.25);
}

TEST(WayPointsFromCode, AuxiliaryAxis_IsSearchedByItsWholeName) {
    const AuxiliaryAxis auxiliary{QStringLiteral("W2="), 5, 100, 1000};
    const WayPoints points = readCode("G1 X1 W9 W2=44.5\nX2", &auxiliary);
    EXPECT_EQ(entriesOf(points.at(0)), (Entries{1, 0, 0, 0, 0, 44.5}));
    EXPECT_EQ(entriesOf(points.at(1)), (Entries{2, 0, 0, 0, 0, 44.5}));
}

TEST(WayPointsFromCode, AxisOfIdSix_IsLeftOut) {
    const auto machine = makeTestMachine({{"X", 1}, {"W", 6}});
    const WayPoints points =
        WayPointsFromCode(*machine, QStringLiteral("X;W"), QStringLiteral("X1 W5"), nullptr);
    EXPECT_EQ(entriesOf(points.at(0)), (Entries{1}));
}

TEST(WayPointsFromCode, Order_IsThatOfTheIds) {
    const auto machine = makeTestMachine({{"Q", 3}, {"P", 1}, {"R", 5}});
    const WayPoints points =
        WayPointsFromCode(*machine, QStringLiteral("R->Q->P"), QStringLiteral("R5 Q3 P1"), nullptr);
    EXPECT_EQ(entriesOf(points.at(0)), (Entries{1, 3, 5}));
}

TEST(WayPointsFromCode, AxesOfOtherIds_AreLeftOut) {
    const auto machine = makeTestMachine(
        {{"A", 1}, {"B", 2}, {"C", 3}, {"D", 4}, {"E", 5}, {"H", 7}, {"I", 8}, {"J", 9}, {"K", 10}});
    const AuxiliaryAxis auxiliary{QStringLiteral("W"), 0, 1, 1};
    const WayPoints points = WayPointsFromCode(*machine, QStringLiteral("ABCDEHIJK"),
                                               QStringLiteral("A1 B2 C3 D4 E5 H7 I8 J9 K10 W6"), &auxiliary);
    EXPECT_EQ(entriesOf(points.at(0)), (Entries{1, 2, 3, 4, 5, 6}));
}

TEST(WayPointsFromCode, RandomBytes_GiveOnePointPerLineThatIsNotEmpty) {
    std::mt19937 random(20240611);
    const QString alphabet = QStringLiteral("XYZCAGF0123456789.-- \n\t\r(;=\x4e2d");
    for (int round = 0; round < 300; ++round) {
        QString text;
        for (auto i = random() % 200; i > 0; --i)
            text += alphabet[static_cast<int>(random() % static_cast<std::size_t>(alphabet.size()))];
        const int expected = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts).size();
        EXPECT_EQ(readCode(text).size(), static_cast<std::size_t>(expected)) << text.toStdString();
    }
}

TEST(FormatWayPoints, WordOrder_FollowsTheIdsAndTheFeedIsWhole) {
    const AxisMap letters{{1, 'X'}, {2, 'Y'}, {3, 'Z'}, {4, 'C'}, {5, 'A'}};
    EXPECT_EQ(FormatWayPoints({pointOf({100, 20, -3, 0, 0, 5000.4})}, letters, 0),
              QStringLiteral("G1 X100.000 Y20.000 Z-3.000 C0.000 A0.000 F5000\n"));
}

TEST(FormatWayPoints, ChainWithoutRotaryAxes_WritesOnlyItsOwnIds) {
    const AxisMap letters{{1, 'X'}, {3, 'Z'}};
    EXPECT_EQ(FormatWayPoints({pointOf({1, 2, 3, 4, 5, 600})}, letters, 0),
              QStringLiteral("G1 X1.000 Z3.000 F600\n"));
}

TEST(FormatWayPoints, AuxiliaryAxis_ComesFromTheEntryOrFromTheValue) {
    const AxisMap letters{{1, 'X'}, {6, 'W'}};
    const WayPoints points{pointOf({1, 0, 0, 0, 0, 77, 600}), pointOf({2, 0, 0, 0, 0, 600})};
    EXPECT_EQ(FormatWayPoints(points, letters, 55.5),
              QStringLiteral("G1 X1.000 W77.000 F600\nG1 X2.000 W55.500 F600\n"));
}

TEST(FormatWayPoints, NoPoints_GiveNoText) {
    EXPECT_EQ(FormatWayPoints({}, AxisMap{{1, 'X'}}, 0), QString());
    EXPECT_EQ(FormatWayPoints({WayPoint{}}, AxisMap{{1, 'X'}}, 0), QString());
}

TEST(FormatWayPoints, IdsThatNoPointHas_AreLeftOut) {
    const AxisMap letters{{-3, 'Q'}, {0, 'P'}, {1, 'X'}, {99, 'R'}};
    EXPECT_EQ(FormatWayPoints({pointOf({1, 2, 3, 4, 5, 6})}, letters, 0), QStringLiteral("G1 X1.000 F6\n"));
}

TEST(FormatWayPoints, AnyValue_IsWrittenAsTheNumberFormatWritesIt) {
    std::mt19937_64 random(7);
    const AxisMap letters{{1, 'X'}, {2, 'Y'}, {3, 'Z'}};
    const std::vector<double> special{0.0,   -0.0, 0.0005,  -0.0004, 1.0005,  2.5e-4,  1e300,
                                      -1e15, 1e9,  12.3455, 0.9995,  -0.9996, 4.0e-320};
    for (int round = 0; round < 5000; ++round) {
        std::array<double, 4> v{};
        for (double& value : v) {
            const auto pick = random() % 4;
            value = pick == 0   ? special[random() % special.size()]
                    : pick == 1 ? static_cast<double>(random() % 2000001) / 2000.0 - 500.0
                                : std::ldexp(static_cast<double>(random()), -static_cast<int>(random() % 64));
        }
        QString expected = QStringLiteral("G1 ");
        for (int i = 0; i < 3; ++i)
            expected +=
                QStringLiteral("XYZ")[i] + QString::number(v[static_cast<std::size_t>(i)], 'f', 3) + ' ';
        expected += 'F' + QString::number(v[3], 'f', 0) + '\n';
        EXPECT_EQ(FormatWayPoints({pointOf({v[0], v[1], v[2], v[3]})}, letters, 0), expected);
    }
}

TEST(FormatWayPoints, ReadBack_GivesTheSamePointsToThreeDecimals) {
    std::mt19937 random(99);
    std::uniform_real_distribution<double> value(-3000, 3000);
    const auto machine = fiveAxisMachine();
    const QString chain = QStringLiteral("XYZCA");
    WayPoints points;
    for (int i = 0; i < 500; ++i)
        points.push_back(
            pointOf({value(random), value(random), value(random), value(random), value(random), 4000}));
    const QString text = FormatWayPoints(points, machine->axisMap(chain, true), 0);
    const WayPoints back = WayPointsFromCode(*machine, chain, text, nullptr);
    ASSERT_EQ(back.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        for (int k = 0; k < 5; ++k)
            EXPECT_NEAR(back[i][k], points[i][k], 0.000501) << "point " << i << " entry " << k;
    }
}

TEST(LastFeed, SeveralFeeds_TheLastOneCounts) {
    EXPECT_EQ(lastFeed(QStringLiteral("G1 X1 F100\nG1 X2 F200.5\nG1 X3\n")), 200.5);
}

TEST(LastFeed, BadNumberBehindTheLastF_GoesOnToTheFront) {
    EXPECT_EQ(lastFeed(QStringLiteral("F300\nF1-2\nF\nF.")), 300.0);
    EXPECT_EQ(lastFeed(QStringLiteral("F-40 F")), -40.0);
    EXPECT_EQ(lastFeed(QStringLiteral("F7")), 7.0);
}

TEST(LastFeed, NoFeed_GivesZero) {
    EXPECT_EQ(lastFeed(QString()), 0.0);
    EXPECT_EQ(lastFeed(QStringLiteral("G1 X1 f500")), 0.0);
    EXPECT_EQ(lastFeed(QStringLiteral("F F F")), 0.0);
}

TEST(SmoothCorners, ThreePointsOrFewer_ComeBackUnchanged) {
    const WayPoints corner{pointOf({0, 0, 0}), pointOf({100, 0, 0}), pointOf({100, 100, 0})};
    EXPECT_EQ(smoothCorners(corner), corner);
    EXPECT_EQ(smoothCorners({}), WayPoints{});
}

TEST(SmoothCorners, RightAngleOfLongSegments_GetsSixPointsFromTenMillimetresBeforeToTenBehind) {
    const WayPoints path{pointOf({-100, 0, 0}), pointOf({0, 0, 0}), pointOf({100, 0, 0}),
                         pointOf({100, 100, 0})};
    const WayPoints smooth = smoothCorners(path);
    ASSERT_EQ(smooth.size(), 9U);
    EXPECT_EQ(entriesOf(smooth[2]), (Entries{90, 0, 0}));
    EXPECT_EQ(entriesOf(smooth[7]), (Entries{100, 10, 0}));
    EXPECT_EQ(entriesOf(smooth[8]), (Entries{100, 100, 0}));
    for (int i = 0; i < 6; ++i) {
        const double u = i / 5.0;  // the closed form of the same curve
        EXPECT_NEAR(smooth[static_cast<std::size_t>(2 + i)][0], 90 + 20 * u - 10 * u * u, 1e-12);
        EXPECT_NEAR(smooth[static_cast<std::size_t>(2 + i)][1], 10 * u * u, 1e-12);
    }
}

TEST(SmoothCorners, ShortSegments_AreCutByAThird) {
    const WayPoints path{pointOf({-100, 0, 0}), pointOf({0, 0, 0}), pointOf({15, 0, 0}), pointOf({15, 6, 0})};
    const WayPoints smooth = smoothCorners(path);
    ASSERT_EQ(smooth.size(), 9U);
    EXPECT_NEAR(smooth[2][0], 10.0, 1e-12);
    EXPECT_NEAR(smooth[7][1], 2.0, 1e-12);
}

TEST(SmoothCorners, RotaryValues_AreRoundedWithTheCorner) {
    const WayPoints path{pointOf({-100, 0, 0, 0, 0}), pointOf({0, 0, 0, 0, 0}), pointOf({100, 0, 0, 30, 0}),
                         pointOf({100, 100, 0, 30, 50})};
    const WayPoints smooth = smoothCorners(path);
    ASSERT_EQ(smooth.size(), 9U);
    EXPECT_NEAR(smooth[2][3], 27.0, 1e-12);
    EXPECT_NEAR(smooth[7][4], 5.0, 1e-12);
}

TEST(SmoothCorners, BendBelowTheLimit_IsNotTouched) {
    constexpr double kLimit = 0.2617993878;
    for (const double bend : {kLimit - 1e-6, kLimit + 1e-6}) {
        const WayPoints path{pointOf({-100, 0, 0}), pointOf({0, 0, 0}), pointOf({100, 0, 0}),
                             pointOf({100 + 100 * std::cos(bend), 100 * std::sin(bend), 0})};
        EXPECT_EQ(smoothCorners(path).size(), bend < kLimit ? 4U : 9U);
    }
}

TEST(SmoothCorners, RepeatedPoint_PassesAsACorner) {
    const WayPoints path{pointOf({0, 0, 0}), pointOf({10, 0, 0}), pointOf({10, 0, 0}), pointOf({10, 0, 0})};
    EXPECT_EQ(smoothCorners(path), path);
}

TEST(SmoothCorners, RandomPaths_KeepTheirEndsAndStayWithinTheCut) {
    std::mt19937 random(31);
    std::uniform_real_distribution<double> value(-200, 200);
    for (int round = 0; round < 200; ++round) {
        WayPoints path;
        for (int i = 0; i < 12; ++i)
            path.push_back(pointOf({value(random), value(random), value(random), value(random), 0}));
        const WayPoints smooth = smoothCorners(path);
        EXPECT_EQ(smooth.front(), path.front());
        EXPECT_EQ(smooth.back(), path.back());
        for (const WayPoint& original : path) {  // a corner is cut, but never by more than 10 mm
            double nearest = 1e9;
            for (const WayPoint& point : smooth)
                nearest = std::min(nearest, distance(point, original));
            EXPECT_LE(nearest, 10.0 + 1e-9) << "round " << round;
        }
    }
}

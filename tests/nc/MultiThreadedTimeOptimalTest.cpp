#include "nc/multiThreadedTimeOptimal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "TA/Trajectory.h"
#include "core/calc/NumberText.h"
#include "machine/readConfig.h"
#include "nc/TestMachine.h"
#include "nc/calc/ProgramAudit.h"
#include "support/TestSupport.h"

namespace {

const QString kChain = QStringLiteral("X->Y->Z->C->A");
const QVector<QChar> kLetters{'X', 'Y', 'Z', 'C', 'A'};
using Numbers = std::vector<double>;

WayPoint pointOf(const Numbers& values) {
    WayPoint point;
    for (const double value : values)
        point.append(value);
    return point;
}

/// A machine and an installation of the test's own.
class Planner : public ::testing::Test {
  protected:
    void SetUp() override { useMachine(fiveAxisMachine()); }
    void TearDown() override { ConfigReader::instance().setDescription(nullptr); }

    static void useMachine(std::unique_ptr<MachineDescription> machine) {
        ConfigReader::instance().setDescription(std::move(machine));
    }
    void settings(const QByteArray& lines) const {
        installation_.write(QStringLiteral("data.ini"), "[StatusPreProcessing]\n" + lines);
    }
    static QString retime(const QString& code, double factor = 1.0, bool densePoint = false,
                          const std::shared_ptr<AuxiliaryAxis>& auxiliary = nullptr) {
        return multiThreadedTimeOptimal::TimeOptimizeCode(code, kChain, auxiliary, factor, densePoint);
    }
    static QString format(const std::vector<Numbers>& points, double speed_mmPerS = 100,
                          const Numbers& accelerations = Numbers(5, 1000.0)) {
        WayPoints path;
        for (const Numbers& point : points)
            path.push_back(pointOf(point));
        return multiThreadedTimeOptimal(path, accelerations, Numbers(5, 1.0), speed_mmPerS)
            .FormatIso(kLetters);
    }

  private:
    TemporaryInstallation installation_;
};

/// The numbers of re-timed code, taken apart without the code under test.
std::vector<Numbers> positionsOf(const QString& code) {
    std::vector<Numbers> positions;
    for (const QString& line : code.split('\n', Qt::SkipEmptyParts)) {
        Numbers position;
        for (const QString& word : line.split(' ', Qt::SkipEmptyParts)) {
            if (word[0] != 'G' && word[0] != 'F')
                position.push_back(word.mid(1).toDouble());
        }
        positions.push_back(position);
    }
    return positions;
}

double norm(const Numbers& v) {
    double sum = 0;
    for (const double x : v)
        sum += x * x;
    return std::sqrt(sum);
}

Numbers minus(const Numbers& a, const Numbers& b) {
    Numbers d(a.size());
    for (std::size_t i = 0; i < a.size(); ++i)
        d[i] = a[i] - b[i];
    return d;
}

double distanceToSegment(const Numbers& p, const Numbers& a, const Numbers& b) {
    const Numbers along = minus(b, a);
    const Numbers toPoint = minus(p, a);
    double dot = 0;
    double square = 0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        dot += along[i] * toPoint[i];
        square += along[i] * along[i];
    }
    const double t = square > 0 ? std::clamp(dot / square, 0.0, 1.0) : 0.0;
    Numbers foot = a;
    for (std::size_t i = 0; i < p.size(); ++i)
        foot[i] += t * along[i];
    return norm(minus(p, foot));
}

double distanceToPath(const Numbers& p, const std::vector<Numbers>& path) {
    double nearest = norm(minus(p, path.front()));
    for (std::size_t i = 1; i < path.size(); ++i)
        nearest = std::min(nearest, distanceToSegment(p, path[i - 1], path[i]));
    return nearest;
}

}  // namespace

TEST_F(Planner, OneMetreAtSixMetresPerMinute_BecomesOneLinePerPeriod) {
    QString code;
    for (int i = 0; i < 100; ++i)
        code +=
            QStringLiteral("G1 X%1 Y0.000 Z0.000 C0.000 A0.000 F6000\n").arg(i * 1000.0 / 99.0, 0, 'f', 3);
    const QString text = retime(code);
    const int lines = text.count('\n');
    EXPECT_GE(lines, 2500);
    EXPECT_LE(lines, 2530);  // ten seconds, and a tenth of a second to speed up and to brake
    EXPECT_TRUE(text.startsWith("G1 X0.000 Y0.000 Z0.000 C0.000 A0.000  F6000\n"));
    EXPECT_TRUE(text.endsWith("G1 X1000.000 Y0.000 Z0.000 C0.000 A0.000  F6000\n"));
}

TEST_F(Planner, FeedOfZero_GivesNoTextNoBoxAndNoCall) {
    const ExpectedDialogs dialogs;
    const LogCapture log;
    EXPECT_EQ(retime("G1 X0 F0\nG1 X10 F0\n"), QString());
    EXPECT_EQ(retime("G1 X0\nG1 X10\n"), QString());
    EXPECT_EQ(retime("G1 X0\nG1 X10 F0.09\n"), QString());
    EXPECT_EQ(retime("G1 X0\nG1 X10 F600\n", 0.0001), QString());
    EXPECT_FALSE(log.contains("trajectory algorithm:"));
}

TEST_F(Planner, FewerThanTwoWayPoints_GiveNoTextAndNoBox) {
    const ExpectedDialogs dialogs;
    EXPECT_EQ(retime(""), QString());
    EXPECT_EQ(retime("G1 X10 F600\n"), QString());
}

TEST_F(Planner, Factor_ScalesTheFeed) {
    const QString half = retime("G1 X0 F6000\nG1 X100 F6000\n", 0.5);
    EXPECT_TRUE(half.endsWith("G1 X100.000 Y0.000 Z0.000 C0.000 A0.000  F3000\n"));
    EXPECT_GT(half.count('\n'), retime("G1 X0 F6000\nG1 X100 F6000\n").count('\n'));
}

TEST_F(Planner, SeveralFeeds_TheLastOneRuns) {
    const QString text = retime("G1 X0 F9000\nG1 X10 F9000\nG1 X20 F1200\n");
    EXPECT_FALSE(text.contains("F9000"));
    EXPECT_TRUE(text.contains("  F1200\n"));
}

TEST_F(Planner, OnePoint_GivesOneLineWithASingleBlank) {
    EXPECT_EQ(format({{1, 2, 3, 4, 5}}), QStringLiteral("G1 X1.000 Y2.000 Z3.000 C4.000 A5.000 F6000\n"));
}

TEST_F(Planner, TwoEqualPoints_CollapseToThatLine) {
    EXPECT_EQ(format({{1, 2, 3, 4, 5}, {1, 2, 3, 4, 5}}), format({{1, 2, 3, 4, 5}}));
    EXPECT_EQ(retime("G1 X7 F600\nG1 X7 F600\n"),
              QStringLiteral("G1 X7.000 Y0.000 Z0.000 C0.000 A0.000 F600\n"));
}

TEST_F(Planner, NoPoints_GiveNoText) {
    EXPECT_EQ(format({}), QString());
}

TEST_F(Planner, DensePoint_RoundsTheCorner) {
    settings("ToleranceBlend=0.01\n");
    const QString corner = "G1 X-100 F6000\nG1 X0 F6000\nG1 X100 F6000\nG1 X100 Y100 F6000\n";
    const Numbers vertex{100, 0, 0, 0, 0};
    EXPECT_LT(distanceToPath(vertex, positionsOf(retime(corner))), 0.05);
    // The middle of the Bezier curve over cuts of 10 mm lies 10 * sqrt(2) / 4 before the corner; between its
    // samples the chord lies a little further in.
    EXPECT_NEAR(distanceToPath(vertex, positionsOf(retime(corner, 1.0, true))), 3.54, 0.15);
}

TEST_F(Planner, MissingSettings_GiveAlgorithmTwoWithHalfAMillimetre) {
    const LogCapture log;
    retime("G1 X0 F600\nG1 X1 F600\n");
    EXPECT_TRUE(log.contains("trajectory algorithm: 2 \ttolerance_blend: 0.5")) << log.all().toStdString();
}

TEST_F(Planner, EmptySettings_GiveTheSame) {
    settings("TrajAlgorithem=\nToleranceBlend=\n");
    const LogCapture log;
    retime("G1 X0 F600\nG1 X1 F600\n");
    EXPECT_TRUE(log.contains("trajectory algorithm: 2 \ttolerance_blend: 0.5")) << log.all().toStdString();
}

TEST_F(Planner, Settings_AreReadAtConstruction) {
    settings("TrajAlgorithem=1\nToleranceBlend=0.125\n");
    const LogCapture log;
    EXPECT_FALSE(retime("G1 X0 F600\nG1 X1 F600\n").isEmpty());
    EXPECT_TRUE(log.contains("trajectory algorithm: 1 \ttolerance_blend: 0.125")) << log.all().toStdString();
}

TEST_F(Planner, UnknownAlgorithm_GivesEmptyTextAndTheBox) {
    settings("TrajAlgorithem=7\n");
    EXPECT_EQ(format({{0, 0, 0, 0, 0}, {1, 0, 0, 0, 0}}), QString());
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Critical, "Error", "Time optimal failed");
    EXPECT_EQ(retime("G1 X0 F600\nG1 X1 F600\n"), QString());
}

TEST_F(Planner, LibraryThrows_EndsTheProcess) {
    EXPECT_FATAL(format({{0, 0, 0, 0, 0}, {1, 0, 0, 0, 0}}, 100, Numbers(5, 0.0)),
                 "Exception caught in algorithm: .*\\.reset step size\\.do it again");
    useMachine(makeTestMachine({{"X", 1, "fast"}, {"Y", 2}}));
    EXPECT_FATAL(retime("G1 X0 F600\nG1 X1 F600\n"),
                 "Exception caught in algorithm: .*\\.reset step size\\.do it again");
}

TEST_F(Planner, PositionOfAnotherSizeThanTheLetters_EndsTheProcess) {
    WayPoints path{pointOf({0, 0}), pointOf({1, 0})};
    multiThreadedTimeOptimal planner(path, {1000, 1000}, {1, 1}, 100);
    EXPECT_FATAL(static_cast<void>(planner.FormatIso({'X', 'Y', 'Z'})), "position size not equal names size");
    EXPECT_FATAL(static_cast<void>(planner.FormatIso({'X'})), "position size not equal names size");
}

TEST_F(Planner, NoInterpolationTime_IsRefusedAndDoesNotHang) {
    useMachine(fiveAxisMachine(0));
    const LogCapture log;
    EXPECT_EQ(format({{0, 0, 0, 0, 0}, {1, 0, 0, 0, 0}}), QString());
    EXPECT_TRUE(log.contains("interpolationTime"));
}

TEST_F(Planner, NegativeFeed_ShowsTheBoxAndTheReasonInTheLog) {
    const LogCapture log;
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Critical, "Error", "Time optimal failed");
    EXPECT_EQ(retime("G1 X0 F600\nG1 X1 F-600\n"), QString());
    EXPECT_TRUE(log.contains("F-600"));
}

TEST_F(Planner, CreepingOverAGreatDistance_IsRefusedBeforeItFillsTheMemory) {
    const LogCapture log;
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Critical, "Error", "Time optimal failed");
    EXPECT_EQ(retime("G1 X0 F0.1\nG1 X900000000 F0.1\n"), QString());
    EXPECT_TRUE(log.contains("expected at most 10000000")) << log.all().toStdString();
}

TEST_F(Planner, CoordinateBeyondReach_IsRefused) {
    const LogCapture log;
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Critical, "Error", "Time optimal failed");
    EXPECT_EQ(retime("G1 X0 F600\nG1 X" + QString(300, '9') + " F600\n"), QString());
    EXPECT_TRUE(log.contains("way point 2"));
}

TEST_F(Planner, AuxiliaryAxisOfTheGroup_AddsItsWordAndItsLimit) {
    const auto auxiliary = std::make_shared<AuxiliaryAxis>(AuxiliaryAxis{"W", 0, 10, 100});
    const QString slow = retime("G1 W0 F60000\nG1 W100 F60000\n", 1.0, false, auxiliary);
    EXPECT_TRUE(slow.endsWith("A0.000 W100.000  F60000\n")) << slow.right(80).toStdString();
    // 100 mm with 10 mm/s^2, half of it braking: 2 * sqrt(100 / 10) s
    EXPECT_NEAR(slow.count('\n') * 0.004, 2 * std::sqrt(10.0), 0.05);
}

TEST_F(Planner, AxisOfIdSixInTheChain_KeepsItsWord) {
    useMachine(makeTestMachine({{"X", 1}, {"W", 6, "1000", "1", "1", "-12.5"}}));
    const QString chain = QStringLiteral("X;W");
    const QString named =
        multiThreadedTimeOptimal::TimeOptimizeCode("G1 X0 W30 F600\nG1 X1 F600\n", chain, nullptr, 1, false);
    EXPECT_TRUE(named.endsWith("G1 X1.000 W30.000  F600\n"));
    const QString absent =
        multiThreadedTimeOptimal::TimeOptimizeCode("G1 X0 F600\nG1 X1 F600\n", chain, nullptr, 1, false);
    EXPECT_TRUE(absent.endsWith("G1 X1.000 W-12.500  F600\n"));
}

TEST_F(Planner, ChainWithoutRotaryAxes_WritesItsOwnLettersOnly) {
    useMachine(makeTestMachine({{"X", 1}, {"Z", 3}}));
    const QString text = multiThreadedTimeOptimal::TimeOptimizeCode(
        "G1 X0 F600\nG1 X1 Z2 F600\n", QStringLiteral("X->Z"), nullptr, 1, false);
    EXPECT_TRUE(text.endsWith("G1 X1.000 Z2.000  F600\n"));
}

/// What a machine that runs one line per period would see, for random paths and every algorithm.
class PlannedPaths : public Planner, public ::testing::WithParamInterface<int> {};

TEST_P(PlannedPaths, SpeedAccelerationAndDeviation_StayWithinTheirLimits) {
    constexpr double kPeriod_s = 0.008;
    constexpr double kTolerance = 0.4;
    settings("TrajAlgorithem=" + QByteArray::number(GetParam()) + "\nToleranceBlend=0.4\n");
    useMachine(fiveAxisMachine(8));
    std::mt19937 random(1000U + static_cast<unsigned>(GetParam()));
    std::uniform_real_distribution<double> value(-1, 1);
    for (int round = 0; round < 60; ++round) {
        const double size = std::pow(10.0, value(random) + 0.8);
        std::vector<Numbers> path;
        for (int i = 0; i < 12; ++i) {
            Numbers point(5);
            for (double& x : point)
                x = size * value(random);
            path.push_back(random() % 8 == 0 && i > 0 ? path.back() : point);
        }
        const double speed = 20 + 100 * (value(random) + 1);
        const Numbers limits = GetParam() == 1 ? Numbers(5, 1500.0) : Numbers{1500, 900, 1200, 700, 2000};
        const std::vector<Numbers> lines = positionsOf(format(path, speed, limits));
        ASSERT_GE(lines.size(), 2U) << "round " << round;
        EXPECT_LT(norm(minus(lines.front(), path.front())), 0.002);
        EXPECT_LT(norm(minus(lines.back(), path.back())), 0.002);

        const double speedNoise = velocityNoise_perMin(kPeriod_s) / 60 * std::sqrt(5.0);
        const double accelerationNoise = accelerationNoise_perS2(kPeriod_s);
        Numbers before(5, 0.0);
        for (std::size_t i = 1; i <= lines.size(); ++i) {
            Numbers velocity(5, 0.0);
            for (std::size_t k = 0; k < 5 && i < lines.size(); ++k)
                velocity[k] = (lines[i][k] - lines[i - 1][k]) / kPeriod_s;
            ASSERT_LE(norm(velocity), speed * 1.0001 + speedNoise) << "round " << round << " line " << i;
            for (std::size_t k = 0; k < 5; ++k) {
                ASSERT_LE(std::abs(velocity[k] - before[k]) / kPeriod_s,
                          limits[k] * 1.0001 + accelerationNoise)
                    << "round " << round << " line " << i << " axis " << k;
            }
            before = velocity;
        }
        for (const Numbers& line : lines)
            ASSERT_LE(distanceToPath(line, path), kTolerance * 1.0001 + 0.002) << "round " << round;
        for (const Numbers& vertex : path)  // every programmed point is passed, as near as the blend allows
            ASSERT_LE(distanceToPath(vertex, lines), kTolerance + 0.05) << "round " << round;
    }
}

INSTANTIATE_TEST_SUITE_P(Algorithms, PlannedPaths, ::testing::Values(0, 1, 2));

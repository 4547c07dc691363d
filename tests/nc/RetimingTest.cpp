#include "nc/calc/Retiming.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "TA/Trajectory.h"
#include "nc/TestMachine.h"
#include "nc/calc/LineWriter.h"
#include "support/TestSupport.h"

namespace {

using Numbers = std::vector<double>;

template <typename T>
T option(const std::optional<TrajectoryOptions>& options, const char* key) {
    const auto it = options->find(key);
    if (it == options->end() || !std::holds_alternative<T>(it->second)) {
        ADD_FAILURE() << "no option of this kind: " << key;
        return T{};
    }
    return std::get<T>(it->second);
}

WayPoint pointOf(std::initializer_list<double> values) {
    WayPoint point;
    for (const double value : values)
        point.append(value);
    return point;
}

/// Moves X evenly at 10 mm/s.
TimedPath evenMotion(double duration_s) {
    return {duration_s, [](double time_s) { return Numbers{10 * time_s, 0.0}; }};
}

const QVector<QChar> kLetters{'X', 'Y'};

struct Sampled {
    QString text;
    Diagnostics diagnostics;
};

Sampled sample(const TimedPath& path, double period_s, double speed_mmPerS = 100) {
    Sampled result;
    result.text = sampleLines(path, kLetters, period_s, speed_mmPerS, result.diagnostics);
    return result;
}

void expectRefused(const TimedPath& path, double period_s) {
    const Sampled result = sample(path, period_s);
    EXPECT_EQ(result.text, QString());
    ASSERT_EQ(result.diagnostics.entries.size(), 1U);
    EXPECT_FALSE(result.diagnostics.entries[0].text.isEmpty());
}

}  // namespace

TEST(TrajectoryOptions, AlgorithmZero_HasVectorLimitsAndAStepSize) {
    const auto options = trajectoryOptions(0, 50, 0.25, {100, 300, 200});
    ASSERT_TRUE(options.has_value());
    EXPECT_EQ(options->size(), 9U);
    EXPECT_EQ(option<std::string>(options, "algorithm"), "toppra");
    EXPECT_EQ(option<std::string>(options, "path_type"), "bezier_quadratic_blend");
    EXPECT_EQ(option<double>(options, "tolerance_blend"), 0.25);
    EXPECT_EQ(option<Numbers>(options, "vel_limits"), (Numbers{50, 50, 50}));
    EXPECT_EQ(option<Numbers>(options, "acc_limits"), (Numbers{100, 300, 200}));
    EXPECT_EQ(option<double>(options, "step_size"), 0.1);
    EXPECT_EQ(option<double>(options, "tolerance_overlap"), 0.0);
    EXPECT_EQ(option<double>(options, "tolerance_colinear"), 0.01);
    EXPECT_EQ(option<double>(options, "speed"), 50.0);
}

TEST(TrajectoryOptions, AlgorithmOne_HasTheLargestAcceleration) {
    const auto options = trajectoryOptions(1, 50, 0.25, {100, 300, 200});
    ASSERT_TRUE(options.has_value());
    EXPECT_EQ(options->size(), 7U);
    EXPECT_EQ(option<std::string>(options, "algorithm"), "trapezoidal_constant_speed");
    EXPECT_EQ(option<std::string>(options, "path_type"), "circle_blend");
    EXPECT_EQ(option<double>(options, "tolerance_blend"), 0.25);
    EXPECT_EQ(option<double>(options, "speed"), 50.0);
    EXPECT_EQ(option<double>(options, "acceleration"), 300.0);
    EXPECT_EQ(option<double>(options, "tolerance_overlap"), 0.0);
    EXPECT_EQ(option<double>(options, "tolerance_colinear"), 0.01);
    EXPECT_EQ(option<double>(trajectoryOptions(1, 50, 0.25, {-7, -9}), "acceleration"), -7.0);
}

TEST(TrajectoryOptions, AlgorithmTwo_HasOneVelocityNumber) {
    const auto options = trajectoryOptions(2, 50, 0.25, {100, 300, 200});
    ASSERT_TRUE(options.has_value());
    EXPECT_EQ(options->size(), 7U);
    EXPECT_EQ(option<std::string>(options, "algorithm"), "trapezoidal");
    EXPECT_EQ(option<std::string>(options, "path_type"), "bezier_quadratic_blend");
    EXPECT_EQ(option<double>(options, "tolerance_blend"), 0.25);
    EXPECT_EQ(option<double>(options, "vel_limits"), 50.0);
    EXPECT_EQ(option<Numbers>(options, "acc_limits"), (Numbers{100, 300, 200}));
    EXPECT_EQ(option<double>(options, "tolerance_overlap"), 0.0);
    EXPECT_EQ(option<double>(options, "tolerance_colinear"), 0.01);
}

TEST(TrajectoryOptions, AnyOtherNumber_GivesNothing) {
    EXPECT_FALSE(trajectoryOptions(3, 50, 0.25, {100}).has_value());
    EXPECT_FALSE(trajectoryOptions(-1, 50, 0.25, {100}).has_value());
}

TEST(Retiming, WithoutRepeats_ReducesNeighboursOnly) {
    const WayPoint a = pointOf({1, 2});
    const WayPoint b = pointOf({1, 3});
    EXPECT_EQ(withoutRepeats({a, a, a, b, b, a}), (WayPoints{a, b, a}));
    EXPECT_EQ(withoutRepeats({}), WayPoints{});
}

TEST(Retiming, TrajectoryPoints_HaveOnlyTheEntriesInUse) {
    const auto points = trajectoryPoints({pointOf({1, 2}), pointOf({3, 4})});
    EXPECT_EQ(points, (std::vector<Numbers>{{1, 2}, {3, 4}}));
}

TEST(Retiming, SinglePointLine_HasOneBlankBeforeF) {
    EXPECT_EQ(singlePointLine(pointOf({1.5, -2}), kLetters, 100),
              QStringLiteral("G1 X1.500 Y-2.000 F6000\n"));
}

TEST(Retiming, SampledLines_HaveTwoBlanksBeforeF) {
    const QString text = sample(evenMotion(0.01), 0.004).text;
    EXPECT_EQ(text, QStringLiteral("G1 X0.000 Y0.000  F6000\nG1 X0.040 Y0.000  F6000\n"
                                   "G1 X0.080 Y0.000  F6000\nG1 X0.100 Y0.000  F6000\n"));
}

TEST(Retiming, SampleTimes_AreARepeatedSum) {
    std::vector<double> asked;
    const TimedPath path{1.0, [&asked](double time_s) {
                             asked.push_back(time_s);
                             return Numbers{0, 0};
                         }};
    Diagnostics diagnostics;
    EXPECT_EQ(sampleLines(path, kLetters, 0.1, 1, diagnostics).count('\n'), 12);
    // Ten times 0.1 added up stays below 1, so an eleventh regular sample comes; a product would not.
    std::vector<double> expected;
    double sum = 0;
    for (; sum < 1.0; sum += 0.1)
        expected.push_back(sum);
    expected.push_back(1.0);
    ASSERT_EQ(expected.size(), 12U);
    EXPECT_EQ(asked, expected);
}

TEST(Retiming, Feed_IsWrittenWithoutDecimals) {
    EXPECT_TRUE(sample(evenMotion(0.001), 0.004, 10.0 / 60.0 * 1.25).text.endsWith("  F12\n"));
    EXPECT_TRUE(sample(evenMotion(0.001), 0.004, 99.999999).text.endsWith("  F6000\n"));
}

TEST(Retiming, DurationZero_GivesNoTextAndSaysNothing) {
    const Sampled result = sample(evenMotion(0), 0.004);
    EXPECT_EQ(result.text, QString());
    EXPECT_TRUE(result.diagnostics.entries.empty());
}

TEST(Retiming, AbsurdTimes_AreRefusedBeforeMemoryIsAskedFor) {
    expectRefused(evenMotion(std::numeric_limits<double>::infinity()), 0.004);
    expectRefused(evenMotion(std::numeric_limits<double>::quiet_NaN()), 0.004);
    expectRefused(evenMotion(-1), 0.004);
    expectRefused(evenMotion(1e12), 0.004);
    expectRefused(evenMotion(10), 0.0);
    expectRefused(evenMotion(10), -0.004);
    expectRefused(evenMotion(10), std::numeric_limits<double>::quiet_NaN());
}

TEST(Retiming, PositionOfAnotherSize_IsFatal) {
    for (const std::size_t size : {0U, 1U, 3U}) {
        const Sampled result = sample({1.0, [size](double) { return Numbers(size, 1.0); }}, 0.1);
        EXPECT_EQ(result.text, QString());
        ASSERT_EQ(result.diagnostics.entries.size(), 1U);
        EXPECT_EQ(result.diagnostics.entries[0].severity, Severity::Fatal);
        EXPECT_EQ(result.diagnostics.entries[0].text, QStringLiteral("position size not equal names size"));
    }
}

TEST(Retiming, Plannable_RefusesFeedsThatDoNotMoveAndPointsBeyondReach) {
    Diagnostics diagnostics;
    EXPECT_TRUE(isPlannable({pointOf({1e9, -1e9})}, 1e-3, diagnostics));
    EXPECT_TRUE(diagnostics.entries.empty());
    EXPECT_FALSE(isPlannable({pointOf({1})}, 0, diagnostics));
    EXPECT_FALSE(isPlannable({pointOf({1})}, -5, diagnostics));
    EXPECT_FALSE(isPlannable({pointOf({1})}, std::numeric_limits<double>::infinity(), diagnostics));
    EXPECT_FALSE(isPlannable({pointOf({1}), pointOf({1.1e9})}, 1, diagnostics));
    EXPECT_FALSE(isPlannable({pointOf({std::numeric_limits<double>::quiet_NaN()})}, 1, diagnostics));
    ASSERT_EQ(diagnostics.entries.size(), 5U);
    EXPECT_TRUE(diagnostics.entries[3].text.contains("way point 2"));
}

TEST(Retiming, PathAxes_EndWithTheAuxiliaryAxis) {
    const auto machine = makeTestMachine({{"Z", 3, "30", "1", "3"}, {"X", 1, "10", "1", "1"}, {"W", 6}});
    const AuxiliaryAxis auxiliary{QStringLiteral("Wide"), 0, 60, 6};
    const PathAxes axes = pathAxes(*machine, QStringLiteral("Z->X;W"), &auxiliary);
    EXPECT_EQ(axes.letters, (QVector<QChar>{'X', 'Z', 'W'}));
    EXPECT_EQ(axes.accelerations, (Numbers{10, 30, 60}));
    EXPECT_EQ(axes.jerks, (Numbers{1, 3, 6}));
}

TEST(Retiming, AuxiliaryOfChain_StandsAtItsLowerLimit) {
    const auto machine = makeTestMachine({{"X", 1}, {"W", 6, "60", "1", "6", "-12.5"}});
    const auto axis = auxiliaryOfChain(*machine, QStringLiteral("X;W"));
    ASSERT_TRUE(axis.has_value());
    EXPECT_EQ(axis->name, QStringLiteral("W"));
    EXPECT_EQ(axis->value, -12.5);
    EXPECT_EQ(axis->acceleration, 60.0);
    EXPECT_EQ(axis->jerk, 6.0);
    EXPECT_FALSE(auxiliaryOfChain(*machine, QStringLiteral("X")).has_value());
}

TEST(LineWriter, NoLetters_WritesTheFeedAlone) {
    LineWriter writer({});
    writer.appendWords(nullptr);
    writer.appendFeed(100);
    EXPECT_EQ(writer.take(), QStringLiteral("G1 F100\n"));
}

TEST(LineWriter, LetterBeyondLatin_IsKept) {
    LineWriter writer({QChar(0x4e2d)});
    const double value = 1;
    writer.appendWords(&value);
    writer.appendFeed(1);
    EXPECT_EQ(writer.take(), QStringLiteral("G1 \u4e2d1.000 F1\n"));
}

TEST(LineWriter, HugeValues_FitWhateverTheirLength) {
    LineWriter writer({'X', 'Y'});
    const std::array<double, 2> values{1.7e308, -1.7e308};
    for (int i = 0; i < 3; ++i) {
        writer.appendWords(values.data());
        writer.appendFeed(1e300);
    }
    const QString line = QStringLiteral("G1 X%1 Y%2 F%3\n")
                             .arg(QString::number(1.7e308, 'f', 3), QString::number(-1.7e308, 'f', 3),
                                  QString::number(1e300, 'f', 0));
    EXPECT_EQ(writer.take(), line + line + line);
}

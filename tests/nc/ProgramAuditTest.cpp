#include "nc/calc/ProgramAudit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "nc/TestMachine.h"
#include "nc/calc/ProgramSummary.h"
#include "support/TestSupport.h"

namespace {

constexpr double kPeriod_s = 0.004;

ProgramAudit audit(const QString& code, unsigned period_ms = 4) {
    Diagnostics diagnostics;
    const auto result = auditProgram(*fiveAxisMachine(period_ms), QStringLiteral("XYZCA"), code, diagnostics);
    EXPECT_TRUE(result.has_value());
    return result.value_or(ProgramAudit{});
}

const AxisDemand& axisOf(const ProgramAudit& audit, char letter) {
    for (const AxisDemand& axis : audit.axes) {
        if (axis.letter == QLatin1Char(letter))
            return axis;
    }
    throw std::out_of_range("no such axis");
}

/// One X word per period of a motion x(t), to the end of the motion as the planner writes it.
QString sampledX(const std::function<double(double)>& x, double duration_s, double period_s) {
    QString code;
    for (double t = 0; t < duration_s; t += period_s)
        code += QStringLiteral("G1 X%1 F100\n").arg(x(t), 0, 'f', 3);
    return code + QStringLiteral("G1 X%1 F100\n").arg(x(duration_s), 0, 'f', 3);
}

/// Accelerate with a, brake with a, half of the time each.
double triangleMotion(double t, double acceleration, double duration_s) {
    const double half_s = duration_s / 2;
    if (t <= half_s)
        return acceleration * t * t / 2;
    const double left_s = duration_s - t;
    return acceleration * half_s * half_s - acceleration * left_s * left_s / 2;
}

}  // namespace

TEST(ProgramAudit, OneStep_IsMeasuredWithRestOnBothSides) {
    const ProgramAudit result = audit("G1 X0 Y5\nG1 X1 Y5\n");
    EXPECT_EQ(result.lines, 2U);
    EXPECT_DOUBLE_EQ(result.seconds, 0.008);
    ASSERT_EQ(result.axes.size(), 5U);
    const AxisDemand& x = axisOf(result, 'X');
    EXPECT_NEAR(x.maxVelocity_perMin, 1 / kPeriod_s * 60, 1e-6);
    EXPECT_NEAR(x.maxAcceleration_perS2, 1 / kPeriod_s / kPeriod_s, 1e-6);
    // velocities 0, 250, 0: accelerations +62500, -62500: the jerk between them is the largest
    EXPECT_NEAR(x.maxJerk_perS3, 2 / kPeriod_s / kPeriod_s / kPeriod_s, 1e-3);
    EXPECT_EQ(axisOf(result, 'Y').maxVelocity_perMin, 0.0);
    EXPECT_EQ(axisOf(result, 'Y').maxJerk_perS3, 0.0);
}

TEST(ProgramAudit, AxesAndLimits_ComeFromTheMachineInIdOrder) {
    Diagnostics diagnostics;
    const auto machine =
        makeTestMachine({{"A", 5, "55", "5500", "555"}, {"X", 1, "11", "1100", "111"}, {"W", 6}});
    const auto result = auditProgram(*machine, QStringLiteral("A->X;W"), QStringLiteral("X1"), diagnostics);
    ASSERT_TRUE(result.has_value());
    ASSERT_EQ(result->axes.size(), 3U);
    EXPECT_EQ(result->axes[0].letter, QLatin1Char('X'));
    EXPECT_EQ(result->axes[0].velocityLimit_perMin, 1100.0);
    EXPECT_EQ(result->axes[0].accelerationLimit_perS2, 11.0);
    EXPECT_EQ(result->axes[0].jerkLimit_perS3, 111.0);
    EXPECT_EQ(result->axes[1].letter, QLatin1Char('A'));
    EXPECT_EQ(result->axes[2].letter, QLatin1Char('W'));
}

TEST(ProgramAudit, FirstWordOfAnAxis_IsNoMove) {
    const ProgramAudit result = audit("G1 X900\nG1 X900 Z-500\nG1 X900 Z-500\n");
    EXPECT_EQ(axisOf(result, 'X').maxVelocity_perMin, 0.0);
    EXPECT_EQ(axisOf(result, 'Z').maxVelocity_perMin, 0.0);
}

TEST(ProgramAudit, LinesWithoutWords_RestForAPeriodAndEmptyOnesTakeNoTime) {
    const ProgramAudit result = audit("G1 X0\nG1 X1\nM8\n\n(DLY,1)\n");
    EXPECT_EQ(result.lines, 4U);
    EXPECT_DOUBLE_EQ(result.seconds, 4 * kPeriod_s);
    EXPECT_NEAR(axisOf(result, 'X').maxAcceleration_perS2, 62500, 1e-6);
}

TEST(ProgramAudit, EmptyProgram_AsksNothing) {
    const ProgramAudit result = audit("");
    EXPECT_EQ(result.lines, 0U);
    EXPECT_EQ(result.seconds, 0.0);
    EXPECT_FALSE(result.hasViolation());
}

TEST(ProgramAudit, NoPeriodOrNoAxis_IsRefused) {
    Diagnostics diagnostics;
    EXPECT_FALSE(auditProgram(*fiveAxisMachine(0), QStringLiteral("XYZ"), u"X1", diagnostics).has_value());
    EXPECT_FALSE(auditProgram(*fiveAxisMachine(), QStringLiteral("QRS"), u"X1", diagnostics).has_value());
    ASSERT_EQ(diagnostics.entries.size(), 2U);
    EXPECT_TRUE(diagnostics.entries[0].text.contains("interpolationTime"));
    EXPECT_TRUE(diagnostics.entries[1].text.contains("QRS"));
}

TEST(ProgramAudit, MotionAtItsLimit_NeverMeasuresAboveItWhateverTheLastStep) {
    // 1000 mm/s^2 is the limit of the test machine.
    for (int i = 0; i < 40; ++i) {
        const double duration_s = 0.5 + i * 0.000317;
        const QString code =
            sampledX([&](double t) { return triangleMotion(t, 1000, duration_s); }, duration_s, kPeriod_s);
        const ProgramAudit result = audit(code);
        const double measured = axisOf(result, 'X').maxAcceleration_perS2;
        EXPECT_GT(measured, 990.0) << duration_s;
        EXPECT_LE(measured, 1000 + accelerationNoise_perS2(kPeriod_s)) << duration_s;
        EXPECT_FALSE(result.hasViolation()) << duration_s;
    }
}

TEST(ProgramAudit, AccelerationOverTheLimit_IsAViolation) {
    const double acceleration = 1000 + accelerationNoise_perS2(kPeriod_s) + 130;
    const QString code =
        sampledX([&](double t) { return triangleMotion(t, acceleration, 0.8); }, 0.8, kPeriod_s);
    EXPECT_TRUE(audit(code).hasViolation());
}

TEST(ProgramAudit, VelocityOverTheLimit_IsAViolation) {
    Diagnostics diagnostics;
    const auto machine = makeTestMachine({{"X", 1, "1e6", "3000"}});
    const auto even = [](double v) { return [v](double t) { return v * t; }; };
    for (const auto& [speed_mmPerS, isOver] : {std::pair{50.0, false}, std::pair{50.9, true}}) {
        const auto result = auditProgram(*machine, QStringLiteral("X"),
                                         sampledX(even(speed_mmPerS), 1.0, kPeriod_s), diagnostics);
        ASSERT_TRUE(result.has_value());
        EXPECT_EQ(result->hasViolation(), isOver) << speed_mmPerS;
    }
}

TEST(ProgramAudit, JerkOverItsLimit_IsReportedButNoViolation) {
    Diagnostics diagnostics;
    const auto machine = makeTestMachine({{"X", 1, "2000", "60000", "10"}});
    const auto result = auditProgram(
        *machine, QStringLiteral("X"),
        sampledX([](double t) { return triangleMotion(t, 1000, 0.5); }, 0.5, kPeriod_s), diagnostics);
    ASSERT_TRUE(result.has_value());
    EXPECT_GT(result->axes[0].maxJerk_perS3, 10.0);
    EXPECT_FALSE(result->hasViolation());
}

TEST(ProgramAudit, LimitThatIsNoPositiveNumber_IsNotHeldAgainstTheProgram) {
    Diagnostics diagnostics;
    const auto machine = makeTestMachine({{"X", 1, "", "fast"}});
    const auto result =
        auditProgram(*machine, QStringLiteral("X"), QStringLiteral("X0\nX900\nX0\n"), diagnostics);
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->axes[0].accelerationLimit_perS2, 0.0);
    EXPECT_FALSE(result->hasViolation());
}

TEST(ProgramAudit, RoundingToThreeDecimals_NeverMakesAViolation) {
    // Positions at rest, but for the rounding of the text: every digit pattern that rounding can give.
    std::mt19937 random(5);
    for (int round = 0; round < 50; ++round) {
        QString code;
        const double offset = static_cast<double>(random() % 1000) * 1e-3;
        for (int i = 0; i < 200; ++i)
            code += QStringLiteral("G1 X%1\n")
                        .arg(offset + (random() % 2 == 0 ? 0.0004999 : 0.0005001), 0, 'f', 3);
        const ProgramAudit result = audit(code);
        EXPECT_LE(axisOf(result, 'X').maxAcceleration_perS2, accelerationNoise_perS2(kPeriod_s) + 1e-6);
        EXPECT_LE(axisOf(result, 'X').maxVelocity_perMin, velocityNoise_perMin(kPeriod_s) + 1e-6);
    }
}

TEST(ProgramAudit, RandomWalk_AgreesWithDifferencesOfTheNumbers) {
    std::mt19937 random(17);
    for (int round = 0; round < 50; ++round) {
        std::vector<double> q(3, 0.0);  // three periods of rest in front and behind
        QString code;
        double x = static_cast<double>(random() % 1000);
        q.assign(3, x);
        for (int i = 0; i < 60; ++i) {
            if (i > 0)
                x += static_cast<double>(static_cast<int>(random() % 2001) - 1000) / 1000.0;
            code += QStringLiteral("G1 Y%1 F1\n").arg(x, 0, 'f', 3);
            q.push_back(x);
        }
        q.insert(q.end(), 3, x);
        double velocity = 0, acceleration = 0, jerk = 0;
        for (std::size_t i = 3; i < q.size(); ++i) {
            velocity = std::max(velocity, std::abs(q[i] - q[i - 1]));
            acceleration = std::max(acceleration, std::abs(q[i] - 2 * q[i - 1] + q[i - 2]));
            jerk = std::max(jerk, std::abs(q[i] - 3 * q[i - 1] + 3 * q[i - 2] - q[i - 3]));
        }
        const ProgramAudit result = audit(code);
        const AxisDemand& y = axisOf(result, 'Y');
        EXPECT_NEAR(y.maxVelocity_perMin, velocity / kPeriod_s * 60, 1e-4) << "round " << round;
        EXPECT_NEAR(y.maxAcceleration_perS2, acceleration / std::pow(kPeriod_s, 2), 1e-3)
            << "round " << round;
        EXPECT_NEAR(y.maxJerk_perS3, jerk / std::pow(kPeriod_s, 3), 1.0) << "round " << round;
    }
}

TEST(ProgramAudit, AnyBytes_AreMeasuredWithoutHarm) {
    std::mt19937 random(23);
    const QString alphabet = QStringLiteral("XYZCAF0123456789.- \n\r\t");
    for (int round = 0; round < 200; ++round) {
        QString code;
        for (auto i = random() % 400; i > 0; --i)
            code += alphabet[static_cast<int>(random() % static_cast<std::size_t>(alphabet.size()))];
        const ProgramAudit result = audit(code);
        for (const AxisDemand& axis : result.axes)
            EXPECT_GE(axis.maxJerk_perS3, 0.0) << code.toStdString();
    }
}

TEST(ProgramSummary, Text_NamesPointsLinesTimeAxesAndLimits) {
    Diagnostics diagnostics;
    const auto machine = makeTestMachine({{"X", 1, "100000", "30000"}, {"A", 5, "10", ""}});
    const auto summary = summarizeProgram(
        *machine, QStringLiteral("XA"), u"G1 X0 F1\nG1 X1 F1\n\n",
        u"G1 X0.000 A0.000  F1\nG1 X1.000 A0.000  F1\nG1 X1.000 A1.000  F1\n", true, diagnostics);
    ASSERT_TRUE(summary.has_value());
    EXPECT_EQ(summary->wayPoints, 2U);
    EXPECT_EQ(summary->lines, 3U);
    EXPECT_TRUE(summary->isOverDynamicLimits);
    EXPECT_TRUE(summary->isOverTravelLimits);
    EXPECT_EQ(summaryText(*summary),
              QStringLiteral(
                  "way points: 2\nlines: 3\nrun time: 0.0 s (4 ms per line)\n"
                  "axis X: speed 15000 of 30000 per min, acceleration 62500 of 100000 per s^2\n"
                  "axis A: speed 15000 per min, acceleration 62500 of 10 per s^2, OVER\n"
                  "speed and acceleration: over a limit (three decimals alone measure up to 125 per s^2)\n"
                  "travel: over a limit\n"));
}

TEST(ProgramSummary, NothingToMeasure_GivesNothing) {
    Diagnostics diagnostics;
    EXPECT_FALSE(
        summarizeProgram(*fiveAxisMachine(0), QStringLiteral("X"), u"", u"", false, diagnostics).has_value());
}

TEST(ProgramSummary, RunTime_GrowsFromSecondsToHours) {
    EXPECT_EQ(runTimeText(0), QStringLiteral("0.0 s"));
    EXPECT_EQ(runTimeText(59.94), QStringLiteral("59.9 s"));
    EXPECT_EQ(runTimeText(59.96), QStringLiteral("1 min 00.0 s"));
    EXPECT_EQ(runTimeText(123.4), QStringLiteral("2 min 03.4 s"));
    EXPECT_EQ(runTimeText(3600 + 120 + 3.4), QStringLiteral("1 h 02 min 03.4 s"));
}

TEST(ProgramAudit, ToolChange_IsDrivenByTheMachine) {
    const auto machine = fiveAxisMachine(4);
    auto spindle = std::make_unique<spindleStruct>();
    spindle->toolChangeString = QStringLiteral("M6 T#");
    machine->spindles.push_back(std::move(spindle));
    const auto measured = [&machine](const char* code) {
        Diagnostics diagnostics;
        return auditProgram(*machine, QStringLiteral("XYZCA"), QString::fromLatin1(code), diagnostics)
            .value();
    };
    // 200 mm between two lines, but the change lies between them
    EXPECT_EQ(axisOf(measured("G1 X0\nG1 X0\nM6 T12\nG1 X200\nG1 X200\n"), 'X').maxVelocity_perMin, 0);
    EXPECT_EQ(measured("G1 X0\nM6 T12\nG1 X200\n").lines, 3U);
    // words that are no tool change leave the axes under their limits
    for (const char* other : {"M6 T", "M6 T1x", "M3 S6000", "M66 T1"}) {
        const QByteArray code = QByteArray("G1 X0\n") + other + "\nG1 X200\n";
        EXPECT_TRUE(measured(code.constData()).hasViolation()) << other;
    }
    // the axes must rest in front of the change and begin at rest behind it
    EXPECT_NEAR(axisOf(measured("G1 X0\nG1 X1\nM6 T1\nG1 X200\n"), 'X').maxAcceleration_perS2,
                1 / kPeriod_s / kPeriod_s, 1e-6);
    EXPECT_NEAR(axisOf(measured("G1 X0\nM6 T1\nG1 X200\nG1 X201\n"), 'X').maxAcceleration_perS2,
                1 / kPeriod_s / kPeriod_s, 1e-6);
}

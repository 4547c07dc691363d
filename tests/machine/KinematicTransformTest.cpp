#include "machine/calc/Kinematics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "KinematicOracle.h"
#include "MachineSamples.h"
#include "support/TestSupport.h"

namespace {

/// Single precision over lengths of some 1000 mm and angles of some 360 degrees.
constexpr double kTolerance_mm = 5e-3;

WayPoint point(std::initializer_list<double> values) {
    WayPoint result;
    for (const double value : values)
        result.append(value);
    return result;
}

WayPoint transformed(const KinematicTransform& transform, const WayPoint& from) {
    WayPoints points = {from};
    transform.transformPoints(points);
    return points[0];
}

void expectVector(const SbVec3f& got, const SbVec3f& wanted) {
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(got[i], wanted[i], 1e-3) << "entry " << i;
}

QString fatalOf(const KinematicCase& data) {
    Diagnostics diagnostics;
    const auto made = KinematicTransform::make(*data.machine, data.tool, 0, SbVec3f(0, 0, 0), data.chain,
                                               data.workSystem, 0, diagnostics);
    if (made || diagnostics.entries.size() != 1 || diagnostics.entries[0].severity != Severity::Fatal)
        return QStringLiteral("no single fatal diagnostic");
    return diagnostics.entries[0].text;
}

}  // namespace

TEST(KinematicTransform, ToolVector_IsTheTipBelowTheSpindleOffset) {
    EXPECT_EQ(plainCase().make(0).toolVector(), SbVec3f(1, 2, 140));
}

TEST(KinematicTransform, ToolVector_GoesThroughTheMounting) {
    KinematicCase data = plainCase();
    data.tool.mount.setTransform(SbVec3f(5, 6, 7), SbRotation(SbVec3f(1, 0, 0), 1.5707963F),
                                 SbVec3f(1, 1, 1));
    expectVector(data.make(0).toolVector(), SbVec3f(6, 8 - 110, 37));
}

TEST(KinematicTransform, ToolVectorOfAChainSaw_ComesFromItsTipAndIgnoresLength) {
    KinematicCase data = plainCase();
    data.tool.isChainSaw = true;
    data.tool.toolTip = SbVec3f(40, 50, 60);
    EXPECT_EQ(data.make(0).toolVector(), SbVec3f(41, 2, 100));
    data.tool.length = 12345;
    EXPECT_EQ(data.make(0).toolVector(), SbVec3f(41, 2, 100));
}

TEST(KinematicTransform, UnknownSpindle_GivesNoOffset) {
    KinematicCase data = plainCase();
    data.tool.spindleNo = 9;
    EXPECT_EQ(data.make(0).toolVector(), SbVec3f(0, 0, 110));
}

TEST(KinematicTransform, OffsetAtZero_IsTheSumOfAllPlaces) {
    // Axis 4 stands at (7, 8, 9) and the auxiliary axis at (5, 5, 5): neither takes part.
    expectVector(plainCase().make(0).kinematicOffset(0, 0), SbVec3f(112, 224, 333 + 140 + 150));
}

TEST(KinematicTransform, Offset_TurnsTheToolByAxis5FirstThenAxis4) {
    // A 90 carries (1, 2, 140) to (1, -140, 2); C 90 carries that to (140, 1, 2).
    expectVector(plainCase().make(0).kinematicOffset(90, 90), SbVec3f(111 + 140, 222 + 1, 333 + 2 + 150));
}

TEST(KinematicTransform, Offset_TurnsThePlaceOfAxis5ByAxis4Only) {
    KinematicCase data = plainCase();
    data.machine->numericalAxes[4]->initialization = QStringLiteral("10 0 150");
    const SbVec3f without = plainCase().make(0).kinematicOffset(90, 45);
    expectVector(data.make(0).kinematicOffset(90, 45), without + SbVec3f(0, 10, 0));
}

TEST(KinematicTransform, UnknownWorkSystem_CountsAsTheMachinesOrigin) {
    KinematicCase data = plainCase();
    data.workSystem = QStringLiteral("G59");
    expectVector(data.make(0).kinematicOffset(0, 0), SbVec3f(12, 24, 33 + 140 + 150));
    data.userOffset_mm = SbVec3f(1000, 2000, 3000);
    expectVector(data.make(0).kinematicOffset(0, 0), SbVec3f(1012, 2024, 3033 + 140 + 150));
}

TEST(KinematicTransform, TextsThatAreNotThreeNumbers_AreFatal) {
    KinematicCase data = plainCase();
    data.machine->numericalAxes[3]->direction = QStringLiteral("0 0");
    EXPECT_EQ(fatalOf(data), QStringLiteral("Ax4 Ax5 DirectionFormatError"));
    data = plainCase();
    data.machine->numericalAxes[4]->direction = QString();
    EXPECT_EQ(fatalOf(data), QStringLiteral("Ax4 Ax5 DirectionFormatError"));
    data = plainCase();
    data.machine->numericalAxes[3]->initialization = QStringLiteral("0 0 0 0");
    EXPECT_EQ(fatalOf(data), QStringLiteral("Ax4 Ax5 InitializationFormatError"));
    data = plainCase();
    data.machine->numericalAxes[4]->initialization = QStringLiteral("1");
    EXPECT_EQ(fatalOf(data), QStringLiteral("Ax4 Ax5 InitializationFormatError"));
    data = plainCase();
    data.machine->numericalAxes[1]->initialization = QStringLiteral("1 2");
    EXPECT_EQ(fatalOf(data), QStringLiteral("InitializationFormatError"));
}

TEST(KinematicTransform, BadTextsOfAxesOutsideTheChain_DoNotMatter) {
    KinematicCase data = plainCase();
    data.machine->numericalAxes[5]->initialization = QString();  // the auxiliary axis
    EXPECT_NO_THROW((void)data.make(0));
    data.chain = QStringLiteral("X->Z");
    data.machine->numericalAxes[1]->initialization = QString();
    data.machine->numericalAxes[4]->direction = QString();
    EXPECT_NO_THROW((void)data.make(0));
}

TEST(KinematicTransform, OneRotaryAxisOnly_IsNotLookedAt) {
    KinematicCase data = plainCase();
    data.chain = QStringLiteral("X->Y->Z->C");
    data.machine->numericalAxes[3]->direction = QString();
    data.machine->numericalAxes[3]->initialization = QString();
    expectVector(data.make(0).kinematicOffset(90, 0), SbVec3f(112, 224, 333 + 140));
}

TEST(KinematicTransform, RotaryAxisOfAnotherType_AddsItsPlace) {
    KinematicCase data = plainCase();
    data.machine->numericalAxes[3]->type = QStringLiteral("FIXED");
    expectVector(data.make(0).kinematicOffset(0, 0), SbVec3f(112 + 7, 224 + 8, 333 + 9 + 140 + 150));
}

TEST(KinematicTransform, ThreeAxisChain_ShiftsByAConstantWhateverTheRotaryValues) {
    KinematicCase data = plainCase();
    data.chain = QStringLiteral("X->Y->Z");
    data.tool.ax4Compensation = 30;
    const KinematicTransform transform = data.make(0);
    for (const double a : {0.0, 45.0, 180.0, -720.5}) {
        const WayPoint moved = transformed(transform, point({1, 2, 3, a, 2 * a, 500}));
        EXPECT_NEAR(moved[0], 113, 1e-4) << a;
        EXPECT_NEAR(moved[1], 226, 1e-4) << a;
        EXPECT_NEAR(moved[2], 476, 1e-4) << a;
    }
}

TEST(KinematicTransform, Points_ForwardAddsAndBackwardTakesAway) {
    const WayPoint forward = transformed(plainCase().make(0), point({10, 20, 30, 90, 90, 4000}));
    EXPECT_NEAR(forward[0], 10 + 251, 1e-3);
    EXPECT_NEAR(forward[1], 20 + 223, 1e-3);
    EXPECT_NEAR(forward[2], 30 + 485, 1e-3);
    EXPECT_EQ(forward[3], 90);
    EXPECT_EQ(forward[4], 85);
    EXPECT_EQ(forward[5], 4000);
    const WayPoint back = transformed(plainCase().make(1), forward);
    EXPECT_NEAR(back[0], 10, 1e-3);
    EXPECT_NEAR(back[1], 20, 1e-3);
    EXPECT_NEAR(back[2], 30, 1e-3);
    EXPECT_EQ(back[4], 90);
}

TEST(KinematicTransform, Points_DoNotTakeTheCompensationsInTheirRotaryValues) {
    KinematicCase data = plainCase();
    data.tool.ax4Compensation = 3;
    data.tool.ax5Compensation = 4;
    for (const int mode : {0, 1}) {
        const WayPoint moved = transformed(data.make(mode), point({0, 0, 0, 10, 20}));
        EXPECT_EQ(moved[3], 10);
        EXPECT_EQ(moved[4], mode == 0 ? 15 : 25);
    }
}

TEST(KinematicTransform, Points_OtherModesLeaveThem) {
    for (const int mode : {2, -1, 77}) {
        const WayPoint same = point({1, 2, 3, 4, 5, 6});
        EXPECT_EQ(transformed(plainCase().make(mode), same).values, same.values) << mode;
    }
}

TEST(KinematicTransform, PointsWithFewEntries_KeepTheirLength) {
    const KinematicTransform transform = plainCase().make(0);
    for (std::uint8_t count = 0; count <= WayPoint::kMaxEntries; ++count) {
        WayPoint from;
        from.count = count;
        const WayPoint moved = transformed(transform, from);
        EXPECT_EQ(moved.count, count);
        EXPECT_NEAR(moved[0], count > 0 ? 112 : 0, 1e-3) << int{count};
        EXPECT_NEAR(moved[2], count > 2 ? 623 : 0, 1e-3) << int{count};
        EXPECT_EQ(moved[4], count > 4 ? -5 : 0) << int{count};
        EXPECT_EQ(moved[5], 0) << int{count};
    }
    WayPoints none;
    transform.transformPoints(none);
    EXPECT_EQ(none.size(), 0U);
}

TEST(KinematicTransform, PointsWithoutSense_EndInNoSenseOnly) {
    const double huge = 1e300;
    const double nan = std::nan("");
    WayPoints points = {point({huge, nan, 0, huge, -huge, 1}), point({0, 0, 0, nan, nan, 1}),
                        point({0, 0, 0, 0, 0, 1})};
    plainCase().make(0).transformPoints(points);
    EXPECT_NEAR(points[2][2], 623, 1e-3) << "a point behind bad ones is right again";
}

TEST(KinematicTransform, RandomCases_EqualTheRotationFormToTheBit) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> angle(-400, 400);
    for (unsigned seed = 0; seed < 300; ++seed) {
        const KinematicCase data = randomCase(seed, seed % 2 == 0);
        for (const int mode : {0, 1}) {
            const KinematicTransform transform = data.make(mode);
            const float a4 = angle(random);
            const float a5 = angle(random);
            const SbVec3f got = transform.kinematicOffset(a4, a5);
            const SbVec3f wanted = literalOffset(data, mode, a4, a5);
            EXPECT_EQ(got, wanted) << "seed " << seed << " mode " << mode << " at " << a4 << ", " << a5;
        }
    }
}

TEST(KinematicTransform, RandomCases_AgreeWithDoublePrecision) {
    std::mt19937 random(6);
    std::uniform_real_distribution<float> angle(-400, 400);
    for (unsigned seed = 0; seed < 300; ++seed) {
        const KinematicCase data = randomCase(seed, seed % 3 == 0);
        for (const int mode : {0, 1}) {
            const float a4 = angle(random);
            const float a5 = angle(random);
            const SbVec3f got = data.make(mode).kinematicOffset(a4, a5);
            const std::array<double, 3> wanted = exactOffset(data, mode, double{a4}, double{a5});
            for (int i = 0; i < 3; ++i)
                EXPECT_NEAR(double{got[i]}, wanted[static_cast<std::size_t>(i)], kTolerance_mm)
                    << "seed " << seed << " mode " << mode << " at " << a4 << ", " << a5;
        }
    }
}

TEST(KinematicTransform, RandomPoints_ComeBackThroughMode1) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> length(-3000, 3000);
    std::uniform_real_distribution<double> angle(-360, 360);
    for (unsigned seed = 0; seed < 200; ++seed) {
        const KinematicCase data = randomCase(seed, false);
        WayPoints points;
        for (int i = 0; i < 20; ++i) {
            // Some points share their rotary values with the one before, as a program's do.
            const bool same = i % 3 != 0;
            points.push_back(point({length(random), length(random), length(random),
                                    same ? points.back()[3] : angle(random),
                                    same ? points.back()[4] : angle(random), 1000}));
        }
        const WayPoints before = points;
        data.make(0).transformPoints(points);
        data.make(1).transformPoints(points);
        for (std::size_t i = 0; i < points.size(); ++i) {
            for (int k = 0; k < 5; ++k)
                EXPECT_NEAR(points[i][k], before[i][k], 1e-3) << "seed " << seed << " point " << i;
            EXPECT_EQ(points[i][5], 1000);
        }
    }
}

TEST(KinematicTransform, ManyPointsAtOnce_EqualEachPointAlone) {
    std::mt19937 random(8);
    const KinematicCase data = randomCase(3, true);
    WayPoints points;
    for (int i = 0; i < 500; ++i)
        points.push_back(point({double(i), 0, 0, double(random() % 3), double(random() % 2)}));
    WayPoints together = points;
    data.make(0).transformPoints(together);
    for (std::size_t i = 0; i < points.size(); ++i)
        ASSERT_EQ(together[i].values, transformed(data.make(0), points[i]).values) << "point " << i;
}

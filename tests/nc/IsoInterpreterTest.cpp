#include "nc/calc/IsoInterpreter.h"

#include <gtest/gtest.h>

#include <cmath>

#include "IsoTestProgram.h"
#include "nc/calc/IsoLetters.h"
#include "support/TestSupport.h"

namespace {

constexpr double kRapid = 20000;

using Entries = std::vector<double>;

Entries only(const IsoProgram& program) {
    EXPECT_EQ(program.points().size(), 1U);
    return program.points().empty() ? Entries() : entries(program.points().front());
}

void expectRefused(const IsoProgram& program, int line, const QString& reason) {
    EXPECT_EQ(program.done, false);
    ASSERT_EQ(program.diagnostics.entries.size(), 1U);
    EXPECT_EQ(program.diagnostics.entries[0].severity, Severity::Warning);
    EXPECT_EQ(program.firstLine(), line);
    EXPECT_EQ(program.firstText(), reason);
}

}  // namespace

// Lines

TEST(IsoInterpreter, FreshObject_IsRapidAbsoluteWorkFrameFeed250) {
    const IsoProgram program("");
    EXPECT_EQ(program.interpreter.modes.motion, 0);
    EXPECT_EQ(program.interpreter.modes.distance, 90);
    EXPECT_EQ(program.interpreter.modes.plane, 17);
    EXPECT_EQ(program.interpreter.modes.feed_mmPerMin, 250.0);
    EXPECT_EQ(program.interpreter.rapidFeed, kRapid);
    EXPECT_EQ(program.points().size(), 0U);
    EXPECT_EQ(program.done, true);
}

TEST(IsoInterpreter, BlockNumberBeforeOrBehind_GivesTheSamePoint) {
    const Entries expected{5, 0, 0, 0, 0, 250};
    EXPECT_EQ(only(IsoProgram("N10 G1 X5")), expected);
    EXPECT_EQ(only(IsoProgram("G1 X5 N10")), expected);
}

TEST(IsoInterpreter, FirstLine_LeavesOtherAxesAtZero) {
    EXPECT_EQ(only(IsoProgram("G1 X10")), (Entries{10, 0, 0, 0, 0, 250}));
}

TEST(IsoInterpreter, CommentWordWithoutSemicolon_LosesItsNAndIsReadForWords) {
    // "AGLE 5 X3" has a G without digits, an A without a number, and an X.
    EXPECT_EQ(only(IsoProgram("ANGLE 5 X3")), (Entries{3, 0, 0, 0, 0, kRapid}));
}

TEST(IsoInterpreter, ModalWords_HoldFromLineToLine) {
    const IsoProgram program("G1 X1 F100\nY2\nF300\nG0 Z3\nG1 C4 A5");
    ASSERT_EQ(program.points().size(), 5U);
    EXPECT_EQ(entries(program.points()[1]), (Entries{1, 2, 0, 0, 0, 100}));
    EXPECT_EQ(entries(program.points()[2]), (Entries{1, 2, 0, 0, 0, 300}));
    EXPECT_EQ(entries(program.points()[3]), (Entries{1, 2, 3, 0, 0, kRapid}));
    EXPECT_EQ(entries(program.points()[4]), (Entries{1, 2, 3, 4, 5, 300}));
}

TEST(IsoInterpreter, LineWithoutAxisWord_RepeatsThePositionWithTheFeed) {
    EXPECT_EQ(IsoProgram("G1 X1 Y2 F3000\nM8").points().size(), 1U);
    EXPECT_EQ(IsoProgram("G1 X1 Y2 F3000\nM8\nT1 S5\nhello").points().size(), 1U);
    EXPECT_EQ(IsoProgram("G1 X1 Y2 F3000\nM8 F500").points().size(), 2U);
    EXPECT_EQ(only(IsoProgram("M8")), (Entries{0, 0, 0, 0, 0, kRapid}));
}

TEST(IsoInterpreter, CommentsDirectivesAndAssignments_MakeNoPoint) {
    EXPECT_EQ(IsoProgram(";G1 X1\n//G1 X1\n%G1 X1\n\n(DLY, 5)\n(G1 X1)\n#1=5\nG1 X=7").points().size(), 0U);
    // Words of G are read before the assignment is seen.
    EXPECT_EQ(IsoProgram("G1 X=7").interpreter.modes.motion, 1);
    EXPECT_EQ(IsoProgram("G1 X=7 F99").interpreter.modes.feed_mmPerMin, 250.0);
}

TEST(IsoInterpreter, CommentBehindACode_IsReadForWords) {
    EXPECT_EQ(only(IsoProgram("G1 X1 ; Y2")), (Entries{1, 2, 0, 0, 0, 250}));
}

TEST(IsoInterpreter, BadNumbers_CountAsAbsentWords) {
    const IsoProgram program("G1 X1 Y2 F100\nX1-2 Y. Z1.2.3 C- A F--5\nX" + QString(400, '9') + " Y3");
    ASSERT_EQ(program.points().size(), 2U);
    EXPECT_EQ(entries(program.points()[0]), (Entries{1, 2, 0, 0, 0, 100}));
    EXPECT_EQ(entries(program.points()[1]), (Entries{1, 3, 0, 0, 0, 100}));
}

TEST(IsoInterpreter, CarriageReturnsTabsAndByteOrderMark_NeverReachTheWords) {
    const IsoProgram program(QChar(0xFEFF) + QStringLiteral("G1 X1\r\n\t(UPR,XYZ,0,0,0)\t\r\n\r\n Y2 \r\n"));
    ASSERT_EQ(program.points().size(), 2U);
    EXPECT_EQ(entries(program.points()[1]), (Entries{1, 2, 0, 0, 0, 250}));
}

TEST(IsoInterpreter, EqualPositionsWithDifferentFeeds_BothStay) {
    EXPECT_EQ(IsoProgram("G0 X1\nX1\nG1 X1 F100\nX1 F100\nX1 F200").points().size(), 3U);
}

// G words

TEST(IsoInterpreter, G91_AddsToTheLastPosition) {
    const IsoProgram program("G91\nG1 X5\nG1 X5\nG90 X1");
    ASSERT_EQ(program.points().size(), 4U);  // G91 alone repeats the start at rapid feed
    EXPECT_EQ(program.points()[1][0], 5.0);
    EXPECT_EQ(program.points()[2][0], 10.0);
    EXPECT_EQ(program.points()[3][0], 1.0);
}

TEST(IsoInterpreter, G91Overflow_CountsAsAbsent) {
    const QString big = QStringLiteral("17") + QString(307, '0');
    const IsoProgram program("G91 G1 X" + big + "\nX" + big + " Y1");
    ASSERT_EQ(program.points().size(), 2U);
    EXPECT_EQ(program.points()[1][0], program.points()[0][0]);
    EXPECT_EQ(program.points()[1][1], 1.0);
}

TEST(IsoInterpreter, G17WithMotionOnTheSameLine_MakesNoWayPoint) {
    EXPECT_EQ(IsoProgram("G17 G1 X5").points().size(), 0U);
    EXPECT_EQ(IsoProgram("G17 G1 X5").interpreter.modes.motion, 0);
    const IsoProgram program("G1 G17 X5");
    EXPECT_EQ(program.points().size(), 0U);
    EXPECT_EQ(program.interpreter.modes.motion, 1);
}

TEST(IsoInterpreter, G18AndG19_MakeNoMotionAtAllButReadWords) {
    for (const char* plane : {"G18", "G19"}) {
        const IsoProgram program(QString::fromLatin1(plane) + "\nG1 X5 F77\nG2 X9 R1\nY7");
        EXPECT_EQ(program.done, true);
        EXPECT_EQ(program.points().size(), 0U);
        EXPECT_EQ(program.interpreter.modes.feed_mmPerMin, 77.0);
        EXPECT_EQ(program.interpreter.modes.motion, 2);
        EXPECT_EQ(program.interpreter.modes.plane, plane[2] - '0' + 10);
    }
    EXPECT_EQ(only(IsoProgram("G18\nG1 X5\nG17\nX6")), (Entries{6, 0, 0, 0, 0, 250}));
}

TEST(IsoInterpreter, UnknownGWords_AreIgnored) {
    EXPECT_EQ(only(IsoProgram("G54 G43 G1 G2147483648 X5")), (Entries{5, 0, 0, 0, 0, 250}));
    EXPECT_EQ(IsoProgram("G1.5 X1").interpreter.modes.motion, 1);
}

TEST(IsoInterpreter, AGWithoutDigits_EndsTheScanAndTheLineGoesOn) {
    EXPECT_EQ(only(IsoProgram("G1 X5 G G17")), (Entries{5, 0, 0, 0, 0, 250}));
}

// Letters

TEST(IsoInterpreter, ProgramLetters_AreNickNames) {
    auto machine = makeTestMachine({{"X", 1}, {"Y", 2}, {"W", 3}, {"B", 4}, {"A", 5}});
    machine->numericalAxes[2]->nickName = QStringLiteral("Z");
    const IsoProgram program("G1 Z7 W9", std::move(machine), {}, "XYWBA");
    EXPECT_EQ(only(program), (Entries{0, 0, 7, 0, 0, 250}));
}

TEST(IsoInterpreter, ChainWithoutRotaryAxes_KeepsSixEntries) {
    const IsoProgram program("G1 X1 Y2 Z3 C4 A5", isoMachine(), {}, "XYZ");
    EXPECT_EQ(only(program), (Entries{1, 2, 3, 0, 0, 250}));
}

TEST(IsoInterpreter, AuxiliaryAxis_IsAnEntryThatNoWordMoves) {
    const IsoProgram program("G1 X1 W99", isoMachine({{"W", 6}}), 12.5, "XYZCAW");
    EXPECT_EQ(only(program), (Entries{1, 0, 0, 0, 0, 12.5, 250}));
}

TEST(IsoInterpreter, AxisIdsBeyondTheWayPoint_AreNotRead) {
    const IsoProgram program("G1 X1 Q2 P3", isoMachine({{"Q", 9}, {"P", -1}}), {}, "XYZCAQP");
    EXPECT_EQ(only(program), (Entries{1, 0, 0, 0, 0, 250}));
}

TEST(NickNameLetters, LetterThatNamesNoAxis_IsFatal) {
    const auto machine = isoMachine();
    Diagnostics diagnostics;
    EXPECT_EQ(nickNameLetters(*machine, {{1, QChar('X')}, {2, QChar('Q')}}, diagnostics).has_value(), false);
    ASSERT_EQ(diagnostics.entries.size(), 1U);
    EXPECT_EQ(diagnostics.entries[0].severity, Severity::Fatal);
    EXPECT_EQ(diagnostics.entries[0].text, QStringLiteral("Error: Can't find the axis name"));
}

TEST(IsoInterpreter, G17AfterAnInclinedPlane_IsFatalOnAMachineWithoutUVW) {
    const IsoProgram program("G0 X0\nG16 U V\n\nG17");
    EXPECT_EQ(program.done, false);
    ASSERT_EQ(program.diagnostics.entries.size(), 1U);
    EXPECT_EQ(program.diagnostics.entries[0].severity, Severity::Fatal);
    EXPECT_EQ(program.firstText(), QStringLiteral("Error: Can't find the axis name"));
    EXPECT_EQ(program.firstLine(), 4);
}

TEST(IsoInterpreter, G17OnAMachineWhoseNickNamesAreNoNames_IsFatal) {
    // The letter in force, a nick name, is looked up as a name: so it must stay.
    auto machine = makeTestMachine({{"X", 1}, {"Y", 2}, {"W", 3}});
    machine->numericalAxes[2]->nickName = QStringLiteral("Z");
    const IsoProgram program("G17", std::move(machine), {}, "XYW");
    EXPECT_EQ(program.firstText(), QStringLiteral("Error: Can't find the axis name"));
}

TEST(IsoInterpreter, G17AfterAnInclinedPlane_RestoresTheNickNamesOfUVW) {
    const IsoProgram program("G0 X1 C10 A20\nG16 U V\nG1 U5\nG17\nG1 X7 Y8 U99", planeMachine());
    ASSERT_EQ(program.done, true);
    // The working way point followed the move in the plane.
    EXPECT_EQ(entries(program.points().back()), (Entries{7, 8, 0, 10, 20, 250}));
}

// Inclined plane

TEST(IsoInterpreter, G16WithUAndV_TakesLettersAndHeldRotaries) {
    const IsoProgram program("G0 X1 C10 A20\nG16 G1 U V X9\nX3 U4 V5 W6");
    ASSERT_EQ(program.done, true);
    ASSERT_EQ(program.points().size(), 2U);
    // G1 behind G16 was dropped; the current point started at 0.
    EXPECT_EQ(entries(program.points()[1]), (Entries{4, 5, 6, 10, 20, kRapid}));
    EXPECT_EQ(program.interpreter.letters(),
              (AxisMap{{1, QChar('U')}, {2, QChar('V')}, {3, QChar('W')}, {4, QChar('C')}, {5, QChar('A')}}));
}

TEST(IsoInterpreter, G16WithoutUOrV_KeepsLettersAndZeroRotaries) {
    const IsoProgram program("G0 X1 C5 A2\nG16 U\nG1 X3 Y4 C9 A9");
    ASSERT_EQ(program.done, true);
    EXPECT_EQ(entries(program.points().back()), (Entries{3, 4, 0, 0, 0, 250}));
}

TEST(IsoInterpreter, PlaneMotion_GoesThroughTheMatrix) {
    const IsoProgram program(
        "G0 X10 Y21 Z30 C1 A2\n(UPR,1,XYZ,0,0,90,10,20,30)\nG16 U V\nG1 V-5 F900\nG91 U2\nG0 U1 W1");
    ASSERT_EQ(program.done, true);
    ASSERT_EQ(program.points().size(), 4U);
    // The tool stood at (1, 0, 0) of the plane: u runs along Y, v along -X.
    const std::vector<Entries> expected{
        {15, 21, 30, 1, 2, 900}, {15, 23, 30, 1, 2, 900}, {15, 24, 31, 1, 2, kRapid}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        for (int k = 0; k < 6; ++k)
            EXPECT_NEAR(program.points()[i + 1][k], expected[i][static_cast<std::size_t>(k)], 1e-4)
                << i << ' ' << k;
    }
}

TEST(IsoInterpreter, UprBeforeAnyPoint_LeavesTheCurrentPointAtZero) {
    const IsoProgram program("(UPR,1,XYZ,0,0,90,10,20,30)\nG0 X5\nG16 U V\nG1 U1");
    ASSERT_EQ(program.points().size(), 2U);
    EXPECT_NEAR(program.points()[1][0], 10, 1e-5);
    EXPECT_NEAR(program.points()[1][1], 21, 1e-5);
    EXPECT_NEAR(program.points()[1][2], 30, 1e-5);
}

TEST(IsoInterpreter, UprAlone_LeavesTheMatrix) {
    const IsoProgram program("(UPR,1,XYZ,0,0,90,10,20,30)\n(UPR)\n(UPR,XY,0,0)");
    const IsoProgram first("(UPR,1,XYZ,0,0,90,10,20,30)");
    EXPECT_EQ(program.interpreter.modes.inclinedPlane == first.interpreter.modes.inclinedPlane, true);
    EXPECT_EQ(program.interpreter.modes.inclinedPlane == SbMatrix::identity(), false);
    EXPECT_EQ(program.diagnostics.entries.size(), 0U);
}

TEST(IsoInterpreter, UprWithBadLetters_IsADebugLineAndIgnored) {
    const IsoProgram program("\n(UPR,XAZ,0,0,90)\nG1 X1");
    EXPECT_EQ(program.done, true);
    ASSERT_EQ(program.diagnostics.entries.size(), 1U);
    EXPECT_EQ(program.diagnostics.entries[0].severity, Severity::Debug);
    EXPECT_EQ(program.firstText(), QStringLiteral("UPR Error."));
    EXPECT_EQ(program.firstLine(), 2);
    EXPECT_EQ(program.interpreter.modes.inclinedPlane == SbMatrix::identity(), true);
}

TEST(IsoInterpreter, PlaneWithAuxiliaryAxis_HasItsValueInLinesAndArcs) {
    const IsoProgram program("G0 X1\nG16 U V\nG1 U1\nG2 U5 R2", isoMachine({{"W", 6}}), 7.0, "XYZCAW");
    ASSERT_GT(program.points().size(), 4U);
    for (const WayPoint& point : program.points()) {
        ASSERT_EQ(point.size(), 7);
        EXPECT_EQ(point[5], 7.0);
    }
}

TEST(IsoInterpreter, PlaneArc_EndsAtTheCurrentPoint) {
    const IsoProgram program("G0 X0\nG16 U V\nG1 U0\nG2 U5 V5 R5\nG91 G1 U1");
    ASSERT_EQ(program.done, true);
    EXPECT_EQ(program.points().back()[0], 6.0);
    EXPECT_EQ(program.points().back()[1], 5.0);
}

TEST(IsoInterpreter, EnteringThePlane_LeavesTheCurrentPoint) {
    const IsoProgram program("G0 X0 Y0\nG16 U V\nG1 U3 V4\nG17\nG1 X50 Y60\nG16 U V\nG1 W1", planeMachine());
    ASSERT_EQ(program.done, true);
    EXPECT_EQ(entries(program.points().back()), (Entries{3, 4, 1, 0, 0, 250}));
}

// Arcs

TEST(IsoInterpreter, ArcUnderG91_AddsToItsStartAndRadiusIsAbsolute) {
    const IsoProgram program("G0 X10 Y10\nG91 G2 X10 Y10 R10\nG2 X10 Y10 R10");
    ASSERT_EQ(program.done, true);
    EXPECT_EQ(program.points().back()[0], 30.0);
    EXPECT_EQ(program.points().back()[1], 30.0);
}

TEST(IsoInterpreter, ArcInTheWorkFrame_IgnoresTheMatrix) {
    const IsoProgram program("(UPR,XYZ,0,0,0,100,100,100)\nG0 X0\nG3 X10 R10");
    ASSERT_EQ(program.done, true);
    EXPECT_EQ(entries(program.points().back()), (Entries{10, 0, 0, 0, 0, 250}));
}

TEST(IsoInterpreter, LineAfterAnArc_StartsAtItsEnd) {
    const IsoProgram program("G0 X0 Z3\nG3 X10 R10 F100\nG1 Y5");
    EXPECT_EQ(entries(program.points().back()), (Entries{10, 5, 3, 0, 0, 100}));
}

TEST(IsoInterpreter, ArcWithAuxiliaryAxis_HasSixEntriesAndSoHaveTheLinesBehindIt) {
    const IsoProgram program("G0 X0\nG3 X10 R10\nG1 Y5", isoMachine({{"W", 6}}), 7.0, "XYZCAW");
    ASSERT_EQ(program.done, true);
    EXPECT_EQ(program.points().front().size(), 7);
    EXPECT_EQ(program.points()[1].size(), 6);
    EXPECT_EQ(program.points().back().size(), 6);
}

TEST(IsoInterpreter, ArcWithOtherRotaryValues_TakesTheHeldOnesAndWarns) {
    const IsoProgram program("G0 X0 C30 A40\n\nG2 X10 R10\nG2 X20 R10");
    ASSERT_EQ(program.done, true);
    EXPECT_EQ(program.points()[1][3], 0.0);
    EXPECT_EQ(program.points()[1][4], 0.0);
    ASSERT_EQ(program.diagnostics.entries.size(), 1U);
    EXPECT_EQ(program.diagnostics.entries[0].severity, Severity::Warning);
    EXPECT_EQ(program.firstLine(), 3);
    EXPECT_EQ(program.firstText(),
              QStringLiteral("the arc turns axes 4 and 5 from 30 40 to the held values 0 0"));
}

TEST(IsoInterpreter, WarningsOfHeldRotaries_AreLimited) {
    QString code = "G0 X0\n";
    for (int i = 0; i < 300; ++i)
        code += "G91 G1 C1\nG2 X1 R5\n";
    const IsoProgram program(code);
    EXPECT_EQ(program.done, true);
    EXPECT_EQ(program.diagnostics.entries.size(), 100U);
}

TEST(IsoInterpreter, LineWithoutPlaceInArcMode_MakesNoPoint) {
    const IsoProgram program("G0 X0\nG2\nM8 F700\nC5 R3\nXbad\nG1 Y1");
    ASSERT_EQ(program.done, true);
    ASSERT_EQ(program.points().size(), 2U);
    EXPECT_EQ(entries(program.points()[1]), (Entries{0, 1, 0, 0, 0, 700}));
    EXPECT_EQ(IsoProgram("G2\nF100").points().size(), 0U);
}

TEST(IsoInterpreter, CentreWords_AreNotUnderstood) {
    expectRefused(IsoProgram("G0 X0\nG2 X10 Y10 I10 J0"), 2,
                  "the chord of the arc is longer than twice its radius");
}

// Rotation subdivision

TEST(IsoInterpreter, BigSwingOverAShortWay_IsDivided) {
    const IsoProgram program("G1 X0 F500\nX2 A90");
    ASSERT_EQ(program.points().size(), 901U);  // the first of the 901 points repeats the last way point
    for (std::size_t i = 1; i < 901; ++i) {
        ASSERT_NEAR(program.points()[i][4] - program.points()[i - 1][4], 0.1, 1e-9) << i;
        ASSERT_NEAR(program.points()[i][0], 2.0 * static_cast<double>(i) / 900.0, 1e-9) << i;
        ASSERT_EQ(program.points()[i].back(), 500.0);
    }
    EXPECT_EQ(entries(program.points().back()), (Entries{2, 0, 0, 0, 90, 500}));
}

TEST(IsoInterpreter, BigSwingWithANewFeed_KeepsTheFirstOfThe901Points) {
    EXPECT_EQ(IsoProgram("G1 X0 F500\nX2 A90 F600").points().size(), 902U);
    const IsoProgram rapid("G1 X0 F500\nG0 X2 C-90");
    ASSERT_EQ(rapid.points().size(), 902U);
    EXPECT_EQ(rapid.points()[1].back(), kRapid);
}

TEST(IsoInterpreter, BigSwingOverALongWayOrSmallSwing_IsLeftAlone) {
    EXPECT_EQ(IsoProgram("G1 X0\nX4 A90").points().size(), 2U);
    EXPECT_EQ(IsoProgram("G1 X0\nX2 Y2 Z2 A90").points().size(), 2U);
    EXPECT_EQ(IsoProgram("G1 X0\nX2 A9.999").points().size(), 2U);
    EXPECT_EQ(IsoProgram("G1 X0\nX3 A10").points().size(), 101U);
    EXPECT_EQ(IsoProgram("G1 A90").points().size(), 1U);
}

TEST(IsoInterpreter, DividedSwing_HasNoAuxiliaryValue) {
    const IsoProgram program("G1 X0\nX2 C12\nX3", isoMachine({{"W", 6}}), 7.0, "XYZCAW");
    ASSERT_EQ(program.points().size(), 1U + 121U + 1U);  // seven and six entries are never equal
    EXPECT_EQ(program.points()[0].size(), 7);
    for (std::size_t i = 1; i <= 121; ++i)
        ASSERT_EQ(program.points()[i].size(), 6) << i;
    EXPECT_EQ(program.points().back().size(), 7);
}

TEST(IsoInterpreter, SwingInThePlane_IsDividedToo) {
    // Without U and V the held rotaries are 0, so that the first move in the plane swings back.
    EXPECT_EQ(IsoProgram("G0 X0 A45\nG16\nG1 X1").points().size(), 1U + 451U);
}

// Refusals

TEST(IsoInterpreter, FirstMotionAnArc_IsRefused) {
    expectRefused(IsoProgram("\n\nG2 X10 R10"), 3, "the first motion of a program cannot be an arc");
    expectRefused(IsoProgram("G16\nG2 X10 R10"), 2, "the first motion of a program cannot be an arc");
}

TEST(IsoInterpreter, G16WithUAndVBeforeAnyPoint_IsRefused) {
    expectRefused(IsoProgram(";\nG16 U V\nG1 U5"), 2, "G16 with U and V needs a move before it");
}

TEST(IsoInterpreter, ChordAboveTwiceTheRadius_IsRefused) {
    expectRefused(IsoProgram("G0 X0\nG2 X21 R10\nG0 X5"), 2,
                  "the chord of the arc is longer than twice its radius");
    expectRefused(IsoProgram("G0 X0\nG2 X21"), 2, "the chord of the arc is longer than twice its radius");
}

TEST(IsoInterpreter, ArcBackToItsStart_IsRefused) {
    expectRefused(IsoProgram("G0 X5 Y5\n;\n\nG3 X5 Y5 R10"), 4,
                  "an arc back to its own start cannot be made from a radius");
    expectRefused(IsoProgram("G0 X5 Y5\nG3 Z7 R10"), 2,
                  "an arc back to its own start cannot be made from a radius");
}

TEST(IsoInterpreter, ArcOfAstronomicalRadius_IsRefused) {
    expectRefused(IsoProgram("G0 X0\nG2 X1000000000 R1000000000"), 2, "the arc has too many points");
    expectRefused(IsoProgram("G0 X0\nG2 X1 R10000000000"), 2, "the radius of the arc is out of range");
}

TEST(IsoInterpreter, HugeSwing_IsRefused) {
    expectRefused(IsoProgram("G1 X0\nA1000000000000"), 2, "the rotary swing has too many points");
    const QString huge = QStringLiteral("17") + QString(307, '0');
    expectRefused(IsoProgram("G1 X0 A-" + huge + "\nA" + huge), 2, "the rotary swing has too many points");
}

TEST(IsoInterpreter, ProgramOfTooManyPoints_IsRefused) {
    const auto machine = isoMachine();
    Diagnostics diagnostics;
    IsoInterpreter interpreter(*machine, "XYZCA", diagnostics);
    interpreter.mostPoints = 1000;
    EXPECT_EQ(interpreter.run(u"G1 X0\nA99\nA99\nA0", diagnostics), false);
    EXPECT_EQ(interpreter.points.size(), 1000U);
    ASSERT_EQ(diagnostics.entries.size(), 1U);
    EXPECT_EQ(diagnostics.entries[0].line, 4);
    EXPECT_EQ(diagnostics.entries[0].text, QStringLiteral("the program has too many points"));
}

TEST(IsoInterpreter, PlanesOutOfRange_AreRefused) {
    expectRefused(IsoProgram("G0 X0\n(UPR,XYZ,nan,0,0)"), 2,
                  "a number of the inclined plane is out of range");
    expectRefused(IsoProgram("G0 X0\n(UPR,XYZ,0,0,0,1e20,0,0)"), 2,
                  "a number of the inclined plane is out of range");
    const QString far = QString(39, '3');
    expectRefused(IsoProgram("G0 X" + far + " Y" + far + "\n(UPR,XYZ,0,0,45)"), 2,
                  "the tool's place in the inclined plane is out of range");
    const QString nearMost = QStringLiteral("3") + QString(38, '0');
    expectRefused(IsoProgram("G0 X0\n(UPR,XYZ,0,0,45)\nG16 U V\nG1 U" + nearMost + " V" + nearMost), 4,
                  "the place is out of range");
    expectRefused(IsoProgram("G0 X3" + far + "\nG2 X1 R5"), 2, "the start of the arc is out of range");
}

TEST(IsoInterpreter, NumbersBeyondSinglePrecisionInThePlane_CountAsAbsent) {
    const IsoProgram program("G0 X0\nG16 U V\nG1 U1" + QString(40, '0') + " V2");
    ASSERT_EQ(program.done, true);
    EXPECT_EQ(entries(program.points().back()), (Entries{0, 2, 0, 0, 0, 250}));
}

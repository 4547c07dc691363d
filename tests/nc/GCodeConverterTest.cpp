#include "nc/GCodeConversionStrategy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "IsoTestProgram.h"
#include "machine/readConfig.h"
#include "support/TestSupport.h"
#include "tools/ToolData.h"

using HandleIsoCode::GCodeConverter;

namespace {

/// The process's machine is a fresh one in every test; the log is captured, no box is expected.
class GCodeConverterTest : public ::testing::Test {
  protected:
    GCodeConverterTest() { use(isoMachine()); }

    static void use(std::unique_ptr<MachineDescription> machine) {
        ConfigReader::instance().setDescription(std::move(machine));
    }

    LogCapture log;
    ExpectedDialogs dialogs;
    TemporaryInstallation installation;
};

QStringList linesOf(const QString& code) {
    QStringList lines = code.split('\n');
    EXPECT_EQ(lines.takeLast(), QString());
    return lines;
}

std::vector<double> firstWords(const QString& code, const QString& letters, bool last) {
    const QStringList lines = linesOf(code);
    std::vector<double> values;
    for (const QChar letter : letters)
        values.push_back(GCodeConverter::ReadWord(last ? lines.last() : lines.first(), letter, nullptr));
    return values;
}

void expectNoTexts(const GCodeConverter& converter) {
    EXPECT_EQ(converter.WorkCode, QString());
    EXPECT_EQ(converter.LeadIn, QString());
    EXPECT_EQ(converter.IsoCode, QString());
    EXPECT_EQ(converter.LeadOut, QString());
}

}  // namespace

TEST_F(GCodeConverterTest, FreshConverter_HasTheMachinesRapidFeedAndNickNames) {
    auto machine = makeTestMachine({{"X", 1}, {"Y", 2}, {"W", 3}, {"B", 4}, {"A", 5}});
    machine->numericalAxes[2]->nickName = QStringLiteral("Z");
    machine->interpolationParameters.rapidThreshold = 7777;
    use(std::move(machine));
    const GCodeConverter converter("XYWBA");
    EXPECT_EQ(converter.Chain, QStringLiteral("XYWBA"));
    EXPECT_EQ(converter.rapidFeed, 7777.0);
    EXPECT_EQ(converter.inputLetters(),
              (AxisMap{{1, QChar('X')}, {2, QChar('Y')}, {3, QChar('Z')}, {4, QChar('B')}, {5, QChar('A')}}));
    expectNoTexts(converter);
}

TEST_F(GCodeConverterTest, Texts_AreTheWholePathAndItsParts) {
    GCodeConverter converter("XYZCA");
    EXPECT_EQ(converter.doIt("G0 X0 Y0 Z50\nZ5\nG1 Z-3 F1000\nX100 F5000\nG0 Z50\n"), true);
    EXPECT_EQ(converter.WorkCode, QStringLiteral("G1 X0.000 Y0.000 Z50.000 C0.000 A0.000 F20000\n"
                                                 "G1 X0.000 Y0.000 Z5.000 C0.000 A0.000 F20000\n"
                                                 "G1 X0.000 Y0.000 Z-3.000 C0.000 A0.000 F1000\n"
                                                 "G1 X100.000 Y0.000 Z-3.000 C0.000 A0.000 F5000\n"
                                                 "G1 X100.000 Y0.000 Z50.000 C0.000 A0.000 F20000\n"));
    EXPECT_EQ(converter.LeadIn, QStringLiteral("G1 X0.000 Y0.000 Z50.000 C0.000 A0.000 F20000\n"
                                               "G1 X0.000 Y0.000 Z5.000 C0.000 A0.000 F20000\n"
                                               "G1 X0.000 Y0.000 Z-3.000 C0.000 A0.000 F20000\n"));
    EXPECT_EQ(converter.LeadOut, QStringLiteral("G1 X100.000 Y0.000 Z-3.000 C0.000 A0.000 F20000\n"
                                                "G1 X100.000 Y0.000 Z50.000 C0.000 A0.000 F20000\n"));
    EXPECT_EQ(firstWords(converter.IsoCode, "XYZCA", false), (std::vector<double>{0, 0, -3, 0, 0}));
    EXPECT_EQ(firstWords(converter.IsoCode, "XYZCA", true), (std::vector<double>{100, 0, -3, 0, 0}));
    EXPECT_EQ(log.count("way points:5 do it"), 1);
    EXPECT_EQ(log.count("Time Optimal"), 1);
    EXPECT_EQ(log.count("\t\tName:"), 2);
}

TEST_F(GCodeConverterTest, WithoutReTiming_IsoCodeStaysEmpty) {
    GCodeConverter converter("XYZCA");
    converter.reTime = false;
    EXPECT_EQ(converter.doIt("G0 X0\nG1 X10\nX20"), true);
    EXPECT_EQ(converter.IsoCode, QString());
    EXPECT_EQ(linesOf(converter.WorkCode).size(), 3);
    EXPECT_EQ(log.count("Time Optimal"), 0);
}

TEST_F(GCodeConverterTest, ReTimedBody_KeepsTheProgrammedSpeedsAndSharesTheSeam) {
    GCodeConverter converter("XYZCA");
    ASSERT_EQ(converter.doIt("G0 X0\nG1 X0 F3000\nX40\nX100 F6000\nG0 Z9"), true);
    const QStringList lines = linesOf(converter.IsoCode);
    const double period_s = 0.004;
    int seams = 0;
    for (int i = 1; i < lines.size(); ++i) {
        const double step = GCodeConverter::ReadWord(lines[i], 'X', nullptr) -
                            GCodeConverter::ReadWord(lines[i - 1], 'X', nullptr);
        const double feed = GCodeConverter::ReadWord(lines[i], 'F', nullptr);
        ASSERT_GE(step, -1e-9) << lines[i].toStdString();
        ASSERT_LE(step, feed / 60.0 * period_s + 0.0011) << lines[i].toStdString();
        if (feed != GCodeConverter::ReadWord(lines[i - 1], 'F', nullptr)) {
            ++seams;
            EXPECT_EQ(step, 0.0) << lines[i].toStdString();
            EXPECT_EQ(GCodeConverter::ReadWord(lines[i], 'X', nullptr), 40.0);
        }
    }
    EXPECT_EQ(seams, 1);
    EXPECT_EQ(lines.last().endsWith(" F6000"), true) << lines.last().toStdString();
}

TEST_F(GCodeConverterTest, OnlyRapidMoves_AreOneRunAtRapidFeed) {
    GCodeConverter converter("XYZCA");
    ASSERT_EQ(converter.doIt("G0 X10\nX20 Y5\nX30"), true);
    EXPECT_EQ(converter.LeadIn, QStringLiteral("G1 X10.000 Y0.000 Z0.000 C0.000 A0.000 F20000\n"));
    EXPECT_EQ(converter.LeadOut, QStringLiteral("G1 X30.000 Y5.000 Z0.000 C0.000 A0.000 F20000\n"));
    EXPECT_EQ(firstWords(converter.IsoCode, "XYF", false), (std::vector<double>{10, 0, 20000}));
    EXPECT_EQ(firstWords(converter.IsoCode, "XYF", true), (std::vector<double>{30, 5, 20000}));
    EXPECT_EQ(converter.IsoCode.count("F20000\n"), converter.IsoCode.count('\n'));
    EXPECT_EQ(log.count("trajectory algorithm:"), 1);
}

TEST_F(GCodeConverterTest, OneRapidAndOneFeedMove_HaveTheSeamInLeadInAndBody) {
    GCodeConverter converter("XYZCA");
    ASSERT_EQ(converter.doIt("G0 X10\nG1 X20 F600"), true);
    EXPECT_EQ(converter.LeadIn, QStringLiteral("G1 X10.000 Y0.000 Z0.000 C0.000 A0.000 F20000\n"));
    EXPECT_EQ(converter.LeadOut, QStringLiteral("G1 X20.000 Y0.000 Z0.000 C0.000 A0.000 F20000\n"));
    EXPECT_EQ(firstWords(converter.IsoCode, "XF", false), (std::vector<double>{10, 20000}));
    EXPECT_EQ(firstWords(converter.IsoCode, "XF", true), (std::vector<double>{20, 600}));
}

TEST_F(GCodeConverterTest, EmptyProgram_GivesEmptyTexts) {
    GCodeConverter converter("XYZCA");
    converter.mirrorAngle = 90;
    converter.translation = SbVec3f(1, 2, 3);
    EXPECT_EQ(converter.doIt(";nothing\n\n"), true);
    expectNoTexts(converter);
    EXPECT_EQ(log.count("way points:0 do it"), 1);
}

TEST_F(GCodeConverterTest, ChainWithoutRotaryAxes_HasItsOwnWordsOnly) {
    GCodeConverter converter("XYZ");
    ASSERT_EQ(converter.doIt("G1 X1 Y2 Z3 C4 A5 F100\nX2"), true);
    EXPECT_EQ(converter.WorkCode,
              QStringLiteral("G1 X1.000 Y2.000 Z3.000 F100\nG1 X2.000 Y2.000 Z3.000 F100\n"));
    for (const QString& line : linesOf(converter.IsoCode))
        ASSERT_EQ(line.contains('C') || line.contains('A'), false) << line.toStdString();
    EXPECT_EQ(firstWords(converter.IsoCode, "XYZ", true), (std::vector<double>{2, 2, 3}));
}

TEST_F(GCodeConverterTest, OutputSpeaksNamesWhereTheInputSpokeNickNames) {
    auto machine = makeTestMachine({{"X", 1}, {"Y", 2}, {"W", 3}, {"B", 4}, {"A", 5}});
    machine->numericalAxes[2]->nickName = QStringLiteral("Z");
    use(std::move(machine));
    GCodeConverter converter("XYWBA");
    ASSERT_EQ(converter.doIt("G1 X1 Z5 W9 F100"), true);
    EXPECT_EQ(converter.WorkCode, QStringLiteral("G1 X1.000 Y0.000 W5.000 B0.000 A0.000 F100\n"));
}

// The auxiliary axis

TEST_F(GCodeConverterTest, AuxiliaryAxis_StandsAtItsValueOnEveryLine) {
    use(isoMachine({{"W", 6}}));
    GCodeConverter converter("XYZCAW");
    converter.auxiliaryAxis = std::make_shared<AuxiliaryAxis>(AuxiliaryAxis{"W", 12.5, 1000, 50000});
    ASSERT_EQ(converter.doIt("G0 X0\nG1 X1 F500\nX2 A90\nG3 X12 R10\nG1 X20"), true);
    for (const QString& code : {converter.WorkCode, converter.LeadIn, converter.IsoCode, converter.LeadOut}) {
        EXPECT_EQ(code.count(" W12.500 "), code.count('\n'));
        EXPECT_GT(code.count('\n'), 0);
    }
}

TEST_F(GCodeConverterTest, ChainWithAnAuxiliaryAxisOfNoGroup_StandsAtItsLowerLimit) {
    use(isoMachine({{"W", 6, "1000", "60000", "50000", "-321.5"}}));
    GCodeConverter converter("XYZCAW");
    ASSERT_EQ(converter.doIt("G0 X0\nG1 X1 F500\nX20\nX30"), true);
    for (const QString& code : {converter.WorkCode, converter.LeadIn, converter.IsoCode, converter.LeadOut})
        EXPECT_EQ(code.count(" W-321.500 "), code.count('\n'));
}

TEST_F(GCodeConverterTest, AuxiliaryAxisOfAChainWithoutOne_MakesNoWord) {
    GCodeConverter converter("XYZCA");
    converter.auxiliaryAxis = std::make_shared<AuxiliaryAxis>(AuxiliaryAxis{"W", 12.5, 1000, 50000});
    ASSERT_EQ(converter.doIt("G0 X0\nG1 X1 F500\nX20"), true);
    EXPECT_EQ(converter.IsoCode.contains('W'), false);
    EXPECT_EQ(firstWords(converter.IsoCode, "X", true), std::vector<double>{20});
}

// Placement, tool, previous item

TEST_F(GCodeConverterTest, TranslationOffsetAndMirror_GoIntoWorkCode) {
    GCodeConverter converter("XYZCA");
    converter.reTime = false;
    converter.translation = SbVec3f(100, 200, 300);
    converter.offset = SbVec3f(1, 0, 0);
    converter.mirrorAngle = 180;
    ASSERT_EQ(converter.doIt("G0 X1 C90 A10"), true);
    EXPECT_EQ(converter.WorkCode, QStringLiteral("G1 X101.000 Y200.985 Z300.174 C270.000 A-10.000 F20000\n"));
}

TEST_F(GCodeConverterTest, OffsetWithChangingRotaryValues_ShowsTheWarningAndGoesOn) {
    dialogs.expectTell(UserDialogs::Kind::Warning, "Warning", "type not 3 or 3+2.offset is invalid.");
    GCodeConverter converter("XYZCA");
    converter.reTime = false;
    converter.offset = SbVec3f(0, 0, 5);
    EXPECT_EQ(converter.doIt("G0 X1\nX50 C90"), true);
    EXPECT_EQ(converter.WorkCode, QStringLiteral("G1 X1.000 Y0.000 Z0.000 C0.000 A0.000 F20000\n"
                                                 "G1 X50.000 Y0.000 Z0.000 C90.000 A0.000 F20000\n"));
}

TEST_F(GCodeConverterTest, Tool_TakesThePathIntoMachineAxesAndLeavesWorkCode) {
    ToolData tool;
    tool.record().length = 100;
    GCodeConverter converter("XYZCA");
    converter.tool = &tool;
    converter.axisShift = 20;
    converter.UserCoordinate = SbVec3f(1000, 0, 0);
    ASSERT_EQ(converter.doIt("G0 X1 Y2 Z3 A90\nG1 X5 F500\nX9"), true);
    EXPECT_EQ(firstWords(converter.WorkCode, "XYZ", false), (std::vector<double>{1, 2, 3}));
    // A 90 about X lays the tool of 120 mm along -Y.
    const std::vector<double> first = firstWords(converter.LeadIn, "XYZ", false);
    EXPECT_NEAR(first[0], 1001, 1e-3);
    EXPECT_NEAR(first[1], 2 - 120, 1e-3);
    EXPECT_NEAR(first[2], 3, 1e-3);
    EXPECT_NEAR(firstWords(converter.IsoCode, "X", true)[0], 1009, 1e-3);
    EXPECT_NEAR(firstWords(converter.LeadOut, "Y", true)[0], 2 - 120, 1e-3);
}

TEST_F(GCodeConverterTest, PreviousFifth_TurnsTheMachineCodeOnly) {
    GCodeConverter converter("XYZCA");
    converter.previousFifth = -180;
    ASSERT_EQ(converter.doIt("G0 X1 A170\nG1 X5 F500\nX9"), true);
    EXPECT_EQ(firstWords(converter.WorkCode, "A", false), std::vector<double>{170});
    EXPECT_EQ(firstWords(converter.LeadIn, "A", false), std::vector<double>{-190});
    EXPECT_EQ(firstWords(converter.IsoCode, "A", true), std::vector<double>{-190});
    EXPECT_EQ(firstWords(converter.LeadOut, "A", true), std::vector<double>{-190});
}

// The steps by themselves

TEST_F(GCodeConverterTest, Steps_CanBeCalledOneByOne) {
    GCodeConverter converter("XYZCA");
    EXPECT_EQ(converter.HandleUPR("UPR,1,XYZ,0,0,0,10,20,30"), true);
    EXPECT_EQ(converter.modes().inclinedPlane[3][1], 20.0F);
    converter.wayPoints() = {wayPoint({1, 2, 3, 10, 20, 500})};
    EXPECT_EQ(converter.HandleUPR("UPR,1,XYZ,0,0,0,1,1,1"), true);
    EXPECT_EQ(converter.modes().currentPoint == SbVec3f(0, 1, 2), true);
    converter.translation = SbVec3f(1, 1, 1);
    converter.mirrorAngle = 5;
    converter.DoUserTransform();
    converter.DoUserMirror();
    EXPECT_EQ(entries(converter.wayPoints()[0]), (std::vector<double>{2, 3, 4, 15, -20, 500}));
    EXPECT_EQ(converter.FormatWayPoints(converter.wayPoints()),
              QStringLiteral("G1 X2.000 Y3.000 Z4.000 C15.000 A-20.000 F500\n"));
    EXPECT_EQ(converter.DoTrajectoryOptimization(),
              QStringLiteral("G1 X2.000 Y3.000 Z4.000 C15.000 A-20.000 F500\n"));
    converter.ResetAxis_1_2_3_Name();
    EXPECT_EQ(converter.inputLetters()[1], QChar('X'));
    converter.wayPoints().clear();
    EXPECT_EQ(converter.DoTrajectoryOptimization(), QString());
}

TEST_F(GCodeConverterTest, BadUprLetters_AreADebugLine) {
    GCodeConverter converter("XYZCA");
    EXPECT_EQ(converter.doIt("(UPR,ABC)"), true);
    ASSERT_EQ(log.count("UPR Error."), 1);
    EXPECT_EQ(log.lines()[0].type, QtDebugMsg);
    EXPECT_EQ(log.lines()[0].text, QStringLiteral("UPR Error."));
}

TEST_F(GCodeConverterTest, ReadWord_TellsWhetherThereWasANumber) {
    bool ok = false;
    EXPECT_EQ(GCodeConverter::ReadWord(u"G1 X-1.5Y", 'X', &ok), -1.5);
    EXPECT_EQ(ok, true);
    EXPECT_EQ(GCodeConverter::ReadWord(u"G1 X-1.5Y", 'Y', &ok), 0.0);
    EXPECT_EQ(ok, false);
    EXPECT_EQ(GCodeConverter::ReadWord(u"G1 x5", 'X', &ok), 0.0);
    EXPECT_EQ(ok, false);
}

// Refusals and fatal situations

TEST_F(GCodeConverterTest, RefusedProgram_HasNoCodeAndNamesItsLine) {
    GCodeConverter converter("XYZCA");
    converter.WorkCode = QStringLiteral("old");
    EXPECT_EQ(converter.doIt("G0 X0\nG1 X1\nG2 X100 R5\nG1 X2"), false);
    expectNoTexts(converter);
    EXPECT_EQ(converter.wayPoints().size(), 0U);
    ASSERT_EQ(converter.diagnostics().entries.size(), 1U);
    EXPECT_EQ(converter.diagnostics().entries[0].line, 3);
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0].type, QtWarningMsg);
    EXPECT_EQ(log.lines()[0].text,
              QStringLiteral("ISO line 3: the chord of the arc is longer than twice its radius"));
}

TEST_F(GCodeConverterTest, ProgramThatWouldRunForEver_IsRefused) {
    for (const char* code : {"G0 X0\nG1 X10 F0\nX20", "G1 X0 F-100\nX20\nX30", "G1 X0 F0.2\nX900000\nX0",
                             "G1 X0\nX900000000000000000000\nX1"}) {
        GCodeConverter converter("XYZCA");
        EXPECT_EQ(converter.doIt(code), false) << code;
        expectNoTexts(converter);
    }
    EXPECT_EQ(log.all(), QStringLiteral("ISO: a feed of F0 moves nothing, expected more than 0\n"
                                        "ISO: a feed of F-100 moves nothing, expected more than 0\n"
                                        "ISO: the program would run without an end at its feeds\n"
                                        "ISO: way point 2 lies at 9e+20, expected at most 1000000000\n"));
}

TEST_F(GCodeConverterTest, FeedZeroWithoutMotion_IsALine) {
    GCodeConverter converter("XYZCA");
    EXPECT_EQ(converter.doIt("G1 X5 F0\nX5"), true);
    EXPECT_EQ(converter.IsoCode, QStringLiteral("G1 X5.000 Y0.000 Z0.000 C0.000 A0.000 F0\n"));
}

TEST_F(GCodeConverterTest, TextLongerThanCanBe_IsRefused) {
    GCodeConverter converter("XYZCA");
    converter.reTime = false;
    QString code = "G1 X" + QString(300, '9') + "\n";
    for (int i = 0; i < 300000; ++i)
        code += i % 2 == 0 ? QStringLiteral("F1\n") : QStringLiteral("F2\n");
    EXPECT_EQ(converter.doIt(code), false);
    expectNoTexts(converter);
    EXPECT_EQ(log.count("the code of the program would be longer than a text can be"), 1);
}

TEST_F(GCodeConverterTest, PlacementThatIsNotFinite_IsRefused) {
    GCodeConverter moved("XYZCA");
    moved.translation = SbVec3f(std::numeric_limits<float>::infinity(), 0, 0);
    EXPECT_EQ(moved.doIt("G0 X1"), false);
    expectNoTexts(moved);
    ToolData tool;
    GCodeConverter shifted("XYZCA");
    shifted.tool = &tool;
    shifted.UserCoordinate = SbVec3f(0, std::numeric_limits<float>::quiet_NaN(), 0);
    EXPECT_EQ(shifted.doIt("G0 X1"), false);
    expectNoTexts(shifted);
    GCodeConverter turned("XYZCA");
    turned.offset = SbVec3f(1, 0, 0);
    EXPECT_EQ(turned.doIt("G0 X1 A" + QString(50, '9')), false);
    expectNoTexts(turned);
    EXPECT_EQ(log.count("ISO: a place of the program is out of range"), 3);
}

TEST_F(GCodeConverterTest, LetterThatNamesNoAxis_IsFatal) {
    EXPECT_FATAL(GCodeConverter("XYZCA").doIt("G0 X0\nG16 U V\nG17"), "Error: Can't find the axis name");
}

TEST_F(GCodeConverterTest, PlacementWithoutRotaryAxes_IsFatal) {
    GCodeConverter moved("XYZ");
    moved.translation = SbVec3f(1, 0, 0);
    EXPECT_FATAL(moved.doIt("G0 X0"), "axis 4 or 5 is not found");
    GCodeConverter shifted("XYZC");
    shifted.offset = SbVec3f(1, 0, 0);
    EXPECT_FATAL(shifted.doIt("G0 X0"), "axis 4 or 5 is not found");
    GCodeConverter mirrored("XYZA");
    mirrored.mirrorAngle = 90;
    EXPECT_FATAL(mirrored.doIt("G0 X0"), "axis 4 or 5 is not found");
}

TEST_F(GCodeConverterTest, DirectionThatIsNotThreeNumbers_IsFatal) {
    auto machine = isoMachine();
    machine->numericalAxes[4]->direction = QStringLiteral("1 0");
    use(std::move(machine));
    GCodeConverter moved("XYZCA");
    moved.translation = SbVec3f(1, 0, 0);
    EXPECT_FATAL(moved.doIt("G0 X0"), "axis 4 or 5 direction is not found");
    GCodeConverter mirrored("XYZCA");
    mirrored.mirrorAngle = 90;
    EXPECT_FATAL(mirrored.DoUserMirror(), "axis 4 or 5 direction is not found");
}

#include "machine/calc/MachineDescription.h"

#include <gtest/gtest.h>

#include "MachineSamples.h"
#include "support/TestSupport.h"

namespace {

QString joined(const QVector<QChar>& letters) {
    return QString(letters.constData(), letters.size());
}

std::unique_ptr<MachineDescription> withSpindles(const QStringList& names) {
    auto machine = std::make_unique<MachineDescription>();
    for (const QString& name : names) {
        machine->spindles.push_back(std::make_unique<spindleStruct>());
        machine->spindles.back()->name = name;
    }
    return machine;
}

}  // namespace

TEST(MachineDescription, FindAxis_MatchesNamesOfOneCharacterOnly) {
    const auto machine = sampleMachine({{"XX"}, {"X"}, {"x"}, {""}});
    EXPECT_EQ(machine->findAxis('X'), machine->numericalAxes[1].get());
    EXPECT_EQ(machine->findAxis('x'), machine->numericalAxes[2].get());
    EXPECT_EQ(machine->findAxis('Y'), nullptr);
    EXPECT_EQ(machine->findAxis(QChar(0)), nullptr);
}

TEST(MachineDescription, FindAxis_TheFirstOfTwoWins) {
    const auto machine = sampleMachine({{"X", 1}, {"X", 2}});
    EXPECT_EQ(machine->findAxis('X'), machine->numericalAxes[0].get());
}

TEST(MachineDescription, FindAxis_FindsLettersOutsideAscii) {
    const auto machine = sampleMachine({{QString::fromUtf8("Ж")}, {QString::fromUtf8("轴")}, {"X", 1}});
    EXPECT_EQ(machine->findAxis(QChar(0x0416)), machine->numericalAxes[0].get());
    EXPECT_EQ(machine->findAxis(QChar(0x8F74)), machine->numericalAxes[1].get());
    EXPECT_EQ(machine->findAxis(QChar(0xFFFF)), nullptr);
}

TEST(MachineDescription, RebuildIndex_FollowsChangesByHand) {
    auto machine = sampleMachine({{"X", 1}});
    machine->numericalAxes[0]->name = QStringLiteral("Q");
    machine->rebuildIndex();
    EXPECT_EQ(machine->findAxis('X'), nullptr);
    EXPECT_EQ(machine->findAxis('Q'), machine->numericalAxes[0].get());
}

TEST(MachineDescription, AxisMap_TakesAuxiliaryAxesOnlyWhenAsked) {
    const auto machine = fiveAxisMachine();
    const AxisMap five = {{1, 'X'}, {2, 'Y'}, {3, 'Z'}, {4, 'C'}, {5, 'A'}};
    AxisMap six = five;
    six.insert(6, 'V');
    EXPECT_EQ(machine->axisMap(QStringLiteral("X->Y->Z->C->A;V"), false), five);
    EXPECT_EQ(machine->axisMap(QStringLiteral("X->Y->Z->C->A;V"), true), six);
    EXPECT_EQ(machine->axisMap(QStringLiteral("VACZYX"), false), five);
    EXPECT_EQ(machine->axisMap(QString(), true), AxisMap());
}

TEST(MachineDescription, AxisMap_ALaterLetterOfTheSameIdReplaces) {
    const auto machine = sampleMachine({{"X", 1}, {"U", 1}, {"Y", 2}});
    EXPECT_EQ(machine->axisMap(QStringLiteral("X->Y->U"), false), (AxisMap{{1, 'U'}, {2, 'Y'}}));
    EXPECT_EQ(machine->axisMap(QStringLiteral("U->Y->X"), false), (AxisMap{{1, 'X'}, {2, 'Y'}}));
}

TEST(MachineDescription, AxisMap_TakesTheLettersAToZOnly) {
    const auto machine = sampleMachine({{"x", 1}, {"1", 2}, {QString::fromUtf8("Ж"), 3}, {"Z", 4}});
    EXPECT_EQ(machine->axisMap(QString::fromUtf8("x1ЖZ"), true), (AxisMap{{4, 'Z'}}));
}

TEST(MachineDescription, AxisLetters_KeepTheirOrderAndRepeat) {
    const auto machine = fiveAxisMachine();
    EXPECT_EQ(joined(machine->axisLetters(QStringLiteral("A->Q->X;V->X"))), QStringLiteral("AXVX"));
    EXPECT_EQ(joined(machine->axisLetters(QString())), QString());
}

TEST(MachineDescription, FindSpindle_TakesTheFirstTOffTheName) {
    const auto machine = withSpindles({"T1", "T12", "3", "XT4", "TT5", "T", "", "T 7 "});
    EXPECT_EQ(machine->findSpindle(1), machine->spindles[0].get());
    EXPECT_EQ(machine->findSpindle(12), machine->spindles[1].get());
    EXPECT_EQ(machine->findSpindle(3), machine->spindles[2].get());
    EXPECT_EQ(machine->findSpindle(4), nullptr);
    EXPECT_EQ(machine->findSpindle(5), nullptr);
    EXPECT_EQ(machine->findSpindle(7), machine->spindles[7].get());
    EXPECT_EQ(machine->findSpindle(0), nullptr) << "a name without a number is no spindle 0";
}

TEST(MachineDescription, SpindleOffset_NeedsExactlyFourParts) {
    const auto machine = withSpindles({"T1", "T2", "T3", "T4", "T5"});
    machine->spindles[0]->initialization = QStringLiteral(" 1 -2.5 3 90 ");
    machine->spindles[1]->initialization = QStringLiteral("1 2 3");
    machine->spindles[2]->initialization = QStringLiteral("1 2 3 4 5");
    machine->spindles[3]->initialization = QStringLiteral("1  2  x 4");
    EXPECT_EQ(machine->spindleOffset(1), SbVec4f(1, -2.5F, 3, 90));
    EXPECT_EQ(machine->spindleOffset(2), SbVec4f(0, 0, 0, 0));
    EXPECT_EQ(machine->spindleOffset(3), SbVec4f(0, 0, 0, 0));
    EXPECT_EQ(machine->spindleOffset(4), SbVec4f(1, 2, 0, 4));
    EXPECT_EQ(machine->spindleOffset(5), SbVec4f(0, 0, 0, 0));
    EXPECT_EQ(machine->spindleOffset(6), SbVec4f(0, 0, 0, 0));
}

TEST(MachineDescription, WorkCoordinateOrigin_IsZeroWhenUnknownOrBad) {
    const auto machine = fiveAxisMachine();
    EXPECT_EQ(machine->workCoordinateOrigin(QStringLiteral("G54")), SbVec3f(100, 200, 300));
    EXPECT_EQ(machine->workCoordinateOrigin(QStringLiteral("g54")), SbVec3f(0, 0, 0));
    EXPECT_EQ(machine->findWorkCoordinateSystem(QString()), nullptr);
    machine->workCoordinateSystems[0]->initialization = QStringLiteral("1 2");
    EXPECT_EQ(machine->workCoordinateOrigin(QStringLiteral("G54")), SbVec3f(0, 0, 0));
}

TEST(MachineDescription, HomeLine_HasTheFilesTextsAndTheRapidFeed) {
    const auto machine = fiveAxisMachine();
    machine->numericalAxes[2]->homePosition = QStringLiteral("100");
    machine->numericalAxes[5]->lower = QStringLiteral("-12.50");
    EXPECT_EQ(machine->homeLine(QStringLiteral("X->Y->Z->C->A")),
              QStringLiteral("G1 X0 Y0 Z100 C0 A0 F7000"));
    EXPECT_EQ(machine->homeLine(QStringLiteral("V->A->X")), QStringLiteral("G1 X0 A0 V-12.50 F7000"));
    machine->interpolationParameters.rapidThreshold = 7999.6;
    EXPECT_EQ(machine->homeLine(QString()), QStringLiteral("G1 F8000"));
}

TEST(MachineDescription, AccelerationsAndJerks_ComeByRisingIdWithoutAuxiliary) {
    const auto machine = fiveAxisMachine();
    for (std::size_t i = 0; i < machine->numericalAxes.size(); ++i) {
        machine->numericalAxes[i]->acceleration = QString::number(100 * (i + 1));
        machine->numericalAxes[i]->jerk = QString::number(1000.5 * static_cast<double>(i + 1));
    }
    machine->numericalAxes[3]->jerk = QStringLiteral("none");
    EXPECT_EQ(machine->accelerations(QStringLiteral("V->A->X->C")), (std::vector<double>{100, 400, 500}));
    EXPECT_EQ(machine->jerks(QStringLiteral("V->A->X->C")), (std::vector<double>{1000.5, 0, 5002.5}));
}

TEST(MachineDescription, ChainHead_IsTheFirstNameOfTheNodesChain) {
    MachineDescription machine;
    machine.machineParameters.kinematicChain = QStringList{"X->Z -> C->A; Y->Table ;V", "UU->W"};
    EXPECT_EQ(machine.chainHead(QStringLiteral("A")), QStringLiteral("X"));
    EXPECT_EQ(machine.chainHead(QStringLiteral("X")), QStringLiteral("X"));
    EXPECT_EQ(machine.chainHead(QStringLiteral("Table")), QStringLiteral("Y"));
    EXPECT_EQ(machine.chainHead(QStringLiteral("V")), QStringLiteral("V"));
    EXPECT_EQ(machine.chainHead(QStringLiteral("W")), QStringLiteral("UU"));
    EXPECT_EQ(machine.chainHead(QStringLiteral("U")), QString()) << "a part of a name is no name";
    EXPECT_EQ(machine.chainHead(QString()), QString());
}

TEST(MachineDescription, ThreeNumbers_NeedExactlyThreeParts) {
    EXPECT_EQ(threeNumbers(QStringLiteral("1 -2.5 1e3")), SbVec3f(1, -2.5F, 1000));
    EXPECT_EQ(threeNumbers(QStringLiteral("  1   2  3 ")), SbVec3f(1, 2, 3));
    EXPECT_EQ(threeNumbers(QStringLiteral("1 x 3")), SbVec3f(1, 0, 3)) << "a bad number counts as 0";
    for (const char* text : {"", " ", "1", "1 2", "1 2 3 4", "1,2,3", "1\t2\t3"})
        EXPECT_FALSE(threeNumbers(QString::fromLatin1(text)).has_value()) << text;
}

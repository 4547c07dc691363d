#include "nc/calc/ChainPosition.h"

#include <gtest/gtest.h>

#include "nc/TestMachine.h"
#include "nc/calc/WayPointText.h"
#include "support/TestSupport.h"

namespace {

std::unique_ptr<MachineDescription> machineWithW() {
    auto machine = makeTestMachine({{"X", 1}, {"Y", 2}, {"Z", 3}, {"C", 4}, {"A", 5}, {"W", 6}});
    machine->interpolationParameters.rapidThreshold = 50000;
    return machine;
}

const QString kChain = QStringLiteral("X->Z->C->A;Y;W");

}  // namespace

TEST(ChainPosition, FirstAndLastMotionLine_AreFound) {
    const QString text = "\n;NOTE\nM5\n G1 X1 \n(DLY,1)\nG0 X2\nG4 F1\n\n";
    EXPECT_EQ(firstMotionLine(text).toString(), QString("G1 X1"));
    EXPECT_EQ(lastMotionLine(text).toString(), QString("G0 X2"));
    EXPECT_EQ(lastMotionLine(u"G1 X1\nG1 X2").toString(), QString("G1 X2"));
    EXPECT_EQ(lastMotionLine(u"G1 X1\n\n").toString(), QString("G1 X1"));
    for (const char* none : {"", "\n", "M5\n", "G4 F1"}) {
        EXPECT_TRUE(firstMotionLine(QString(none)).isEmpty()) << none;
        EXPECT_TRUE(lastMotionLine(QString(none)).isEmpty()) << none;
    }
}

TEST(ChainPosition, Line_GivesTheValuesOfItsWords) {
    const auto machine = machineWithW();
    EXPECT_EQ(linePosition(*machine, kChain, u"G1 X1.5 Y-2 Z3 C4 A5 W6 F7", nullptr),
              (ChainPosition{{"X", 1.5}, {"Y", -2}, {"Z", 3}, {"C", 4}, {"A", 5}}));
    EXPECT_EQ(linePosition(*machine, kChain, u"G1 Z3 Q1", nullptr), (ChainPosition{{"Z", 3}}));
}

TEST(ChainPosition, AuxiliaryAxis_AddsItsWord) {
    const AuxiliaryAxis axis{QStringLiteral("W"), 1, 100, 1000};
    EXPECT_EQ(linePosition(*machineWithW(), kChain, u"G1 X1 W6.25 F7", &axis),
              (ChainPosition{{"X", 1}, {"W", 6.25}}));
}

TEST(ChainPosition, Header_GivesEveryAxisOfTheChain) {
    EXPECT_EQ(headerPosition(*machineWithW(), kChain, u"G1X1.500Y-2.000Z650.000C0.000A0.000W4.000F50000"),
              (ChainPosition{{"X", 1.5}, {"Y", -2}, {"Z", 650}, {"C", 0}, {"A", 0}, {"W", 4}}));
    EXPECT_EQ(headerPosition(*machineWithW(), kChain, u""), ChainPosition());
}

TEST(ChainPosition, PositionLine_IsReadBackAsTheSamePlace) {
    const auto machine = machineWithW();
    const AuxiliaryAxis axis{QStringLiteral("W"), 1, 100, 1000};
    const ChainPosition position = {{"X", 1}, {"Y", 2}, {"Z", -3}, {"C", 4}, {"A", 5}, {"W", 6}};
    const QString line = positionLine(*machine, kChain, position, &axis);
    EXPECT_EQ(line, QString("G1 X1.000 Y2.000 Z-3.000 C4.000 A5.000 W6.000 F50000"));
    EXPECT_EQ(linePosition(*machine, kChain, line, &axis), position);
    const WayPoints points = WayPointsFromCode(*machine, kChain, line, &axis);
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0][2], -3);
    EXPECT_EQ(lastFeed(line), 50000);
}

TEST(ChainPosition, AxesOfAnotherChain_AreNotOnTheLine) {
    EXPECT_EQ(positionLine(*machineWithW(), QStringLiteral("XZ"), {{"X", 1}, {"Y", 2}}, nullptr),
              QString("G1 X1.000 F50000"));
    EXPECT_EQ(positionLine(*machineWithW(), QStringLiteral("Z"), {{"X", 1}}, nullptr), QString());
}

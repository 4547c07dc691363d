#include "machine/calc/SpindleRecord.h"

#include <gtest/gtest.h>

namespace {

spindleStruct fileRecord() {
    spindleStruct spindle;
    spindle.name = QStringLiteral(" T12");
    spindle.initialization = QStringLiteral("1 -2 160 90");
    spindle.startString = QStringLiteral("M3 S#");
    spindle.stopString = QStringLiteral("M5");
    spindle.checkString = QStringLiteral("M93");
    spindle.toolChangeString = QStringLiteral("M6 T#");
    spindle.range = QStringLiteral("12");
    spindle.coaxial = QStringLiteral("T5");
    spindle.parent = QStringLiteral("X->Z");
    spindle.color = QStringLiteral("0.1 0.2 0.3");
    return spindle;
}

SpindleRecord recordOf(const spindleStruct& spindle) {
    Diagnostics diagnostics;
    return readSpindle(spindle, diagnostics);
}

SpindleReaction reaction(const spindleStruct& spindle, const QString& line) {
    return SpindleCommands(recordOf(spindle)).reactionTo(line);
}

}  // namespace

TEST(SpindleRecord, Reading_NegatesTheOffsetAndNotTheAngle) {
    Diagnostics diagnostics;
    const SpindleRecord record = readSpindle(fileRecord(), diagnostics);
    EXPECT_TRUE(diagnostics.entries.empty());
    EXPECT_EQ(record.number, 12);
    EXPECT_EQ(record.offset, SbVec3f(-1, 2, -160));
    EXPECT_EQ(record.angle_deg, 90.0F);
    EXPECT_EQ(record.range, 12);
    EXPECT_TRUE(record.hasToolChanger);
    EXPECT_EQ(record.direction, SbVec3f(0, 0, -1));
    EXPECT_EQ(record.color, SbColor(0.1F, 0.2F, 0.3F));
}

TEST(SpindleRecord, InitializationWithoutFourParts_IsReadOnWithZeros) {
    spindleStruct file = fileRecord();
    file.initialization = QStringLiteral("7 8");
    Diagnostics diagnostics;
    const SpindleRecord record = readSpindle(file, diagnostics);
    ASSERT_EQ(diagnostics.entries.size(), 1U);
    EXPECT_EQ(diagnostics.entries[0].text, QStringLiteral("\tname: T12"));
    EXPECT_EQ(diagnostics.entries[0].severity, Severity::Debug);
    EXPECT_EQ(record.offset, SbVec3f(-7, -8, 0));
    EXPECT_EQ(record.angle_deg, 0.0F);
}

TEST(SpindleRecord, DirectionWithoutThreeParts_StaysZeroAndIsTold) {
    spindleStruct file = fileRecord();
    file.direction = QStringLiteral("0 1");
    Diagnostics diagnostics;
    EXPECT_EQ(readSpindle(file, diagnostics).direction, SbVec3f(0, 0, 0));
    ASSERT_EQ(diagnostics.entries.size(), 1U);
    EXPECT_EQ(diagnostics.entries[0].key, QStringLiteral("SpindleNode/DirectionFormatErrorMsg"));
    EXPECT_EQ(diagnostics.entries[0].text, QStringLiteral(" T12"));
}

TEST(SpindleRecord, RangeOfOne_HasNoToolChanger) {
    spindleStruct file = fileRecord();
    file.range = QStringLiteral("1");
    EXPECT_FALSE(recordOf(file).hasToolChanger);
    file.range = QStringLiteral("2");
    EXPECT_TRUE(recordOf(file).hasToolChanger);
    file.range = QString();
    EXPECT_FALSE(recordOf(file).hasToolChanger);
}

TEST(SpindleRecord, FirstMCode_OfAText) {
    EXPECT_EQ(firstMCode(QStringLiteral("G4 M13 S# M14")), QStringLiteral("M13"));
    EXPECT_EQ(firstMCode(QStringLiteral("M S#")), QString());
    EXPECT_EQ(firstMCode(QString()), QString());
}

TEST(SpindleCommands, StartString_YieldsTheSpeed) {
    const SpindleReaction start = reaction(fileRecord(), QStringLiteral("M3 S12000"));
    EXPECT_EQ(start.kind, SpindleReaction::Start);
    EXPECT_EQ(start.speed, 12000.0);
    EXPECT_EQ(start.speedText, QStringLiteral("12000"));
    EXPECT_EQ(reaction(fileRecord(), QStringLiteral("M3 S")).kind, SpindleReaction::None);
    EXPECT_EQ(reaction(fileRecord(), QStringLiteral("M3 S-12.5")).speed, -12.5);
    EXPECT_EQ(reaction(fileRecord(), QStringLiteral("M3 S.5")).speed, 0.5);
}

TEST(SpindleCommands, BracketsOfTheStartString_MeanThemselves) {
    spindleStruct file = fileRecord();
    file.startString = QStringLiteral("M3 [S](#){}");
    EXPECT_EQ(reaction(file, QStringLiteral("M3 [S](900){}")).speed, 900.0);
    EXPECT_EQ(reaction(file, QStringLiteral("M3 S900")).kind, SpindleReaction::None);
}

TEST(SpindleCommands, StartAndStopOnOneLine_CountsAsStart) {
    EXPECT_EQ(reaction(fileRecord(), QStringLiteral("M5 M3 S100")).kind, SpindleReaction::Start);
    EXPECT_EQ(reaction(fileRecord(), QStringLiteral("M93 M5")).kind, SpindleReaction::Stop);
    EXPECT_EQ(reaction(fileRecord(), QStringLiteral("M93")).kind, SpindleReaction::Check);
    EXPECT_EQ(reaction(fileRecord(), QStringLiteral("G1 X5")).kind, SpindleReaction::None);
}

TEST(SpindleCommands, EmptyAndInvalidTexts_MatchNothing) {
    spindleStruct file = fileRecord();
    file.startString = QString();
    file.stopString = QStringLiteral("M5(");
    file.checkString = QString();
    for (const char* line : {"M3 S100", "M5", "M5(", "M93", ""})
        EXPECT_EQ(reaction(file, QLatin1String(line)).kind, SpindleReaction::None) << line;
}

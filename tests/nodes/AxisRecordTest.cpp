#include "machine/calc/AxisRecord.h"

#include <gtest/gtest.h>

#include "nodes/NodesTestSupport.h"

TEST(AxisRecord, NumericalAxis_NegatesThePlaceOnly) {
    numericalAxisStruct file = axisRecord(QStringLiteral("Z"), QStringLiteral(" LINEAR "));
    file.initialization = QStringLiteral("  1.5  -2 100 ");
    file.direction = QStringLiteral("0 0 -1");
    file.homePosition = QStringLiteral("650");
    file.maxVelocity = QStringLiteral("25000");
    file.acceleration = QStringLiteral("3500");
    file.jerk = QStringLiteral("40000");
    const AxisReading reading = readAxis(file);
    EXPECT_TRUE(reading.hasVectors);
    EXPECT_TRUE(reading.hasColor);
    EXPECT_EQ(reading.record.offset, SbVec3f(-1.5F, 2, -100));
    EXPECT_EQ(reading.record.direction, SbVec3f(0, 0, -1));
    EXPECT_EQ(reading.record.kind, 0);
    EXPECT_EQ(reading.record.motionType, MotionType::Linear);
    EXPECT_EQ(reading.record.id, 3);
    EXPECT_EQ(reading.record.home, 650.0);
    EXPECT_EQ(reading.record.lower, -100.0);
    EXPECT_EQ(reading.record.upper, 250.0);
    EXPECT_EQ(reading.dynamics.maxVelocity, 25000.0);
    EXPECT_EQ(reading.dynamics.acceleration, 3500.0);
    EXPECT_EQ(reading.dynamics.jerk, 40000.0);
}

TEST(AxisRecord, NumericalAxis_WrongCountsAreTold) {
    numericalAxisStruct file = axisRecord(QStringLiteral("Z"), QStringLiteral("LINEAR"));
    file.color = QStringLiteral("1 0");
    EXPECT_FALSE(readAxis(file).hasColor);
    EXPECT_EQ(readAxis(file).record.color, SbColor(1, 1, 1));
    file.initialization = QStringLiteral("1 2");
    EXPECT_FALSE(readAxis(file).hasVectors);
    file.initialization = QStringLiteral("1 2 3");
    file.direction = QStringLiteral("1 2 3 4");
    EXPECT_FALSE(readAxis(file).hasVectors);
}

TEST(AxisRecord, Part_KeepsThePlaceAsItStands) {
    nonNumericalAxisStruct file = partRecord(QStringLiteral("Bed"), QStringLiteral("FIXED"));
    file.initialization = QStringLiteral("0 0 100");
    const auto record = readAxis(file);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->offset, SbVec3f(0, 0, 100));
    EXPECT_EQ(record->kind, 1);
    EXPECT_EQ(record->id, -1);
    EXPECT_EQ(record->motionType, MotionType::Fixed);
}

TEST(AxisRecord, Part_AnyOfTheThreeTextsWrong_GivesNothing) {
    for (QString nonNumericalAxisStruct::*text :
         {&nonNumericalAxisStruct::initialization, &nonNumericalAxisStruct::direction,
          &nonNumericalAxisStruct::color}) {
        nonNumericalAxisStruct file = partRecord(QStringLiteral("Bed"), QStringLiteral("FIXED"));
        file.*text = QStringLiteral("1 2");
        EXPECT_FALSE(readAxis(file));
        file.*text = QString();
        EXPECT_FALSE(readAxis(file));
    }
}

TEST(AxisRecord, NumbersThatAreNotFinite_CountAsZero) {
    numericalAxisStruct file = axisRecord(QStringLiteral("Z"), QStringLiteral("LINEAR"));
    file.initialization = QStringLiteral("inf nan 3");
    file.lower = QStringLiteral("-inf");
    file.upper = QStringLiteral("high");
    const AxisRecord record = readAxis(file).record;
    EXPECT_EQ(record.offset, SbVec3f(0, 0, -3));
    EXPECT_EQ(record.lower, 0.0);
    EXPECT_EQ(record.upper, 0.0);
}

TEST(AxisRecord, WordValue_IsTheNumberBehindTheLetter) {
    EXPECT_EQ(wordValue(u"X12.5"), 12.5F);
    EXPECT_EQ(wordValue(u"C-90"), -90.0F);
    EXPECT_EQ(wordValue(u"Z5."), 5.0F);
    EXPECT_EQ(wordValue(u"Z.5"), 0.5F);
    EXPECT_EQ(wordValue(u"A0"), 0.0F);
    for (const QStringView word :
         {QStringView(u""), QStringView(u"A"), QStringView(u"A-"), QStringView(u"A."), QStringView(u"A1,000"),
          QStringView(u"Anan"), QStringView(u"Ainf"), QStringView(u"A1e99"), QStringView(u"A1-2")})
        EXPECT_FALSE(wordValue(word)) << word.toString().toStdString();
}

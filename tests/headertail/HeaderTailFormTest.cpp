#include "nc/calc/HeaderTailForm.h"

#include <random>

#include "EditorBench.h"

namespace {

const AuxiliaryAxis& wideAxis() {
    static const AuxiliaryAxis axis{"W1=", 5, 100, 1000};
    return axis;
}

using Values = QMap<int, double>;

/// Z stands alone on its chain; limits -10 to 750.
QString raised(const QString& line) {
    return raisedLine(*headerTailMachine(), kFive, line);
}

}  // namespace

TEST(HeaderTailForm, Axes_AreTheChainsLettersAndTheAuxiliaryAxis) {
    const auto machine = headerTailMachine();
    EXPECT_EQ(formAxes(*machine, "X->A->W", nullptr), (QMap<int, QString>{{1, "X"}, {5, "A"}}));
    EXPECT_EQ(formAxes(*machine, kTwo, &wideAxis()), (QMap<int, QString>{{1, "X"}, {2, "Y"}, {6, "W1="}}));
    EXPECT_EQ(formAxes(*machine, QString(), nullptr), (QMap<int, QString>()));
    const AuxiliaryAxis nameless;
    EXPECT_EQ(formAxes(*machine, "X", &nameless), (QMap<int, QString>{{1, "X"}}));
}

TEST(HeaderTailForm, Line_HasNoBlanksBetweenTheWords) {
    const auto machine = headerTailMachine();
    EXPECT_EQ(
        lineFromValues(*machine, kFive, nullptr, {{1, 1.5}, {2, -2}, {3, 700}, {4, 0.0004}, {5, -0.0006}}),
        QString("G1 X1.500Y-2.000Z700.000C0.000A-0.001F7000"));
    EXPECT_EQ(lineFromValues(*machine, kTwo, &wideAxis(), {{1, 0}, {2, 0}, {6, 12.25}}),
              QString("G1 X0.000Y0.000W1=12.250F7000"));
}

TEST(HeaderTailForm, LineWithAMissingValue_IsNone) {
    EXPECT_EQ(lineFromValues(*headerTailMachine(), kTwo, nullptr, {{1, 0}}), std::nullopt);
    EXPECT_EQ(lineFromValues(*headerTailMachine(), kTwo, &wideAxis(), {{1, 0}, {2, 0}}), std::nullopt);
}

TEST(HeaderTailForm, Values_AreThoseOfTheFirstWayPoint) {
    const auto machine = headerTailMachine();
    EXPECT_EQ(valuesFromLine(*machine, kTwo, nullptr, "G1 X4.5Y-3F100\nG1 X9"), (Values{{1, 4.5}, {2, -3}}));
    EXPECT_EQ(valuesFromLine(*machine, "X->A", nullptr, "G1 A7 X1"), (Values{{1, 1}, {5, 7}}));
    EXPECT_EQ(valuesFromLine(*machine, kTwo, &wideAxis(), "X1Y2W1=3"), (Values{{1, 1}, {2, 2}, {6, 3}}));
}

TEST(HeaderTailForm, ValuesOfAMissingOrBadWord_AreZero) {
    EXPECT_EQ(valuesFromLine(*headerTailMachine(), kTwo, nullptr, "G1 X1.2.3 F5"), (Values{{1, 0}, {2, 0}}));
}

TEST(HeaderTailForm, EmptyLine_HasNoValues) {
    EXPECT_EQ(valuesFromLine(*headerTailMachine(), kTwo, nullptr, ""), Values());
    EXPECT_EQ(valuesFromLine(*headerTailMachine(), kTwo, nullptr, "\n"), Values());
}

TEST(HeaderTailForm, LineAndValues_AreEachOthersInverse) {
    const auto machine = headerTailMachine();
    std::mt19937 random(39);
    for (int round = 0; round < 2000; ++round) {
        Values values;
        for (int id = 1; id <= 6; ++id)
            values[id] = static_cast<int>(random() % 20'000'001) / 1000.0 - 10000;
        const QString line = lineFromValues(*machine, kFive, &wideAxis(), values).value_or(QString());
        const Values read = valuesFromLine(*machine, kFive, &wideAxis(), line);
        ASSERT_EQ(read.keys(), values.keys()) << line.toStdString();
        for (int id = 1; id <= 6; ++id)
            ASSERT_NEAR(read[id], values[id], 1e-6) << line.toStdString();
    }
}

TEST(HeaderTailForm, RaisedLine_AddsAHundredToTheToolAxis) {
    EXPECT_EQ(raised("G1 X1.000 Z123.456 A5.000 F7000"), QString("G1 X1.000 Z223.456 A5.000 F7000"));
    EXPECT_EQ(raised("G1 X1Z-3.250F7000"), QString("G1 X1Z96.75F7000"));
    EXPECT_EQ(raised("Z512.3456"), QString("Z612.346"));   // six digits
    EXPECT_EQ(raised("Z-100.00001"), QString("Z-0.000"));  // no reader takes an exponent
}

TEST(HeaderTailForm, RaisedLine_StaysWithinTheLimits) {
    EXPECT_EQ(raised("Z650.000"), QString("Z750"));
    EXPECT_EQ(raised("Z650.001"), QString("Z650.001"));
    EXPECT_EQ(raised("Z-110.000"), QString("Z-10"));
    EXPECT_EQ(raised("Z-110.001"), QString("Z-110.001"));
}

TEST(HeaderTailForm, RaisedLineWithoutTheWordOrTheAxis_IsTheSame) {
    EXPECT_EQ(raised("G1 X1 F5"), QString("G1 X1 F5"));
    EXPECT_EQ(raised("G1 Z F5"), QString("G1 Z F5"));
    EXPECT_EQ(raised("G1 Z1.2.3"), QString("G1 Z1.2.3"));
    EXPECT_EQ(raised(""), QString());
    EXPECT_EQ(raisedLine(*headerTailMachine(), kTwo, "G1 Z5"), QString("G1 Z5"));
    const auto unlimited = makeTestMachine({{"Z", 3, "1", "1", "1", "", "high"}});
    EXPECT_EQ(raisedLine(*unlimited, "Z", "Z-100"), QString("Z-100"));
}

TEST(HeaderTailForm, Optimal_CopiesTheItemsLinesAndRaisesEach) {
    HeaderTailRecord record{kFive, "old", "old", "G1 Z700.000 F7000", "G1 X2.000 Z50.000 F7000"};
    proposeOptimal(*headerTailMachine(), record);
    EXPECT_EQ(record.header, QString("G1 Z700.000 F7000"));
    EXPECT_EQ(record.tail, QString("G1 X2.000 Z150 F7000"));
    EXPECT_EQ(record.itemHeader, QString("G1 Z700.000 F7000"));
    EXPECT_EQ(record.itemTail, QString("G1 X2.000 Z50.000 F7000"));
}

TEST(HeaderTailForm, Reset_OverwritesBothTextsWithTheHomeLine) {
    HeaderTailRecord record{kFive, "a", "b", "c", "d"};
    resetToHome(*headerTailMachine(), record);
    EXPECT_EQ(record.header, kFiveHome);
    EXPECT_EQ(record.tail, kFiveHome);
    EXPECT_EQ(record.itemHeader, QString("c"));
    EXPECT_EQ(record.itemTail, QString("d"));
}

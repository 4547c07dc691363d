#include "nc/calc/HeaderTail.h"

#include <QJsonArray>

#include "EditorBench.h"

using TORNVALE::HeaderTailManager;

TEST(HeaderTailManager, NewRecord_HoldsTheHomeLineTwice) {
    const auto machine = headerTailMachine();
    HeaderTailManager list;
    const HeaderTailRecord& record = list.add(*machine, kFive);
    EXPECT_EQ(record.chain, kFive);
    EXPECT_EQ(record.header, kFiveHome);
    EXPECT_EQ(record.tail, kFiveHome);
    EXPECT_EQ(record.itemHeader, QString());
    EXPECT_EQ(record.itemTail, QString());
}

TEST(HeaderTailManager, ChainThatIsThere_KeepsItsRecord) {
    const auto machine = headerTailMachine();
    HeaderTailManager list;
    list.add(*machine, kTwo).header = "G1 X5Y5F100";
    list.add(*machine, kFive);
    EXPECT_EQ(list.add(*machine, kTwo).header, QString("G1 X5Y5F100"));
    EXPECT_EQ(list.chains(), (QStringList{kTwo, kFive}));
    EXPECT_EQ(list.records().size(), 2U);
}

TEST(HeaderTailManager, Record_IsFoundByItsChain) {
    const auto machine = headerTailMachine();
    HeaderTailManager list;
    list.add(*machine, kFive);
    ASSERT_NE(list.record(kFive), nullptr);
    EXPECT_EQ(list.record(kFive)->chain, kFive);
    EXPECT_EQ(list.record(kTwo), nullptr);
    EXPECT_EQ(std::as_const(list).record(kTwo), nullptr);
    EXPECT_EQ(std::as_const(list).record(kFive), list.record(kFive));
}

TEST(HeaderTailManager, Json_IsAnObjectPerChain) {
    const auto machine = headerTailMachine();
    HeaderTailManager list;
    HeaderTailRecord& record = list.add(*machine, kFive);
    record.tail = "t";
    record.itemHeader = "ih";
    record.itemTail = "it";
    const QJsonObject expected{
        {kFive, QJsonObject{{"header", kFiveHome}, {"tail", "t"}, {"itemHeader", "ih"}, {"itemTail", "it"}}}};
    EXPECT_EQ(list.toJson(), expected);
    EXPECT_EQ(HeaderTailManager().toJson(), QJsonObject());
}

TEST(HeaderTailManager, ReadingWhatWasWritten_GivesTheSameRecords) {
    const auto machine = headerTailMachine();
    HeaderTailManager list;
    list.add(*machine, kFive).itemHeader = "G1 X1.000 Z5.000 F7000";
    list.add(*machine, kTwo).tail.clear();
    HeaderTailManager read;
    read.add(*machine, "Y");  // goes
    read.fromJson(list.toJson());
    EXPECT_EQ(read.records().size(), 2U);
    for (const HeaderTailRecord& record : list.records()) {
        ASSERT_NE(read.record(record.chain), nullptr);
        EXPECT_TRUE(*read.record(record.chain) == record);
    }
}

TEST(HeaderTailManager, ReadingWrongKinds_SkipsTheRecordAndEmptiesTheText) {
    HeaderTailManager list;
    list.fromJson({{"a", "text"},
                   {"b", QJsonArray{1, 2}},
                   {"c", QJsonValue()},
                   {"d", QJsonObject{{"header", 7}, {"tail", "G1 X1"}, {"itemTail", QJsonObject()}}},
                   {"e", QJsonObject()}});
    EXPECT_EQ(list.chains(), (QStringList{"d", "e"}));
    EXPECT_EQ(list.record("d")->header, QString());
    EXPECT_EQ(list.record("d")->tail, QString("G1 X1"));
    EXPECT_EQ(list.record("d")->itemTail, QString());
}

TEST(FormatItems, Life_EndsWithTheList) {
    auto items = std::make_unique<FormatItems>();
    int ends = 0;
    QObject::connect(items->life(), &QObject::destroyed, [&] { ++ends; });
    EXPECT_EQ(ends, 0);
    items.reset();
    EXPECT_EQ(ends, 1);
}

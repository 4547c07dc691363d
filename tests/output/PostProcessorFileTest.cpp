#include "nc/calc/PostProcessorFile.h"

#include <gtest/gtest.h>

#include <QDomDocument>

#include "machine/calc/XmlGuard.h"
#include "support/TestSupport.h"

namespace {

/// The root of a document; the document lives until the next call.
QDomElement rootOf(const QByteArray& xml) {
    static QDomDocument document;
    document.clear();
    EXPECT_EQ(readXml(xml, document).has_value(), false);
    return document.documentElement();
}

Regulation regulation(const QByteArray& attributes) {
    const std::optional<Regulation> values =
        readRegulation(rootOf("<r><Regulation " + attributes + "/></r>"));
    EXPECT_TRUE(values.has_value());
    return values.value_or(Regulation());
}

}  // namespace

TEST(AxisSequences, GroupsOfIds_AreReadInOrder) {
    EXPECT_EQ(axisSequences(QStringLiteral("3;1->2;4->5")), (AxisSequences{{3}, {1, 2}, {4, 5}}));
}

TEST(AxisSequences, EmptyGroupsAndTextsThatAreNoNumber_AreSkipped) {
    EXPECT_EQ(axisSequences(QStringLiteral("3;;1->x->2")), (AxisSequences{{3}, {1, 2}}));
    EXPECT_EQ(axisSequences(QStringLiteral("x;->;1->->2;")), (AxisSequences{{1, 2}}));
    EXPECT_EQ(axisSequences(QString()), AxisSequences());
    EXPECT_EQ(axisSequences(QStringLiteral(" 1 -> 2 ")), (AxisSequences{{1, 2}}));
    EXPECT_EQ(axisSequences(QStringLiteral("99999999999999;1.5;2-")), AxisSequences());
}

TEST(Regulation, EveryAttribute_IsRead) {
    const Regulation values = regulation(
        "Rapid=';R' Linear=';L' RapidMovement='G0' AccelerationScheme='7' Prepend='/' UserHeaderTail='true' "
        "MultiChain='1' OutputDir='out' EntrySequence='3;1' ExitSequence='1->3'");
    EXPECT_EQ(values.rapid, QString(";R"));
    EXPECT_EQ(values.linear, QString(";L"));
    EXPECT_EQ(values.rapidMovement, QString("G0"));
    EXPECT_EQ(values.accelerationScheme, 7);
    EXPECT_EQ(values.prepend, QString("/"));
    EXPECT_TRUE(values.userHeaderTail);
    EXPECT_EQ(values.multiChain, 1);
    EXPECT_EQ(values.outputDir, QString("out"));
    EXPECT_EQ(values.entry, (AxisSequences{{3}, {1}}));
    EXPECT_EQ(values.exit, (AxisSequences{{1, 3}}));
}

TEST(Regulation, AbsentAttributes_LeaveTheirDefaults) {
    const Regulation values = regulation("");
    EXPECT_EQ(values.rapid, QString());
    EXPECT_EQ(values.rapidMovement, QString("G1"));
    EXPECT_EQ(values.accelerationScheme, 1);
    EXPECT_EQ(values.multiChain, 0);
    EXPECT_EQ(values.entry, AxisSequences());
    EXPECT_FALSE(values.userHeaderTail);  // the default holds only without "Regulation"
    EXPECT_TRUE(Regulation().userHeaderTail);
}

TEST(Regulation, NumbersThatAreNone_GiveTheirDefaults) {
    EXPECT_EQ(regulation("AccelerationScheme='fast'").accelerationScheme, 1);
    EXPECT_EQ(regulation("AccelerationScheme=''").accelerationScheme, 1);
    EXPECT_EQ(regulation("MultiChain='both'").multiChain, 0);
}

TEST(Regulation, UserHeaderTail_IsTrueForOneSpellingOnly) {
    EXPECT_FALSE(regulation("UserHeaderTail='True'").userHeaderTail);
    EXPECT_FALSE(regulation("UserHeaderTail=' true'").userHeaderTail);
    EXPECT_FALSE(regulation("UserHeaderTail='1'").userHeaderTail);
    EXPECT_TRUE(regulation("UserHeaderTail='true'").userHeaderTail);
}

TEST(Regulation, EmptyRapidMovement_LeavesG1) {
    EXPECT_EQ(regulation("RapidMovement=''").rapidMovement, QString("G1"));
}

TEST(Regulation, NullRoot_GivesNothing) {
    EXPECT_FALSE(readRegulation(QDomElement()).has_value());
    EXPECT_FALSE(readPrePostActions(QDomElement()).has_value());
    EXPECT_TRUE(patternRows(QDomElement()).isEmpty());
    EXPECT_TRUE(findPattern(QDomElement(), QString()).isNull());
    EXPECT_TRUE(coordinateList(QDomElement()).isEmpty());
}

TEST(PrePostActions, Items_AreLinesOfTheActions) {
    const auto actions = readPrePostActions(rootOf(
        "<r><PrePostActions><Chain Name=' X->Z '><PreAction><Item>M80</Item><Item> M82</Item></PreAction>"
        "<PostAction><Item>M81</Item><Other>M9</Other></PostAction></Chain><Chain Name='Y'/>"
        "</PrePostActions></r>"));
    ASSERT_TRUE(actions.has_value());
    ASSERT_EQ(actions->size(), 2);
    EXPECT_EQ(actions->at(0).chain, QString("X->Z"));
    EXPECT_EQ(actions->at(0).preAction, QString("M80\n M82\n"));
    EXPECT_EQ(actions->at(0).postAction, QString("M81\n"));
    EXPECT_EQ(actions->at(1).preAction, QString());
    EXPECT_EQ(actions->at(1).postAction, QString());
}

TEST(PatternRows, Patterns_StandInFileOrder) {
    const QDomElement root = rootOf(
        "<r><Configulation Name='b' NickName='B' Image='b.png'/><Regulation/><Other Name='b'/>"
        "<Configulation Name='a' NickName='A'><Coordinate> G55 </Coordinate><Line>M2</Line>"
        "<Coordinate>G54</Coordinate></Configulation><Sub><Configulation Name='deep'/></Sub></r>");
    const QVector<PatternRow> rows = patternRows(root);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].name, QString("b"));
    EXPECT_EQ(rows[0].nickName, QString("B"));
    EXPECT_EQ(rows[0].image, QString("b.png"));
    EXPECT_EQ(rows[1].image, QString());
    EXPECT_EQ(coordinateList(findPattern(root, "a")), (QStringList{"G55", "G54"}));
    EXPECT_TRUE(findPattern(root, "deep").isNull());
    EXPECT_TRUE(findPattern(root, "A").isNull());
    EXPECT_EQ(findPattern(root, "b").attribute("NickName"), QString("B"));
}

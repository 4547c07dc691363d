#include "nc/calc/WordOrder.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "OutputOracle.h"
#include "nc/calc/SegmentText.h"
#include "support/TestSupport.h"

namespace {

const QVector<QChar> kLetters = {'X', 'Z', 'C', 'A', 'Y'};

QString ordered(const QString& text, const QString& prepend = {}) {
    Diagnostics diagnostics;
    const QString result = withOrderedWords(text, kLetters, prepend, diagnostics);
    EXPECT_TRUE(diagnostics.entries.empty()) << text.toStdString();
    return result;
}

QString repeated(const QString& line, int count) {
    return QString(line + '\n').repeated(count);
}

}  // namespace

TEST(WordOrder, MotionLine_HasItsWordsInTheOrderOfTheLetters) {
    EXPECT_EQ(ordered("G1 X1.000 Y2.000 Z-3.000 C4.000 A5.000  F5000"),
              QString("G1 X1.000 Z-3.000 C4.000 A5.000 Y2.000 F5000"));
    EXPECT_EQ(ordered("G1X1Y2F5"), QString("G1 X1 Y2 F5"));
    EXPECT_EQ(ordered(" F5 "), QString(" F5 "));
    EXPECT_EQ(ordered("  G0 Y2 X1  "), QString("G0 X1 Y2"));
}

TEST(WordOrder, BlocksOfTenEqualLines_BecomeOneLine) {
    EXPECT_EQ(ordered(repeated("M3 S12000", 10) + repeated("M93", 10) + repeated("G1 X1 F5", 3) + "\n\n"),
              QString("M3 S12000\nM93\nG1 X1 F5\n"));
}

TEST(WordOrder, LinesThatAreNoMotion_StayAsTheyAre) {
    const QString text = ";LEFT  X1\n M6 T3\n(DLY,1)\nG4 F1\nG17\nG54 X1\nX1 Y2\n/G1 X1\nG1\nG1 F5";
    EXPECT_EQ(ordered(text), text);
}

TEST(WordOrder, LineWithAWordThatWouldBeLost_StaysAsItIs) {
    const QString text = "G1 Y1 X2 S500\nG1 Y1 X2 M5\nG1 Y1 X2 G40\nG1 Y1 X.5\nG1 Y1 X2 ;far\nG1 Q5 Y1 X1";
    EXPECT_EQ(ordered(text), text);
}

TEST(WordOrder, TandemLine_IsOneBlock) {
    EXPECT_EQ(ordered("G1 Y1.000  F5000 G1 X2.000  F5000"), QString("G1 X2.000 Y1.000 F5000"));
}

TEST(WordOrder, PrependedText_StaysInFront) {
    EXPECT_EQ(ordered("/G1 Y1 X2 F5", "/"), QString("/G1 X2 Y1 F5"));
    EXPECT_EQ(ordered("G64 G1 Y1 X2 F5", "G64 "), QString("G64 G1 X2 Y1 F5"));
}

TEST(WordOrder, TwoWordsOfOneAxis_KeepTheFirstAndAreWarnedOf) {
    Diagnostics diagnostics;
    EXPECT_EQ(withOrderedWords("M5\nG1 X1 G1 X2\nG1 X3 G1 X4", kLetters, {}, diagnostics),
              QString("M5\nG1 X1\nG1 X3"));
    ASSERT_EQ(diagnostics.entries.size(), 1U);
    EXPECT_EQ(diagnostics.entries[0].line, 2);
    EXPECT_EQ(diagnostics.entries[0].severity, Severity::Warning);
}

TEST(WordOrder, RandomTexts_ComeOutAsTheExpressionsGiveThem) {
    LineMaker maker(815);
    for (int i = 0; i < 3000; ++i) {
        const QString text = maker.text(1 + maker.below(12));
        const QString prepend = maker.below(2) == 0 ? QString() : QString("G1");
        Diagnostics diagnostics;
        EXPECT_EQ(withOrderedWords(text, {'X', 'Z', 'X', 'Y', 'V'}, prepend, diagnostics),
                  oracle::ordered(text, "XZYV", prepend))
            << text.toStdString();
    }
}

TEST(WordOrder, MotionLines_LoseNoWordAndGainNone) {
    const QRegularExpression word("[A-Z]-?\\d+(\\.\\d+)?");
    LineMaker maker(33);
    for (int i = 0; i < 2000; ++i) {
        const QString line = maker.line();
        Diagnostics diagnostics;
        const QString result = withOrderedWords(line, {'X', 'Y', 'Z', 'V'}, {}, diagnostics);
        if (!diagnostics.entries.empty())
            continue;  // two values of one axis: told to the user
        QStringList before;
        QStringList after;
        for (auto match = word.globalMatch(line); match.hasNext();)
            before << match.next().captured(0);
        for (auto match = word.globalMatch(result); match.hasNext();)
            after << match.next().captured(0);
        for (const QString& found : qAsConst(before)) {
            const bool isFeed = found.startsWith('F');  // the first one stands for all
            EXPECT_TRUE(isFeed || after.contains(found)) << line.toStdString();
        }
        for (const QString& found : qAsConst(after))
            EXPECT_TRUE(before.contains(found)) << line.toStdString();
    }
}

TEST(ToolWords, FirstAndLastMotionLine_GetTheirTool) {
    EXPECT_EQ(withToolWords("M5\nM5\nG1 X1 F5\nG1 X2 F5\nG1 X3 F5\nM2\n", {}, 3, 12),
              QString("M5\nG1 X1 F5 t3.000\nG1 X2 F5\nG1 X3 F5 t12.000\nM2\n"));
}

TEST(ToolWords, SingleMotionLine_GetsOneWord) {
    EXPECT_EQ(withToolWords("G1 X1 F5\n", {}, 3, 12), QString("G1 X1 F5 t3.000\n"));
}

TEST(ToolWords, NoMotionOrNoTool_AddsNothing) {
    EXPECT_EQ(withToolWords("M5\nM5\n(DLY,1)", {}, 3, 12), QString("M5\n(DLY,1)"));
    EXPECT_EQ(withToolWords("G1 X1\nG1 X2", {}, std::nullopt, std::nullopt), QString("G1 X1\nG1 X2"));
}

TEST(ToolWords, PrependedLines_AreMotionToo) {
    EXPECT_EQ(withToolWords("/G1 X1\n/G1 X2", "/", 1, 2), QString("/G1 X1 t1.000\n/G1 X2 t2.000"));
}

TEST(ProcessedSegment, AllPasses_RunInTheirOrder) {
    SegmentRules rules;
    rules.rapid = ";R";
    rules.linear = ";L";
    rules.prepend = "/";
    rules.rapidMovement = "G0";
    rules.rapidThreshold_mmPerMin = 50000;
    rules.letters = {'Z', 'X'};
    rules.userHeaderTail = false;
    rules.firstTool = 4;
    rules.lastTool = 5;
    Diagnostics diagnostics;
    EXPECT_EQ(processedSegment("G1 X1 Z2  F50000\nM3\nM3\nG1 X1 Z1  F5000\n\n", rules, diagnostics),
              QString(";R\n/G0 Z2 X1 t4.000\nM3\n;L\n/G1 Z1 X1 F5000 t5.000\n"));
    EXPECT_TRUE(diagnostics.entries.empty());
}

TEST(ProcessedSegment, EmptySegment_StaysEmpty) {
    SegmentRules rules;
    rules.rapid = ";R";
    Diagnostics diagnostics;
    EXPECT_EQ(processedSegment({}, rules, diagnostics), QString());
    EXPECT_TRUE(diagnostics.entries.empty());
}

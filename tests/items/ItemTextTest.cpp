#include "items/calc/ItemText.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <cmath>
#include <random>

#include "nc/TestMachine.h"
#include "support/TestSupport.h"

namespace {

const AxisMap kFiveAxes{{1, 'X'}, {2, 'Y'}, {3, 'Z'}, {4, 'C'}, {5, 'A'}};

struct Replaced {
    QString target;
    QStringList warnings;
};

QStringList warningsOf(const Diagnostics& diagnostics) {
    QStringList texts;
    for (const Diagnostic& entry : diagnostics.entries) {
        EXPECT_EQ(entry.severity, Severity::Warning);
        texts.append(entry.text);
    }
    return texts;
}

Replaced replaced(const QString& source, QString target, const QList<int>& ids,
                  const AxisMap& chain = kFiveAxes) {
    Diagnostics diagnostics;
    SharedMethods::ReplaceSpecifyAxis(source, target, chain, ids, diagnostics);
    return {target, warningsOf(diagnostics)};
}

/// Joins without expecting a warning.
QString joined(const QString& first, const QString& second, const AxisGroups& groups) {
    Diagnostics diagnostics;
    const QString text = joinByAxisGroups(first, second, kFiveAxes, groups, diagnostics);
    EXPECT_EQ(warningsOf(diagnostics), QStringList());
    return text;
}

const QString kEmptyWarning = "Failed: source, target, chain, or axisIdList is empty.";

/// The rule of the shortest rotary path, told with regular expressions: the oracle.
QString turnedByExpression(const QString& code, QChar letter, double previous) {
    const QRegularExpression word(QString("%1(-?\\d*\\.?\\d+)").arg(letter));
    const auto otherWay = [](double v) { return v > 0 ? v - 360 : v + 360; };
    const QRegularExpressionMatch first = word.match(code);
    if (!first.hasMatch())
        return code;
    const double v = first.captured(1).toDouble();
    if (!(std::abs(previous - otherWay(v)) < std::abs(previous - v)))
        return code;
    QStringList lines = code.split('\n');
    for (QString& line : lines) {
        const QRegularExpressionMatch match = word.match(line);
        if (match.hasMatch())
            line.replace(match.capturedStart(), match.capturedLength(),
                         QString("%1%2").arg(letter).arg(otherWay(match.captured(1).toDouble()), 0, 'g', 6,
                                                         QChar(' ')));
    }
    return lines.join('\n');
}

double lastByExpression(const QString& code, QChar letter) {
    const QRegularExpression word(QString("%1(-?\\d*\\.?\\d+)").arg(letter));
    QRegularExpressionMatch match;
    return code.lastIndexOf(word, -1, &match) < 0 ? 0.0 : match.captured(1).toDouble();
}

/// Machine code, and now and then what a hand has written into it.
QString randomCode(std::mt19937& random) {
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const QStringList odd{"A",   "A-",   "A.",       "A-.5", "A12.", "A.25",   "A1.2.3", "A--4", "AA7",
                          "A 5", "A1e3", "; A tool", "A+3",  "A-0",  "A0.000", "A360",   "A-360"};
    QString code;
    for (int line = below(6); line >= 0; --line) {
        code += "G1 X" + QString::number(below(2000) - 1000);
        for (int word = below(3); word > 0; --word) {
            if (below(4) == 0)
                code += ' ' + odd[below(odd.size())];
            else
                code += " A" + QString::number((below(800000) - 400000) / 1000.0, 'f', below(4));
        }
        code += QStringList{" F7000", "", " C-4.5", "\r"}[below(4)];
        if (line > 0 || below(2) == 0)
            code += '\n';
    }
    return code;
}

}  // namespace

// --- words of one text into another ---

TEST(ReplaceSpecifyAxis, WordsOfTheIds_ComeFromTheSource) {
    const Replaced result =
        replaced("G1 X0 Y0 Z700 C0 A0 F7000", "G1 X1.500 Y2.000 Z-3.250 C90.000 A-45.000 F5000", {3, 5});
    EXPECT_EQ(result.target, QString("G1 X1.500 Y2.000 Z700 C90.000 A0 F5000"));
    EXPECT_EQ(result.warnings, QStringList());
}

TEST(ReplaceSpecifyAxis, EmptyArgument_WarnsAndDoesNothing) {
    const QString line = "G1 X1 Y2";
    for (const Replaced& result :
         {replaced("", line, {1}), replaced(line, line, {}), replaced("G1 X9", line, {1}, AxisMap())}) {
        EXPECT_EQ(result.target, line);
        EXPECT_EQ(result.warnings, QStringList{kEmptyWarning});
    }
    const Replaced noTarget = replaced(line, "", {1});
    EXPECT_EQ(noTarget.target, QString());
    EXPECT_EQ(noTarget.warnings, QStringList{kEmptyWarning});
}

TEST(ReplaceSpecifyAxis, WordMissingInEitherText_WarnsAndGoesOn) {
    const Replaced result = replaced("G1 X9 Z7", "G1 Y2 Z3", {1, 2, 6, 3});
    EXPECT_EQ(result.target, QString("G1 Y2 Z7"));
    EXPECT_EQ(result.warnings, (QStringList{"Replace failed. Axis ID: 1", "Replace failed. Axis ID: 2",
                                            "Replace failed. Axis ID: 6"}));
}

TEST(ReplaceSpecifyAxis, NumberNeedsADigitBeforeThePoint) {
    EXPECT_EQ(replaced("X.5", "X1", {1}).warnings, QStringList{"Replace failed. Axis ID: 1"});
    EXPECT_EQ(replaced("X-", "X1", {1}).warnings, QStringList{"Replace failed. Axis ID: 1"});
    EXPECT_EQ(replaced("X.5 X8.", "X-1.25.5 X2", {1}).target, QString("X8.5 X2"));
}

TEST(ReplaceSpecifyAxis, SourceOfSeveralLines_GivesItsFirstWord) {
    EXPECT_EQ(replaced("G1 X1\nG1 X2 Y5", "X0Y0", {1, 2}).target, QString("X1Y5"));
}

TEST(ReplaceSpecifyAxis, AnyText_IsAsTheExpressionSays) {
    std::mt19937 random(22);
    const QString alphabet = "XXY0123456789..--  \n";
    for (int round = 0; round < 4000; ++round) {
        QString texts[2];
        for (QString& text : texts) {
            for (auto i = random() % 14 + 1; i > 0; --i)
                text += alphabet[static_cast<int>(random() % static_cast<unsigned>(alphabet.size()))];
        }
        const QRegularExpression word("X(-?\\d+(\\.\\d+)?)");
        const QRegularExpressionMatch from = word.match(texts[0]);
        const QRegularExpressionMatch to = word.match(texts[1]);
        QString expected = texts[1];
        if (from.hasMatch() && to.hasMatch())
            expected.replace(to.capturedStart(), to.capturedLength(), from.captured(0));
        ASSERT_EQ(replaced(texts[0], texts[1], {1}).target, expected)
            << texts[0].toStdString() << " | " << texts[1].toStdString();
    }
}

// --- joining ---

TEST(JoinByAxisGroups, FewerThanTwoGroups_JoinsTheTexts) {
    EXPECT_EQ(joined("G1 X1", "G1 X2\nG1 X3", {}), QString("G1 X1\nG1 X2\nG1 X3"));
    EXPECT_EQ(joined("G1 X1", "G1 X2", {{1, 2, 3}}), QString("G1 X1\nG1 X2"));
    EXPECT_EQ(joined("", "", {}), QString("\n"));
}

TEST(JoinByAxisGroups, EachGroup_MovesItsAxesFromWhereTheLastOneStands) {
    EXPECT_EQ(joined("G1 X0 Y0 Z700 C0 A0 F7000", "G1 X10.000 Y20.000 Z50.000 C90.000 A-45.000 F5000\n",
                     {{4, 5}, {1, 2}, {3}}),
              QString("G1 X0 Y0 Z700 C0 A0 F7000\n"
                      "G1 X0 Y0 Z700 C90.000 A-45.000 F7000\n"
                      "G1 X10.000 Y20.000 Z700 C90.000 A-45.000 F7000\n"
                      "G1 X10.000 Y20.000 Z50.000 C90.000 A-45.000 F7000\n"));
}

TEST(JoinByAxisGroups, FirstTextOfSeveralLines_StartsFromItsLastOne) {
    EXPECT_EQ(joined("G1 X1 Y1 Z1\nG1 X2 Y2 Z9\n", "G1 X0Y0Z100F7000", {{3}, {1, 2}}),
              QString("G1 X1 Y1 Z1\nG1 X2 Y2 Z9\nG1 X2 Y2 Z100\nG1 X0 Y0 Z100\n"));
}

TEST(JoinByAxisGroups, FirstTextWithoutALine_IsThePlainForm) {
    EXPECT_EQ(joined("", "G1 X2", {{1}, {2}}), QString("\nG1 X2"));
}

TEST(JoinByAxisGroups, SecondTextWithoutAWord_WarnsAndKeepsThePosition) {
    Diagnostics diagnostics;
    EXPECT_EQ(joinByAxisGroups("G1 X1 Y1", "G1 X5", kFiveAxes, {{1}, {2}}, diagnostics),
              QString("G1 X1 Y1\nG1 X5 Y1\nG1 X5 Y1\n"));
    EXPECT_EQ(warningsOf(diagnostics), QStringList{"Replace failed. Axis ID: 2"});
}

// --- the way home around a tool change ---

TEST(HomeLines, LastLine_IsRepeatedWithTheToolAxisAtHome) {
    Diagnostics diagnostics;
    EXPECT_EQ(
        withLastLineAt("G1 X0 Y0 Z700 F7000", "G1 X1.000 Y2.000 Z3.000 F50\nG1 X1.000 Y2.000 Z60.000 F7000\n",
                       kFiveAxes, {3}, diagnostics),
        QString("G1 X1.000 Y2.000 Z3.000 F50\nG1 X1.000 Y2.000 Z60.000 F7000\n"
                "G1 X1.000 Y2.000 Z700 F7000\n"));
    EXPECT_EQ(warningsOf(diagnostics), QStringList());
}

TEST(HomeLines, FirstLine_IsPrecededByTheOtherAxesAtHome) {
    Diagnostics diagnostics;
    EXPECT_EQ(withFirstLineAt("G1 X0 Y0 Z700 C0 A0 F7000", "G1 X1.000 Y2.000 Z60.000 C9.000 A8.000 F7000",
                              kFiveAxes, {1, 2, 4, 5, 6}, diagnostics),
              QString("G1 X0 Y0 Z60.000 C0 A0 F7000\nG1 X1.000 Y2.000 Z60.000 C9.000 A8.000 F7000\n"));
    EXPECT_EQ(warningsOf(diagnostics), QStringList{"Replace failed. Axis ID: 6"});
}

TEST(HomeLines, EmptyCode_WarnsAndStaysEmpty) {
    Diagnostics diagnostics;
    EXPECT_EQ(withLastLineAt("G1 X0", "", kFiveAxes, {1}, diagnostics), QString());
    EXPECT_EQ(withFirstLineAt("G1 X0", "\n\n", kFiveAxes, {1}, diagnostics), QString());
    EXPECT_EQ(warningsOf(diagnostics), (QStringList{kEmptyWarning, kEmptyWarning}));
}

// --- shortest rotary path ---

TEST(ShortestRotaryPath, NearerTheOtherWayRound_TurnsTheFirstValueOfEveryLine) {
    EXPECT_EQ(shortestRotaryPath("G1 X1 A350.000 F100\nG1 X2 A-10.5 A77 F100\nG1 X3\n", 'A', 5),
              QString("G1 X1 A-10 F100\nG1 X2 A349.5 A77 F100\nG1 X3\n"));
}

TEST(ShortestRotaryPath, NearerAsItStands_KeepsTheText) {
    const QString code = "G1 A170.000\nG1 A190.000";
    EXPECT_EQ(shortestRotaryPath(code, 'A', 0), code);
    EXPECT_EQ(shortestRotaryPath("G1 A180", 'A', 0), QString("G1 A180"));  // equally far
    EXPECT_EQ(shortestRotaryPath("G1 X1 F5", 'A', 0), QString("G1 X1 F5"));
    EXPECT_EQ(shortestRotaryPath("", 'A', 300), QString());
}

TEST(ShortestRotaryPath, Zero_IsAFullTurnTheOtherWay) {
    EXPECT_EQ(shortestRotaryPath("G1 A0.000", 'A', 181), QString("G1 A360"));
    EXPECT_EQ(shortestRotaryPath("G1 A0.000", 'A', 180), QString("G1 A0.000"));
    EXPECT_EQ(shortestRotaryPath("G1 A-360.000", 'A', 1), QString("G1 A0"));
}

TEST(ShortestRotaryPath, ValueThatNeedsAnExponent_IsWrittenInDecimals) {
    EXPECT_EQ(shortestRotaryPath("G1 A359.9999999", 'A', -1), QString("G1 A-0.000"));
    EXPECT_EQ(shortestRotaryPath("G1 A25000000", 'A', -1), QString("G1 A24999640.000"));
}

TEST(ShortestRotaryPath, NumberOutOfRange_IsNone) {
    const QString huge = "G1 A" + QString(400, '9');
    EXPECT_EQ(shortestRotaryPath(huge, 'A', 0), huge);
    EXPECT_EQ(shortestRotaryPath("G1 A350\n" + huge, 'A', 0), "G1 A-10\n" + huge);
}

TEST(ShortestRotaryPath, AnyCode_IsAsTheExpressionSays) {
    std::mt19937 random(360);
    int turned = 0;
    for (int round = 0; round < 20000; ++round) {
        const QString code = randomCode(random);
        const double previous = static_cast<int>(random() % 800) - 400;
        const QString expected = turnedByExpression(code, 'A', previous);
        ASSERT_EQ(shortestRotaryPath(code, 'A', previous), expected) << "previous " << previous << ", code\n"
                                                                     << code.toStdString();
        turned += expected == code ? 0 : 1;
    }
    EXPECT_GT(turned, 3000);  // both sides of the rule were met
}

TEST(ShortestRotaryPath, AMillionLines_AreOneWalk) {
    QString code;
    code.reserve(24'000'000);
    for (int i = 0; i < 1'000'000; ++i)
        code += "G1 X1.000 A350.125 F60\n";
    const QString turned = shortestRotaryPath(code, 'A', 0);
    EXPECT_EQ(turned.size(), code.size() - 1'000'000);
    EXPECT_TRUE(turned.endsWith("\nG1 X1.000 A-9.875 F60\n"));
}

TEST(LastAxisValue, LastWordWithANumber_Counts) {
    EXPECT_EQ(lastAxisValue(u"G1 A1\nG1 A-90.5 A F5", 'A'), -90.5);
    EXPECT_EQ(lastAxisValue(u"G1 X1", 'A'), 0.0);
    EXPECT_EQ(lastAxisValue(u"", 'A'), 0.0);
    EXPECT_EQ(lastAxisValue(u"A", 'A'), 0.0);
    EXPECT_EQ(lastAxisValue(u"A5", 'A'), 5.0);
}

TEST(LastAxisValue, AnyCode_IsAsTheExpressionSays) {
    std::mt19937 random(5);
    for (int round = 0; round < 5000; ++round) {
        const QString code = randomCode(random);
        ASSERT_EQ(lastAxisValue(code, 'A'), lastByExpression(code, 'A')) << code.toStdString();
    }
}

// --- run time, lines, copies ---

TEST(RunTime, JoinedTexts_HaveALinePerPeriod) {
    // "a\n" + "\n" + "b\nc" + "\n" + "d": four line feeds in all.
    EXPECT_DOUBLE_EQ(runTime_s(u"a\n", u"b\nc", u"d", 4), 5 * 0.004);
    EXPECT_DOUBLE_EQ(runTime_s(u"", u"", u"", 2), 3 * 0.002);
    EXPECT_DOUBLE_EQ(runTime_s(u"a", u"b", u"c", 0), 0.0);
}

TEST(RunTime, OneText_HasItsLineFeedsAndOne) {
    EXPECT_DOUBLE_EQ(runTime_s(u"a\nb\n", 4), 3 * 0.004);
    EXPECT_DOUBLE_EQ(runTime_s(u"", 1), 0.001);
}

TEST(TenCopies, Block_StandsOnTenLines) {
    EXPECT_EQ(tenCopies("M6 T2").count("M6 T2\n"), 10);
    EXPECT_EQ(tenCopies("M6 T2").size(), 60);
}

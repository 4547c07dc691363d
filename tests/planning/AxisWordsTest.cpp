#include "nc/calc/AxisWords.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

namespace {

const AxisMap kLetters{{1, 'X'}, {2, 'Y'}, {3, 'Z'}, {4, 'C'}, {5, 'A'}};

QString modified(QString text, int id, double value) {
    Diagnostics diagnostics;
    EXPECT_TRUE(ModifyAxisPosition(text, kLetters, id, value, diagnostics));
    EXPECT_TRUE(diagnostics.entries.empty());
    return text;
}

QString replaced(const QString& target, const QString& source, const QList<int>& ids, int warnings = 0) {
    Diagnostics diagnostics;
    const QString text = withAxisWords(target, source, kLetters, ids, diagnostics);
    EXPECT_EQ(static_cast<int>(diagnostics.entries.size()), warnings);
    return text;
}

QString path(const QString& from, const QString& to, const AxisSequences& sequence) {
    Diagnostics diagnostics;
    const QString text = joinedPath(from, to, kLetters, sequence, diagnostics);
    EXPECT_TRUE(diagnostics.entries.empty());
    return text;
}

}  // namespace

TEST(ModifyAxisPosition, TheWordOfEveryLineGetsTheValue) {
    EXPECT_EQ(modified(QStringLiteral("G1 X1.000 Z-12.500 F100\nG1 Z7\nG1 X2.000\n"), 3, 0.0),
              QStringLiteral("G1 X1.000 Z0.000 F100\nG1 Z0.000\nG1 X2.000\n"));
}

TEST(ModifyAxisPosition, ReplacesUpToTheFirstCharacterThatIsNoneOfANumber) {
    EXPECT_EQ(modified(QStringLiteral("Z1-2.3.4e5"), 3, -1.5), QStringLiteral("Z-1.500e5"));
    EXPECT_EQ(modified(QStringLiteral("G1 Z"), 3, 2), QStringLiteral("G1 Z2.000"));
    EXPECT_EQ(modified(QString(), 3, 2), QString());
}

TEST(ModifyAxisPosition, AChainWithoutTheAxisIsFatal) {
    Diagnostics diagnostics;
    QString text = QStringLiteral("G1 X1.000");
    EXPECT_FALSE(ModifyAxisPosition(text, AxisMap{{1, 'X'}}, 3, 0.0, diagnostics));
    ASSERT_EQ(diagnostics.entries.size(), 1U);
    EXPECT_EQ(diagnostics.entries[0].severity, Severity::Fatal);
    EXPECT_EQ(diagnostics.entries[0].text, QStringLiteral("Id error.not contains."));
    EXPECT_EQ(text, QStringLiteral("G1 X1.000"));
}

TEST(WithAxisWords, TakesTheWordsAsTheyStand) {
    EXPECT_EQ(replaced(QStringLiteral("G1 X1.000 Y2.000 Z3.000 F100"),
                       QStringLiteral("G1 X0 Y1400 Z-650.50 F7"), {3, 2}),
              QStringLiteral("G1 X1.000 Y1400 Z-650.50 F100"));
}

TEST(WithAxisWords, AMissingWordIsAWarningAndStays) {
    EXPECT_EQ(replaced(QStringLiteral("G1 X1.000"), QStringLiteral("G1 X5 Z6"), {3, 1}, 1),
              QStringLiteral("G1 X5"));
    EXPECT_EQ(replaced(QStringLiteral("G1 X1.000 Z3.000"), QStringLiteral("G1 X Z-"), {1, 3}, 2),
              QStringLiteral("G1 X1.000 Z3.000"));
    EXPECT_EQ(replaced(QStringLiteral("G1 X1.000"), QStringLiteral("G1 X5"), {6}),
              QStringLiteral("G1 X1.000"));
}

TEST(JoinedPath, WithoutAnOrderAllAxesMoveAtOnce) {
    const QString from = QStringLiteral("G1 X0 Y0 Z9");
    const QString to = QStringLiteral("G1 X1 Y2 Z3\nG1 X1 Y2 Z0\n");
    EXPECT_EQ(path(from, to, {}), from + QLatin1Char('\n') + to);
    EXPECT_EQ(path(from, to, {{1, 2, 3}}), from + QLatin1Char('\n') + to);
    EXPECT_EQ(path({}, to, {{1}, {2}}), QLatin1Char('\n') + to);
}

TEST(JoinedPath, EveryGroupOfAxesIsOneMoveToTheFirstLine) {
    EXPECT_EQ(path(QStringLiteral("G1 X7 Y7 Z7\nG1 X0 Y0 Z9"), QStringLiteral("G1 X1 Y2 Z3\nG1 X1 Y2 Z0\n"),
                   {{3}, {1, 2}}),
              QStringLiteral("G1 X7 Y7 Z7\nG1 X0 Y0 Z9\nG1 X0 Y0 Z3\nG1 X1 Y2 Z3\nG1 X1 Y2 Z3\n"
                             "G1 X1 Y2 Z0\n"));
}

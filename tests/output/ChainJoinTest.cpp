#include "nc/calc/ChainJoin.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>

#include "OutputOracle.h"
#include "nc/calc/ProgramText.h"
#include "nc/calc/WordOrder.h"
#include "support/TestSupport.h"

namespace {

QString chainOf(const char* letter, int lines) {
    QStringList list;
    for (int i = 0; i < lines; ++i)
        list << QString("G1 %1%2 F5000").arg(letter).arg(i);
    return list.join('\n');
}

std::uint32_t longest(const QVector<QString>& chains, unsigned period_ms) {
    std::uint32_t time = 0;
    for (const QString& chain : chains)
        time = std::max(time, runTime_ms(chain, period_ms));
    return time;
}

QString merged(const QVector<QString>& chains, unsigned period_ms = 4) {
    Diagnostics diagnostics;
    const QString text = mergeTandem(chains, longest(chains, period_ms), diagnostics);
    EXPECT_TRUE(diagnostics.entries.empty());
    return text;
}

/// The merge by lists of lines and the told pattern.
QString oracleMerge(const QVector<QString>& chains, std::uint32_t bound) {
    const QRegularExpression command("M\\d+");
    QStringList result;
    for (std::uint32_t i = 0; i < bound; ++i) {
        QStringList lines;
        bool isCommand = false;
        for (const QString& chain : chains) {
            const QStringList all = chain.split('\n');
            if (static_cast<int>(i) < all.size()) {
                lines << all[static_cast<int>(i)];
                isCommand = isCommand || lines.last().contains(command);
            }
        }
        if (lines.count(lines.value(0)) == lines.size())
            result << lines.value(0);
        else if (isCommand)
            result += lines;
        else
            result << lines.join(' ');
    }
    return result.join('\n');
}

}  // namespace

TEST(JoinChains, Chains_StandBehindOneAnother) {
    Diagnostics diagnostics;
    EXPECT_EQ(joinChains({"a\nb\n", "c"}, diagnostics), QString("a\nb\n\nc\n"));
    EXPECT_EQ(joinChains({}, diagnostics), QString());
    EXPECT_EQ(joinChains({""}, diagnostics), QString("\n"));
    EXPECT_TRUE(diagnostics.entries.empty());
}

TEST(MergeTandem, HundredAndHundredTwentyLines_MakeHundredTwentyAndOneEmptyOne) {
    const QVector<QString> chains = {chainOf("Y", 100), chainOf("V", 120)};
    Diagnostics diagnostics;
    const QString ordered = withOrderedWords(merged(chains), {'Y', 'V'}, {}, diagnostics);
    const QStringList lines = ordered.split('\n');
    ASSERT_EQ(lines.size(), 121);
    EXPECT_EQ(lines[0], QString("G1 Y0 V0 F5000"));
    EXPECT_EQ(lines[99], QString("G1 Y99 V99 F5000"));
    EXPECT_EQ(lines[100], QString("G1 V100 F5000"));
    EXPECT_EQ(lines[119], QString("G1 V119 F5000"));
    EXPECT_EQ(lines[120], QString());
}

TEST(MergeTandem, BoundIsATime_NotALineCount) {
    // 119 line feeds of 4 ms: 476 lines, the last 356 of them empty.
    EXPECT_EQ(merged({chainOf("Y", 100), chainOf("V", 120)}).count('\n'), 475);
}

TEST(MergeTandem, PeriodOfOneMillisecond_LeavesOutTheLastLine) {
    const QStringList lines = merged({chainOf("Y", 100), chainOf("V", 120)}, 1).split('\n');
    ASSERT_EQ(lines.size(), 119);
    EXPECT_EQ(lines.last(), QString("G1 V118 F5000"));
}

TEST(MergeTandem, EqualLines_AppearOnce) {
    EXPECT_EQ(merged({"(DLY,1)\nG1 Y1\n", "(DLY,1)\nG1 V1\n", "(DLY,1)\n\n"}, 2),
              QString("(DLY,1)\nG1 Y1 G1 V1 \n\n"));
}

TEST(MergeTandem, Commands_ShareNoBlock) {
    EXPECT_EQ(merged({"M5\nG1 Y1\n", "G1 V1\nM6 T3\n"}, 2), QString("M5\nG1 V1\nG1 Y1\nM6 T3\n\n"));
    EXPECT_EQ(merged({"M\nG1 Y1\n", "G1 V1\nG1 V2\n"}, 2), QString("M G1 V1\nG1 Y1 G1 V2\n\n"));
}

TEST(MergeTandem, EqualCommands_AppearOnce) {
    EXPECT_EQ(merged({"M5\n", "M5\n"}, 2), QString("M5\n"));
}

TEST(MergeTandem, SingleChain_IsJustItsLines) {
    EXPECT_EQ(merged({"a\nb\n"}), QString("a\nb\n"));
}

TEST(MergeTandem, NoTime_GivesNoLine) {
    EXPECT_EQ(merged({"a", "b"}), QString());
    EXPECT_EQ(merged({"", ""}), QString());
    EXPECT_EQ(merged({"a\n", "b\n"}, 0), QString());
}

TEST(MergeTandem, CommentBesideMotion_IsWarnedOf) {
    Diagnostics diagnostics;
    EXPECT_EQ(mergeTandem({"G1 Y1\n;LEFT\n(DLY,1)\n", "G1 V1\nG1 V2\nG1 V3\n"}, 3, diagnostics),
              QString("G1 Y1 G1 V1\n;LEFT G1 V2\n(DLY,1) G1 V3"));
    ASSERT_EQ(diagnostics.entries.size(), 1U);
    EXPECT_EQ(diagnostics.entries[0].severity, Severity::Warning);
    EXPECT_EQ(diagnostics.entries[0].line, 2);
}

TEST(MergeTandem, ImpossiblyLongTime_IsRefused) {
    Diagnostics diagnostics;
    EXPECT_EQ(mergeTandem({"G1 Y1\n", "G1 V1\n"}, 4000000000U, diagnostics), QString());
    EXPECT_TRUE(diagnostics.has(Severity::Warning));
}

TEST(MergeTandem, RandomChains_AreMergedAsTheRuleSays) {
    LineMaker maker(99);
    for (int i = 0; i < 400; ++i) {
        QVector<QString> chains;
        for (int chain = 2 + maker.below(2); chain > 0; --chain)
            chains << maker.text(1 + maker.below(12));
        const std::uint32_t bound = longest(chains, 1 + static_cast<unsigned>(maker.below(4)));
        Diagnostics diagnostics;
        EXPECT_EQ(mergeTandem(chains, bound, diagnostics), oracleMerge(chains, bound))
            << chains[0].toStdString() << "\n---\n"
            << chains[1].toStdString();
    }
}

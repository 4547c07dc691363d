#include "machine/calc/AxisLimits.h"

#include <gtest/gtest.h>

#include <random>

#include "MachineSamples.h"
#include "support/TestSupport.h"

namespace {

AxisLimitRow row(char letter, double lower, double upper) {
    return {QLatin1Char(letter), lower, upper, 0, 0};
}

struct Checked {
    std::vector<AxisLimitRow> rows;
    bool exceeded;
};

Checked checked(std::vector<AxisLimitRow> rows, const QString& code) {
    const bool exceeded = checkAxisLimits(rows, code);
    return {std::move(rows), exceeded};
}

/// The rule word by word, with the slow means of the text library.
Checked naivelyChecked(std::vector<AxisLimitRow> rows, const QString& code) {
    for (AxisLimitRow& each : rows)
        each.min = each.max = 0;
    for (const QString& line : code.split('\n', Qt::SkipEmptyParts)) {
        for (AxisLimitRow& each : rows) {
            const int place = line.indexOf(each.letter);
            if (place >= 0) {
                int end = place + 1;
                while (end < line.size() && QStringLiteral("0123456789.-").contains(line[end]))
                    ++end;
                bool ok = false;
                const double value = line.mid(place + 1, end - place - 1).toDouble(&ok);
                if (ok) {
                    each.min = value < each.min ? value : each.min;
                    each.max = value > each.max ? value : each.max;
                }
            }
            if (each.lower > each.min || each.max > each.upper)
                return {rows, true};
        }
    }
    return {rows, false};
}

std::string shown(const Checked& result) {
    std::string text = result.exceeded ? "exceeded" : "within";
    for (const AxisLimitRow& each : result.rows)
        text += " " + std::to_string(each.letter.unicode()) + ":" +
                QString::number(each.min, 'g', 17).toStdString() + ".." +
                QString::number(each.max, 'g', 17).toStdString();
    return text;
}

QString randomCode(std::mt19937& random, const QString& alphabet) {
    QString code;
    const int size = static_cast<int>(random() % 120);
    for (int i = 0; i < size; ++i)
        code += alphabet[static_cast<int>(random() % static_cast<unsigned>(alphabet.size()))];
    return code;
}

}  // namespace

TEST(AxisLimits, Rows_FollowTheMap) {
    const auto machine = sampleMachine(
        {{"X", 1, "LINEAR", "1 0 0", "", "-10", "20.1"}, {"Y", 2, "LINEAR", "0 1 0", "", "abc", ""}});
    Diagnostics diagnostics;
    const auto rows = axisLimitRows(*machine, {{1, 'X'}, {2, 'Y'}}, diagnostics);
    ASSERT_TRUE(rows.has_value());
    ASSERT_EQ(rows->size(), 2U);
    EXPECT_EQ((*rows)[0].letter, QLatin1Char('X'));
    EXPECT_EQ((*rows)[0].lower, -10);
    EXPECT_EQ((*rows)[0].upper, double{20.1F}) << "limits are read in single precision";
    EXPECT_EQ((*rows)[1].lower, 0);
    EXPECT_EQ((*rows)[1].upper, 0);
}

TEST(AxisLimits, Rows_EndAtALetterWithoutAxis) {
    const auto machine = sampleMachine({{"X", 1}, {"Z", 3}});
    Diagnostics diagnostics;
    const auto rows = axisLimitRows(*machine, {{1, 'X'}, {2, 'Y'}, {3, 'Z'}}, diagnostics);
    ASSERT_TRUE(rows.has_value());
    EXPECT_EQ(rows->size(), 1U);
}

TEST(AxisLimits, Rows_BadDirectionIsFatal) {
    for (const char* direction : {"", "1 0", "1 0 0 0", "1,0,0"}) {
        const auto machine = sampleMachine({{"X", 1, "LINEAR", direction}});
        Diagnostics diagnostics;
        EXPECT_FALSE(axisLimitRows(*machine, {{1, 'X'}}, diagnostics).has_value()) << direction;
        ASSERT_EQ(diagnostics.entries.size(), 1U);
        EXPECT_EQ(static_cast<int>(diagnostics.entries[0].severity), static_cast<int>(Severity::Fatal));
        EXPECT_EQ(diagnostics.entries[0].text, QStringLiteral("axis direction format error."));
    }
}

TEST(AxisLimits, WithinLimits_GivesTheSeenRange) {
    const Checked result = checked({row('X', -10, 10), row('Y', -10, 10)}, "G1 X5 Y-3\nX-7.5\n\nY10");
    EXPECT_FALSE(result.exceeded);
    EXPECT_EQ(result.rows[0].min, -7.5);
    EXPECT_EQ(result.rows[0].max, 5);
    EXPECT_EQ(result.rows[1].min, -3);
    EXPECT_EQ(result.rows[1].max, 10) << "the limit itself is within";
}

TEST(AxisLimits, LimitsThatExcludeZero_FailOnTheFirstLineWhateverItHolds) {
    const Checked result = checked({row('X', 100, 200)}, "; nothing\nX150");
    EXPECT_TRUE(result.exceeded);
    EXPECT_EQ(result.rows[0].max, 0);
    EXPECT_TRUE(checked({row('X', -200, -100)}, "X-150").exceeded);
}

TEST(AxisLimits, NoLines_NothingIsExceeded) {
    EXPECT_FALSE(checked({row('X', 100, 200)}, "").exceeded);
    EXPECT_FALSE(checked({row('X', 100, 200)}, "\n\n\n").exceeded);
    EXPECT_TRUE(checked({row('X', 100, 200)}, "\n\n \n").exceeded) << "a blank makes a line";
    EXPECT_FALSE(checked({}, "X1000").exceeded);
}

TEST(AxisLimits, LetterInAComment_IsReadLikeAWord) {
    EXPECT_TRUE(checked({row('X', -10, 10)}, "; MAX50").exceeded);
    const Checked result = checked({row('X', -10, 10)}, "; MAX is too much X99");
    EXPECT_FALSE(result.exceeded) << "the first X has no number, the second does not count";
    EXPECT_EQ(result.rows[0].max, 0);
}

TEST(AxisLimits, LetterTwiceInALine_CountsTheFirst) {
    const Checked result = checked({row('X', -10, 10)}, "X5 X500");
    EXPECT_FALSE(result.exceeded);
    EXPECT_EQ(result.rows[0].max, 5);
}

TEST(AxisLimits, WordWithoutNumber_IsIgnored) {
    for (const char* line : {"X", "X Y1", "X-", "X.", "X1-2", "X1.2.3", "X--1", "X+500", "x500"}) {
        const Checked result = checked({row('X', -10, 10)}, QString::fromLatin1(line));
        EXPECT_FALSE(result.exceeded) << line;
        EXPECT_EQ(result.rows[0].max, 0) << line;
    }
}

TEST(AxisLimits, FirstViolation_StopsInRowOrder) {
    const Checked result = checked({row('X', -10, 10), row('Y', -10, 10)}, "X1 Y1\nY2 X11\nX3 Y3\nX-9");
    EXPECT_TRUE(result.exceeded);
    EXPECT_EQ(result.rows[0].max, 11);
    EXPECT_EQ(result.rows[0].min, 0) << "values behind the stop stay unseen";
    EXPECT_EQ(result.rows[1].max, 1) << "Y comes after X in row order, though it stands first in the line";
}

TEST(AxisLimits, SecondCheck_StartsAnew) {
    std::vector<AxisLimitRow> rows = {row('X', -10, 10)};
    EXPECT_TRUE(checkAxisLimits(rows, QStringLiteral("X50")));
    EXPECT_FALSE(checkAxisLimits(rows, QStringLiteral("X-5")));
    EXPECT_EQ(rows[0].min, -5);
    EXPECT_EQ(rows[0].max, 0);
}

TEST(AxisLimits, RandomTexts_AgreeWithTheRuleWordByWord) {
    std::mt19937 random(77);
    const QStringList alphabets = {QStringLiteral("XYZCA 0123456789.-\n"), QStringLiteral("XYXY1-.\n\r\t;"),
                                   QString::fromUtf8("XЖ中Y9.-\n \x01"), QStringLiteral("XXYY019")};
    const std::vector<std::vector<AxisLimitRow>> machines = {
        {row('X', -500, 500), row('Y', -20, 1e9), row('Z', -0.5, 9), row('C', -360, 360), row('A', -99, 99)},
        {row('Y', -1e300, 1e300), row('X', -1e300, 1e300)},
        {row('X', -9, 9), row('X', -5, 50), {QChar(0x0416), -90, 90, 0, 0}, {QChar(0x4E2D), -5, 5, 0, 0}},
        {row('1', -900, 900), row('-', -9000, 9000), row('.', -1e5, 1e5), row('X', -1e6, 1e6)},
    };
    for (int round = 0; round < 20000; ++round) {
        const QString code = randomCode(random, alphabets[round % alphabets.size()]);
        const auto& rows = machines[static_cast<std::size_t>(round / 7) % machines.size()];
        ASSERT_EQ(shown(checked(rows, code)), shown(naivelyChecked(rows, code)))
            << "round " << round << ": " << code.toStdString();
    }
}

TEST(AxisLimits, HugeNumbersAndLines_AreHandled) {
    const QString digits(400, '9');
    EXPECT_FALSE(checked({row('X', -10, 10)}, "X" + digits).exceeded) << "outside the range of numbers";
    EXPECT_TRUE(checked({row('X', -10, 10)}, "X" + digits.left(300)).exceeded);
    EXPECT_FALSE(checked({row('X', -10, 10)}, QString(1000000, 'X')).exceeded);
    EXPECT_FALSE(checked({row('1', -1e9, 1e9)}, QString(100000, '1')).exceeded);
}

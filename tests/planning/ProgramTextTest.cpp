#include "nc/calc/ProgramText.h"

#include <gtest/gtest.h>

#include <QDir>
#include <algorithm>
#include <random>
#include <thread>

#include "support/TestSupport.h"

namespace {

QString lines(int count) {
    QString text;
    for (int i = 0; i < count; ++i)
        text += QStringLiteral("G1 X%1\n").arg(i);
    return text;
}

QString inserted(const QString& text, const QString& block, double time_s, double period_s) {
    QString out;
    InsertPreLaunch(out, text, block, time_s, period_s);
    return out;
}

/// Lines behind the line "M3".
int linesBehindStart(const QString& text) {
    const int place = text.indexOf(QStringLiteral("M3\n"));
    return place < 0 ? -1 : static_cast<int>(text.mid(place + 3).count(QLatin1Char('\n')));
}

}  // namespace

TEST(ProgramText, RunTimeIsLineFeedsTimesPeriod) {
    EXPECT_EQ(runTime_ms(lines(100), 4), 400U);
    EXPECT_EQ(runTime_ms(QStringLiteral("G1 X1\nG1 X2"), 3), 3U);
    EXPECT_EQ(runTime_ms(QString(), 4), 0U);
    EXPECT_EQ(runTime_ms(QStringLiteral("G1 X1"), 4), 0U);
}

TEST(ProgramText, RunTimeIsUnsigned32BitArithmetic) {
    EXPECT_EQ(runTime_ms(lines(3), 0x80000000U), 0x80000000U);
}

TEST(ProgramText, ALongTextIsCountedAsAShortOne) {
    for (const int size : {99999, 100000, 100001, 3000000}) {
        std::mt19937 random(static_cast<unsigned>(size));
        QString text(size, QLatin1Char('x'));
        qsizetype expected = 0;
        for (int i = 0; i < size; ++i) {
            if (random() % 37 == 0) {
                text[i] = QLatin1Char('\n');
                ++expected;
            }
        }
        EXPECT_EQ(countLineFeeds(text), expected) << size;
    }
}

#ifdef TORNVALE_COUNTS_IN_PARALLEL
// The library's threads stay when the count is done.
TEST(ProgramText, ALongTextIsCountedOnSeveralThreads) {
    const QDir tasks(QStringLiteral("/proc/self/task"));
    ASSERT_TRUE(tasks.exists());
    const QString text = QStringLiteral("G1 X1\n").repeated(1000000);
    EXPECT_EQ(countLineFeeds(text), std::count(text.begin(), text.end(), QLatin1Char('\n')));
    const int least = std::thread::hardware_concurrency() > 1 ? 2 : 1;
    EXPECT_GE(tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), least);
}
#endif

TEST(ProgramText, FirstAndLastLineAreThoseThatAreNotEmpty) {
    const QString text = QStringLiteral("\n\nG1 X1\nG1 X2\nG1 X3\n\n");
    EXPECT_EQ(firstLineOf(text).toString(), QStringLiteral("G1 X1"));
    EXPECT_EQ(lastLineOf(text).toString(), QStringLiteral("G1 X3"));
    EXPECT_EQ(firstLineOf(QStringLiteral("G1 X1")).toString(), QStringLiteral("G1 X1"));
    EXPECT_EQ(lastLineOf(QStringLiteral("G1 X1")).toString(), QStringLiteral("G1 X1"));
    EXPECT_TRUE(firstLineOf(QStringLiteral("\n\n")).isEmpty());
    EXPECT_TRUE(lastLineOf(QStringLiteral("\n\n")).isEmpty());
}

TEST(InsertPreLaunch, NoTimePutsTheBlockBehindTheLastLine) {
    EXPECT_EQ(inserted(lines(3), QStringLiteral("M3\n"), 0.0, 0.004), lines(3) + QStringLiteral("M3\n"));
}

TEST(InsertPreLaunch, MoreTimeThanTheBodyHasPutsTheBlockInFront) {
    EXPECT_EQ(inserted(lines(3), QStringLiteral("M3\n"), 0.013, 0.004), QStringLiteral("M3\n") + lines(3));
}

TEST(InsertPreLaunch, TheWholeTimeOfTheBodyIsItsFirstLine) {
    EXPECT_EQ(inserted(lines(3), QStringLiteral("M3\n"), 0.012, 0.004), QStringLiteral("M3\n") + lines(3));
}

TEST(InsertPreLaunch, APartOfALineCountsAsALine) {
    // 10 - 5 / 3 = 8.33: line index 8, two lines behind it.
    EXPECT_EQ(linesBehindStart(inserted(lines(10), QStringLiteral("M3\n"), 0.005, 0.003)), 2);
}

TEST(InsertPreLaunch, StartsExactlyTheTimeBeforeTheEndOnEveryPeriod) {
    const QString text = lines(2500);
    for (int period_ms = 1; period_ms <= 8; ++period_ms) {
        for (int time_ms = 0; time_ms <= 2500 * period_ms; time_ms += 1 + time_ms / 9) {
            const QString out = inserted(text, QStringLiteral("M3\n"), time_ms / 1000.0, period_ms / 1000.0);
            ASSERT_EQ(linesBehindStart(out), (time_ms + period_ms - 1) / period_ms)
                << time_ms << " ms before the end, lines of " << period_ms << " ms";
        }
    }
}

TEST(InsertPreLaunch, ATextWithoutItsLastLineFeedCountsItsLastLine) {
    EXPECT_EQ(inserted(QStringLiteral("a\nb"), QStringLiteral("M3\n"), 0.001, 0.001),
              QStringLiteral("a\nM3\nb\n"));
    EXPECT_EQ(inserted(QStringLiteral("a\nb"), QStringLiteral("M3\n"), 0.0, 0.001),
              QStringLiteral("a\nb\nM3\n"));
}

TEST(InsertPreLaunch, AnEmptyBlockLeavesTheTextAsItIs) {
    EXPECT_EQ(inserted(lines(5), {}, 0.01, 0.004), lines(5));
    EXPECT_EQ(inserted(QStringLiteral("a"), {}, 0.01, 0.004), QStringLiteral("a\n"));
    EXPECT_EQ(inserted({}, {}, 0.01, 0.004), QString());
}

TEST(InsertPreLaunch, AnEmptyTextGivesTheBlock) {
    EXPECT_EQ(inserted({}, QStringLiteral("M3\n"), 1.0, 0.004), QStringLiteral("M3\n"));
    EXPECT_EQ(inserted({}, QStringLiteral("M3\n"), 0.0, 0.004), QStringLiteral("M3\n"));
}

TEST(InsertPreLaunch, TimesThatAreNoTimesCountAsNone) {
    const QString behind = lines(3) + QStringLiteral("M3\n");
    EXPECT_EQ(inserted(lines(3), QStringLiteral("M3\n"), -1.0, 0.004), behind);
    EXPECT_EQ(inserted(lines(3), QStringLiteral("M3\n"), std::nan(""), 0.004), behind);
    const QString front = QStringLiteral("M3\n") + lines(3);
    EXPECT_EQ(inserted(lines(3), QStringLiteral("M3\n"), HUGE_VAL, 0.004), front);
    EXPECT_EQ(inserted(lines(3), QStringLiteral("M3\n"), 1.0, 0.0), front);
}

TEST(InsertPreLaunch, AppendsToWhatStands) {
    QString out = QStringLiteral("M93\n");
    InsertPreLaunch(out, lines(2), QStringLiteral("M3\n"), 0.001, 0.001);
    EXPECT_EQ(out, QStringLiteral("M93\nG1 X0\nM3\nG1 X1\n"));
}

#include "items/calc/CodeLines.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <random>

#include "support/TestSupport.h"

namespace {

/// The lines by Qt's own means.
QStringList splitLines(const QString& text) {
    QStringList lines = text.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QString& line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
    }
    return lines;
}

QString randomText(std::mt19937& random) {
    const QString letters = QStringLiteral("\n\n\nGX1\r");
    QString text;
    const int size = static_cast<int>(random() % 400);
    for (int i = 0; i < size; ++i) {
        // Now and then a line longer than a page of the index.
        if (random() % 100 == 0)
            text += QString(1500, 'Y');
        text += letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))];
    }
    return text;
}

}  // namespace

TEST(CodeLines, EmptyText_HasNoLine) {
    for (const CodeLines& lines : {CodeLines(), CodeLines(QString()), CodeLines(QStringLiteral(""))}) {
        EXPECT_EQ(lines.count(), 0);
        EXPECT_EQ(lines.longest(), 0);
        EXPECT_EQ(lines.line(0).size(), 0);
        EXPECT_EQ(lines.start(0), 0);
        EXPECT_EQ(lines.lineAt(0), -1);
        EXPECT_EQ(lines.lineOfPlayed(0), -1);
    }
}

TEST(CodeLines, LastLineEnd_StartsNoFurtherLine) {
    EXPECT_EQ(CodeLines("G1\nG2").count(), 2);
    EXPECT_EQ(CodeLines("G1\nG2\n").count(), 2);
    EXPECT_EQ(CodeLines("G1\nG2\n\n").count(), 3);
    EXPECT_EQ(CodeLines("\n").count(), 1);
}

TEST(CodeLines, CarriageReturn_BelongsToTheLineEndOnlyBeforeALineFeed) {
    const CodeLines lines("G1\r\nG2\rG3\r\n\r\n");
    ASSERT_EQ(lines.count(), 3);
    EXPECT_EQ(lines.line(0).toString(), QString("G1"));
    EXPECT_EQ(lines.line(1).toString(), QString("G2\rG3"));
    EXPECT_EQ(lines.line(2).toString(), QString());
}

TEST(CodeLines, NulAndTab_AreLettersOfTheLine) {
    const QString text = QStringLiteral("G1") + QChar(0) + QStringLiteral("\tX1\nM3");
    const CodeLines lines(text);
    ASSERT_EQ(lines.count(), 2);
    EXPECT_EQ(lines.line(0).toString(), text.left(6));
    EXPECT_EQ(lines.line(1).toString(), QString("M3"));
}

TEST(CodeLines, OutsideOfTheText_GivesNothing) {
    const CodeLines lines("G1\nG2\n");
    EXPECT_EQ(lines.line(-1).size(), 0);
    EXPECT_EQ(lines.line(2).size(), 0);
    EXPECT_EQ(lines.block(1, 0).size(), 0);
    EXPECT_EQ(lines.start(2), 6);
    EXPECT_EQ(lines.start(-5), 0);
    EXPECT_EQ(lines.lineAt(-1), -1);
    EXPECT_EQ(lines.lineAt(6), -1);
}

TEST(CodeLines, AnyText_AgreesWithASplit) {
    std::mt19937 random(2201);
    for (int round = 0; round < 400; ++round) {
        const QString text = randomText(random);
        const QStringList expected = splitLines(text);
        const CodeLines lines(text);
        ASSERT_EQ(lines.count(), expected.size()) << text.toStdString();
        int start = 0;
        for (int i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(lines.line(i).toString(), expected[i]) << i << " of " << text.toStdString();
            ASSERT_EQ(lines.start(i), start) << i << " of " << text.toStdString();
            start = text.indexOf('\n', start) + 1;
        }
    }
}

TEST(CodeLines, EveryOffset_LiesInTheLineThatASearchFromItsStartReaches) {
    std::mt19937 random(77);
    for (int round = 0; round < 100; ++round) {
        const QString text = randomText(random);
        const CodeLines lines(text);
        int line = 0;
        for (int offset = 0; offset < text.size(); ++offset) {
            ASSERT_EQ(lines.lineAt(offset), line) << offset << " of " << text.toStdString();
            line += text[offset] == '\n' ? 1 : 0;
        }
    }
}

TEST(CodeLines, Played_CountsTheLinesThatAreNotEmpty) {
    std::mt19937 random(78);
    for (int round = 0; round < 200; ++round) {
        const QString text = randomText(random);
        const QStringList all = text.split('\n');
        const CodeLines lines(text);
        int played = 0;
        for (int line = 0; line < all.size(); ++line) {
            if (all[line].isEmpty())
                continue;
            ASSERT_EQ(lines.lineOfPlayed(played), line) << played << " of " << text.toStdString();
            ++played;
        }
        ASSERT_EQ(lines.lineOfPlayed(played), -1) << text.toStdString();
        ASSERT_EQ(lines.lineOfPlayed(-1), -1);
    }
}

TEST(CodeLines, Block_IsTheTextBetweenTwoLines) {
    const CodeLines lines("N1\r\nN2\r\n\r\nN4\r\n");
    EXPECT_EQ(lines.block(0, 1).toString(), QString("N1\r\nN2"));
    EXPECT_EQ(lines.block(1, 3).toString(), QString("N2\r\n\r\nN4"));
    EXPECT_EQ(lines.block(0, 4).size(), 0);
}

TEST(CodeLines, Index_StaysBelowAFifthOfTheText) {
    QString program;
    for (int i = 0; i < 20000; ++i)
        program += QStringLiteral("G1 X") + QString::number(i) + QStringLiteral(" Y2.5 F3000\n");
    for (const QString& text : {program, QString(100000, '\n'), QString(100000, 'X')}) {
        const CodeLines lines(text);
        EXPECT_EQ(lines.text().constData(), text.constData()) << "the text is shared";
        EXPECT_LT(static_cast<double>(lines.indexBytes()), 0.2 * 2 * text.size());
    }
}

#include "items/calc/CodeSearch.h"

#include <gtest/gtest.h>

#include <QVector>
#include <random>

#include "support/TestSupport.h"

namespace {

/// All places where `needle` starts, by Qt's own search.
QVector<int> places(const QString& text, const QString& needle, Qt::CaseSensitivity sensitivity) {
    QVector<int> found;
    for (int at = text.indexOf(needle, 0, sensitivity); at >= 0;
         at = text.indexOf(needle, at + 1, sensitivity))
        found << at;
    return found;
}

QString randomLetters(std::mt19937& random, const QString& letters, int size) {
    QString text;
    for (int i = 0; i < size; ++i)
        text += letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))];
    return text;
}

}  // namespace

TEST(CodeSearch, EmptyNeedle_FindsNothing) {
    const QString text("G1 X1");
    for (const CodeSearch& search : {CodeSearch(), CodeSearch(QString(), Qt::CaseInsensitive)}) {
        EXPECT_TRUE(search.isEmpty());
        EXPECT_EQ(search.next(text, 0), -1);
        EXPECT_EQ(search.previous(text, 4), -1);
        EXPECT_EQ(search.count(text, 4).total, 0);
    }
}

TEST(CodeSearch, NeedleLongerThanTheText_IsNotFound) {
    const CodeSearch search("G1 X1", Qt::CaseSensitive);
    EXPECT_EQ(search.next(QString("G1 X"), 0), -1);
    EXPECT_EQ(search.previous(QString("G1 X"), 3), -1);
    EXPECT_EQ(search.next(QString(), 0), -1);
    EXPECT_EQ(search.count(QString("G1"), 0).total, 0);
}

TEST(CodeSearch, Case_CountsOnlyWhenAsked) {
    const QString text("m3 M3");
    EXPECT_EQ(CodeSearch("M3", Qt::CaseSensitive).next(text, 0), 3);
    EXPECT_EQ(CodeSearch("M3", Qt::CaseInsensitive).next(text, 0), 0);
    EXPECT_EQ(CodeSearch("m3", Qt::CaseInsensitive).previous(text, 5), 3);
    const QString russian = QString::fromUtf8("(ОБРАБОТКА ПАЗА)");
    EXPECT_EQ(CodeSearch(QString::fromUtf8("паза"), Qt::CaseInsensitive).next(russian, 0), 11);
    EXPECT_EQ(CodeSearch(QString::fromUtf8("паза"), Qt::CaseSensitive).next(russian, 0), -1);
}

TEST(CodeSearch, SpecialLetters_AreTakenAsTheyStand) {
    const QString text("(A.B*[C]\\)");
    EXPECT_EQ(CodeSearch("*[C]\\", Qt::CaseInsensitive).next(text, 0), 4);
    EXPECT_EQ(CodeSearch(".*", Qt::CaseInsensitive).next(text, 0), -1);
}

TEST(CodeSearch, Wrapped_GoesOnAtTheOtherEndAndSaysSo) {
    const QString text("X1 X2 X3");
    const CodeSearch search("X", Qt::CaseSensitive);
    EXPECT_EQ(search.nextWrapped(text, 4).offset, 6);
    EXPECT_FALSE(search.nextWrapped(text, 4).wrapped);
    EXPECT_EQ(search.nextWrapped(text, 7).offset, 0);
    EXPECT_TRUE(search.nextWrapped(text, 7).wrapped);
    EXPECT_EQ(search.previousWrapped(text, 5).offset, 3);
    EXPECT_EQ(search.previousWrapped(text, -1).offset, 6);
    EXPECT_TRUE(search.previousWrapped(text, -1).wrapped);
    const CodeSearch absent("Y", Qt::CaseSensitive);
    EXPECT_EQ(absent.nextWrapped(text, 4).offset, -1);
    EXPECT_FALSE(absent.nextWrapped(text, 4).wrapped);
    EXPECT_EQ(absent.previousWrapped(text, 4).offset, -1);
}

TEST(CodeSearch, OverlappingMatches_AllCount) {
    const CodeSearch search("00", Qt::CaseSensitive);
    const QString text("X0000");
    EXPECT_EQ(search.count(text, 2).total, 3);
    EXPECT_EQ(search.count(text, 2).number, 2);
    EXPECT_EQ(search.next(text, 2), 2);
    EXPECT_EQ(search.previous(text, 2), 2);
}

TEST(CodeSearch, AnyText_AgreesWithQt) {
    std::mt19937 random(5);
    const QString letters("XxYy01. ");
    for (int round = 0; round < 600; ++round) {
        const QString text = randomLetters(random, letters, static_cast<int>(random() % 700));
        const QString needle = randomLetters(random, letters, 1 + static_cast<int>(random() % 4));
        const auto sensitivity = round % 2 == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const QVector<int> expected = places(text, needle, sensitivity);
        const CodeSearch search(needle, sensitivity);
        SCOPED_TRACE(text.toStdString() + " | " + needle.toStdString());
        ASSERT_EQ(search.count(text, text.size()).total, expected.size());
        int passed = 0;
        for (int from = 0; from <= text.size(); ++from) {
            while (passed < expected.size() && expected[passed] < from)
                ++passed;
            ASSERT_EQ(search.next(text, from), passed < expected.size() ? expected[passed] : -1) << from;
            const bool here = passed < expected.size() && expected[passed] == from;
            const int before = here ? from : passed > 0 ? expected[passed - 1] : -1;
            ASSERT_EQ(search.previous(text, from), before) << from;
        }
        if (!expected.isEmpty()) {
            const int which = static_cast<int>(random() % static_cast<unsigned>(expected.size()));
            ASSERT_EQ(search.count(text, expected[which]).number, which + 1);
        }
    }
}

TEST(CodeSearch, TextInTheMiddleOfAnother_IsNotReadBeyond) {
    // A view that ends inside of the memory of its text: what lies behind must not be found.
    const QString text = QString(100, '-') + QStringLiteral("M30") + QString(100, '-');
    const CodeSearch search("M30", Qt::CaseSensitive);
    EXPECT_EQ(search.next(QStringView(text).left(102), 0), -1);
    EXPECT_EQ(search.next(QStringView(text).left(103), 0), 100);
}

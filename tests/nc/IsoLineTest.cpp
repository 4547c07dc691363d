#include "nc/calc/IsoLine.h"

#include <gtest/gtest.h>

#include <random>

#include "core/calc/NumberText.h"
#include "support/TestSupport.h"

namespace {

QString withoutNumber(const QString& text) {
    IsoLine line;
    line.set(text);
    return line.text().toString();
}

std::vector<int> gWords(const QString& text) {
    IsoLine line;
    line.set(text);
    GWords words(line);
    std::vector<int> found;
    while (const std::optional<int> word = words.next())
        found.push_back(*word);
    return found;
}

}  // namespace

TEST(IsoLine, BlockNumber_GoesWhereverItStands) {
    EXPECT_EQ(withoutNumber("N10 G1 X5"), QStringLiteral("G1 X5"));
    EXPECT_EQ(withoutNumber("G1 X5 N10"), QStringLiteral("G1 X5"));
    EXPECT_EQ(withoutNumber("G1 N10 X5"), QStringLiteral("G1  X5"));
    EXPECT_EQ(withoutNumber("N10"), QString());
    EXPECT_EQ(withoutNumber("N"), QString());
    EXPECT_EQ(withoutNumber("n10 X5"), QStringLiteral("n10 X5"));
    EXPECT_EQ(withoutNumber("N-10 X5"), QStringLiteral("-10 X5"));
    EXPECT_EQ(withoutNumber("N10.5 X5"), QStringLiteral(".5 X5"));
}

TEST(IsoLine, BlockNumber_OnlyTheFirstOneGoes) {
    EXPECT_EQ(withoutNumber("N1 N2 X5"), QStringLiteral("N2 X5"));
    EXPECT_EQ(withoutNumber("ANGLE"), QStringLiteral("AGLE"));
}

TEST(IsoLine, BlockNumberInsideAWord_JoinsWhatStandsAround) {
    IsoLine line;
    line.set(u"X1N702");
    EXPECT_EQ(line.word(u'X'), 1.0);
    line.set(u"X1N7.5");
    EXPECT_EQ(line.word(u'X'), 1.5);
}

TEST(IsoLine, Comments_AreIgnoredAlsoBehindABlockNumber) {
    for (const char* text : {"", ";G1 X5", "//G1 X5", "%", "N10 ;X5", "N10 %1", "/N10/ X5", "N77"}) {
        const QString kept = QString::fromLatin1(text);
        IsoLine line;
        line.set(kept);
        EXPECT_EQ(line.isIgnored(), true) << text;
    }
    for (const char* text : {"/G1 X5", "G1 ; X5", "(DLY, 5)", "x"}) {
        const QString kept = QString::fromLatin1(text);
        IsoLine line;
        line.set(kept);
        EXPECT_EQ(line.isIgnored(), false) << text;
    }
}

TEST(IsoLine, Directive_NeedsBothBracketsAtItsEnds) {
    IsoLine line;
    line.set(u"(UPR,1)");
    EXPECT_EQ(line.isDirective(), true);
    EXPECT_EQ(line.directive().toString(), QStringLiteral("UPR,1"));
    line.set(u"()");
    EXPECT_EQ(line.isDirective(), true);
    EXPECT_EQ(line.directive().size(), 0);
    for (const QStringView text : {QStringView(u"("), QStringView(u"(UPR) ;"), QStringView(u"X(UPR)")}) {
        line.set(text);
        EXPECT_EQ(line.isDirective(), false) << text.toString().toStdString();
    }
}

TEST(IsoLine, Assignment_IsFoundAnywhereAndForgottenByTheNextLine) {
    IsoLine line;
    line.set(u"G1 X=5");
    EXPECT_EQ(line.isAssignment(), true);
    line.set(u"G1 X5");
    EXPECT_EQ(line.isAssignment(), false);
}

TEST(IsoLine, WordOfRandomLines_IsThatOfTheLineSearch) {
    std::mt19937 random(17);
    const QString alphabet = QStringLiteral("XYZCAFGRUVW0123456789.- ;x=\u4e2d");
    std::uniform_int_distribution<int> pick(0, alphabet.size() - 1);
    std::uniform_int_distribution<int> length(0, 40);
    IsoLine line;
    for (int i = 0; i < 20000; ++i) {
        QString text;
        for (int n = length(random); n > 0; --n)
            text += alphabet[pick(random)];
        text = text.trimmed();
        line.set(text);
        if (line.isIgnored())
            continue;
        for (const QChar letter : QStringLiteral("XYZCAFRUVWQx\u4e2d")) {
            ASSERT_EQ(line.word(letter), readWord(text, letter)) << text.toStdString();
            ASSERT_EQ(line.has(letter), text.contains(letter)) << text.toStdString();
        }
        ASSERT_EQ(line.isAssignment(), text.contains('=')) << text.toStdString();
    }
}

TEST(GWords, AreVisitedFromLeftToRight) {
    EXPECT_EQ(gWords("G90 G1 X5 G17"), (std::vector<int>{90, 1, 17}));
    EXPECT_EQ(gWords("G01G091"), (std::vector<int>{1, 91}));
    EXPECT_EQ(gWords("X5 g1"), std::vector<int>{});
}

TEST(GWords, AGWithoutDigits_EndsTheScan) {
    EXPECT_EQ(gWords("G1 G G90"), std::vector<int>{1});
    EXPECT_EQ(gWords("GO G1"), std::vector<int>{});
    EXPECT_EQ(gWords("G"), std::vector<int>{});
    EXPECT_EQ(gWords("G-1 G1"), std::vector<int>{});
}

TEST(GWords, DecimalAndHugeNumbers_AreTheirDigits) {
    EXPECT_EQ(gWords("G2.5 G1"), (std::vector<int>{2, 1}));
    EXPECT_EQ(gWords("G99999999999999999999999999999999 G1"), (std::vector<int>{GWords::kUnknown, 1}));
    EXPECT_EQ(gWords("G4294967297"), std::vector<int>{GWords::kUnknown});
    EXPECT_EQ(gWords("G2147483647"), std::vector<int>{2147483647});
    EXPECT_EQ(gWords("G00000000000000000000000000001"), std::vector<int>{1});
}

#include "items/calc/CodeWords.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <random>

#include "support/TestSupport.h"

namespace {

const char* nameOf(CodeWordKind kind) {
    switch (kind) {
        case CodeWordKind::Number:
            return "number";
        case CodeWordKind::Preparatory:
            return "g";
        case CodeWordKind::Command:
            return "m";
        case CodeWordKind::AxisLetter:
            return "axis";
        case CodeWordKind::AxisValue:
            return "value";
        case CodeWordKind::Feed:
            return "feed";
        case CodeWordKind::Tool:
            return "tool";
        case CodeWordKind::Comment:
            return "comment";
        case CodeWordKind::Other:
            break;
    }
    return "other";
}

/// "g[G1] axis[X] value[-1.5]"
QString spansOf(const QString& line) {
    CodeSpans spans;
    appendCodeSpans(line, spans);
    QStringList parts;
    for (const CodeSpan& span : spans)
        parts << QStringLiteral("%1[%2]").arg(nameOf(span.kind), line.mid(span.start, span.length));
    return parts.join(' ');
}

}  // namespace

TEST(CodeWords, LineOfEmittedCode_GivesAllWords) {
    EXPECT_EQ(spansOf("G1 X100.000 Y-20.000 C+0.5 F5000"),
              QString("g[G1] axis[X] value[100.000] axis[Y] value[-20.000] axis[C] value[+0.5] feed[F5000]"));
}

TEST(CodeWords, WordsWithoutBlanks_AreTold) {
    EXPECT_EQ(spansOf("N10G01X1.Y.5M3S12000T2D1H1"),
              QString("number[N10] g[G01] axis[X] value[1.] axis[Y] value[.5] m[M3] tool[S12000] tool[T2] "
                      "tool[D1] tool[H1]"));
}

TEST(CodeWords, CentresAndParameters_HaveTheirKinds) {
    EXPECT_EQ(spansOf("G2 I1 J-1 R5 P2 L3 O100"),
              QString("g[G2] axis[I] value[1] axis[J] value[-1] axis[R] value[5] other[P2] other[L3] "
                      "other[O100]"));
}

TEST(CodeWords, Comments_EndWhereTheyEnd) {
    EXPECT_EQ(spansOf("G1 (X1 M3) X2"), QString("g[G1] comment[(X1 M3)] axis[X] value[2]"));
    EXPECT_EQ(spansOf("G1 (X1"), QString("g[G1] comment[(X1]"));
    EXPECT_EQ(spansOf("X1 ; M3 (G1)"), QString("axis[X] value[1] comment[; M3 (G1)]"));
    EXPECT_EQ(spansOf("X1 // M3"), QString("axis[X] value[1] comment[// M3]"));
    EXPECT_EQ(spansOf("%_N_PART_1"), QString("comment[%_N_PART_1]"));
    EXPECT_EQ(spansOf("X1 % M3"), QString("axis[X] value[1] m[M3]"));
    EXPECT_EQ(spansOf("/ X1"), QString("axis[X] value[1]"));
}

TEST(CodeWords, LettersWithoutANumber_AreNoWords) {
    EXPECT_EQ(spansOf(""), QString());
    EXPECT_EQ(spansOf("X Y- Z. A-. B+"), QString());
    EXPECT_EQ(spansOf("GOTO10 TRAORI x1 m3"), QString());
    EXPECT_EQ(spansOf("X=5"), QString());
}

TEST(CodeWords, AnyLine_SpansRiseAndLieWithin) {
    std::mt19937 random(91);
    const QString letters = QString("GXMNF01.-+ (); /%x") + QChar(0x4e2d) + QChar(0xd800) + QChar(0);
    for (int round = 0; round < 3000; ++round) {
        QString line;
        for (auto left = random() % 40; left > 0; --left)
            line += letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))];
        CodeSpans spans;
        appendCodeSpans(line, spans);
        int end = 0;
        for (const CodeSpan& span : spans) {
            ASSERT_GE(span.start, end) << line.toStdString();
            ASSERT_GE(span.length, 1) << line.toStdString();
            end = span.start + span.length;
        }
        ASSERT_LE(end, line.size()) << line.toStdString();
    }
}

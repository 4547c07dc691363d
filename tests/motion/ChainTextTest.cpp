#include "machine/calc/ChainText.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <random>

#include "support/TestSupport.h"

namespace {

QStringList wordsOf(const QString& line) {
    QStringList words;
    WordReader reader(line);
    while (reader.next())
        words.append(reader.word().toString());
    return words;
}

QStringList matchesOf(const QString& line) {
    static const QRegularExpression pattern(QStringLiteral("[A-Z]-?\\d*\\.?\\d*"),
                                            QRegularExpression::UseUnicodePropertiesOption);
    QStringList words;
    for (auto match = pattern.globalMatch(line); match.hasNext();)
        words.append(match.next().captured(0));
    return words;
}

}  // namespace

TEST(ChainText, EntriesSplitIntoChainsAndNames) {
    const QVector<QStringList> chains = splitChains(QStringLiteral("  X->Z->C; Y ;;V  "));
    ASSERT_EQ(chains.size(), 3);
    EXPECT_EQ(chains[0], (QStringList{"X", "Z", "C"}));
    EXPECT_EQ(chains[1], QStringList{"Y"});
    EXPECT_EQ(chains[2], QStringList{"V"});
}

TEST(ChainText, AnEntryWithoutNamesGivesAnEmptyChain) {
    for (const char* text : {"", "   ", ";", "->"}) {
        const QVector<QStringList> chains = splitChains(QString::fromLatin1(text));
        ASSERT_EQ(chains.size(), 1) << text;
        EXPECT_TRUE(chains[0].isEmpty()) << text;
    }
}

TEST(ChainText, HeadsStandOnceInTheOrderOfTheEntries) {
    EXPECT_EQ(chainHeads({"X->Z;Y", "X->C;V", ""}), (QStringList{"X", "Y", "V"}));
}

TEST(ChainText, CarrierPathTakesBothSeparators) {
    EXPECT_EQ(carrierPath("X->Z;C"), (QStringList{"X", "Z", "C"}));
    EXPECT_EQ(carrierPath(""), QStringList());
}

TEST(ChainText, HeadOfACarrierIsFoundByText) {
    const QStringList entries{"X->Z->C->A;Y", "U->W"};
    EXPECT_EQ(headOfCarrier("A", entries), "X");
    EXPECT_EQ(headOfCarrier("Z->C", entries), "X");
    EXPECT_EQ(headOfCarrier("W", entries), "U");
    EXPECT_EQ(headOfCarrier("Q", entries), "");
    EXPECT_EQ(headOfCarrier("", entries), "");
    EXPECT_EQ(headOfCarrier("A", {"XA->Z"}), "XA");  // a piece of a name counts too
}

TEST(WordReader, CutsALineIntoItsWords) {
    EXPECT_EQ(wordsOf("G1 X12.5Y-3 Z. A F7000"), (QStringList{"G1", "X12.5", "Y-3", "Z.", "A", "F7000"}));
    EXPECT_EQ(wordsOf("X1.2.3"), QStringList{"X1.2"});
    EXPECT_EQ(wordsOf("X--1"), QStringList{"X-"});
    EXPECT_EQ(wordsOf("x1 y2"), QStringList());
    EXPECT_EQ(wordsOf(""), QStringList());
    EXPECT_EQ(wordsOf("(DLY,1000)"), (QStringList{"D", "L", "Y"}));
}

TEST(WordReader, MatchesThePatternOnRandomLines) {
    std::mt19937 random(7);
    const QString letters = QStringLiteral("XYZAM-..0123456789 x,()\t٣Ä");
    std::uniform_int_distribution<int> index(0, letters.size() - 1);
    std::uniform_int_distribution<int> length(0, 24);
    for (int round = 0; round < 20000; ++round) {
        QString line;
        for (int i = length(random); i > 0; --i)
            line.append(letters[index(random)]);
        ASSERT_EQ(wordsOf(line), matchesOf(line)) << line.toStdString();
    }
}

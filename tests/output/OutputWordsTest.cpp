#include "nc/calc/OutputWords.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "OutputOracle.h"
#include "nc/calc/OutputText.h"
#include "support/TestSupport.h"

namespace {

constexpr int kRounds = 20000;

QString foundText(const QString& line, const std::optional<FoundWord>& word) {
    return word ? line.mid(static_cast<int>(word->place), static_cast<int>(word->length)) : QString();
}

int placeOf(const std::optional<FoundWord>& word) {
    return word ? static_cast<int>(word->place) : -1;
}

}  // namespace

TEST(OutputWords, RandomLines_AreMatchedAsThePatternsMatchThem) {
    const QRegularExpression axis("X(-?\\d+(\\.\\d+)?)");
    const QRegularExpression command("M\\d+");
    const QRegularExpression linear("G0?1(?![\\d.])");
    const QRegularExpression motion("^G(?=\\d{1,3}(?!\\d))0*[0-3](?![\\d.])");
    LineMaker maker(20261121);
    for (int i = 0; i < kRounds; ++i) {
        const QString line = maker.line();
        SCOPED_TRACE(line.toStdString());
        const auto word = axis.match(line);
        EXPECT_EQ(foundText(line, findWord(line, 'X')), word.captured(0));
        EXPECT_EQ(placeOf(findWord(line, 'X')), word.capturedStart(0));
        EXPECT_EQ(holdsCommand(line), line.contains(command));
        EXPECT_EQ(placeOf(findLinearWord(line)), linear.match(line).capturedStart(0));
        EXPECT_EQ(foundText(line, findLinearWord(line)), linear.match(line).captured(0));
        EXPECT_EQ(motionWordLength(line), motion.match(line).capturedLength(0));
        EXPECT_EQ(isMotionLine(line), motion.match(line.trimmed()).hasMatch());
    }
}

TEST(FeedOfLine, RandomLines_HaveTheNumberOfTheirText) {
    const QRegularExpression end("[A-Z/s]");
    LineMaker maker(7);
    for (int i = 0; i < kRounds; ++i) {
        const QString line = maker.line();
        SCOPED_TRACE(line.toStdString());
        const int place = line.indexOf('F');
        const int stop = place < 0 ? -1 : line.indexOf(end, place + 1);
        bool ok = false;
        const double feed =
            place < 0 ? 0 : line.mid(place + 1, stop < 0 ? -1 : stop - place - 1).toDouble(&ok);
        EXPECT_EQ(feedOfLine(line), ok ? std::optional(feed) : std::nullopt);
    }
}

TEST(FeedOfLine, FirstFeed_EndsAtALetterASlashOrAnS) {
    EXPECT_EQ(feedOfLine(u"G1 X1 F5000"), 5000.0);
    EXPECT_EQ(feedOfLine(u"G1 F5000 X1 F7"), 5000.0);
    EXPECT_EQ(feedOfLine(u"F5000/2"), 5000.0);
    EXPECT_EQ(feedOfLine(u"F5000s"), 5000.0);
    EXPECT_EQ(feedOfLine(u"F5e3"), 5000.0);
    EXPECT_EQ(feedOfLine(u"F 20 "), 20.0);
    EXPECT_EQ(feedOfLine(u";LEFT 5"), std::nullopt);
    EXPECT_EQ(feedOfLine(u"F"), std::nullopt);
    EXPECT_EQ(feedOfLine(u"G1 X1"), std::nullopt);
}

TEST(IsRapidFeed, WithinATenth_IsRapid) {
    EXPECT_TRUE(isRapidFeed(50000, 50000));
    EXPECT_TRUE(isRapidFeed(49999.95, 50000));
    EXPECT_FALSE(isRapidFeed(49999.8, 50000));
    EXPECT_FALSE(isRapidFeed(50000.2, 50000));
}

TEST(MotionWordLength, OnlyG0ToG3_AreMotion) {
    EXPECT_EQ(motionWordLength(u"G1 X5"), 2);
    EXPECT_EQ(motionWordLength(u"G03X5"), 3);
    EXPECT_EQ(motionWordLength(u"G000"), 4);
    EXPECT_EQ(motionWordLength(u"G0001"), 0);
    EXPECT_EQ(motionWordLength(u"G4 F1"), 0);
    EXPECT_EQ(motionWordLength(u"G17"), 0);
    EXPECT_EQ(motionWordLength(u"G1.2"), 0);
    EXPECT_EQ(motionWordLength(u" G1"), 0);
    EXPECT_EQ(motionWordLength(u""), 0);
}

TEST(LineWalk, Texts_AreCutAtEveryLineFeed) {
    LineMaker maker(3);
    for (int i = 0; i < 200; ++i) {
        const QString text = maker.text(maker.below(5));
        QStringList found;
        for (LineWalk walk(text); walk.next();)
            found << walk.line().toString();
        EXPECT_EQ(found, oracle::lines(text)) << text.toStdString();
    }
}

TEST(OutputText, TextBeyondItsBound_IsNoText) {
    OutputText text;
    text.append(u"abc");
    text.append(OutputText::kMaxLength, u'x');
    EXPECT_TRUE(text.isFull());
    text.append(u"d");
    EXPECT_EQ(text.take(), QString());
}

TEST(OutputText, Pieces_StandInOrder) {
    OutputText text(10);
    text.appendLine(u"ab");
    text.append(2, u'.');
    text.append(0, u'!');
    text.append(-1, u'!');
    text.insert(1, "-");
    EXPECT_EQ(text.size(), 6);
    EXPECT_EQ(text.take(), QString("a-b\n.."));
}

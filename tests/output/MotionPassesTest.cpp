#include "nc/calc/MotionPasses.h"

#include <gtest/gtest.h>

#include "OutputOracle.h"
#include "support/TestSupport.h"

namespace {

constexpr double kRapid = 50000;

QString marked(const QString& text) {
    return withMotionMarks(text, ";RAPID", ";LINEAR", kRapid);
}

}  // namespace

TEST(MotionMarks, EveryChange_GetsTheMarkOfTheNewState) {
    EXPECT_EQ(marked("G1 X1 F50000\nG1 X2 F5000\nG1 X3 F5000\nG1 X4 F50000\n"),
              QString(";RAPID\nG1 X1 F50000\n;LINEAR\nG1 X2 F5000\nG1 X3 F5000\n;RAPID\nG1 X4 F50000\n"));
}

TEST(MotionMarks, ProgramThatStartsWithFeed_HasBothMarksInFront) {
    EXPECT_EQ(marked("G1 X1 F5000"), QString(";RAPID\n;LINEAR\nG1 X1 F5000"));
}

TEST(MotionMarks, LinesWithoutAFeed_ChangeNothing) {
    EXPECT_EQ(marked("M5\nG1 X1\n;FAST\n\n"), QString(";RAPID\nM5\nG1 X1\n;FAST\n\n"));
}

TEST(MotionMarks, FeedWithinATenthOfRapid_IsRapid) {
    EXPECT_EQ(marked("F49999.95"), QString(";RAPID\nF49999.95"));
    EXPECT_EQ(marked("F49999.5"), QString(";RAPID\n;LINEAR\nF49999.5"));
}

TEST(MotionMarks, EmptyMarks_StandAsEmptyLines) {
    EXPECT_EQ(withMotionMarks("G1 F5000\nG1 F50000", {}, {}, kRapid), QString("\n\nG1 F5000\n\nG1 F50000"));
}

TEST(Prepended, LinesThatStartWithG1_GetTheTextInFront) {
    EXPECT_EQ(withPrepended("G1 X1\n G1 X2\nG0 X3\nG17\nM5\nG1", "/", ";L"),
              QString("/G1 X1\n G1 X2\nG0 X3\n/G17\nM5\n/G1"));
}

TEST(Prepended, WithoutPrependOrLinear_NothingChanges) {
    EXPECT_EQ(withPrepended("G1 X1", "/", {}), QString("G1 X1"));
    EXPECT_EQ(withPrepended("G1 X1", {}, ";L"), QString("G1 X1"));
}

TEST(RapidWords, G0_ReplacesG1AndTheFeedGoes) {
    EXPECT_EQ(withRapidWords("G1 X1.000 F50000", "G0", kRapid), QString("G0 X1.000"));
    EXPECT_EQ(withRapidWords("G01 X1.000  F49999.95", "G0", kRapid), QString("G0 X1.000"));
    EXPECT_EQ(withRapidWords("G1 F50000 X1", "G0", kRapid), QString("G0 X1"));
    EXPECT_EQ(withRapidWords("G1 Y1 F50000 G1 V2  F50000", "G0", kRapid), QString("G0 Y1 G0 V2"));
}

TEST(RapidWords, G1_LeavesEveryLineAsItIs) {
    const QString text = "G1 X1.000 F50000\nG1 X2 F5000\n";
    for (const char* word : {"G1", "G01", "G1.0", "", "G", "0"})
        EXPECT_EQ(withRapidWords(text, word, kRapid), text) << word;
}

TEST(RapidWords, OtherLines_Stay) {
    const QString text = "G1 X1 F5000\nG1 X1\nG0 X1 F50000\nG17 F50000\nM5\n;F50000\nG1 X1 F-50000\n";
    EXPECT_EQ(withRapidWords(text, "G0", kRapid), text);
}

TEST(RapidWords, LineOfTwoFeeds_IsNoRapidLine) {
    const QString text = "G1 Y1 F50000 G1 V2 F5000";
    EXPECT_EQ(withRapidWords(text, "G0", kRapid), text);
}

TEST(MotionPasses, RandomTexts_ComeOutAsTheExpressionsGiveThem) {
    LineMaker maker(4711);
    for (int i = 0; i < 3000; ++i) {
        const QString text = maker.text(1 + maker.below(12));
        SCOPED_TRACE(text.toStdString());
        EXPECT_EQ(marked(text), oracle::marks(text, ";RAPID", ";LINEAR", kRapid));
        EXPECT_EQ(withPrepended(text, "G64 ", ";L"), oracle::prepended(text, "G64 ", ";L"));
        EXPECT_EQ(withRapidWords(text, "G00", kRapid), oracle::rapidWords(text, "G00", kRapid));
    }
}

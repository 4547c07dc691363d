#include <gtest/gtest.h>

#include <random>

#include "core/calc/Diagnostics.h"
#include "core/calc/NumberText.h"
#include "support/TestSupport.h"

namespace {
QStringList linesOf(const QString& text) {
    QStringList lines;
    LineReader reader(text);
    while (reader.next()) {
        lines.append(reader.line().toString());
        EXPECT_EQ(reader.lineNumber(), lines.size());
    }
    EXPECT_FALSE(reader.next()) << "behind the last line it stays there";
    return lines;
}
}  // namespace

TEST(LineReader, EmptyLines_AreCounted) {
    EXPECT_EQ(linesOf("a\n\nb"), (QStringList{"a", "", "b"}));
}

TEST(LineReader, WhiteSpaceAndMarks_AreTrimmed) {
    EXPECT_EQ(linesOf("\ufeffG1 X1\r\n\t G1 Y2 \r\n"), linesOf("G1 X1\nG1 Y2\n"));
    EXPECT_EQ(linesOf("\ufeffG1 X1\r\n")[0], QString("G1 X1"));
}

TEST(LineReader, AnyText_GivesTheLinesOfASplit) {
    std::mt19937 random(4711);
    const QString letters = "\n\n\r\t Gab1";
    for (int round = 0; round < 500; ++round) {
        QString text;
        for (auto i = random() % 30; i > 0; --i)
            text += letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))];
        QStringList expected = text.split('\n');
        for (QString& line : expected)
            line = line.trimmed();
        EXPECT_EQ(linesOf(text), expected) << text.toStdString();
    }
}

TEST(Diagnostics, Entries_KeepWhatWasSaid) {
    Diagnostics diagnostics;
    EXPECT_FALSE(diagnostics.has(Severity::Debug));
    diagnostics.add(Severity::Debug, "text", 4);
    diagnostics.addKey(Severity::Fatal, "Axis/ModelExistedErrorMsg", "\tName:X");
    EXPECT_TRUE(diagnostics.has(Severity::Debug));
    EXPECT_TRUE(diagnostics.has(Severity::Fatal));
    EXPECT_FALSE(diagnostics.has(Severity::Warning));
    ASSERT_EQ(diagnostics.entries.size(), 2U);
    EXPECT_EQ(diagnostics.entries[0].text, QString("text"));
    EXPECT_EQ(diagnostics.entries[0].line, 4);
    EXPECT_EQ(diagnostics.entries[1].key, QString("Axis/ModelExistedErrorMsg"));
    EXPECT_EQ(diagnostics.entries[1].text, QString("\tName:X"));
}

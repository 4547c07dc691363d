#include "items/calc/SourceText.h"

#include <gtest/gtest.h>

#include <random>

#include "support/TestSupport.h"

namespace {

QByteArray bytesOf(std::initializer_list<int> values) {
    QByteArray bytes;
    for (const int value : values)
        bytes.append(static_cast<char>(value));
    return bytes;
}

QString latin(const QByteArray& bytes) {
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

QString randomText(std::mt19937& random, const QString& letters, int most) {
    QString text;
    for (int n = static_cast<int>(random() % static_cast<unsigned>(most + 1)); n > 0; --n)
        text += letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))];
    return text;
}

}  // namespace

TEST(SourceText, Decoded_TakesUtf8WithAndWithoutMark) {
    EXPECT_EQ(decodedSource("G1 X1 ;\xE5\x88\x80\r\n\tG1"), QStringLiteral("G1 X1 ;刀\r\n\tG1"));
    EXPECT_EQ(decodedSource("\xEF\xBB\xBFG1 X1 ;\xE5\x88\x80"), QStringLiteral("G1 X1 ;刀"));
    EXPECT_EQ(decodedSource(""), QString());
    EXPECT_EQ(decodedSource("\xEF\xBB\xBF"), QString());
}

TEST(SourceText, Decoded_TakesUtf16ByItsMark) {
    EXPECT_EQ(decodedSource(bytesOf({0xFF, 0xFE, 'G', 0, '1', 0, '\n', 0})), QStringLiteral("G1\n"));
    EXPECT_EQ(decodedSource(bytesOf({0xFE, 0xFF, 0, 'G', 0, '1'})), QStringLiteral("G1"));
}

TEST(SourceText, Decoded_TakesChineseFilesOfTheOldKind) {
    // ";粗加工" in GB18030, whose bytes all leave ASCII alone.
    EXPECT_EQ(decodedSource(QByteArray(";") + bytesOf({0xB4, 0xD6, 0xBC, 0xD3, 0xB9, 0xA4}) + "\nG1 X5\n"),
              QStringLiteral(";粗加工\nG1 X5\n"));
    // One character with an ASCII byte (0xE9 'F') among others that have none.
    EXPECT_EQ(decodedSource(QByteArray(";") + bytesOf({0xB4, 0xD6, 0xBC, 0xD3, 0xE9, 'F'}) + "\nG1 X5 F9\n"),
              QStringLiteral(";粗加镕\nG1 X5 F9\n"));
}

TEST(SourceText, Decoded_WesternTextKeepsItsAsciiLetters) {
    const QByteArray bytes = QByteArray("; Fr") + bytesOf({0xE4}) + "sen 45" + bytesOf({0xB0}) + "\nG1 X5\n";
    EXPECT_EQ(decodedSource(bytes), latin(bytes));
    const QByteArray degree = bytesOf({0xB0}) + "0\nG1 X5\n";
    EXPECT_EQ(decodedSource(degree), latin(degree));
}

TEST(SourceText, Decoded_AnyBytesKeepTheirAsciiLetters) {
    std::mt19937 random(11);
    for (int i = 0; i < 3000; ++i) {
        QByteArray bytes(static_cast<int>(random() % 40), '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        bytes = ";" + bytes + "\nG1 X5 F900\n";
        // Marks in the middle and halves of characters included: the line behind is still there.
        EXPECT_EQ(decodedSource(bytes).endsWith("\nG1 X5 F900\n"), true) << bytes.toHex().toStdString();
    }
}

TEST(SourceText, Shown_HasLineFeedsOnly) {
    EXPECT_EQ(shownSource("a\r\nb\rc\nd\r\r\n\n"), QStringLiteral("a\nb\nc\nd\n\n\n"));
    EXPECT_EQ(shownSource(QStringLiteral("a\u2028b\u2029c\uFDD0\uFDD1")), QStringLiteral("a\nb\nc\n\n"));
    EXPECT_EQ(shownSource(QStringLiteral("\uFEFFG1\tX1\u00A0Y2")), QStringLiteral("\uFEFFG1\tX1\u00A0Y2"));
}

TEST(SourceText, Indices_GoThereAndBack) {
    const QString source = "ab\r\ncd\r\n\r\nef";
    const QString shown = shownSource(source);
    EXPECT_EQ(shown, QStringLiteral("ab\ncd\n\nef"));
    for (int i = 0; i <= shown.size(); ++i)
        EXPECT_EQ(shownIndex(source, sourceIndex(source, i)), i);
    EXPECT_EQ(shownIndex(source, 3), 2);  // inside a break
    EXPECT_EQ(sourceIndex(source, 99), source.size());
    EXPECT_EQ(shownIndex(source, 99), shown.size());
}

TEST(SourceText, Edited_ChangesOnlyWhatTheUserChanged) {
    EXPECT_EQ(editedSource("a\r\nb\r\nc", "a\nb\nc"), QStringLiteral("a\r\nb\r\nc"));
    EXPECT_EQ(editedSource("a\r\nb\r\nc", "a\nbx\nc"), QStringLiteral("a\r\nbx\r\nc"));
    EXPECT_EQ(editedSource("a\r\nb\r\nc", "a\nb\nnew\nc"), QStringLiteral("a\r\nb\r\nnew\r\nc"));
    EXPECT_EQ(editedSource("a\nb\rc\r\nd", "a\nb\nc\nd2"), QStringLiteral("a\nb\rc\r\nd2"));
    EXPECT_EQ(editedSource("a\r\nb", ""), QString());
    EXPECT_EQ(editedSource("", "x\ny"), QStringLiteral("x\ny"));
    EXPECT_EQ(editedSource("a\rb", "a\nx\nb"), QStringLiteral("a\rx\rb"));
}

TEST(SourceText, Edited_AlwaysShowsWhatWasTyped) {
    std::mt19937 random(23);
    const QString letters = QStringLiteral("ab\r\n\r\n\u2028X1 ");
    for (int i = 0; i < 5000; ++i) {
        const QString source = randomText(random, letters, 12);
        const QString edited = shownSource(randomText(random, letters, 12));
        const QString result = editedSource(source, edited);
        EXPECT_EQ(shownSource(result), edited)
            << source.toUtf8().toHex().toStdString() << " -> " << edited.toUtf8().toHex().toStdString();
        EXPECT_EQ(editedSource(source, shownSource(source)), source);
    }
}

TEST(SourceText, StartOfLine_CountsLineFeeds) {
    EXPECT_EQ(startOfLine(u"a\r\nb\nc", 1), 0);
    EXPECT_EQ(startOfLine(u"a\r\nb\nc", 2), 3);
    EXPECT_EQ(startOfLine(u"a\r\nb\nc", 3), 5);
    EXPECT_EQ(startOfLine(u"a\r\nb\nc", 4), -1);
    EXPECT_EQ(startOfLine(u"a", 0), -1);
}

TEST(SourceText, Size_CountsLinesAndTheLongest) {
    const SourceSize size = sourceSize(u"abc\r\nde\n\nabcde\r");
    EXPECT_EQ(size.lines, 5);
    EXPECT_EQ(size.longestLine, 5);
    EXPECT_EQ(size.characters, 15);
    EXPECT_EQ(sourceSize(u"").lines, 1);
}

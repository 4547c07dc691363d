#include "items/IsoSourceEdit.h"

#include <gtest/gtest.h>

#include <QTest>
#include <random>

#include "support/TestSupport.h"

using TORNVALE::IsoSourceEdit;

namespace {

QString program(int lines) {
    QString text;
    for (int i = 1; i <= lines; ++i)
        text += QStringLiteral("G1 X%1 Y2 F3000\r\n").arg(i);
    return text;
}

}  // namespace

TEST(IsoSourceEdit, UntouchedText_ComesBackToTheLetter) {
    IsoSourceEdit edit;
    std::mt19937 random(3);
    for (int i = 0; i < 500; ++i) {
        QString source;
        for (int n = static_cast<int>(random() % 30); n > 0; --n) {
            const auto any = static_cast<ushort>(random() % 0xFFFF);
            source +=
                random() % 3 == 0 ? QChar(any) : QLatin1String("\r\n\tX1")[static_cast<int>(random() % 5)];
        }
        edit.setSource(source);
        EXPECT_EQ(edit.isEdited(), false);
        EXPECT_EQ(edit.source(), source) << source.toUtf8().toHex().toStdString();
    }
}

TEST(IsoSourceEdit, TypedText_ChangesItsLineOnly) {
    IsoSourceEdit edit;
    edit.setSource(QStringLiteral("\uFEFFG1 X1\r\n\tG1\u00A0X2\r\nG1 X3"));
    edit.moveCursor(QTextCursor::End);
    QTest::keyClicks(&edit, "0 F5");
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClick(&edit, Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(&edit, "M8");
    EXPECT_EQ(edit.isEdited(), true);
    const QString expected = QStringLiteral("\uFEFFG1 X1\r\n\tG1\u00A0X2\r\nG1 X30 F5\r\n\r\nM8");
    EXPECT_EQ(edit.source(), expected);
    EXPECT_EQ(edit.takeSource(), expected);
    EXPECT_EQ(edit.isEdited(), false);
    EXPECT_EQ(edit.source(), expected);
    EXPECT_EQ(edit.textCursor().atEnd(), true);
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit.isEdited(), true);
}

TEST(IsoSourceEdit, LongProgram_FillsInWhileEventsGoOn) {
    IsoSourceEdit edit;
    const QString source = program(60000);
    edit.setSource(source);
    EXPECT_EQ(edit.isLoading(), true);
    EXPECT_EQ(edit.isReadOnly(), true);
    EXPECT_EQ(edit.source(), source);
    edit.markLine(50000);
    EXPECT_EQ(QTest::qWaitFor([&] { return !edit.isLoading(); }, 60000), true);
    EXPECT_EQ(edit.isReadOnly(), false);
    EXPECT_EQ(edit.blockCount(), 60001);
    EXPECT_EQ(edit.isEdited(), false);
    EXPECT_EQ(edit.textCursor().selectedText(), QStringLiteral("G1 X50000 Y2 F3000"));
    edit.textCursor().insertText("M8");
    EXPECT_EQ(edit.source().size(), source.size() - 18 + 2);
    EXPECT_EQ(edit.source().count("\r\n"), 60000);
}

TEST(IsoSourceEdit, NewTextWhileLoading_TakesThePlaceOfTheOld) {
    IsoSourceEdit edit;
    edit.setSource(program(60000));
    edit.setSource("G1 X1\n");
    EXPECT_EQ(edit.isLoading(), false);
    QCoreApplication::processEvents();
    EXPECT_EQ(edit.toPlainText(), QStringLiteral("G1 X1\n"));
    EXPECT_EQ(edit.isReadOnly(), false);
}

TEST(IsoSourceEdit, TextBeyondEditing_IsShownCutAndKeptWhole) {
    IsoSourceEdit edit;
    const QString line = QString(50 << 20, QLatin1Char('X')) + "\nG1 X1\n";
    edit.setSource(line);
    EXPECT_EQ(edit.isCut(), true);
    EXPECT_EQ(edit.isReadOnly(), true);
    EXPECT_LT(edit.document()->characterCount(), 1000);
    EXPECT_EQ(edit.source(), line);
    EXPECT_EQ(edit.takeSource(), line);
    edit.markLine(2);
    EXPECT_EQ(edit.extraSelections().size(), 0);
    edit.setSource(QString(IsoSourceEdit::kMostLines + 1, QLatin1Char('\n')));
    EXPECT_EQ(edit.isCut(), true);
    edit.setSource("G1");
    EXPECT_EQ(edit.isCut(), false);
    EXPECT_EQ(edit.isReadOnly(), false);
}

TEST(IsoSourceEdit, MarkedLine_CountsLineFeedsOfTheSource) {
    IsoSourceEdit edit;
    edit.setSource("one\rstill one\r\ntwo\nthree");
    edit.markLine(2);
    EXPECT_EQ(edit.textCursor().selectedText(), QStringLiteral("two"));
    ASSERT_EQ(edit.extraSelections().size(), 1);
    edit.markLine(0);
    EXPECT_EQ(edit.extraSelections().size(), 0);
    edit.markLine(99);
    EXPECT_EQ(edit.extraSelections().size(), 0);
}

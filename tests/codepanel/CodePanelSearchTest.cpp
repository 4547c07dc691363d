#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolButton>

#include "CodePanelWindow.h"

// Search, go to line, selection and copy.

TEST_F(CodePanelWindow, Search_GoesFromMatchToMatchAndAround) {
    panel().setTexts(program(300), "");
    show();
    QSignalSpy activated(&panel(), &CodePanel::lineActivated);
    key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_EQ(QApplication::focusWidget(), &part<QLineEdit>("SearchField"));
    type("m3");
    EXPECT_EQ(panel().currentLine(), 99);
    EXPECT_EQ(message(), QString("1 of 3"));
    key(Qt::Key_F3);
    EXPECT_EQ(panel().currentLine(), 199);
    EXPECT_EQ(message(), QString("2 of 3"));
    key(Qt::Key_Return);
    EXPECT_EQ(panel().currentLine(), 299);
    EXPECT_EQ(message(), QString("3 of 3"));
    key(Qt::Key_F3);
    EXPECT_EQ(panel().currentLine(), 99);
    EXPECT_EQ(message(), QString("1 of 3, search wrapped"));
    key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(panel().currentLine(), 299);
    EXPECT_EQ(message(), QString("3 of 3, search wrapped"));
    key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(panel().currentLine(), 199);
    EXPECT_EQ(message(), QString("2 of 3"));
    EXPECT_EQ(activated.count(), 0) << "a search moves no machine";
}

TEST_F(CodePanelWindow, Search_StartsAtTheCursor) {
    panel().setTexts(program(300), "");
    show();
    clickRow(4);
    panel().goToLine(150);
    key(Qt::Key_F, Qt::ControlModifier);
    type("S12");
    EXPECT_EQ(panel().currentLine(), 199);
    EXPECT_EQ(message(), QString("2 of 3"));
    key(Qt::Key_Escape);
    panel().goToLine(20);
    key(Qt::Key_F3);
    EXPECT_EQ(panel().currentLine(), 99);
    panel().goToLine(20);
    key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(panel().currentLine(), 299);
}

TEST_F(CodePanelWindow, Search_WithoutAMatchSaysSo) {
    panel().setTexts(program(30), "");
    show();
    panel().goToLine(7);
    key(Qt::Key_F, Qt::ControlModifier);
    type("Q9");
    EXPECT_EQ(message(), QString("No match"));
    EXPECT_EQ(panel().currentLine(), 7);
    key(Qt::Key_F3);
    EXPECT_EQ(message(), QString("No match"));
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    EXPECT_EQ(message(), QString());
}

TEST_F(CodePanelWindow, MatchCase_AppliesAtOnce) {
    panel().setTexts("g1 x1\nG1 X1\n", "");
    show();
    key(Qt::Key_F, Qt::ControlModifier);
    type("X1");
    EXPECT_EQ(panel().currentLine(), 0);
    EXPECT_EQ(message(), QString("1 of 2"));
    QTest::mouseClick(&part<QCheckBox>("MatchCase"), Qt::LeftButton, Qt::NoModifier, {6, 8});
    EXPECT_EQ(panel().currentLine(), 1);
    EXPECT_EQ(message(), QString("1 of 1"));
}

TEST_F(CodePanelWindow, Buttons_SearchAndEscapeLeadsBackToTheList) {
    panel().setTexts(program(300), "");
    show();
    key(Qt::Key_F, Qt::ControlModifier);
    type("M3");
    QTest::mouseClick(&part<QToolButton>("FindNext"), Qt::LeftButton);
    EXPECT_EQ(panel().currentLine(), 199);
    QTest::mouseClick(&part<QToolButton>("FindPrevious"), Qt::LeftButton);
    EXPECT_EQ(panel().currentLine(), 99);
    key(Qt::Key_Escape);
    EXPECT_FALSE(part<QLineEdit>("SearchField").isVisible());
    EXPECT_EQ(QApplication::focusWidget(), &view());
    key(Qt::Key_F3);
    EXPECT_EQ(panel().currentLine(), 199);
    key(Qt::Key_F, Qt::ControlModifier);
    QTest::mouseClick(&part<QToolButton>("CloseSearch"), Qt::LeftButton);
    EXPECT_EQ(QApplication::focusWidget(), &view());
}

TEST_F(CodePanelWindow, Match_IsMarkedInItsLine) {
    panel().setTexts("G1 X1\nG1 Y1\n", "");
    show();
    const auto hasColour = [this](int row, const QColor& colour) {
        const QRect place = view().visualRect(view().model()->index(row, 0));
        const QImage picture = view().viewport()->grab(place).toImage();
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, 1) == colour)
                return true;
        }
        return false;
    };
    key(Qt::Key_F, Qt::ControlModifier);
    type("G1");
    EXPECT_TRUE(hasColour(0, CodeDelegate::currentMatchColor()));
    EXPECT_TRUE(hasColour(1, CodeDelegate::matchColor()));
    EXPECT_FALSE(hasColour(1, CodeDelegate::currentMatchColor()));
    key(Qt::Key_Escape);
    EXPECT_FALSE(hasColour(1, CodeDelegate::matchColor()));
}

TEST_F(CodePanelWindow, MatchFarToTheRight_IsScrolledInto) {
    panel().setTexts(QString(800, '1') + "M3" + QString(100, '1') + "\n", "");
    show();
    key(Qt::Key_F, Qt::ControlModifier);
    type("M3");
    EXPECT_GT(view().horizontalScrollBar()->value(), 0);
    key(Qt::Key_A, Qt::ControlModifier);
    type("11");
    EXPECT_EQ(message().section(' ', 2), QString("898"));
    key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(panel().currentLine(), 0);
}

TEST_F(CodePanelWindow, GoToLine_AsksForItsNumber) {
    panel().setTexts(program(300), "");
    show();
    QSignalSpy activated(&panel(), &CodePanel::lineActivated);
    ExpectedDialogs dialogs;
    dialogs.answerNumber(217);
    key(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(panel().currentLine(), 216);
    EXPECT_EQ(status(), QString("Line 217 of 300"));
    dialogs.answerNumber(std::nullopt);
    key(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(panel().currentLine(), 216);
    dialogs.answerNumber(1e12);
    key(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(panel().currentLine(), 299);
    EXPECT_EQ(activated.count(), 0);
}

TEST_F(CodePanelWindow, Copy_TakesTheSelectedLinesInTheirOrder) {
    panel().setTexts("N1\nN2\nN3\nN4\nN5\nN6", "");
    show();
    clickRow(4);
    key(Qt::Key_Down, Qt::ShiftModifier);
    clickRow(1, Qt::ControlModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QString("N2\nN5\nN6"));
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QString("N1\nN2\nN3\nN4\nN5\nN6"));
}

TEST_F(CodePanelWindow, SelectionToTheEnd_ReachesTheLastOfManyLines) {
    panel().setTexts(QString(1500000, '\n'), "");
    show();
    clickRow(0);
    key(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(view().selectedText().size(), 1499999);
    EXPECT_EQ(panel().currentLine(), 1499999);
    EXPECT_EQ(view().topRow(), 1500000 - view().rowsInView());
}

TEST_F(CodePanelWindow, DraggedMouse_SelectsTheLinesBetween) {
    panel().setTexts(program(100), "");
    show();
    const auto place = [this](int row) {
        return view().visualRect(view().model()->index(row, 0)).topLeft() + QPoint(120, 5);
    };
    QTest::mousePress(view().viewport(), Qt::LeftButton, Qt::NoModifier, place(2));
    for (const int row : {3, 5}) {
        QMouseEvent move(QEvent::MouseMove, place(row), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view().viewport(), &move);
    }
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, Qt::NoModifier, place(5));
    EXPECT_EQ(view().selectedText(), QString("G1 X2 Y0\nG1 X3 Y0\nG1 X4 Y0\nG1 X5 Y0"));
}

TEST_F(CodePanelWindow, ContextMenu_HasTheCommandsWithTheirShortcuts) {
    QStringList entries;
    for (const QAction* action : view().actions()) {
        if (!action->isSeparator())
            entries << action->text() + '|' + action->shortcut().toString();
    }
    EXPECT_EQ(entries, (QStringList{"Copy|Ctrl+C", "Select all|Ctrl+A", "Find ...|Ctrl+F", "Find next|F3",
                                    "Find previous|Shift+F3", "Go to line ...|Ctrl+G"}));
    EXPECT_EQ(view().contextMenuPolicy(), Qt::ActionsContextMenu);
}

TEST_F(CodePanelWindow, TypedLetters_DoNotMoveTheCursor) {
    panel().setTexts(program(300), "");
    show();
    clickRow(2);
    type("M");
    EXPECT_EQ(panel().currentLine(), 2);
}

TEST_F(CodePanelWindow, WideLetters_WidenTheScrollRange) {
    panel().setTexts("X1\n", "");
    show();
    EXPECT_EQ(view().horizontalScrollBar()->maximum(), 0);
    panel().setTexts('(' + QString(200, QChar(0x52a0)) + ")\n", "");
    const int wide = view().horizontalScrollBar()->maximum();
    panel().setTexts('(' + QString(200, 'X') + ")\n", "");
    EXPECT_GT(wide, view().horizontalScrollBar()->maximum());
    EXPECT_GT(view().horizontalScrollBar()->maximum(), 0);
}

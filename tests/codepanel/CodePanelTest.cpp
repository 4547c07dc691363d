#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTabBar>

#include "CodePanelWindow.h"

// The list, its keys and clicks, and the running line.

namespace {

class Counter : public QObject {
  public:
    explicit Counter(QEvent::Type type) : type_(type) {}
    int count = 0;

  protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        count += event->type() == type_ ? 1 : 0;
        return false;
    }

  private:
    QEvent::Type type_;
};

}  // namespace

TEST_F(CodePanelWindow, NoTexts_AllCommandsDoNothing) {
    ExpectedDialogs dialogs;
    show();
    QSignalSpy activated(&panel(), &CodePanel::lineActivated);
    for (const int code : {Qt::Key_Return, Qt::Key_Down, Qt::Key_End, Qt::Key_PageUp, Qt::Key_F3})
        key(code);
    key(Qt::Key_Escape);
    key(Qt::Key_G, Qt::ControlModifier);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    panel().setRunningLine(3);
    panel().goToLine(0);
    waitForFollowing();
    EXPECT_EQ(activated.count(), 0);
    EXPECT_EQ(panel().lineCount(), 0);
    EXPECT_EQ(panel().currentLine(), -1);
    EXPECT_EQ(panel().modalLine(0), QString());
    EXPECT_EQ(status(), QString());
}

TEST_F(CodePanelWindow, Click_TellsTheLine) {
    panel().setTexts("G0 X0\r\nG1 X5 Y7\r\nM30\r\n", "");
    show();
    QSignalSpy activated(&panel(), &CodePanel::lineActivated);
    clickRow(1);
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated[0][0].toString(), QString("G1 X5 Y7"));
    EXPECT_EQ(activated[0][1].toInt(), 1);
    EXPECT_EQ(panel().currentLine(), 1);
    EXPECT_EQ(status(), QString("Line 2 of 3"));
    EXPECT_EQ(panel().modalLine(2), QString("X5 Y7"));
}

TEST_F(CodePanelWindow, Keys_TellTheLineThatTheyReach) {
    panel().setTexts(program(1000), "");
    show();
    clickRow(0);
    QSignalSpy activated(&panel(), &CodePanel::lineActivated);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    key(Qt::Key_End);
    key(Qt::Key_Up);
    key(Qt::Key_Home);
    key(Qt::Key_Up);  // there is none above
    key(Qt::Key_PageDown);
    QVector<int> rows;
    for (const auto& each : activated)
        rows << each[1].toInt();
    EXPECT_EQ(rows, (QVector<int>{1, 1, 999, 998, 0, view().rowsInView()}));
    EXPECT_EQ(activated[2][0].toString(), QString("M3 S12000"));
}

TEST_F(CodePanelWindow, ExtendingTheSelection_TellsNothing) {
    panel().setTexts(program(50), "");
    show();
    clickRow(3);
    QSignalSpy activated(&panel(), &CodePanel::lineActivated);
    key(Qt::Key_Down, Qt::ShiftModifier);
    clickRow(6, Qt::ControlModifier);
    clickRow(8, Qt::ShiftModifier);
    EXPECT_EQ(activated.count(), 0);
}

TEST_F(CodePanelWindow, LineBeyondTheShownLetters_IsClippedAndNotTold) {
    panel().setTexts("X1\n" + QString(25000000, '7') + "\nX2\n", "");
    show();
    QSignalSpy activated(&panel(), &CodePanel::lineActivated);
    clickRow(1);
    EXPECT_EQ(activated.count(), 0);
    EXPECT_EQ(panel().currentLine(), 1);
    EXPECT_EQ(view().model()->index(1, 0).data().toString().size(), CodeModel::kShownLetters);
    EXPECT_FALSE(panel().grab().isNull());
    key(Qt::Key_Down);
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(CodePanelWindow, Tabs_KeepTheirPlaces) {
    panel().setTexts(program(500), program(300));
    show();
    auto& tabs = part<QTabBar>("CodeTabs");
    EXPECT_EQ(tabs.tabText(0), QString("Work code"));
    EXPECT_EQ(tabs.tabText(1), QString("Machine code"));
    panel().goToLine(250);
    view().setTopRow(246);  // the cursor need not stand in the middle
    ASSERT_EQ(view().topRow(), 246);
    QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, tabs.tabRect(1).center());
    EXPECT_EQ(panel().shownCode(), CodePanel::MachineCode);
    EXPECT_EQ(panel().lineCount(), 300);
    EXPECT_EQ(panel().currentLine(), -1);
    QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, tabs.tabRect(0).center());
    EXPECT_EQ(panel().currentLine(), 250);
    EXPECT_EQ(view().topRow(), 246);
}

TEST_F(CodePanelWindow, SameTexts_KeepThePlace_OthersStartAnew) {
    panel().setTexts(program(500), program(300));
    show();
    panel().goToLine(250);
    panel().setTexts(program(500), program(10));
    EXPECT_EQ(panel().currentLine(), 250);
    panel().setTexts(program(400), program(10));
    EXPECT_EQ(panel().currentLine(), -1);
    EXPECT_EQ(view().topRow(), 0);
    EXPECT_EQ(panel().lineCount(), 400);
}

TEST_F(CodePanelWindow, HiddenPanel_TakesItsTextsAndPlaceWhenItIsShown) {
    panel().setTexts(program(500), "");
    EXPECT_EQ(view().model()->rowCount(), 0);
    panel().goToLine(42);
    EXPECT_EQ(panel().currentLine(), 42);
    show();
    EXPECT_EQ(view().model()->rowCount(), 500);
    EXPECT_EQ(panel().currentLine(), 42);
    panel().hide();
    panel().setTexts(program(20), "");
    EXPECT_EQ(view().model()->rowCount(), 0);
    panel().show();
    EXPECT_EQ(view().model()->rowCount(), 20);
}

TEST_F(CodePanelWindow, Title_IsShownAsPlainText) {
    auto& title = part<QLabel>("CodeTitle");
    EXPECT_TRUE(title.isHidden());
    panel().setTitle("<b>Iso_1</b>");
    EXPECT_FALSE(title.isHidden());
    EXPECT_EQ(title.text(), QString("<b>Iso_1</b>"));
    EXPECT_EQ(title.textFormat(), Qt::PlainText);
    panel().setTitle({});
    EXPECT_TRUE(title.isHidden());
}

// --- the running line ---

TEST_F(CodePanelWindow, RunningLine_IsMarkedAndInSight) {
    panel().setTexts("X1\n", program(1000));
    panel().showCode(CodePanel::MachineCode);
    show();
    panel().setRunningLine(700);
    waitForFollowing();
    EXPECT_LE(view().topRow(), 700);
    EXPECT_GT(view().topRow() + view().rowsInView(), 700);
    EXPECT_EQ(groundOf(700), CodeDelegate::runningColor());
    EXPECT_EQ(groundOf(701), QColor(Qt::white));
    EXPECT_EQ(status(), QString("Line 701 of 1000"));
    panel().setRunningLine(-1);
    waitForFollowing();
    EXPECT_EQ(groundOf(700), QColor(Qt::white));
}

TEST_F(CodePanelWindow, RunningLinesOfAPlayback_AreDrawnTogether) {
    panel().setTexts("", program(1000));
    panel().showCode(CodePanel::MachineCode);
    show();
    waitForFollowing();
    Counter paints(QEvent::Paint);
    view().viewport()->installEventFilter(&paints);
    QElapsedTimer time;
    time.start();
    for (int line = 0; line < 1000; ++line) {
        panel().setRunningLine(line);
        QApplication::processEvents();
    }
    waitForFollowing();
    EXPECT_GE(paints.count, 1);
    EXPECT_LE(paints.count, time.elapsed() / 30 + 2) << "of 1000 lines";
    EXPECT_EQ(groundOf(999), CodeDelegate::runningColor());
}

TEST_F(CodePanelWindow, RunningLineOfAHiddenPanel_CostsNothingAndShowsLater) {
    panel().setTexts("", program(1000));
    panel().showCode(CodePanel::MachineCode);
    show();
    panel().hide();
    QApplication::processEvents();
    for (int line = 0; line < 500; ++line)
        panel().setRunningLine(line);
    EXPECT_EQ(view().topRow(), 0);
    waitForFollowing();
    EXPECT_EQ(view().topRow(), 0);
    panel().show();
    QApplication::processEvents();
    EXPECT_EQ(groundOf(499), CodeDelegate::runningColor());
}

TEST_F(CodePanelWindow, RunningLine_IsOfTheMachineCodeAlone) {
    panel().setTexts(program(100), program(100));
    show();
    panel().setRunningLine(5);
    waitForFollowing();
    EXPECT_EQ(groundOf(5), QColor(Qt::white));
    panel().showCode(CodePanel::MachineCode);
    EXPECT_EQ(groundOf(5), CodeDelegate::runningColor());
    panel().setTexts(program(100), program(90));
    waitForFollowing();
    EXPECT_EQ(groundOf(5), QColor(Qt::white));
}

TEST_F(CodePanelWindow, RunningLineBehindTheEnd_MarksTheLast) {
    panel().setTexts("", program(10));
    panel().showCode(CodePanel::MachineCode);
    show();
    panel().setRunningLine(5000);
    waitForFollowing();
    EXPECT_EQ(groundOf(9), CodeDelegate::runningColor());
}

TEST_F(CodePanelWindow, PlayedLines_LeaveOutEmptyOnes) {
    panel().setTexts("", "G0 X1\n\n\nG1 X2\n\nG1 X3\n");
    EXPECT_EQ(panel().lineOfPlayed(0), 0);
    EXPECT_EQ(panel().lineOfPlayed(1), 3);
    EXPECT_EQ(panel().lineOfPlayed(2), 5);
    EXPECT_EQ(panel().lineOfPlayed(3), -1);
}

#include "nc/HistoryLineEdit.h"

#include <QAction>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QSignalSpy>

#include "EditorBench.h"

namespace {

/// Separators as "-".
QStringList entries(const QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions())
        texts.append(action->isSeparator() ? QString("-") : action->text());
    return texts;
}

void confirm(HistoryLineEdit& line, const QString& text) {
    line.setFocus();
    line.selectAll();
    QTest::keyClicks(&line, text);
    QTest::keyClick(&line, Qt::Key_Return);
}

QStringList completions(const HistoryLineEdit& line) {
    QStringList texts;
    const QAbstractItemModel* const model = line.completer()->model();
    for (int row = 0; row < model->rowCount(); ++row)
        texts.append(model->index(row, 0).data().toString());
    return texts;
}

}  // namespace

TEST(HistoryLineEdit, ConfirmedText_JoinsListMenuAndCompleter) {
    const HeaderTailInstallation installation;
    HistoryLineEdit line;
    line.show();
    QSignalSpy changes(&line, &HistoryLineEdit::historyChanged);
    confirm(line, "G1 X5");
    confirm(line, "M3");
    EXPECT_EQ(line.history(), (QStringList{"G1 X5", "M3"}));
    EXPECT_EQ(entries(*line.menu()), (QStringList{"G1 X5", "M3", "-", "Clear history"}));
    EXPECT_EQ(completions(line), line.history());
    ASSERT_EQ(changes.count(), 2);
    EXPECT_EQ(changes[1][0].toStringList(), line.history());
}

TEST(HistoryLineEdit, EmptyOrKnownText_ChangesNothing) {
    const HeaderTailInstallation installation;
    HistoryLineEdit line;
    line.show();
    confirm(line, "M3");
    QSignalSpy changes(&line, &HistoryLineEdit::historyChanged);
    confirm(line, "M3");
    line.clear();
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_EQ(line.history(), QStringList{"M3"});
    EXPECT_EQ(changes.count(), 0);
}

TEST(HistoryLineEdit, TypedTextIsNotInTheList_BeforeItIsConfirmed) {
    const HeaderTailInstallation installation;
    HistoryLineEdit line;
    line.show();
    QTest::keyClicks(&line, "M3");
    EXPECT_EQ(line.history(), QStringList());
    line.confirm();
    EXPECT_EQ(line.history(), QStringList{"M3"});
}

TEST(HistoryLineEdit, ChosenAction_SetsTheText) {
    const HeaderTailInstallation installation;
    HistoryLineEdit line;
    line.setHistory({"G1 X5", "; a & b"});
    EXPECT_EQ(entries(*line.menu())[1], QString("; a && b"));  // a single one would underline a letter
    line.menu()->actions()[1]->trigger();
    EXPECT_EQ(line.text(), QString("; a & b"));
    line.menu()->actions()[0]->trigger();
    EXPECT_EQ(line.text(), QString("G1 X5"));
}

TEST(HistoryLineEdit, SetHistory_LeavesOutEmptyAndRepeatedTexts) {
    const HeaderTailInstallation installation;
    HistoryLineEdit line;
    line.setHistory({"a", "", "b", "a"});
    EXPECT_EQ(line.history(), (QStringList{"a", "b"}));
    EXPECT_EQ(completions(line), line.history());
}

TEST(HistoryLineEdit, ClearAction_EmptiesListMenuAndCompleter) {
    const HeaderTailInstallation installation;
    HistoryLineEdit line;
    line.setHistory({"a", "b"});
    QSignalSpy changes(&line, &HistoryLineEdit::historyChanged);
    line.clearAction()->trigger();
    EXPECT_EQ(line.history(), QStringList());
    EXPECT_EQ(entries(*line.menu()), (QStringList{"-", "Clear history"}));
    EXPECT_EQ(completions(line), QStringList());
    EXPECT_EQ(changes.count(), 1);
    line.clearAction()->trigger();
    EXPECT_EQ(changes.count(), 1);
}

TEST(HistoryLineEdit, RightClick_OpensTheMenuAndItsEntryCanBeClicked) {
    const HeaderTailInstallation installation;
    HistoryLineEdit line;
    line.setHistory({"G1 X5"});
    line.show();
    QContextMenuEvent rightClick(QContextMenuEvent::Mouse, QPoint(5, 5), line.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&line, &rightClick);
    ASSERT_TRUE(line.menu()->isVisible());
    QTest::mouseClick(line.menu(), Qt::LeftButton, {},
                      line.menu()->actionGeometry(line.menu()->actions().first()).center());
    EXPECT_EQ(line.text(), QString("G1 X5"));
    EXPECT_FALSE(line.menu()->isVisible());
}

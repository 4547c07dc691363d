#include <gtest/gtest.h>

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QPushButton>
#include <QTest>

#include "ProgramBench.h"
#include "items/IsoEditor.h"
#include "items/IsoItem.h"
#include "items/TreeOrder.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "tools/GetToolWidget.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

// Mouse, keys and drops in the program tree.

namespace {

using TORNVALE::CodeManagerItem;
using TORNVALE::IsoItem;

QStringList names(const UserTopItem& group) {
    QStringList list;
    for (const CodeManagerItem* item : group.items())
        list.append(item->itemName());
    return list;
}

void doubleClickBelowTheRows(TreeWidgetManager& tree) {
    tree.resize(1200, 600);
    tree.show();
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, {60, tree.viewport()->height() - 5});
}

/// Moves a row as a drop does: taken out and put in, nothing told.
void moveRow(UserTopItem& from, int index, UserTopItem& to, int place) {
    to.adopt(from.release(from.items()[index]), place);
}

}  // namespace

TEST(TreeGestures, DoubleClickOnEmptySpaceInsertsIntoTheFirstGroup) {
    ProgramBench bench;
    doubleClickBelowTheRows(bench.tree());
    EXPECT_EQ(names(bench.left()), QStringList{"userCodeItem0"});
    EXPECT_TRUE(TORNVALE::IsoEditor::instance().isVisible());
}

TEST(TreeGestures, DoubleClickOnEmptySpaceWithoutToolsSaysSo) {
    ProgramBench bench;
    TORNVALE::ToolsManager::instance().removeInstalledTools();
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Warning, "Programs", "No tool is installed. Add a tool first.");
    doubleClickBelowTheRows(bench.tree());
    EXPECT_EQ(bench.left().childCount(), 0);
}

TEST(TreeGestures, KeysCopyCutAndPaste) {
    ProgramBench bench;
    IsoItem& first = bench.add(bench.left());
    bench.add(bench.left());
    TreeWidgetManager& tree = bench.tree();
    tree.setCurrentItem(&first);
    QTest::keyClick(&tree, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&tree, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(names(bench.left()), (QStringList{"userCodeItem2", "userCodeItem0", "userCodeItem1"}));
    QTest::keyClick(&tree, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(names(bench.left()), (QStringList{"userCodeItem2", "userCodeItem1"}));
    tree.setCurrentItem(&bench.right());
    QTest::keyClick(&tree, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(names(bench.right()), QStringList{"userCodeItem0"});
}

TEST(TreeGestures, EnterOpensTheEditor) {
    ProgramBench bench;
    bench.tree().setCurrentItem(&bench.add(bench.left()));
    QTest::keyClick(&bench.tree(), Qt::Key_Return);
    EXPECT_TRUE(TORNVALE::IsoEditor::instance().isVisible());
}

TEST(TreeGestures, TheToolColumnOffersTheInstalledTools) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    const QString before = item.IsoCode();
    TreeWidgetManager& tree = bench.tree();
    tree.resize(1200, 400);
    tree.show();
    const QRect rect = tree.visualItemRect(&item);
    const QPoint place(tree.columnViewportPosition(CodeManagerItem::kToolColumn) + 5, rect.center().y());
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, place);
    auto* chooser = tree.findChild<TORNVALE::GetToolWidget*>();
    ASSERT_NE(chooser, nullptr);
    auto* tools = chooser->findChild<QComboBox*>("Tools");
    EXPECT_EQ(tools->count(), TORNVALE::ToolsManager::instance().installedTools().size());
    tools->setCurrentIndex(2);
    chooser->findChild<QPushButton*>("AcceptButton")->click();
    EXPECT_EQ(item.tool().record().toolNo, 3);
    EXPECT_EQ(item.text(CodeManagerItem::kToolColumn), bench.tool(2)->displayText());
    EXPECT_NE(item.IsoCode(), before) << "another length, another code";
}

TEST(TreeGestures, AnItemDroppedOnAnotherGroupChangesItsChainNameAndCode) {
    ProgramBench bench;
    const IsoItem& item = bench.add(bench.left());
    bench.add(bench.right());
    const QString before = item.IsoCode();
    const TORNVALE::TreeOrder order(bench.tree().root());
    moveRow(bench.left(), 0, bench.right(), -1);
    EXPECT_TRUE(order.settle(bench.tree().root(), &item));
    EXPECT_EQ(item.chainName(), "X->Z->C->A;V");
    EXPECT_EQ(item.record().WCSName, "G55");
    EXPECT_EQ(item.itemName(), "userCodeItem1");
    EXPECT_NE(item.IsoCode(), before);
    EXPECT_TRUE(item.IsoCode().contains('V'));
}

TEST(TreeGestures, AllRowsOfADropReactToTheirNewGroup) {
    ProgramBench bench;
    const IsoItem& first = bench.add(bench.left());
    IsoItem& second = bench.add(bench.left());
    second.setChecked(false);
    const TORNVALE::TreeOrder order(bench.tree().root());
    moveRow(bench.left(), 0, bench.right(), -1);
    moveRow(bench.left(), 0, bench.right(), -1);
    EXPECT_TRUE(order.settle(bench.tree().root(), &first));
    EXPECT_EQ(names(bench.right()), (QStringList{"userCodeItem0", "userCodeItem1"}));
    for (const CodeManagerItem* item : bench.right().items())
        EXPECT_TRUE(item->LeadIn().contains('V')) << item->itemName().toStdString();
    EXPECT_FALSE(second.isActive());
}

TEST(TreeGestures, RowsOfADropAreNumberedBehindThoseThatAreThere) {
    ProgramBench bench;
    const IsoItem& first = bench.add(bench.left());
    bench.add(bench.left());
    bench.add(bench.right());
    const TORNVALE::TreeOrder order(bench.tree().root());
    moveRow(bench.left(), 0, bench.right(), 0);
    moveRow(bench.left(), 0, bench.right(), 1);
    EXPECT_TRUE(order.settle(bench.tree().root(), &first));
    EXPECT_EQ(names(bench.right()), (QStringList{"userCodeItem1", "userCodeItem2", "userCodeItem0"}));
}

TEST(TreeGestures, AnotherOrderRegeneratesWhatStandsBehind) {
    ProgramBench bench;
    bench.add(bench.left(), ProgramBench::square(100, 100, 0));
    const IsoItem& second = bench.add(bench.left(), ProgramBench::square(200, 100, -170));
    const IsoItem& third = bench.add(bench.left(), ProgramBench::square(300, 100, 170));
    EXPECT_NEAR(third.exitFifth(), -190, 1e-9) << "the shortest way from -170";
    const TORNVALE::TreeOrder order(bench.tree().root());
    moveRow(bench.left(), 1, bench.left(), 2);
    EXPECT_TRUE(order.settle(bench.tree().root(), &second));
    EXPECT_NEAR(third.exitFifth(), 170, 1e-9) << "from 0 it is nearer as it is written";
    EXPECT_NEAR(second.exitFifth(), 190, 1e-9);
}

TEST(TreeGestures, ADropInTheSamePlaceIsNone) {
    ProgramBench bench;
    const IsoItem& item = bench.add(bench.left());
    const TORNVALE::TreeOrder order(bench.tree().root());
    EXPECT_FALSE(order.settle(bench.tree().root(), &item));
}

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>
#include <QUndoStack>

#include "ProgramBench.h"
#include "items/IsoItem.h"
#include "items/TreeSnapshot.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "nc/HeaderTailEditor.h"
#include "nc/calc/HeaderTail.h"
#include "nc/myTimer.h"

// What counts as a change of the programs, and what undo brings back beside the items.

namespace {

using TORNVALE::CodeManagerItem;
using TORNVALE::IsoItem;

constexpr int kName = CodeManagerItem::kNameColumn;
const QString kChain = QStringLiteral("X->Z->C->A;Y");

HeaderTailRecord& headerTail(UserTopItem& group) {
    return *group.headerTail()->headerTail.record(kChain);
}

}  // namespace

TEST(TreeHistory, PlayingIsNoChange) {
    ProgramBench bench;
    bench.add(bench.left());
    const TORNVALE::TreeSnapshot before = TORNVALE::takeSnapshot(bench.tree().root());
    const int steps = bench.tree().history().count();
    bench.left().play();
    bench.tree().root().play();
    bench.commit();
    EXPECT_TRUE(TORNVALE::sameSnapshot(before, TORNVALE::takeSnapshot(bench.tree().root())));
    EXPECT_EQ(bench.tree().history().count(), steps);
}

TEST(TreeHistory, EditedHeaderIsAStep) {
    ProgramBench bench;
    bench.add(bench.left());
    const QString home = headerTail(bench.left()).header;
    bench.left().editHeaderTail();
    headerTail(bench.left()).header = QStringLiteral("G1 X1Y2Z3C0A0F7000");
    Q_EMIT TORNVALE::HeaderTailEditor::instance().changed(kChain);
    bench.commit();
    EXPECT_EQ(bench.tree().history().undoText(), "editing header and tail");
    bench.tree().history().undo();
    EXPECT_EQ(headerTail(bench.left()).header, home);
    bench.tree().history().redo();
    EXPECT_EQ(headerTail(bench.left()).header, "G1 X1Y2Z3C0A0F7000");
    TORNVALE::HeaderTailEditor::instance().close();
}

TEST(TreeHistory, HeaderOfAnotherGroupIsNoStepOfThisOne) {
    ProgramBench bench;
    QStringList told;
    QObject::connect(&bench.left(), &UserTopItem::edited, [&told] { told.append("left"); });
    QObject::connect(&bench.right(), &UserTopItem::edited, [&told] { told.append("right"); });
    bench.left().editHeaderTail();
    bench.right().editHeaderTail();
    Q_EMIT TORNVALE::HeaderTailEditor::instance().changed(kChain);
    EXPECT_EQ(told, QStringList{"right"});
    TORNVALE::HeaderTailEditor::instance().close();
}

TEST(TreeHistory, UndoOfAGroupsCheckMarkBringsTheMarkBack) {
    ProgramBench bench;
    bench.add(bench.left());
    bench.left().setCheckState(kName, Qt::Unchecked);
    bench.commit();
    bench.tree().history().undo();
    EXPECT_EQ(bench.left().checkState(kName), Qt::Checked);
    EXPECT_TRUE(bench.left().items()[0]->isActive());
    bench.tree().history().redo();
    EXPECT_EQ(bench.left().checkState(kName), Qt::Unchecked);
    EXPECT_FALSE(bench.left().items()[0]->isActive());
}

TEST(TreeHistory, UndoOfTheRootsCheckMarkBringsAllMarksBack) {
    ProgramBench bench;
    bench.add(bench.left());
    bench.tree().root().setCheckState(kName, Qt::Unchecked);
    bench.commit();
    EXPECT_EQ(bench.right().checkState(kName), Qt::Unchecked);
    bench.tree().history().undo();
    EXPECT_EQ(bench.tree().root().checkState(kName), Qt::Checked);
    EXPECT_EQ(bench.left().checkState(kName), Qt::Checked);
    EXPECT_EQ(bench.right().checkState(kName), Qt::Checked);
    EXPECT_TRUE(bench.left().items()[0]->isActive());
}

TEST(TreeHistory, UndoOfDeleteAllBringsUnknownBlocksBack) {
    ProgramBench bench;
    bench.add(bench.left());
    const QJsonObject object = bench.leftWithUnknownBlock();
    {
        ExpectedDialogs dialogs;
        dialogs.expectTell(UserDialogs::Kind::Warning, "Programs",
                           "An unknown program item was skipped.\nlathe7");
        bench.left().Set(object);
    }
    bench.commit();
    bench.tree().setCurrentItem(&bench.tree().root());
    QTest::keyClick(&bench.tree(), Qt::Key_Delete);
    Q_EMIT bench.left().edited("RemoveItem");
    bench.commit();
    EXPECT_EQ(bench.left().Get()["G54"].toArray().size(), 0);
    bench.tree().history().undo();
    EXPECT_EQ(bench.left().Get(), object);
}

TEST(TreeHistory, UndoOfTheFirstGenerationLeavesANewItem) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left(), {});
    const IsoItem& behind = bench.add(bench.left());
    const QString code = behind.IsoCode();
    Q_EMIT bench.left().edited("AddItem");
    bench.commit();
    ASSERT_TRUE(item.isActive());
    item.editIso().sourceCodeString = ProgramBench::square();
    item.regenerate();
    Q_EMIT bench.left().edited("EditItem");
    bench.commit();
    ASSERT_NE(item.pathNode(), nullptr);
    bench.tree().history().undo();
    EXPECT_TRUE(item.isActive()) << "nothing has failed";
    EXPECT_EQ(item.background(kName).color(), QColor(Qt::white));
    EXPECT_EQ(item.text(CodeManagerItem::kLimitColumn), "");
    EXPECT_EQ(item.pathNode(), nullptr);
    EXPECT_EQ(behind.IsoCode(), code);
    bench.tree().history().redo();
    EXPECT_FALSE(item.IsoCode().isEmpty());
    EXPECT_TRUE(item.isActive());
}

TEST(TreeHistory, UndoOfAFailureBringsTheCodeBackAndRedoTheFailure) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    const QString code = item.IsoCode();
    Q_EMIT bench.left().edited("AddItem");
    bench.commit();
    item.editIso().sourceCodeString = QStringLiteral("G2 X50 Y50 R1");
    item.regenerate();
    Q_EMIT bench.left().edited("EditItem");
    bench.commit();
    ASSERT_FALSE(item.isActive());
    bench.tree().history().undo();
    EXPECT_EQ(item.IsoCode(), code);
    EXPECT_TRUE(item.isActive());
    bench.tree().history().redo();
    EXPECT_FALSE(item.isActive());
    EXPECT_EQ(item.background(kName).color(), QColor(Qt::red));
    EXPECT_FALSE(item.problem().isEmpty());
}

TEST(TreeHistory, ItemsBehindEveryGapFollowTheirNewPredecessor) {
    ProgramBench bench;
    IsoItem& first = bench.add(bench.left(), ProgramBench::square(100, 100, -170));
    const IsoItem& second = bench.add(bench.left(), ProgramBench::square(200, 100, 170));
    IsoItem& third = bench.add(bench.left(), ProgramBench::square(300, 100, -170));
    bench.add(bench.left(), ProgramBench::square(400));
    ASSERT_NEAR(second.exitFifth(), -190, 1e-9);
    first.setSelected(true);
    third.setSelected(true);
    bench.left().removeSelected();
    EXPECT_NEAR(second.exitFifth(), 170, 1e-9) << "its predecessor has gone";
}

TEST(TreeHistory, CutItemsAreFollowedToo) {
    ProgramBench bench;
    IsoItem& first = bench.add(bench.left(), ProgramBench::square(100, 100, -170));
    IsoItem& unchecked = bench.add(bench.left(), ProgramBench::square(150, 100, -170));
    unchecked.setChecked(false);
    const IsoItem& second = bench.add(bench.left(), ProgramBench::square(200, 100, 170));
    ASSERT_NEAR(second.exitFifth(), -190, 1e-9);
    first.setSelected(true);
    bench.left().cutSelection();
    EXPECT_NEAR(second.exitFifth(), 170, 1e-9) << "the unchecked one between them is no predecessor";
}

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>
#include <QUndoStack>

#include "ProgramBench.h"
#include "items/GenerationProgress.h"
#include "items/IsoEditor.h"
#include "items/IsoItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/MotionNodeManager.h"
#include "nc/trajNode.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"
#include "tools/ToolManager.h"

// The program tree: gestures, document, undo.

namespace {

using TORNVALE::CodeManagerItem;
using TORNVALE::IsoItem;

void doubleClick(TreeWidgetManager& tree, QTreeWidgetItem& item, int column) {
    tree.resize(1200, 400);
    tree.show();
    const QRect rect = tree.visualRect(tree.indexAt(tree.visualItemRect(&item).center()));
    const QPoint place(tree.columnViewportPosition(column) + 5, rect.center().y());
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, place);
}

}  // namespace

TEST(TreeWidgetManager, ShowsRootAndGroups) {
    ProgramBench bench;
    TreeWidgetManager& tree = bench.tree();
    EXPECT_EQ(tree.objectName(), "ProgramsTreeWidget");
    EXPECT_EQ(tree.topLevelItemCount(), 1);
    EXPECT_EQ(tree.root().text(0), "All programs");
    EXPECT_EQ(tree.root().groups().size(), 2);
    EXPECT_EQ(tree.headerItem()->text(3), "Tool");
    EXPECT_EQ(tree.columnCount(), 8);
    EXPECT_TRUE(tree.root().isExpanded());
}

TEST(TreeWidgetManager, DocumentOfBothFlags) {
    ProgramBench bench;
    bench.add(bench.left());
    const QJsonObject object = bench.tree().Get();
    EXPECT_EQ(object.keys(), QStringList{"class UserTopItemManager"});
    EXPECT_TRUE(bench.tree().Set(object, false));
    EXPECT_EQ(bench.left().childCount(), 1);
    EXPECT_TRUE(bench.tree().Set(object["class UserTopItemManager"].toObject(), true));
    EXPECT_EQ(bench.left().childCount(), 1);
    QJsonObject other = object["class UserTopItemManager"].toObject();
    other["G99"] = other.take("G54");
    EXPECT_TRUE(bench.tree().Set(other, true));
    EXPECT_EQ(bench.left().childCount(), 0) << "programs of a zone that the machine lacks are left out";
}

TEST(TreeWidgetManager, UndoAndRedoOfEachKindOfEdit) {
    ProgramBench bench;
    TreeWidgetManager& tree = bench.tree();
    IsoItem& first = bench.add(bench.left());
    bench.add(bench.left(), ProgramBench::square(300));
    const QJsonObject two = tree.Get();
    const QString code = first.IsoCode();

    first.setChecked(false);
    bench.commit();
    EXPECT_EQ(tree.history().undoText(), "checking");
    tree.history().undo();
    EXPECT_TRUE(bench.left().items()[0]->isActive());
    EXPECT_EQ(tree.Get(), two);

    bench.left().items()[0]->setSelected(true);
    bench.left().removeSelected();
    bench.commit();
    EXPECT_EQ(bench.left().childCount(), 1);
    tree.history().undo();
    EXPECT_EQ(tree.Get(), two);
    EXPECT_EQ(bench.left().items()[0]->IsoCode(), code);
    ASSERT_NE(bench.left().items()[0]->pathNode(), nullptr);
    tree.history().redo();
    EXPECT_EQ(bench.left().childCount(), 1);
    tree.history().undo();
    EXPECT_EQ(tree.Get(), two);
}

TEST(TreeWidgetManager, UndoOfAnAddedItemTakesItAwayAndRedoBringsItsCode) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    const QString code = item.IsoCode();
    bench.tree().history().undo();
    EXPECT_EQ(bench.left().childCount(), 0);
    bench.tree().history().redo();
    ASSERT_EQ(bench.left().childCount(), 1);
    EXPECT_EQ(bench.left().items()[0]->IsoCode(), code);
}

TEST(TreeWidgetManager, UndoKeepsTheCodeTrueToAMovedSystem) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    item.setChecked(false);
    bench.commit();
    bench.machine().findWorkCoordinateSystem("G54")->userCoordinateSystem(0)->setTranslation({70, 0, 0});
    bench.commit();
    const QString moved = bench.left().items()[0]->IsoCode();
    bench.tree().history().undo();
    bench.tree().history().undo();
    EXPECT_EQ(bench.left().items()[0]->IsoCode(), moved);
}

TEST(TreeWidgetManager, NothingChangedIsNoStep) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    const int steps = bench.tree().history().count();
    item.doIt();
    Q_EMIT bench.left().edited("EditItem");
    bench.commit();
    EXPECT_EQ(bench.tree().history().count(), steps);
}

TEST(TreeWidgetManager, DeleteAsksAndTakesTheSelection) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    bench.tree().setCurrentItem(&item);
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);
    QTest::keyClick(&bench.tree(), Qt::Key_Delete);
    EXPECT_EQ(bench.left().childCount(), 1);
    dialogs.answerAsk(true);
    QTest::keyClick(&bench.tree(), Qt::Key_Delete);
    EXPECT_EQ(bench.left().childCount(), 0);
}

TEST(TreeWidgetManager, DeleteOnTheRootClearsAllAndUndoBringsThemBack) {
    ProgramBench bench;
    bench.add(bench.left());
    bench.add(bench.right());
    const QJsonObject before = bench.tree().Get();
    bench.tree().setCurrentItem(&bench.tree().root());
    QTest::keyClick(&bench.tree(), Qt::Key_Delete);
    bench.commit();
    EXPECT_EQ(bench.left().childCount() + bench.right().childCount(), 0);
    bench.tree().history().undo();
    EXPECT_EQ(bench.tree().Get(), before);
}

TEST(TreeWidgetManager, DoubleClickOpensByColumn) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    bench.addSystem();
    ExpectedDialogs dialogs;
    dialogs.answerNumber(-12000.0);
    doubleClick(bench.tree(), item, CodeManagerItem::kRpmColumn);
    EXPECT_EQ(item.record().ItemRpm, -12000) << "this spindle can turn both ways";
    EXPECT_EQ(item.text(CodeManagerItem::kRpmColumn), "-12000");
    dialogs.answerChooseItem("1");
    doubleClick(bench.tree(), item, CodeManagerItem::kSystemColumn);
    EXPECT_EQ(item.record().UserCoordiSystemId, 1);
    EXPECT_EQ(dialogs.offeredItems(), (QStringList{"0", "1"}));
    EXPECT_FALSE(TORNVALE::IsoEditor::instance().isVisible());
    doubleClick(bench.tree(), item, CodeManagerItem::kKindColumn);
    EXPECT_TRUE(TORNVALE::IsoEditor::instance().isVisible());
}

TEST(TreeWidgetManager, DoubleClickOnAnUncheckedItemDoesNothing) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    item.setChecked(false);
    doubleClick(bench.tree(), item, CodeManagerItem::kKindColumn);
    EXPECT_FALSE(TORNVALE::IsoEditor::instance().isVisible());
}

TEST(TreeWidgetManager, TheCurrentItemsPathIsHighlighted) {
    ProgramBench bench;
    IsoItem& first = bench.add(bench.left());
    IsoItem& second = bench.add(bench.left());
    bench.tree().setCurrentItem(&first);
    EXPECT_TRUE(first.pathNode()->isHighlighted());
    bench.tree().setCurrentItem(&second);
    EXPECT_FALSE(first.pathNode()->isHighlighted());
    EXPECT_TRUE(second.pathNode()->isHighlighted());
}

TEST(TreeWidgetManager, TheWizardOnAnUnknownZoneIsFatal) {
    ProgramBench bench;
    EXPECT_FATAL(bench.tree().OperationWizardSlot(1, "G99"), "parent is nullptr.");
}

namespace {

class StoppingProgress : public TORNVALE::GenerationProgress {
  public:
    explicit StoppingProgress(int steps) : left(steps) { TORNVALE::GenerationProgress::set(this); }
    ~StoppingProgress() override { TORNVALE::GenerationProgress::set(nullptr); }
    void begin(int) override {}
    bool step(const QString&) override { return left-- > 0; }
    void end() override {}
    int left;
};

}  // namespace

TEST(TreeWidgetManager, AStoppedChangeIsTakenBackWhole) {
    ProgramBench bench;
    for (int i = 0; i < 5; ++i)
        bench.add(bench.left());
    const QJsonObject before = bench.tree().Get();
    {
        StoppingProgress progress(2);
        bench.left().items()[0]->setChecked(false);
        bench.commit();
    }
    EXPECT_EQ(bench.tree().Get(), before);
}

TEST(TreeWidgetManager, AStoppedReadingLeavesNoPrograms) {
    ProgramBench bench;
    for (int i = 0; i < 5; ++i)
        bench.add(bench.left());
    const QJsonObject object = bench.tree().Get();
    StoppingProgress progress(2);
    EXPECT_FALSE(bench.tree().Set(object, false));
    EXPECT_EQ(bench.left().childCount(), 0);
}

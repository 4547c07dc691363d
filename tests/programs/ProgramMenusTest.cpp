#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMenu>

#include "ProgramBench.h"
#include "core/ParaReader.h"
#include "items/IsoItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "nc/HeaderTailEditor.h"
#include "nc/calc/HeaderTail.h"
#include "nc/myTimer.h"
#include "setup/WorkCoordinateSystem.h"

// The context menus of the program tree, and what only they can do.

namespace {

using TORNVALE::IsoItem;

/// The menu that is open, closed and deleted at the end.
class OpenMenu {
  public:
    OpenMenu() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* menu = qobject_cast<QMenu*>(window); menu != nullptr && menu->isVisible())
                menu_ = menu;
        }
        EXPECT_NE(menu_, nullptr);
    }
    ~OpenMenu() { delete menu_; }
    OpenMenu(const OpenMenu&) = delete;
    OpenMenu& operator=(const OpenMenu&) = delete;

    [[nodiscard]] QStringList names() const {
        QStringList list;
        for (const QAction* action : menu_->actions()) {
            if (!action->isSeparator())
                list.append(action->objectName());
        }
        return list;
    }
    [[nodiscard]] int separators() const { return menu_->actions().size() - names().size(); }
    void trigger(const char* name) const {
        auto* action = menu_->findChild<QAction*>(QLatin1String(name));
        ASSERT_NE(action, nullptr) << name;
        action->trigger();
    }

  private:
    QMenu* menu_ = nullptr;
};

void showDebugEntries() {
    ParaReader().setValue(QStringLiteral("DebugFunction/IsShowAxisInfo"), QStringLiteral("true"));
}

}  // namespace

TEST(ProgramMenus, AnItemHasItsEntriesWithASeparatorBetweenAll) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    item.popupMenu({0, 0});
    const OpenMenu menu;
    EXPECT_EQ(menu.names(),
              (QStringList{"AnimationAction", "EditItemAction", "InsertIsoItemAction", "RemoveItemAction",
                           "CopyItemAction", "CutItemAction", "PasteItemAction"}));
    EXPECT_EQ(menu.separators(), menu.names().size() - 1);
}

TEST(ProgramMenus, TheSettingShowsTwoMoreEntriesOfAnItem) {
    ProgramBench bench;
    showDebugEntries();
    IsoItem& item = bench.add(bench.left());
    item.popupMenu({0, 0});
    const OpenMenu menu;
    EXPECT_EQ(menu.names().mid(7), (QStringList{"WriteTo", "WriteComparisonFiles"}));
}

TEST(ProgramMenus, PasteInAnItemsMenuStandsBeforeIt) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    bench.left().copySelection();
    item.popupMenu({0, 0});
    const OpenMenu menu;
    menu.trigger("PasteItemAction");
    ASSERT_EQ(bench.left().childCount(), 2);
    EXPECT_EQ(bench.left().child(1), &item);
}

TEST(ProgramMenus, PasteInAGroupsMenuStandsAtTheEnd) {
    ProgramBench bench;
    IsoItem& item = bench.add(bench.left());
    bench.left().copySelection();
    bench.left().popupMenu({0, 0});
    const OpenMenu menu;
    EXPECT_EQ(menu.names(),
              (QStringList{"AnimationAction", "InsertIsoItemAction", "RemoveItemAction", "CopyItemAction",
                           "CutItemAction", "PasteItemAction", "HeaderTailAction"}));
    menu.trigger("PasteItemAction");
    ASSERT_EQ(bench.left().childCount(), 2);
    EXPECT_EQ(bench.left().child(0), &item);
}

TEST(ProgramMenus, TheRootPlaysAndClearsAllGroups) {
    ProgramBench bench;
    bench.add(bench.left());
    bench.add(bench.right());
    int removals = 0;
    bench.tree().root().popupMenu({0, 0}, [&removals] { ++removals; });
    const OpenMenu menu;
    EXPECT_EQ(menu.names(), (QStringList{"AnimationAction", "RemoveAllItemsAction"}));
    menu.trigger("AnimationAction");
    EXPECT_TRUE(TORNVALE::myTimer::instance().isVisible());
    EXPECT_GT(TORNVALE::myTimer::instance().lineCount(), 200);
    menu.trigger("RemoveAllItemsAction");
    EXPECT_EQ(removals, 1);
}

TEST(ProgramMenus, HeaderAndTailShowsTheChainsInUse) {
    ProgramBench bench;
    const IsoItem& item = bench.add(bench.left());
    bench.left().popupMenu({0, 0});
    const OpenMenu menu;
    menu.trigger("HeaderTailAction");
    TORNVALE::HeaderTailEditor& editor = TORNVALE::HeaderTailEditor::instance();
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(editor.items(), bench.left().headerTail());
    EXPECT_EQ(editor.items()->headerTail.record(item.chainName())->itemHeader,
              item.LeadIn().section('\n', 0, 0));
    editor.close();
}

TEST(ProgramMenus, TheReportOfAGroupTellsWhatItHolds) {
    ProgramBench bench;
    showDebugEntries();
    bench.add(bench.left());
    bench.left().popupMenu({0, 0});
    const OpenMenu menu;
    ASSERT_EQ(menu.names().last(), "WriteToAction");
    const QString path = ProgramBench::installation().file("group.txt");
    ExpectedDialogs dialogs;
    dialogs.answerFile(path);
    menu.trigger("WriteToAction");
    const QString text = QString::fromUtf8(ProgramBench::installation().read("group.txt"));
    EXPECT_TRUE(text.startsWith("-----------------------------\nWCS->name:G54\nWCS->nickName:Left table\n"));
    EXPECT_TRUE(text.contains("\tId:0 -> value:0 0 0\n"));
    EXPECT_TRUE(text.contains("X->Z->C->A;Y:G1 "));
    EXPECT_TRUE(text.endsWith("Type: 1001\n"));
}

TEST(ProgramMenus, AReportThatCannotBeWrittenIsTold) {
    ProgramBench bench;
    const QString folder = ProgramBench::installation().path();
    ExpectedDialogs dialogs;
    dialogs.answerFile({});
    bench.left().writeReport();
    dialogs.answerFile(folder);
    dialogs.expectTell(UserDialogs::Kind::Warning, "Write out the item",
                       "The file could not be written.\n" + folder);
    bench.left().writeReport();
}

#include "machine/MotionNodeTreeWidget.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include "machine/AxisBase.h"
#include "motion/MotionTestSupport.h"

namespace {

QStringList namesBelow(const QTreeWidgetItem* row) {
    QStringList names;
    for (int i = 0; i < row->childCount(); ++i) {
        names.append(row->child(i)->text(1));
        names.append(namesBelow(row->child(i)));
    }
    return names;
}

/// Chooses an entry of the next menu that opens.
void chooseInMenu(const QString& text) {
    QTimer::singleShot(0, [text] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions()) {
            if (action->text() == text)
                action->trigger();
        }
        menu->close();
    });
}

}  // namespace

TEST(MotionNodeTreeWidget, ShowsTheMachineBelowItsType) {
    SmallMachine small;
    const MotionNodeTreeWidget tree(small.build());
    ASSERT_EQ(tree.topLevelItemCount(), 1);
    EXPECT_EQ(tree.topLevelItem(0)->text(0), "Small");
    EXPECT_EQ(tree.columnCount(), 3);
    EXPECT_EQ(tree.headerItem()->text(1), "Name");
    const QStringList names = namesBelow(tree.topLevelItem(0));
    EXPECT_EQ(names.mid(0, 2), (QStringList{"X", "Z"}));
    for (const char* name : {"T1", "T2", "Y", "G54", "G55", "Bed"})
        EXPECT_TRUE(names.contains(name)) << name;
    EXPECT_FALSE(names.contains("Lamp"));
}

TEST(MotionNodeTreeWidget, AMachineWithoutATypeIsUnnamed) {
    SmallMachine small;
    small.machine.machineParameters.machineType.clear();
    const MotionNodeTreeWidget tree(small.build());
    EXPECT_EQ(tree.topLevelItem(0)->text(0), "unnamed");
}

TEST(MotionNodeTreeWidget, GivesItsRowsBack) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    QTreeWidgetItem* row = nullptr;
    {
        const MotionNodeTreeWidget tree(manager);
        row = manager.findAxis("X")->treeItem();
        EXPECT_EQ(row->treeWidget(), &tree);
    }
    EXPECT_EQ(manager.findAxis("X")->treeItem(), row);
    EXPECT_EQ(row->treeWidget(), nullptr);
    const MotionNodeTreeWidget again(manager);
    EXPECT_EQ(row->treeWidget(), &again);
}

TEST(MotionNodeTreeWidget, TheMenuExpandsAndCollapses) {
    SmallMachine small;
    MotionNodeTreeWidget tree(small.build());
    tree.show();
    chooseInMenu(QStringLiteral("Collapse"));
    Q_EMIT tree.customContextMenuRequested(QPoint(5, 5));
    EXPECT_FALSE(tree.topLevelItem(0)->isExpanded());
    chooseInMenu(QStringLiteral("Expand"));
    Q_EMIT tree.customContextMenuRequested(QPoint(5, 5));
    EXPECT_TRUE(tree.topLevelItem(0)->isExpanded());
}

TEST(MotionNodeTreeWidget, OpeningARowShowsTheNodesWindow) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    MotionNodeTreeWidget tree(manager);
    tree.show();
    QTreeWidgetItem* row = manager.findAxis("Z")->treeItem();
    tree.setCurrentItem(row);
    QTest::keyClick(&tree, Qt::Key_Return);
    QWidget* window = manager.findAxis("Z")->operationPanel();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), "X->Z");
    window->close();
    tree.setCurrentItem(tree.topLevelItem(0));
    QTest::keyClick(&tree, Qt::Key_Return);
}

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QIcon>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStyle>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

#include "ManagerTestSupport.h"
#include "tools/ToolEditor.h"
#include "tools/ToolPreviewer.h"
#include "tools/ToolSceneView.h"

using TORNVALE::ToolsManager;

namespace {

void clickRow(const ToolsManager& manager, const QTreeWidgetItem* row, Qt::KeyboardModifiers keys = {}) {
    const QTreeWidget* tree = manager.treeWidget();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, keys, tree->visualItemRect(row).center());
}

void clickHeader(const ToolsManager& manager, int column) {
    QHeaderView* header = manager.treeWidget()->header();
    const QPoint place(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                       header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
}

/// Columns to the right of the window must be on it to be clicked.
void showWide(ToolsManager& manager) {
    manager.resize(2200, 600);
    manager.show();
    manager.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&manager));
}

}  // namespace

TEST(ToolsManagerWindow, Window_LooksAsItShould) {
    const ManagerInstallation installation;
    const ToolsManager manager;
    EXPECT_EQ(manager.size(), QSize(800, 600));
    EXPECT_TRUE(manager.isWindow());
    EXPECT_EQ(manager.windowTitle(), english("ToolsManager", "Title"));
    EXPECT_EQ(manager.style()->objectName(), QString("windows"));
    EXPECT_FALSE(manager.windowIcon().isNull());
    const QTreeWidget& tree = *manager.treeWidget();
    EXPECT_EQ(tree.style()->objectName(), QString("windows"));
    EXPECT_TRUE(tree.alternatingRowColors());
    EXPECT_EQ(tree.selectionMode(), QAbstractItemView::ExtendedSelection);
    EXPECT_TRUE(tree.header()->sectionsClickable());
    EXPECT_EQ(tree.header()->sectionResizeMode(0), QHeaderView::Fixed);
    EXPECT_EQ(tree.columnCount(), 13);
    QStringList labels;
    for (int column = 0; column < 13; ++column)
        labels.append(tree.headerItem()->text(column));
    EXPECT_EQ(labels.join('-'), english("ToolsManager", "HeaderLables"));
}

TEST(ToolsManagerWindow, TopRows_AreTheTwoRoots) {
    const ManagerInstallation installation;
    const ToolsManager manager;
    ASSERT_EQ(manager.treeWidget()->topLevelItemCount(), 2);
    EXPECT_EQ(manager.libraryRoot()->text(0), english("ToolsManager", "LibraryToolManager"));
    EXPECT_EQ(manager.installedRoot()->text(0), english("ToolsManager", "InstalledToolManager"));
    EXPECT_TRUE(manager.libraryRoot()->isExpanded());
    EXPECT_TRUE(manager.installedRoot()->isExpanded());
    EXPECT_FALSE(manager.installedRoot()->flags() & Qt::ItemIsSelectable);
}

TEST(ToolsManagerWindow, Actions_HaveTextIconAndShortcutAndStandInMenuAndBar) {
    const ManagerInstallation installation;
    const ToolsManager manager;
    const QList<QAction*> menu = manager.treeWidget()->actions();
    EXPECT_EQ(manager.treeWidget()->contextMenuPolicy(), Qt::ActionsContextMenu);
    EXPECT_EQ(manager.findChild<QToolBar*>()->actions(), menu);
    QStringList names;
    for (const QAction* action : menu) {
        names.append(action->objectName());
        EXPECT_EQ(action->text(), english("ToolsManager", action->objectName().toLatin1()));
        EXPECT_FALSE(action->icon().pixmap(32).isNull()) << action->objectName().toStdString();
        EXPECT_FALSE(action->shortcut().isEmpty()) << action->objectName().toStdString();
    }
    EXPECT_EQ(names, (QStringList{"AddTool", "EditTool", "RemoveTool", "CopyTo", "ToolPreview"}));
}

TEST(ToolsManagerWindow, WithoutASelectedTool_OnlyAddingIsOffered) {
    const ManagerInstallation installation;
    installation.writeLibrary({1});
    ToolsManager manager;
    for (const char* name : {"EditTool", "RemoveTool", "CopyTo", "ToolPreview"})
        EXPECT_FALSE(actionOf(manager, name)->isEnabled()) << name;
    EXPECT_TRUE(actionOf(manager, "AddTool")->isEnabled());
    select(manager, {manager.libraryRoot()});
    EXPECT_FALSE(actionOf(manager, "RemoveTool")->isEnabled());
    manager.removeSelected();
    select(manager, {manager.libraryRoot()->child(0)});
    EXPECT_TRUE(actionOf(manager, "RemoveTool")->isEnabled());
}

TEST(ToolsManagerWindow, ClicksAndDelete_RemoveTheClickedRows) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2, 3, 4});
    ToolsManager manager;
    showWide(manager);
    clickRow(manager, manager.libraryRoot()->child(1));
    clickRow(manager, manager.libraryRoot()->child(3), Qt::ControlModifier);
    QTest::keyClick(manager.treeWidget(), Qt::Key_Delete);
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), (QList<int>{1, 3}));
    EXPECT_EQ(manager.treeWidget()->selectedItems().size(), 0);
}

TEST(ToolsManagerWindow, CopyShortcut_CopiesToTheOtherRoot) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2});
    ToolsManager manager;
    showWide(manager);
    clickRow(manager, manager.libraryRoot()->child(1));
    QTest::keyClick(manager.treeWidget(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(indicesUnder(manager.installedRoot()), QList<int>{2});
}

TEST(ToolsManagerWindow, EditShortcutAndDoubleClick_OpenTheEditorOnTheRow) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2, 3});
    ToolsManager manager;
    showWide(manager);
    clickRow(manager, manager.libraryRoot()->child(2));
    clickRow(manager, manager.libraryRoot()->child(1), Qt::ControlModifier);
    QTest::keyClick(manager.treeWidget(), Qt::Key_F2);
    EXPECT_EQ(ToolEditor::instance().tool(), manager.libraryRoot()->child(1));  // the first selected row
    EXPECT_TRUE(ToolEditor::instance().isVisible());
    clickRow(manager, manager.libraryRoot()->child(0));
    const QPoint place = manager.treeWidget()->visualItemRect(manager.libraryRoot()->child(0)).center();
    QTest::mouseDClick(manager.treeWidget()->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(ToolEditor::instance().tool(), manager.libraryRoot()->child(0));
}

TEST(ToolsManagerWindow, BarButton_AddsATool) {
    const ManagerInstallation installation;
    ToolsManager manager;
    showWide(manager);
    auto* bar = manager.findChild<QToolBar*>();
    auto* button = bar->widgetForAction(actionOf(manager, "AddTool"));
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), QList<int>{0});
    EXPECT_TRUE(ToolEditor::instance().isVisible());
}

TEST(ToolsManagerWindow, PreviewAction_ShowsTheGraphOfTheTool) {
    const ManagerInstallation installation;
    installation.writeLibrary({5});
    ToolsManager manager;
    select(manager, {manager.libraryRoot()->child(0)});
    actionOf(manager, "ToolPreview")->trigger();
    EXPECT_TRUE(TORNVALE::ToolPreviewer::instance().isVisible());
    EXPECT_NE(TORNVALE::ToolPreviewer::instance().view().scene(), nullptr);
    TORNVALE::ToolPreviewer::instance().close();
}

TEST(ToolsManagerWindow, HeaderClicks_SortBothRootsByNumber) {
    const ManagerInstallation installation;
    installation.writeLibrary({10, 9, 100});
    ToolsManager manager;
    for (const int index : {30, 4, 200})
        manager.addTool(newTool(index), manager.installedRoot());
    showWide(manager);
    clickHeader(manager, 4);
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), (QList<int>{9, 10, 100}));
    EXPECT_EQ(indicesUnder(manager.installedRoot()), (QList<int>{4, 30, 200}));
    clickHeader(manager, 4);
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), (QList<int>{100, 10, 9}));
    EXPECT_EQ(indicesUnder(manager.installedRoot()), (QList<int>{200, 30, 4}));
}

TEST(ToolsManagerWindow, FirstClickOnTheIndex_SortsUpwards) {
    const ManagerInstallation installation;
    installation.writeLibrary({10, 9, 100});
    ToolsManager manager;
    showWide(manager);
    clickHeader(manager, 0);
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), (QList<int>{9, 10, 100}));
}

TEST(ToolsManagerWindow, HeaderClickOnATextColumn_SortsByText) {
    const ManagerInstallation installation;
    ToolLibrary library{"1.0.0.0", {}};
    int index = 0;
    for (const char* carrier : {"Y", "X->Z", "A"}) {
        ToolRecord tool = toolOfIndex(++index);
        tool.installationName = carrier;
        library.tools.append(tool);
    }
    installation.write("toollib.json", writeToolLibrary(library));
    ToolsManager manager;
    showWide(manager);
    clickHeader(manager, 8);
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), (QList<int>{3, 2, 1}));
    clickHeader(manager, 8);
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), (QList<int>{1, 2, 3}));
}

TEST(ToolsManagerWindow, Sorting_KeepsSelectionExpansionAndTheOrderOfTheInstalledList) {
    const ManagerInstallation installation;
    ToolsManager manager;
    for (const int index : {30, 4, 200})
        manager.addTool(newTool(index), manager.installedRoot());
    QTreeWidgetItem* const first = manager.installedRoot()->child(0);
    QTreeWidgetItem* const last = manager.installedRoot()->child(2);
    select(manager, {first, last});
    showWide(manager);
    clickHeader(manager, 0);
    clickHeader(manager, 4);
    EXPECT_EQ(indicesUnder(manager.installedRoot()), (QList<int>{4, 30, 200}));
    EXPECT_TRUE(first->isSelected());
    EXPECT_TRUE(last->isSelected());
    EXPECT_EQ(manager.treeWidget()->selectedItems().size(), 2);
    EXPECT_TRUE(manager.installedRoot()->isExpanded());
    EXPECT_EQ(manager.installedTools().first(), first);
}

TEST(ToolsManagerWindow, Closing_ClosesTheEditorAndSaves) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2});
    ToolsManager manager;
    showWide(manager);
    select(manager, {manager.libraryRoot()->child(0)});
    actionOf(manager, "EditTool")->trigger();
    static_cast<ToolData*>(manager.libraryRoot()->child(1))->record().annotation = "changed";
    manager.close();
    EXPECT_FALSE(ToolEditor::instance().isVisible());
    const QJsonObject saved = QJsonDocument::fromJson(installation.read("toollib.json")).object();
    EXPECT_EQ(saved["tool1"].toObject()["Annonation"].toString(), QString("changed"));
}

TEST(ToolsManagerWindow, DestroyedUnderAnOpenEditor_ReleasesTheTool) {
    const ManagerInstallation installation;
    installation.writeLibrary({1});
    {
        ToolsManager manager;
        select(manager, {manager.libraryRoot()->child(0)});
        actionOf(manager, "EditTool")->trigger();
    }
    EXPECT_EQ(ToolEditor::instance().tool(), nullptr);
}

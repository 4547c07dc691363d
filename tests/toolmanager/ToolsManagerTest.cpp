#include "tools/ToolManager.h"

#include <gtest/gtest.h>

#include <QTreeWidget>
#include <typeinfo>

#include "ManagerTestSupport.h"
#include "tools/ToolEditor.h"

using TORNVALE::ToolsManager;

namespace {

/// Deregisters another observer when it is told.
class Deregistering : public TestObserver {
  public:
    Deregistering(ToolsManager& manager, TORNVALE::ToolObserver& other) : manager_(manager), other_(other) {}
    void UpdateToolList(QList<ToolData*> tools) override {
        TestObserver::UpdateToolList(tools);
        manager_.removeObserver(&other_);
        manager_.removeObserver(this);
    }

  private:
    ToolsManager& manager_;
    TORNVALE::ToolObserver& other_;
};

/// Looks at each tool that it was told of last, as a spindle does, when the next list comes.
class Remembering : public TORNVALE::ToolObserver {
  public:
    void UpdateToolList(QList<ToolData*> tools) override {
        for (const ToolData* tool : toolList_)
            lengths += tool->record().length;
        toolList_ = tools;
    }
    float lengths = 0;
};

}  // namespace

TEST(ToolsManager, Instance_IsOne) {
    const ManagerInstallation installation;
    EXPECT_EQ(&ToolsManager::instance(), &ToolsManager::instance());
}

TEST(ToolsManager, FindTool_LooksUnderTheGivenRootOnly) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2});
    ToolsManager manager;
    manager.addTool(newTool(3), manager.installedRoot());
    EXPECT_EQ(manager.findTool(2, manager.libraryRoot()), manager.libraryRoot()->child(1));
    EXPECT_EQ(manager.findTool(3, manager.installedRoot()), manager.installedRoot()->child(0));
    EXPECT_EQ(manager.findTool(3, manager.libraryRoot()), nullptr);
    EXPECT_EQ(manager.findTool(1, nullptr), nullptr);
}

TEST(ToolsManager, AddToolToTheInstalled_SelectsItAndTellsTheObservers) {
    const ManagerInstallation installation;
    ToolsManager manager;
    TestObserver observer;
    manager.addObserver(&observer, typeid(TestObserver).name());
    manager.addTool(newTool(3), manager.installedRoot());
    manager.addTool(newTool(1), manager.installedRoot());
    EXPECT_EQ(observer.updates, 2);
    EXPECT_EQ(observer.lastIndices, (QList<int>{3, 1}));
    EXPECT_EQ(observer.observerName(), typeid(TestObserver).name());
    EXPECT_FALSE(manager.installedRoot()->child(0)->isSelected());
    EXPECT_TRUE(manager.installedRoot()->child(1)->isSelected());
    EXPECT_FALSE(ToolEditor::instance().isVisible());
}

TEST(ToolsManager, AddToolToTheLibrary_OpensTheEditorAndTellsNobody) {
    const ManagerInstallation installation;
    ToolsManager manager;
    TestObserver observer;
    manager.addObserver(&observer, "TestObserver");
    manager.addTool(newTool(3), manager.libraryRoot());
    EXPECT_EQ(observer.updates, 0);
    EXPECT_TRUE(manager.libraryRoot()->child(0)->isSelected());
    EXPECT_TRUE(ToolEditor::instance().isVisible());
    EXPECT_EQ(ToolEditor::instance().tool(), manager.libraryRoot()->child(0));
}

TEST(ToolsManager, AddToolAction_TakesTheNextFreeIndex) {
    const ManagerInstallation installation;
    const QList<QPair<QList<int>, int>> cases{{{}, 0}, {{0, 1}, 2}, {{0, 2}, 1}, {{5, 3}, 4}, {{7}, 8}};
    for (const auto& [taken, expected] : cases) {
        installation.writeLibrary(taken);
        ToolsManager manager;
        actionOf(manager, "AddTool")->trigger();
        EXPECT_EQ(indicesUnder(manager.libraryRoot()).last(), expected) << taken.size();
    }
}

TEST(ToolsManager, AddToolBesideOddIndices_TakesAFreeOne) {
    const ManagerInstallation installation;
    const QList<QPair<QList<int>, int>> cases{
        {{2147483647}, 0}, {{-9}, 0}, {{1, 1, 3}, 4}, {{0, 0, 1, 3, 4}, 5}};
    for (const auto& [taken, expected] : cases) {
        installation.writeLibrary(taken);
        ToolsManager manager;
        actionOf(manager, "AddTool")->trigger();
        EXPECT_EQ(indicesUnder(manager.libraryRoot()).last(), expected) << taken.last();
    }
}

TEST(ToolsManager, NewTool_StartsWithTheValuesOfTheEditor) {
    const ManagerInstallation installation;
    ToolsManager manager;
    const ExpectedDialogs noBox;
    actionOf(manager, "AddTool")->trigger();
    const auto& record = static_cast<const ToolData*>(manager.libraryRoot()->child(0))->record();
    EXPECT_EQ(record.spindleNo, -1);
    EXPECT_EQ(record.length, 1);
    EXPECT_EQ(record.rpm, 250);
    EXPECT_EQ(record.toolNo, 1);
    EXPECT_EQ(record.annotation, QString("这是一把刀具"));
}

TEST(ToolsManager, Remove_TakesTheRowAndTellsTheObservers) {
    const ManagerInstallation installation;
    ToolsManager manager;
    for (const int index : {1, 2, 3})
        manager.addTool(newTool(index), manager.installedRoot());
    TestObserver observer;
    manager.addObserver(&observer, "TestObserver");
    select(manager, {manager.installedRoot()->child(0), manager.installedRoot()->child(2)});
    manager.removeSelected();
    EXPECT_EQ(observer.askedIndices, (QList<int>{1, 3}));
    EXPECT_EQ(observer.updates, 2);
    EXPECT_EQ(observer.lastIndices, QList<int>{2});
    EXPECT_EQ(indicesUnder(manager.installedRoot()), QList<int>{2});
    EXPECT_EQ(manager.installedTools().size(), 1);
}

TEST(ToolsManager, RemoveOfAToolInUse_IsVetoedAndTheRowStaysSelected) {
    const ManagerInstallation installation;
    ToolsManager manager;
    for (const int index : {1, 2, 3})
        manager.addTool(newTool(index), manager.installedRoot());
    TestObserver observer;
    TestObserver second;
    observer.vetoedIndex = 2;
    manager.addObserver(&observer, "TestObserver");
    manager.addObserver(&second, "TestObserver");
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Warning, "Warning", "Useing.Can't be deleted");
    QTreeWidgetItem* const inUse = manager.installedRoot()->child(1);
    select(manager, {manager.installedRoot()->child(0), inUse});
    manager.removeSelected();
    EXPECT_EQ(indicesUnder(manager.installedRoot()), (QList<int>{2, 3}));
    EXPECT_EQ(manager.treeWidget()->selectedItems(), QList<QTreeWidgetItem*>{inUse});
    EXPECT_EQ(second.askedIndices, (QList<int>{1, 2}));
    EXPECT_EQ(observer.lastIndices, (QList<int>{2, 3}));
}

TEST(ToolsManager, RemoveOfTheToolUnderEdit_ClosesTheEditor) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2});
    ToolsManager manager;
    select(manager, {manager.libraryRoot()->child(0)});
    actionOf(manager, "EditTool")->trigger();
    ASSERT_TRUE(ToolEditor::instance().isVisible());
    manager.removeSelected();
    EXPECT_FALSE(ToolEditor::instance().isVisible());
    EXPECT_EQ(ToolEditor::instance().tool(), nullptr);
    ToolEditor::instance().SetupTool();
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), QList<int>{2});
}

TEST(ToolsManager, ToolsThatGo_LiveUntilTheObserversAreTold) {
    const ManagerInstallation installation;
    ToolsManager manager;
    Remembering observer;
    manager.addObserver(&observer, "Remembering");
    manager.addTool(newTool(5), manager.installedRoot());
    select(manager, {manager.installedRoot()->child(0)});
    manager.removeSelected();
    EXPECT_EQ(observer.lengths, 105);
}

TEST(ToolsManager, CopyToTheInstalled_MakesANewToolOrOverwritesTheSameIndex) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2});
    ToolsManager manager;
    ToolRecord other = toolOfIndex(2);
    other.annotation = "older";
    manager.addTool(new ToolData(other), manager.installedRoot());  // owned by its row
    ToolData* const target = manager.findTool(2, manager.installedRoot());
    TestObserver observer;
    manager.addObserver(&observer, "TestObserver");
    select(manager, {manager.libraryRoot()->child(0), manager.libraryRoot()->child(1)});
    manager.copySelectedTo();
    EXPECT_EQ(indicesUnder(manager.installedRoot()), (QList<int>{2, 1}));
    EXPECT_EQ(manager.findTool(2, manager.installedRoot()), target);
    EXPECT_EQ(target->record().annotation, QString("tool 2"));
    EXPECT_EQ(observer.updates, 1);
    EXPECT_EQ(observer.lastIndices, (QList<int>{2, 1}));
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), (QList<int>{1, 2}));
    EXPECT_FALSE(ToolEditor::instance().isVisible());
}

TEST(ToolsManager, CopyToTheLibrary_MakesAPlainRow) {
    const ManagerInstallation installation;
    ToolsManager manager;
    manager.addTool(newTool(6), manager.installedRoot());
    select(manager, {manager.installedRoot()->child(0)});
    manager.copySelectedTo();
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), QList<int>{6});
    EXPECT_EQ(manager.libraryRoot()->child(0)->text(0), QString("6"));
    EXPECT_FALSE(ToolEditor::instance().isVisible());
    EXPECT_EQ(manager.installedTools().size(), 1);
    EXPECT_NE(static_cast<QTreeWidgetItem*>(manager.installedTools()[0]), manager.libraryRoot()->child(0));
}

TEST(ToolsManager, CopyOfNothing_TellsNobody) {
    const ManagerInstallation installation;
    ToolsManager manager;
    TestObserver observer;
    manager.addObserver(&observer, "TestObserver");
    manager.copySelectedTo();
    EXPECT_EQ(observer.updates, 0);
}

TEST(ToolsManager, Observers_AreToldOnceEachAndNotAfterTheyLeft) {
    const ManagerInstallation installation;
    ToolsManager manager;
    TestObserver observer;
    manager.addObserver(&observer, "A");
    manager.addObserver(&observer, "B");
    manager.addObserver(nullptr, "C");
    EXPECT_EQ(observer.observerName(), "B");
    EXPECT_EQ(observer.updates, 0);
    manager.notifyObservers();
    EXPECT_EQ(observer.updates, 1);
    manager.removeObserver(&observer);
    manager.notifyObservers();
    EXPECT_EQ(observer.updates, 1);
}

TEST(ToolsManager, ObserverThatLeavesWhileToldOf_IsNotTold) {
    const ManagerInstallation installation;
    ToolsManager manager;
    TestObserver second;
    Deregistering first(manager, second);
    manager.addObserver(&first, "Deregistering");
    manager.addObserver(&second, "TestObserver");
    manager.notifyObservers();
    manager.notifyObservers();
    EXPECT_EQ(first.updates, 1);
    EXPECT_EQ(second.updates, 0);
}

TEST(ToolsManager, AcceptedEditOfAnInstalledTool_TellsTheObservers) {
    const ManagerInstallation installation;
    installation.writeLibrary({1});
    ToolsManager manager;
    manager.addTool(newTool(6), manager.installedRoot());
    TestObserver observer;
    manager.addObserver(&observer, "TestObserver");
    actionOf(manager, "EditTool")->trigger();
    ASSERT_EQ(ToolEditor::instance().tool(), manager.installedRoot()->child(0));
    ToolEditor::instance().SetupTool();
    EXPECT_EQ(observer.updates, 1);
    select(manager, {manager.libraryRoot()->child(0)});
    actionOf(manager, "EditTool")->trigger();
    ToolEditor::instance().SetupTool();
    EXPECT_EQ(observer.updates, 1);
}

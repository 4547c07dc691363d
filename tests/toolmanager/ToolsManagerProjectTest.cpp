#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QTreeWidget>

#include "ManagerTestSupport.h"

using TORNVALE::ToolsManager;

namespace {

QJsonObject projectTool(int index, const QString& annotation) {
    ToolRecord tool = toolOfIndex(index);
    tool.annotation = annotation;
    return toolToJson(tool);
}

QStringList annotations(const ToolsManager& manager) {
    QStringList texts;
    for (const ToolData* tool : manager.installedTools())
        texts.append(tool->record().annotation);
    return texts;
}

}  // namespace

TEST(ToolsManagerProject, No_KeepsTheValuesOfTheProject) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2});
    ToolsManager manager;
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);
    manager.loadFromProject(QJsonArray{projectTool(2, "mine"), projectTool(5, "mine too")});
    EXPECT_EQ(indicesUnder(manager.installedRoot()), (QList<int>{2, 5}));
    EXPECT_EQ(annotations(manager), (QStringList{"mine", "mine too"}));
}

TEST(ToolsManagerProject, Yes_TakesTheLibraryValuesOfTheSameIndex) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2});
    ToolsManager manager;
    ExpectedDialogs dialogs;
    dialogs.answerAsk(true);
    manager.loadFromProject(QJsonArray{projectTool(2, "mine"), projectTool(5, "mine too")});
    EXPECT_EQ(indicesUnder(manager.installedRoot()), (QList<int>{2, 5}));
    EXPECT_EQ(annotations(manager), (QStringList{"tool 2", "mine too"}));
}

TEST(ToolsManagerProject, ObjectForm_IsReadToo) {
    const ManagerInstallation installation;
    ToolsManager manager;
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);
    manager.loadFromProject(QJsonObject{
        {"tool0", projectTool(3, "a")}, {"tool1", projectTool(4, "b")}, {"other", projectTool(5, "c")}});
    EXPECT_EQ(indicesUnder(manager.installedRoot()), (QList<int>{3, 4}));
}

TEST(ToolsManagerProject, OldTools_AreReplacedAndObserversToldOnce) {
    const ManagerInstallation installation;
    ToolsManager manager;
    manager.addTool(newTool(8), manager.installedRoot());
    manager.addTool(newTool(9), manager.installedRoot());
    TestObserver observer;
    manager.addObserver(&observer, "TestObserver");
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);
    manager.loadFromProject(QJsonArray{projectTool(1, "new")});
    EXPECT_EQ(observer.askedIndices, (QList<int>{9, 8}));  // from last to first
    EXPECT_EQ(observer.updates, 1);
    EXPECT_EQ(observer.lastIndices, QList<int>{1});
    EXPECT_EQ(indicesUnder(manager.installedRoot()), QList<int>{1});
}

TEST(ToolsManagerProject, ToolInUse_StaysWithABox) {
    const ManagerInstallation installation;
    ToolsManager manager;
    manager.addTool(newTool(8), manager.installedRoot());
    manager.addTool(newTool(9), manager.installedRoot());
    TestObserver observer;
    observer.vetoedIndex = 8;
    manager.addObserver(&observer, "TestObserver");
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);
    dialogs.expectTell(UserDialogs::Kind::Warning, "Warning", "Useing.Can't be deleted");
    manager.loadFromProject(QJsonArray{projectTool(1, "new")});
    EXPECT_EQ(observer.lastIndices, (QList<int>{8, 1}));
}

TEST(ToolsManagerProject, NoToolList_ChangesNothingAndAsksNothing) {
    const ManagerInstallation installation;
    ToolsManager manager;
    manager.addTool(newTool(8), manager.installedRoot());
    const ExpectedDialogs noQuestion;
    manager.loadFromProject(QJsonValue(QJsonValue::Undefined));
    manager.loadFromProject(QJsonValue());
    EXPECT_EQ(indicesUnder(manager.installedRoot()), QList<int>{8});
}

TEST(ToolsManagerProject, EmptyOrOddToolList_EmptiesTheInstalledTools) {
    const ManagerInstallation installation;
    ToolsManager manager;
    for (const QJsonValue& list : {QJsonValue(QJsonArray()), QJsonValue(5), QJsonValue("tools"),
                                   QJsonValue(QJsonArray{1, "x", QJsonArray{1}})}) {
        manager.addTool(newTool(8), manager.installedRoot());
        ExpectedDialogs dialogs;
        dialogs.answerAsk(true);
        manager.loadFromProject(list);
        EXPECT_EQ(manager.installedTools().size(), 0);
        EXPECT_EQ(manager.installedRoot()->childCount(), 0);
    }
}

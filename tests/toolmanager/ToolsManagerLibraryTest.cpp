#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTreeWidget>
#include <random>

#include "ManagerTestSupport.h"
#include "tools/ToolEditor.h"

using TORNVALE::ToolsManager;

namespace {

QJsonObject savedLibrary(const ManagerInstallation& installation) {
    return QJsonDocument::fromJson(installation.read("toollib.json")).object();
}

}  // namespace

TEST(ToolsManagerLibrary, File_FillsTheLibraryRoot) {
    const ManagerInstallation installation;
    installation.writeLibrary({4, 7, 2});
    const ToolsManager manager;
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), (QList<int>{4, 7, 2}));
    EXPECT_EQ(manager.libraryRoot()->child(1)->text(4), QString("107"));
    EXPECT_EQ(manager.installedRoot()->childCount(), 0);
    EXPECT_EQ(manager.libraryPath(), installation.file("toollib.json"));
}

TEST(ToolsManagerLibrary, MissingFile_IsALogLineAndAnEmptyLibrary) {
    const ManagerInstallation installation;
    const LogCapture log;
    const ToolsManager manager;
    EXPECT_EQ(manager.libraryRoot()->childCount(), 0);
    EXPECT_EQ(log.count(english("ToolsManager", "OpenFailedErrorMsg")), 1);
}

TEST(ToolsManagerLibrary, FileThatGoesAway_LeavesTheRows) {
    const ManagerInstallation installation;
    installation.writeLibrary({4});
    ToolsManager manager;
    ASSERT_TRUE(QFile::remove(manager.libraryPath()));
    EXPECT_FALSE(manager.LoadingLocalTools());
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), QList<int>{4});
}

TEST(ToolsManagerLibrary, FileThatDoesNotParse_IsALogLineAndLeavesTheRows) {
    const ManagerInstallation installation;
    installation.writeLibrary({4});
    ToolsManager manager;
    for (const char* content : {"", "{", "null", "[1,2]", "{\"tool0\":{}", "\xff\xfe", "{}x"}) {
        installation.write("toollib.json", content);
        const LogCapture log;
        EXPECT_FALSE(manager.LoadingLocalTools()) << content;
        EXPECT_EQ(log.count(english("ToolsManager", "ParseFailedErrorMsg")), 1) << content;
        EXPECT_EQ(indicesUnder(manager.libraryRoot()), QList<int>{4}) << content;
    }
}

TEST(ToolsManagerLibrary, LoadedAgain_ReplacesTheRows) {
    const ManagerInstallation installation;
    installation.writeLibrary({4, 5});
    ToolsManager manager;
    installation.writeLibrary({9});
    EXPECT_TRUE(manager.LoadingLocalTools());
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), QList<int>{9});
}

TEST(ToolsManagerLibrary, LoadedAgainUnderAnOpenEditor_ClosesIt) {
    const ManagerInstallation installation;
    installation.writeLibrary({4});
    ToolsManager manager;
    select(manager, {manager.libraryRoot()->child(0)});
    actionOf(manager, "EditTool")->trigger();
    ASSERT_TRUE(ToolEditor::instance().isVisible());
    EXPECT_TRUE(manager.LoadingLocalTools());
    EXPECT_FALSE(ToolEditor::instance().isVisible());
    EXPECT_EQ(ToolEditor::instance().tool(), nullptr);
}

TEST(ToolsManagerLibrary, ChainSaw_TakesItsCompensationsFromItsGroup) {
    const ManagerInstallation installation;
    ToolRecord saw = toolOfIndex(1);
    saw.type = 3;
    saw.chainSaw = "Saw1";
    installation.write("toollib.json", writeToolLibrary({"1.0.0.0", {saw}}));
    const ToolsManager manager;
    ASSERT_EQ(manager.libraryRoot()->childCount(), 1);
    const auto& read = static_cast<const ToolData*>(manager.libraryRoot()->child(0))->record();
    EXPECT_EQ(read.ax4Compensation, 0.25F);
    EXPECT_EQ(read.ax5Compensation, -1.5F);
    EXPECT_EQ(read.rpm, 10000);
}

TEST(ToolsManagerLibrary, NewerFile_IsReadInTheArrayForm) {
    const ManagerInstallation installation;
    const QJsonArray tool{6, 1, 3, 80, 20, 12, 9000, "old", "", 14, QJsonArray()};
    installation.write(
        "toollib.json",
        QJsonDocument(QJsonObject{{"version", "9.0.0.0"}, {"toollib", QJsonArray{tool}}}).toJson());
    const ToolsManager manager;
    EXPECT_EQ(indicesUnder(manager.libraryRoot()), QList<int>{6});
}

TEST(ToolsManagerLibrary, Save_WritesEveryRowInItsPlace) {
    const ManagerInstallation installation;
    installation.writeLibrary({4, 7, 2});
    ToolsManager manager;
    ASSERT_TRUE(QFile::remove(manager.libraryPath()));
    EXPECT_TRUE(manager.save());
    const QJsonObject saved = savedLibrary(installation);
    EXPECT_EQ(saved.keys(), (QStringList{"tool0", "tool1", "tool2", "version"}));
    EXPECT_EQ(saved["version"].toString(), QString("3.3.0.5"));
    EXPECT_EQ(saved["tool0"].toObject()["Index"].toInt(), 4);
    EXPECT_EQ(saved["tool1"].toObject()["Index"].toInt(), 7);
    EXPECT_EQ(saved["tool2"].toObject()["Index"].toInt(), 2);
    EXPECT_FALSE(installation.read("toollib.json").contains('\n'));
}

TEST(ToolsManagerLibrary, SavedAndLoaded_IsTheSame) {
    const ManagerInstallation installation;
    ToolLibrary library{"3.3.0.5", {}};
    std::mt19937 random(20250104);
    for (int i = 0; i < 10; ++i) {
        ToolRecord tool = toolOfIndex(i);
        tool.diameter = static_cast<float>(random() % 1000) / 7;
        tool.annotation = QString("注释 \"%1\"\n").arg(random());
        tool.contour = {{0, 0, 0}, {tool.diameter, 0, -1.1F}};
        tool.image = pictureFile({5, 4});
        library.tools.append(tool);
    }
    installation.write("toollib.json", writeToolLibrary(library));
    ToolsManager manager;
    const QByteArray before = installation.read("toollib.json");
    EXPECT_TRUE(manager.save());
    EXPECT_EQ(installation.read("toollib.json"), before);
    EXPECT_FALSE(QFile::exists(installation.file("toollib.json.bak")));
}

TEST(ToolsManagerLibrary, SaveThatFails_TellsAndKeepsTheOldFile) {
    const ManagerInstallation installation;
    installation.writeLibrary({4});
    ToolsManager manager;
    // A folder of this name cannot be replaced by a file.
    ASSERT_TRUE(QFile::remove(manager.libraryPath()));
    ASSERT_TRUE(QDir().mkpath(manager.libraryPath() + "/inner"));
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Warning, english("ToolsManager", "Title"),
                       english("ToolsManager", "SaveFailedErrorMsg"));
    const LogCapture log;
    EXPECT_FALSE(manager.save());
    EXPECT_EQ(log.count(english("ToolsManager", "SaveFailedErrorMsg")), 1);
    EXPECT_TRUE(QDir(manager.libraryPath() + "/inner").exists());
}

TEST(ToolsManagerLibrary, SaveAfterAFailedReading_KeepsTheUnreadFile) {
    const ManagerInstallation installation;
    const QByteArray broken = "{\"tool0\":{\"Index\":4},";
    installation.write("toollib.json", broken);
    ToolsManager manager;
    EXPECT_TRUE(manager.save());
    EXPECT_EQ(installation.read("toollib.json.bak"), broken);
    EXPECT_EQ(savedLibrary(installation).keys(), QStringList{"version"});
}

// Such a file would otherwise be lost with the first closing of the window.
TEST(ToolsManagerLibrary, SaveAfterAFileOfANewerVersion_KeepsTheFile) {
    const ManagerInstallation installation;
    const QByteArray newer = writeToolLibrary({"9.0.0.0", {toolOfIndex(3)}});
    installation.write("toollib.json", newer);
    ToolsManager manager;
    EXPECT_EQ(manager.libraryRoot()->childCount(), 0);
    EXPECT_TRUE(manager.save());
    EXPECT_EQ(installation.read("toollib.json.bak"), newer);
}

TEST(ToolsManagerLibrary, HostileFiles_LeaveAUsableWindow) {
    const ManagerInstallation installation;
    installation.writeLibrary({1, 2});
    const QByteArray whole = installation.read("toollib.json");
    ToolsManager manager;
    std::mt19937 random(20250105);
    const LogCapture log;
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = whole;
        for (int i = static_cast<int>(random() % 6); i >= 0; --i)
            bytes[static_cast<int>(random() % static_cast<unsigned>(bytes.size()))] =
                static_cast<char>(random() % 256);
        installation.write("toollib.json",
                           bytes.left(static_cast<int>(random() % 3 == 0 ? random() % 400 : 9999)));
        manager.LoadingLocalTools();
        ASSERT_LE(manager.libraryRoot()->childCount(), 3) << "round " << round;
    }
    installation.write(
        "toollib.json",
        R"({"version":"0","tool0":{"Index":"x","Transform":[1],"Type":1e300,"ContourPoints":7},)"
        R"("tool1":[],"tool2":5,"toolbox":{"Image":"%%%","Rpm":null,"SpindleNo":-1e99}})");
    EXPECT_TRUE(manager.LoadingLocalTools());
    EXPECT_EQ(manager.libraryRoot()->childCount(), 2);
    EXPECT_EQ(indicesUnder(manager.libraryRoot())[0], 0);
}

TEST(ToolsManagerLibrary, DeepNesting_IsRefused) {
    const ManagerInstallation installation;
    installation.write("toollib.json", "{\"tool0\":" + QByteArray(200000, '['));
    const LogCapture log;
    const ToolsManager manager;
    EXPECT_EQ(log.count(english("ToolsManager", "ParseFailedErrorMsg")), 1);
}

#include <gtest/gtest.h>

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>

#include "WindowTestSupport.h"
#include "app/UserInfoForm.h"
#include "machine/AxisBase.h"
#include "machine/MotionNodeManager.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

// Opening, saving and closing the job.

namespace {

using Kind = UserDialogs::Kind;
using Keep = UserDialogs::Keep;

struct Bench : WindowBench {
    Bench() { open(); }
    QLineEdit* field(const char* key) { return window().findChild<QLineEdit*>(QLatin1String(key)); }
    void type(const char* key, const char* text) {
        field(key)->clear();
        QTest::keyClicks(field(key), text);
    }
    /// Saves to this file of the installation.
    void saveAs(const char* name) {
        ExpectedDialogs dialogs;
        dialogs.answerFile(file(QLatin1String(name)));
        dialogs.expectTell(Kind::Information, "Save", "The file was saved.");
        trigger("SaveAs");
    }
    void drop(const QString& path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent event(QPoint(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &event);
    }
};

const QByteArray kDoor = R"({"version":"3.3.0.5","StandardCorvane_4S":{"partName":"door","LTime":"12.5",
    "dateTime":"2020-01-02 03:04:05","marked":"two\nlines"},"ProgramsTreeWidget":{"class UserTopItemManager":
    {"G54":[1,2,3]}}})";

}  // namespace

TEST(TornvaleProject, SavesAndOpensTheWholeJob) {
    Bench bench;
    bench.type("ProductName", "Kitchen");
    bench.window().findChild<QPlainTextEdit*>("OtherInfo")->setPlainText("first\nsecond");
    bench.window().machine().executeLine("X120");
    ToolRecord record;
    record.index = 5;
    record.toolNo = 9;
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    tools.addTool(new ToolData(record), tools.installedRoot());  // owned by its row
    bench.saveAs("job.tornvale");
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - job");
    const QJsonObject root = QJsonDocument::fromJson(bench.bytes("job.tornvale")).object();
    EXPECT_EQ(root["version"].toString(), "3.3.0.5");
    EXPECT_EQ(root["StandardCorvane_4S"].toObject()["productsName"].toString(), "Kitchen");
    EXPECT_TRUE(root["StandardCorvane_4S"].toObject()["toolList"].toObject().contains("tool0"));
    EXPECT_TRUE(root["machineNode"].toObject().contains("X"));
    bench.discardWindow();

    bench.open();
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);  // the tools keep the project's values
    EXPECT_TRUE(bench.window().OpenFile(bench.file("job.tornvale")));
    EXPECT_EQ(bench.field("ProductName")->text(), "Kitchen");
    EXPECT_EQ(bench.window().findChild<QPlainTextEdit*>("OtherInfo")->toPlainText(), "first\nsecond");
    EXPECT_NEAR(bench.window().machine().findAxis("X")->currentValue(), 120, 1e-3);
    ASSERT_EQ(tools.installedTools().size(), 1);
    EXPECT_EQ(tools.installedTools()[0]->record().toolNo, 9);
}

TEST(TornvaleProject, ProgramsThatCannotBeShownAreToldAndKept) {
    Bench bench;
    QByteArray document = kDoor;
    document.replace("[1,2,3]", R"({"G54":[{"itemName":"lathe1","type":2000,"depth":[7]}]})");
    bench.write("door.tornvale", document);
    {
        ExpectedDialogs dialogs;
        dialogs.expectTell(Kind::Warning, "Programs", "An unknown program item was skipped.\nlathe1");
        EXPECT_TRUE(bench.window().OpenFile(bench.file("door.tornvale")));
    }
    EXPECT_EQ(bench.field("PartName")->text(), "door");
    EXPECT_EQ(bench.field("LeftHandTime")->text(), "12.5");
    bench.saveAs("copy.tornvale");
    const QJsonObject copy = QJsonDocument::fromJson(bench.bytes("copy.tornvale")).object();
    const auto items = [](const QJsonObject& root) {
        return root["ProgramsTreeWidget"]["class UserTopItemManager"]["G54"]["G54"];
    };
    EXPECT_EQ(items(copy), items(QJsonDocument::fromJson(document).object()));
    EXPECT_EQ(items(copy).toArray().size(), 1);
    EXPECT_NE(copy["StandardCorvane_4S"].toObject()["dateTime"].toString(), "2020-01-02 03:04:05");
}

TEST(TornvaleProject, SaveLoadSaveGivesTheSameBytesApartFromTheTime) {
    Bench bench;
    bench.write("door.tornvale", kDoor);
    ASSERT_TRUE(bench.window().OpenFile(bench.file("door.tornvale")));
    bench.saveAs("a.tornvale");
    {
        ExpectedDialogs dialogs;
        dialogs.answerAsk(false);
        ASSERT_TRUE(bench.window().OpenFile(bench.file("a.tornvale")));
    }
    bench.saveAs("b.tornvale");
    const auto withoutTime = [&bench](const char* name) {
        QJsonObject root = QJsonDocument::fromJson(bench.bytes(QLatin1String(name))).object();
        QJsonObject head = root["StandardCorvane_4S"].toObject();
        head.remove("dateTime");
        root["StandardCorvane_4S"] = head;
        return QJsonDocument(root).toJson();
    };
    EXPECT_EQ(withoutTime("a.tornvale"), withoutTime("b.tornvale"));
}

TEST(TornvaleProject, ADocumentThatIsNoJsonIsToldAndLeavesAnEmptyJob) {
    Bench bench;
    bench.write("door.tornvale", kDoor);
    ASSERT_TRUE(bench.window().OpenFile(bench.file("door.tornvale")));
    bench.write("bad.tornvale", QByteArray("\xff\xd8{", 3));
    ExpectedDialogs dialogs;
    dialogs.expectTell(Kind::Warning, "Open",
                       "The file is not a JSON document in UTF-8.\n" + bench.file("bad.tornvale"));
    EXPECT_FALSE(bench.window().OpenFile(bench.file("bad.tornvale")));
    EXPECT_EQ(bench.field("PartName")->text(), "");
    EXPECT_EQ(bench.field("LeftHandTime")->text(), "0.0");
    EXPECT_EQ(bench.window().documentPath(), "");
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - 3.3.0.5");
}

TEST(TornvaleProject, AMissingDocumentIsToldAndChangesNothing) {
    Bench bench;
    bench.write("door.tornvale", kDoor);
    ASSERT_TRUE(bench.window().OpenFile(bench.file("door.tornvale")));
    ExpectedDialogs dialogs;
    dialogs.expectTell(Kind::Warning, "Open", "The file could not be opened.\n" + bench.file("no.tornvale"));
    const LogCapture log;
    EXPECT_FALSE(bench.window().OpenFile(bench.file("no.tornvale")));
    EXPECT_TRUE(log.contains("The file could not be opened."));
    EXPECT_EQ(bench.field("PartName")->text(), "door");
}

TEST(TornvaleProject, CancelledDialogsChangeNothing) {
    Bench bench;
    ExpectedDialogs dialogs;
    dialogs.answerFile({});
    bench.trigger("Open");
    dialogs.answerFile({});
    bench.trigger("Save");
    EXPECT_EQ(bench.window().documentPath(), "");
}

TEST(TornvaleProject, AFolderThatIsNotThereCannotBeSavedTo) {
    Bench bench;
    bench.write("door.tornvale", kDoor);
    ASSERT_TRUE(bench.window().OpenFile(bench.file("door.tornvale")));
    ExpectedDialogs dialogs;
    dialogs.answerFile(bench.file("none/job.tornvale"));
    dialogs.expectTell(Kind::Warning, "Save",
                       "The file could not be saved.\n" + bench.file("none/job.tornvale"));
    bench.trigger("SaveAs");
    EXPECT_EQ(bench.window().documentPath(), bench.file("door.tornvale")) << "the document is what it was";
    EXPECT_EQ(bench.bytes("door.tornvale"), kDoor);
}

TEST(TornvaleProject, APathWithoutANameIsTold) {
    Bench bench;
    ExpectedDialogs dialogs;
    dialogs.answerFile(bench.file("folder/.."));
    dialogs.expectTell(Kind::Warning, "Save",
                       "The file could not be saved.\n" + bench.file("folder/..") + ".tornvale");
    bench.trigger("SaveAs");
}

TEST(TornvaleProject, ANameWithoutASuffixGetsOne) {
    Bench bench;
    bench.saveAs("plain");
    EXPECT_TRUE(QFile::exists(bench.file("plain.tornvale")));
}

TEST(TornvaleProject, ClosingWithChangesAsks) {
    Bench bench;
    bench.window().show();
    bench.type("PartName", "door");
    ExpectedDialogs dialogs;
    dialogs.answerKeep(Keep::Cancel);
    EXPECT_FALSE(bench.window().close());
    EXPECT_TRUE(bench.window().isVisible());
    dialogs.answerKeep(Keep::Save);
    dialogs.answerFile({});  // the save is given up: so is the closing
    EXPECT_FALSE(bench.window().close());
    dialogs.answerKeep(Keep::Discard);
    EXPECT_TRUE(bench.window().close());
}

TEST(TornvaleProject, PlayingIsNoChange) {
    Bench bench;
    bench.window().machine().executeLine("X100 C45");
    const ExpectedDialogs dialogs;
    EXPECT_TRUE(bench.window().close());
}

TEST(TornvaleProject, AMovedSystemIsAChange) {
    Bench bench;
    bench.window().machine().findWorkCoordinateSystem("G54")->userCoordinateSystem(0)->setTranslation(
        {1, 2, 3});
    ExpectedDialogs dialogs;
    dialogs.answerKeep(Keep::Discard);
    EXPECT_TRUE(bench.window().close());
}

TEST(TornvaleProject, OpeningWithChangesAsks) {
    Bench bench;
    bench.write("door.tornvale", kDoor);
    bench.type("PartName", "gate");
    ExpectedDialogs dialogs;
    dialogs.answerKeep(Keep::Cancel);
    EXPECT_FALSE(bench.window().OpenFile(bench.file("door.tornvale")));
    EXPECT_EQ(bench.field("PartName")->text(), "gate");
    dialogs.answerKeep(Keep::Discard);
    EXPECT_TRUE(bench.window().OpenFile(bench.file("door.tornvale")));
    EXPECT_EQ(bench.field("PartName")->text(), "door");
}

TEST(TornvaleProject, NewEmptiesTheJob) {
    Bench bench;
    bench.write("door.tornvale", kDoor);
    ASSERT_TRUE(bench.window().OpenFile(bench.file("door.tornvale")));
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);
    bench.trigger("New");
    EXPECT_EQ(bench.field("PartName")->text(), "");
    EXPECT_EQ(bench.window().documentPath(), "");
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - 3.3.0.5");
    dialogs.answerAsk(true);
    dialogs.answerFile({});
    bench.type("PartName", "kept");
    bench.trigger("New");
    EXPECT_EQ(bench.field("PartName")->text(), "kept") << "the save was given up";
    dialogs.answerCancel();
    bench.trigger("New");
    EXPECT_EQ(bench.field("PartName")->text(), "kept") << "the question was given up";
}

TEST(TornvaleProject, TheTemplateIsOpenedAndNotOverwritten) {
    Bench bench;
    bench.discardWindow();
    bench.write("template.tornvale", kDoor);
    bench.settings("[UserData]\nTemplatePath=template.tornvale\n");
    const LogCapture log;
    bench.open();
    EXPECT_TRUE(log.contains("The template was loaded."));
    EXPECT_EQ(bench.field("PartName")->text(), "door");
    EXPECT_EQ(bench.window().documentPath(), "");
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - 3.3.0.5");
}

TEST(TornvaleProject, AMissingTemplateIsNoMatter) {
    Bench bench;
    bench.discardWindow();
    bench.settings("[UserData]\nTemplatePath=none.tornvale\n");
    const ExpectedDialogs dialogs;
    bench.open();
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - 3.3.0.5");
}

TEST(TornvaleProject, ADroppedProjectOpens) {
    Bench bench;
    bench.write("door.tornvale", kDoor);
    bench.drop(bench.file("door.tornvale"));
    EXPECT_EQ(bench.field("PartName")->text(), "door");
}

TEST(TornvaleProject, ADroppedFileOfAnotherKindDoesNothing) {
    Bench bench;
    bench.write("door.txt", kDoor);
    bench.write("DOOR.TORNVALE", kDoor);
    const ExpectedDialogs dialogs;
    bench.drop(bench.file("door.txt"));
    bench.drop(bench.file("DOOR.TORNVALE"));
    bench.drop({});
    EXPECT_EQ(bench.field("PartName")->text(), "");
}

TEST(TornvaleProject, ADroppedNameBeyondOneByteIsRefusedButOpensFromTheMenu) {
    Bench bench;
    const QString name = QString::fromUtf8("门.tornvale");
    bench.write(name, kDoor);
    {
        ExpectedDialogs dialogs;
        dialogs.expectTell(
            Kind::Warning, "Open file",
            "The name of a dropped file may only hold Latin characters. Open this file from the "
            "menu.");
        bench.drop(bench.file(name));
    }
    EXPECT_EQ(bench.field("PartName")->text(), "");
    ExpectedDialogs dialogs;
    dialogs.answerFile(bench.file(name));
    bench.trigger("Open");
    EXPECT_EQ(bench.field("PartName")->text(), "door");
}

TEST(TornvaleProject, RecentFilesKeepFive) {
    Bench bench;
    for (int i = 0; i < 6; ++i) {
        const QString name = QStringLiteral("job%1.tornvale").arg(i);
        bench.write(name, kDoor);
        ASSERT_TRUE(bench.window().OpenFile(bench.file(name)));
    }
    QMenu* recent = bench.action("RecentFile")->menu();
    ASSERT_EQ(recent->actions().size(), 5);
    EXPECT_EQ(recent->actions()[0]->text(), "&1 " + bench.file("job1.tornvale"));
    recent->actions()[2]->trigger();
    EXPECT_EQ(bench.window().windowTitle(), "Tornvale - job3");
}

TEST(TornvaleProject, CutDocumentsNeverCrash) {
    Bench bench;
    bench.saveAs("whole.tornvale");
    const QByteArray whole = bench.bytes("whole.tornvale");
    for (int length = 0; length < whole.size(); length += 97) {
        bench.write("cut.tornvale", whole.left(length));
        ExpectedDialogs dialogs;
        dialogs.expectTell(Kind::Warning, "Open",
                           "The file is not a JSON document in UTF-8.\n" + bench.file("cut.tornvale"));
        EXPECT_FALSE(bench.window().OpenFile(bench.file("cut.tornvale"))) << length;
    }
}

TEST(TornvaleProject, TypedInformationSurvivesATooLongName) {
    Bench bench;
    bench.type("PartName", "door");
    ExpectedDialogs dialogs;
    const QString path = bench.file(QString(300, 'a') + ".tornvale");
    dialogs.answerFile(path);
    dialogs.expectTell(Kind::Warning, "Save", "The file could not be saved.\n" + path);
    bench.trigger("SaveAs");
    EXPECT_EQ(bench.field("PartName")->text(), "door");
}

#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QDockWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>

#include "WindowTestSupport.h"
#include "app/AddPointDialog.h"
#include "app/MachineScene.h"
#include "app/MachineViewer.h"
#include "core/AboutTornvale.h"
#include "core/Restart.h"
#include "core/UiLanguage.h"
#include "geometry/GeometryTestSupport.h"
#include "geometry/modelNode.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItemManager.h"
#include "machine/MotionNodeManager.h"
#include "nc/myTimer.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"
#include "tools/ToolManager.h"

namespace {

using Kind = UserDialogs::Kind;

/// Takes the place of the desktop for files.
class OpenedFiles : public QObject {
    Q_OBJECT
  public:
    OpenedFiles() { QDesktopServices::setUrlHandler("file", this, "take"); }
    ~OpenedFiles() override { QDesktopServices::unsetUrlHandler("file"); }
    Q_INVOKABLE void take(const QUrl& url) { paths.append(url.toLocalFile()); }
    QStringList paths;
};

}  // namespace

TEST(TornvaleMenus, PlaybackShowsItsWindow) {
    WindowBench bench;
    bench.open();
    bench.trigger("Playback");
    EXPECT_TRUE(TORNVALE::myTimer::instance().isVisible());
    EXPECT_EQ(bench.window().machine().playback(), &TORNVALE::myTimer::instance());
    bench.window().close();
    EXPECT_FALSE(TORNVALE::myTimer::instance().isVisible());
}

TEST(TornvaleMenus, SimulatePlaysTheCurrentRow) {
    WindowBench bench;
    TreeWidgetManager& programs = bench.open().programs();
    QTreeWidgetItem* const group = programs.root().child(0);
    ASSERT_NE(group, nullptr);
    QStringList played;
    TORNVALE::myTimer::setProgramListener([&played](const QString& text) { played.append(text); });
    for (QTreeWidgetItem* row : {static_cast<QTreeWidgetItem*>(&programs.root()), group}) {
        programs.setCurrentItem(row);
        played.clear();
        bench.trigger("AnimationAction");
        EXPECT_EQ(played.size(), 1) << row->text(0).toStdString();
        EXPECT_TRUE(TORNVALE::myTimer::instance().isVisible());
        TORNVALE::myTimer::instance().close();
    }
    TORNVALE::myTimer::setProgramListener({});
    EXPECT_EQ(bench.action("AnimationAction")->text().remove('&'), "Simulate");
}

TEST(TornvaleMenus, ToolsComeToTheFront) {
    WindowBench bench;
    auto* tabs = bench.open().findChild<QTabWidget*>();
    tabs->setCurrentIndex(3);
    bench.trigger("ToolManagerButton");
    EXPECT_EQ(tabs->currentWidget(), &TORNVALE::ToolsManager::instance());
}

TEST(TornvaleMenus, ToolsCanBeAWindowOfTheirOwn) {
    WindowBench bench;
    bench.settings("IsNewToolDialog=true\n");
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    EXPECT_EQ(bench.open().findChild<QTabWidget*>()->indexOf(&tools), -1);
    EXPECT_FALSE(tools.isVisible());
    bench.trigger("ToolManagerButton");
    EXPECT_TRUE(tools.isVisible());
    EXPECT_TRUE(tools.isWindow());
    QTest::keyClick(tools.treeWidget(), Qt::Key_Escape);
    EXPECT_FALSE(tools.isVisible());
    bench.trigger("ToolManagerButton");
    EXPECT_TRUE(tools.isVisible());
    bench.window().close();
    EXPECT_FALSE(tools.isVisible());
}

TEST(TornvaleMenus, UserFolderIsStored) {
    WindowBench bench;
    bench.open();
    ExpectedDialogs dialogs;
    dialogs.answerFile("/jobs");
    bench.trigger("UserDir");
    EXPECT_EQ(bench.setting("MainInterface/DefaultPath"), "/jobs");
    dialogs.answerFile({});
    bench.trigger("UserDir");
    EXPECT_EQ(bench.setting("MainInterface/DefaultPath"), "/jobs");
}

TEST(TornvaleMenus, BackgroundIsSetAndStored) {
    WindowBench bench;
    bench.open();
    ExpectedDialogs dialogs;
    dialogs.answerColor(QColor(255, 0, 51));
    bench.trigger("SetBackGroudColor");
    EXPECT_EQ(bench.setting("MainInterface/BackGroundColor"), "1.00 0.00 0.20");
    EXPECT_EQ(bench.window().viewer().background(), QColor(255, 0, 51));
    dialogs.answerColor(std::nullopt);
    bench.trigger("SetBackGroudColor");
    EXPECT_EQ(bench.setting("MainInterface/BackGroundColor"), "1.00 0.00 0.20");
}

TEST(TornvaleMenus, ChainResetOffersMachinesAndRestarts) {
    WindowBench bench;
    bench.open();
    bench.write("machineSample/Other.xml", "<root><a/><machineParameters/></root>");
    bench.write("machineSample/NotAMachine.xml", "<root><a/></root>");
    bench.write("machineSample/Broken.xml", "<root><a");
    bench.write("machineSample/notes.txt", "<machineParameters/>");
    ExpectedDialogs dialogs;
    dialogs.answerChooseItem(QString("machineSample/Other.xml"));
    dialogs.expectTell(Kind::Information, "ResetChain",
                       "Sucessful.\nCurrentChain:machineSample/Other.xml.Will restart ");
    bench.trigger("ResetChain");
    EXPECT_EQ(dialogs.offeredItems(), (QStringList{"machineSample/Other.xml", "machineSample/Small.xml"}));
    EXPECT_EQ(bench.setting("Config/UsedConfig"), "machineSample/Other.xml");
    EXPECT_TRUE(takeRestartRequest());
}

TEST(TornvaleMenus, ACancelledChainResetChangesNothing) {
    WindowBench bench;
    bench.open();
    ExpectedDialogs dialogs;
    dialogs.answerChooseItem(std::nullopt);
    bench.trigger("ResetChain");
    EXPECT_EQ(bench.setting("Config/UsedConfig"), "machineSample/Small.xml");
}

TEST(TornvaleMenus, LanguageAndAboutOpenTheirWindows) {
    WindowBench bench;
    bench.open();
    bench.trigger("Language");
    auto* language = bench.window().findChild<UiLanguage*>();
    ASSERT_NE(language, nullptr);
    EXPECT_TRUE(language->isVisible());
    QTest::keyClick(language, Qt::Key_Escape);
    EXPECT_FALSE(language->isVisible());
    bench.trigger("AboutTornvale");
    auto* about = bench.window().findChild<AboutTornvale*>();
    EXPECT_TRUE(about->isVisible());
    QTest::keyClick(about, Qt::Key_Escape);
    EXPECT_FALSE(about->isVisible());
}

TEST(TornvaleMenus, TheManualIsOpenedOrMissed) {
    WindowBench bench;
    bench.open();
    const OpenedFiles opened;
    {
        ExpectedDialogs dialogs;
        dialogs.expectTell(Kind::Warning, "Help", "The user manual does not exist.");
        bench.trigger("UserManual");
    }
    bench.write("userManual/userManual.docx", "manual");
    bench.trigger("UserManual");
    EXPECT_EQ(opened.paths, QStringList{bench.file("userManual/userManual.docx")});
}

TEST(TornvaleMenus, TheUpdateMessageIsShownOrMissed) {
    WindowBench bench;
    bench.open();
    {
        ExpectedDialogs dialogs;
        dialogs.expectTell(Kind::Warning, "Help", "The description of the update could not be read.");
        bench.trigger("UpdataInstruction");
    }
    bench.write("updateMessage.md", "# New\n\n- a *thing*");
    bench.trigger("UpdataInstruction");
    auto* dialog = bench.window().findChild<QDialog*>("UpdateMessage");
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->findChild<QTextBrowser*>()->toPlainText().contains("a thing"));
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

TEST(TornvaleMenus, PackagesGoOutAndAreTold) {
    WindowBench bench;
    bench.open();
    const QTemporaryDir target;
    ExpectedDialogs dialogs;
    dialogs.answerFile(target.path());
    dialogs.expectTell(Kind::Information, "Export package", "The package was exported to: " + target.path());
    bench.trigger("OneKeyPackaged");
    EXPECT_TRUE(QFile::exists(target.filePath("machineSample/Small.xml")));
    EXPECT_TRUE(QFile::exists(target.filePath("data.ini")));
    dialogs.answerFile({});
    bench.trigger("OneKeyPackaged");
}

TEST(TornvaleMenus, AnImportedPackageReplacesAndRestarts) {
    WindowBench bench;
    bench.open();
    const QTemporaryDir source;
    QDir(source.path()).mkpath("machineSample");
    QFile file(source.filePath("machineSample/New.xml"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("new");
    file.close();
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);
    dialogs.answerFile(source.path());
    bench.trigger("ImportFeedback");
    EXPECT_TRUE(QFile::exists(bench.file("machineSample/New.xml")));
    EXPECT_TRUE(takeRestartRequest());
}

TEST(TornvaleMenus, ImportWithABackupExportsFirst) {
    WindowBench bench;
    bench.open();
    const QTemporaryDir backup;
    const QTemporaryDir empty;
    ExpectedDialogs dialogs;
    dialogs.answerAsk(true);
    dialogs.answerFile(backup.path());
    dialogs.expectTell(Kind::Information, "Export package", "The package was exported to: " + backup.path());
    dialogs.answerFile(empty.path());
    bench.trigger("ImportFeedback");
    EXPECT_TRUE(QFile::exists(backup.filePath("toollib.json")));
    EXPECT_TRUE(takeRestartRequest()) << "also when nothing was copied";
}

TEST(TornvaleMenus, ACancelledImportDoesNotRestart) {
    WindowBench bench;
    bench.open();
    ExpectedDialogs dialogs;
    dialogs.answerAsk(false);
    dialogs.answerFile({});
    bench.trigger("ImportFeedback");
}

TEST(TornvaleMenus, SavedCameraComesBack) {
    WindowBench bench;
    MachineScene& scene = bench.open().viewer().scene();
    bench.trigger("Admin");
    bench.trigger("PersonalView");
    const QString personal = scene.cameraText();
    EXPECT_TRUE(personal.contains("position 2807.2527 -2896.792 409.22067")) << personal.toStdString();
    bench.trigger("OutCamera");
    EXPECT_TRUE(scene.setCameraText("position 0 0 9\nheightAngle 0.5"));
    bench.trigger("InputCamera");
    EXPECT_EQ(scene.cameraText(), personal);
}

TEST(TornvaleMenus, LoadingACameraWithoutAFileDoesNothing) {
    WindowBench bench;
    MachineScene& scene = bench.open().viewer().scene();
    const QString before = scene.cameraText();
    bench.trigger("InputCamera");
    EXPECT_EQ(scene.cameraText(), before);
}

TEST(TornvaleMenus, AMarkerIsAddedWhereItWasTyped) {
    WindowBench bench;
    MachineScene& scene = bench.open().viewer().scene();
    const auto markers = [&scene] {
        return dynamic_cast<SoSeparator*>(scene.root()->getChild(scene.root()->getNumChildren() - 1));
    };
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<AddPointDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QString::fromUtf8("输入坐标"));
        const QList<QLineEdit*> edits = dialog->findChildren<QLineEdit*>();
        ASSERT_EQ(edits.size(), 3);
        EXPECT_EQ(edits[0]->text(), "0.0");
        edits[0]->selectAll();
        QTest::keyClicks(edits[0], "12.5");
        EXPECT_EQ(dialog->place(), SbVec3f(12.5F, 0, 0));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    bench.trigger("AddPoint");
    ASSERT_EQ(markers()->getNumChildren(), 1);
    EXPECT_NE(dynamic_cast<pointShape*>(markers()->getChild(0)), nullptr);
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    bench.trigger("AddPoint");
    EXPECT_EQ(markers()->getNumChildren(), 1);
}

#include "TornvaleMenusTest.moc"

#include "app/Tornvale.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenuBar>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <functional>
#include <iostream>
#include <utility>

#include "WindowTestSupport.h"
#include "app/MachineScene.h"
#include "app/MachineViewer.h"
#include "machine/AxisBase.h"
#include "machine/MotionNodeManager.h"
#include "nc/HeaderTailEditor.h"
#include "nc/myTimer.h"
#include "tools/ToolManager.h"

namespace {

/// Writes a box to standard error, for a process that does not come back.
class PrintedDialogs final : public UserDialogs {
  public:
    PrintedDialogs() { setUserDialogs(this); }
    void tell(Kind kind, const QString& title, const QString& text, QWidget* /*parent*/) override {
        std::cerr << static_cast<int>(kind) << '|' << title.toStdString() << '|' << text.toStdString()
                  << '\n';
    }
};

QStringList tabTexts(const QTabWidget& tabs) {
    QStringList texts;
    for (int i = 0; i < tabs.count(); ++i)
        texts.append(tabs.tabText(i));
    return texts;
}

QTabWidget& tabsOf(Tornvale& window) {
    return *window.findChild<QDockWidget*>("ProgramDockWidget")->findChild<QTabWidget*>();
}

}  // namespace

TEST(Tornvale, HasItsNameTitleAndTabs) {
    WindowBench bench;
    Tornvale& window = bench.open();
    EXPECT_EQ(window.objectName(), "StandardCorvane_4S");
    EXPECT_EQ(window.windowTitle(), "Tornvale - 3.3.0.5");
    EXPECT_TRUE(window.acceptDrops());
    EXPECT_EQ(tabTexts(tabsOf(window)),
              (QStringList{"Programs", "Tools", "Machine", "Spindles", "Job information"}));
    EXPECT_EQ(tabsOf(window).currentIndex(), 0);
    EXPECT_EQ(tabsOf(window).tabPosition(), QTabWidget::West);
    EXPECT_EQ(window.mode(), 0);
}

TEST(Tornvale, LogsItsStepsInOrder) {
    WindowBench bench;
    const LogCapture log;
    bench.open();
    QStringList steps;
    for (const LogCapture::Line& line : log.lines()) {
        if (line.text.startsWith("Main window: "))
            steps.append(line.text.section('.', 0, 0));
    }
    EXPECT_EQ(steps, (QStringList{"Main window: machine configuration read", "Main window: docks made",
                                  "Main window: 3D view made", "Main window: tabs and menus made"}));
}

TEST(Tornvale, TabPositionAndDockAreaComeFromTheSettings) {
    struct Case {
        const char* tabs;
        QTabWidget::TabPosition position;
        const char* dock;
        Qt::DockWidgetArea area;
    };
    // The numbers of the dock are the settings file's own: 2 is the top and 8 the right.
    for (const Case& row : {Case{"West", QTabWidget::West, "1", Qt::LeftDockWidgetArea},
                            Case{"East", QTabWidget::East, "2", Qt::TopDockWidgetArea},
                            Case{"South", QTabWidget::South, "4", Qt::BottomDockWidgetArea},
                            Case{"North", QTabWidget::North, "8", Qt::RightDockWidgetArea},
                            Case{"middle", QTabWidget::West, "3", Qt::LeftDockWidgetArea}}) {
        WindowBench bench;
        bench.settings(QByteArray("TabPosition=") + row.tabs + "\nDockWidgetArea=" + row.dock + '\n');
        Tornvale& window = bench.open();
        EXPECT_EQ(tabsOf(window).tabPosition(), row.position) << row.tabs;
        EXPECT_EQ(window.dockWidgetArea(window.findChild<QDockWidget*>("ProgramDockWidget")), row.area)
            << row.dock;
    }
}

TEST(Tornvale, AWrongDockAreaIsTheLeft) {
    WindowBench bench;
    bench.settings("DockWidgetArea=77\n");
    Tornvale& window = bench.open();
    EXPECT_EQ(window.dockWidgetArea(window.findChild<QDockWidget*>("ProgramDockWidget")),
              Qt::LeftDockWidgetArea);
}

TEST(Tornvale, BackgroundComesFromTheSettings) {
    WindowBench bench;
    bench.settings("BackGroundColor=0.5 0.25 1.0\n");
    const QColor color = bench.open().viewer().background();
    EXPECT_NEAR(color.redF(), 0.5, 0.01);
    EXPECT_NEAR(color.greenF(), 0.25, 0.01);
    EXPECT_NEAR(color.blueF(), 1.0, 0.01);
    bench.discardWindow();
    bench.settings("BackGroundColor=red 7 nan\n");
    EXPECT_EQ(bench.open().viewer().background(), QColor(0, 255, 0));
    bench.discardWindow();
    bench.settings("BackGroundColor=0.5 0.5\n");
    EXPECT_EQ(bench.open().viewer().background(), QColor(Qt::white)) << "not a colour set by half";
}

TEST(Tornvale, WithoutOpenGlTheViewSaysSo) {
    WindowBench bench;
    Tornvale& window = bench.open();
    window.show();
    EXPECT_FALSE(window.viewer().hasViewer());
    EXPECT_TRUE(window.viewer().findChild<QLabel*>()->text().startsWith("This display has no OpenGL"));
}

TEST(Tornvale, MenusStandInTheirOrderWithIconsAndShortcuts) {
    WindowBench bench;
    Tornvale& window = bench.open();
    QStringList titles;
    for (const QAction* action : window.menuBar()->actions())
        titles.append(action->text());
    EXPECT_EQ(titles, (QStringList{"&File", "&Settings", "&Operation", "&Help"}));
    EXPECT_EQ(bench.action("New")->shortcut(), QKeySequence(QKeySequence::New));
    EXPECT_EQ(bench.action("Open")->shortcut(), QKeySequence(QKeySequence::Open));
    EXPECT_EQ(bench.action("Save")->shortcut(), QKeySequence(QKeySequence::Save));
    EXPECT_EQ(bench.action("SaveAs")->shortcut(), QKeySequence("Ctrl+Shift+S"));
    EXPECT_EQ(bench.action("SaveAs")->text(), "Save &as");
    EXPECT_EQ(bench.action("SaveAs")->toolTip(), "Save as");
    EXPECT_EQ(bench.action("Quit")->shortcut(), QKeySequence(QKeySequence::Quit));
    EXPECT_EQ(bench.action("AboutTornvale")->shortcut(), QKeySequence(QKeySequence::HelpContents));
    for (const QMenu* menu : window.findChildren<QMenu*>()) {
        for (const QAction* action : menu->actions())
            EXPECT_FALSE(action->text().isEmpty()) << action->objectName().toStdString();
    }
}

TEST(Tornvale, EachShortcutHasOneCommandOnly) {
    WindowBench bench;
    QMap<QString, QString> owners;
    for (const QAction* action : bench.open().findChildren<QAction*>()) {
        const QString key = action->shortcut().toString();
        if (key.isEmpty())
            continue;
        EXPECT_FALSE(owners.contains(key)) << key.toStdString() << ": " << owners[key].toStdString()
                                           << " and " << action->objectName().toStdString();
        owners.insert(key, action->objectName());
    }
    EXPECT_EQ(owners.value("Ctrl+N"), "New");
}

TEST(Tornvale, TheDockLeavesTheLargerPartToTheView) {
    WindowBench bench;
    Tornvale& window = bench.open();
    window.show();
    QCoreApplication::processEvents();
    const auto* dock = window.findChild<QDockWidget*>("ProgramDockWidget");
    EXPECT_EQ(dock->width(), qBound(400, window.screen()->availableGeometry().width() / 3, 640));
    EXPECT_LT(dock->width(), window.viewer().width());
}

TEST(Tornvale, WhatTheUserCannotWriteInTheJobLooksSo) {
    WindowBench bench;
    Tornvale& window = bench.open();
    const auto paper = [&window](const char* name) {
        return window.findChild<QLineEdit*>(name)->palette().color(QPalette::Base);
    };
    EXPECT_EQ(paper("CreatedTime"), paper("LeftHandTime"));
    EXPECT_NE(paper("CreatedTime"), paper("PartName"));
}

TEST(Tornvale, AdminShowsTheDebugPartsAndIsOffAtFirst) {
    WindowBench bench;
    Tornvale& window = bench.open();
    window.show();
    const QTabWidget& tabs = tabsOf(window);
    auto* debugBar = window.findChild<QToolBar*>("DebugToolBar");
    EXPECT_FALSE(tabs.isTabVisible(2));
    EXPECT_FALSE(tabs.isTabEnabled(2)) << "a turn of the wheel over the tabs must not reach it";
    EXPECT_FALSE(debugBar->isVisible());
    bench.trigger("Admin");
    EXPECT_TRUE(tabs.isTabVisible(2));
    EXPECT_TRUE(tabs.isTabEnabled(2));
    EXPECT_TRUE(debugBar->isVisible());
    EXPECT_EQ(window.menuBar()->actions().last()->text(), "&Debug");
    bench.trigger("Admin");
    EXPECT_FALSE(tabs.isTabVisible(2));
    EXPECT_FALSE(debugBar->isVisible());
    EXPECT_EQ(window.menuBar()->actions().last()->text(), "&Help");
}

TEST(Tornvale, TheViewsSwitchTheMode) {
    WindowBench bench;
    Tornvale& window = bench.open();
    auto* bar = window.findChild<QToolBar*>("SharedToolBar");
    EXPECT_TRUE(bar->isHidden());
    EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    ASSERT_EQ(bar->actions().size(), 2);
    EXPECT_EQ(bar->actions()[0]->text(), "Optimal");
    EXPECT_EQ(bar->actions()[1]->text(), "CAM");
    bar->actions()[1]->trigger();
    EXPECT_EQ(window.mode(), 1);
    bar->actions()[0]->trigger();
    EXPECT_EQ(window.mode(), 0);
    EXPECT_EQ(window.toolBarArea(bar), Qt::RightToolBarArea);
}

TEST(Tornvale, TheStatusBarShowsTheLine) {
    WindowBench bench;
    Tornvale& window = bench.open();
    window.machine().executeLine("X12");
    window.machine().executeLine("X13 <b>");
    auto* label = window.findChild<QLabel*>("LineLabel");
    EXPECT_TRUE(QTest::qWaitFor([label] { return label->text() == "X13 <b>"; }, 5000));
    EXPECT_NEAR(window.machine().findAxis("X")->currentValue(), 13, 1e-5);
}

TEST(Tornvale, ShippedCameraIsTaken) {
    WindowBench bench;
    bench.write("camera.txt", "position 1 2 3");
    EXPECT_TRUE(bench.open().viewer().scene().cameraText().contains("position 1 2 3"));
}

TEST(Tornvale, AnUnreadableCameraLeavesTheView) {
    WindowBench bench;
    bench.open();
    const QString whole = bench.window().viewer().scene().cameraText();
    bench.discardWindow();
    bench.write("camera.txt", QByteArray("\xff\xfe position nan", 15));
    const LogCapture log;
    EXPECT_EQ(bench.open().viewer().scene().cameraText(), whole);
    EXPECT_TRUE(log.contains("camera.txt"));
}

TEST(Tornvale, BrokenMachine_IsToldAndEndsWithStatus1) {
    WindowBench bench;
    bench.write("machineSample/Small.xml", "<root");
    EXPECT_EXIT(
        {
            const PrintedDialogs dialogs;
            const LogCapture log;
            const Tornvale window(bench.file("machineSample/Small.xml"));
        },
        ::testing::ExitedWithCode(1), "1\\|Fatal\\|The machine file has errors");
}

TEST(Tornvale, AMachineOfUnknownNamesStillOpens) {
    WindowBench bench;
    QByteArray machine = QByteArray();
    {
        QFile file(bench.file("machineSample/Small.xml"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        machine = file.readAll();
    }
    machine.replace("<kinematicChain><chain>X->C</chain></kinematicChain></machineParameters>",
                    "<kinematicChain><chain>Q->R;X->Q->C</chain></kinematicChain></machineParameters>");
    machine.replace("<parent>X->C</parent>", "<parent>Nowhere</parent>");
    bench.write("machineSample/Small.xml", machine);
    const LogCapture log;
    Tornvale& window = bench.open();
    EXPECT_TRUE(log.contains("The carrier of the spindle was not found."));
    window.machine().executeLine("X5 C30");
    EXPECT_NEAR(window.machine().findAxis("X")->currentValue(), 5, 1e-5);
}

TEST(Tornvale, AContactStandsInTheStatusBarUntilItIsGone) {
    WindowBench bench;
    Tornvale& window = bench.open();
    MotionNodeManager& machine = window.machine();
    const auto* label = window.findChild<QLabel*>("ContactLabel");
    ASSERT_NE(label, nullptr);
    const auto isCleared = [label] {
        return QTest::qWaitFor([label] { return label->text().isEmpty(); }, 20000);
    };
    const LogCapture log;
    Q_EMIT machine.contactFound({"X", "C"}, {"Table"});
    EXPECT_TRUE(label->text().contains("X->C")) << label->text().toStdString();
    EXPECT_TRUE(label->text().contains("Table"));
    machine.ResetCollided();  // as before each pass
    Q_EMIT machine.contactFound({"X", "C"}, {"Table"});
    EXPECT_EQ(log.count("X->C"), 1) << "the same contact is one line of the log";
    machine.ResetCollided();
    EXPECT_TRUE(isCleared());
}

TEST(Tornvale, AContactGoesWithTheRunThatHadIt) {
    WindowBench bench;
    Tornvale& window = bench.open();
    const auto* label = window.findChild<QLabel*>("ContactLabel");
    TORNVALE::myTimer& playback = TORNVALE::myTimer::instance();
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"new program", [&] { playback.SetAnimationText("X1\nX2\nX3"); }},
        {"reset",
         [&] { QTest::mouseClick(playback.findChild<QAbstractButton*>("ResetButton"), Qt::LeftButton); }},
        {"closed", [&] { playback.close(); }},
        {"free line", [&] { window.machine().executeLine("X7"); }},
        {"collision check off", [&] { window.machine().switchCollision(false); }},
        {"new job",
         [&] {
             ExpectedDialogs dialogs;
             dialogs.answerAsk(false);
             bench.trigger("New");
         }},
    };
    for (const auto& [name, end] : ends) {
        Q_EMIT window.machine().contactFound({"X"}, {"Table"});
        ASSERT_FALSE(label->text().isEmpty()) << name;
        end();
        EXPECT_TRUE(QTest::qWaitFor([label] { return label->text().isEmpty(); }, 20000)) << name;
    }
}

TEST(Tornvale, ClosingTakesEveryFreeWindowAlong) {
    WindowBench bench;
    Tornvale& window = bench.open();
    window.show();
    TORNVALE::HeaderTailEditor& editor = TORNVALE::HeaderTailEditor::instance();
    editor.show();
    TORNVALE::myTimer::instance().show();
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(editor.isVisible());
    EXPECT_FALSE(TORNVALE::myTimer::instance().isVisible());
}

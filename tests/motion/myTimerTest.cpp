#include "nc/myTimer.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QCursor>
#include <QSignalSpy>
#include <QTest>

#include "machine/AxisBase.h"
#include "motion/MotionTestSupport.h"

// Ticks are made by hand where the order of things matters; the timer itself runs in a few tests only.

namespace {

struct Bench : SmallMachine {
    Bench() {
        build();
        window = std::make_unique<TORNVALE::myTimer>();
        played = std::make_unique<QSignalSpy>(&manager(), &MotionNodeManager::showCommandString);
    }
    void load(int lines) {
        QString text;
        for (int i = 0; i < lines; ++i)
            text += QStringLiteral("X%1\n").arg(i);
        window->SetAnimationText(text);
    }
    QAbstractButton* button(const char* name) {
        return window->findChild<QAbstractButton*>(QString::fromLatin1(name));
    }
    void click(const char* name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    mySlider* slider() { return window->findChild<mySlider*>(); }
    QStringList lines() {
        QStringList all;
        for (const QList<QVariant>& line : *played)
            all.append(line.first().toString());
        return all;
    }
    double x() { return manager().findAxis("X")->currentValue(); }

    std::unique_ptr<TORNVALE::myTimer> window;
    std::unique_ptr<QSignalSpy> played;
};

}  // namespace

TEST(myTimer, LooksAsAToolWindowThatStaysOnTop) {
    Bench bench;
    EXPECT_EQ(bench.window->objectName(), "myTimer");
    EXPECT_EQ(bench.window->windowTitle(), "Playback");
    EXPECT_TRUE(bench.window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(bench.window->windowFlags() & Qt::WindowType_Mask, Qt::Tool);
    for (const char* name :
         {"PlayButton", "ResetButton", "ForwardButton", "BackwardButton", "LoopButton", "StopOnCollised"}) {
        ASSERT_NE(bench.button(name), nullptr) << name;
        EXPECT_EQ(bench.button(name)->iconSize(), QSize(45, 45)) << name;
        EXPECT_FALSE(bench.button(name)->toolTip().isEmpty()) << name;
        EXPECT_EQ(bench.button(name)->whatsThis(), bench.button(name)->toolTip()) << name;
    }
    EXPECT_TRUE(bench.button("LoopButton")->isChecked());
    EXPECT_TRUE(bench.button("StopOnCollised")->isChecked());
    EXPECT_FALSE(bench.button("PlayButton")->isCheckable());
    EXPECT_EQ(bench.button("StopOnCollised")->styleSheet(),
              "QCheckBox::indicator { width: 25px; height: 25px; }");
    EXPECT_EQ(bench.window->step(), 1);
}

TEST(myTimer, ATextBringsTheMachineHomeAndSetsTheRange) {
    Bench bench;
    bench.manager().executeLine("X77");
    bench.window->SetAnimationText("X1\n\nX2\n\n\nX3");
    EXPECT_NEAR(bench.x(), 0, 1e-6);
    EXPECT_EQ(bench.window->lineCount(), 3);
    EXPECT_EQ(bench.slider()->minimum(), 0);
    EXPECT_EQ(bench.slider()->maximum(), 2);
    bench.window->SetAnimationText("");
    EXPECT_EQ(bench.window->lineCount(), 0);
    EXPECT_EQ(bench.slider()->maximum(), 0);
}

TEST(myTimer, TicksPlayLineByLineAndLeaveTheLastOut) {
    Bench bench;
    bench.load(4);
    bench.window->tick();
    EXPECT_EQ(bench.slider()->value(), 1);
    bench.window->tick();
    EXPECT_EQ(bench.slider()->value(), 2);
    bench.window->tick();
    EXPECT_EQ(bench.slider()->value(), 0);
    EXPECT_EQ(TORNVALE::myTimer::currentLine(), 0);
    EXPECT_EQ(bench.lines(), (QStringList{"X0", "X1", "X2"}));
}

TEST(myTimer, AProgramOfOneLineEndsAtOnce) {
    Bench bench;
    bench.load(1);
    EXPECT_EQ(bench.slider()->maximum(), 0);
    bench.button("LoopButton")->setChecked(false);
    bench.click("PlayButton");
    EXPECT_TRUE(bench.window->isPlaying());
    bench.window->tick();
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_EQ(TORNVALE::myTimer::currentLine(), 0);
}

TEST(myTimer, WithoutLinesPlayDoesNothing) {
    Bench bench;
    bench.window->SetAnimationText("");
    bench.click("PlayButton");
    EXPECT_FALSE(bench.window->isPlaying());
    bench.window->tick();
    EXPECT_EQ(bench.played->count(), 0);
}

TEST(myTimer, LoopGoesOnAndWithoutLoopTheTimerStopsAtTheStart) {
    Bench bench;
    bench.load(2);
    bench.click("PlayButton");
    bench.window->tick();
    EXPECT_TRUE(bench.window->isPlaying());
    bench.click("LoopButton");
    bench.window->tick();
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_EQ(bench.slider()->value(), 0);
}

TEST(myTimer, PlayAndPauseKeepTheLine) {
    Bench bench;
    bench.load(50);
    bench.click("PlayButton");
    EXPECT_TRUE(bench.window->isPlaying());
    bench.window->tick();
    bench.window->tick();
    bench.click("PlayButton");
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_EQ(TORNVALE::myTimer::currentLine(), 2);
}

TEST(myTimer, SpaceOnTheButtonPlays) {
    Bench bench;
    bench.load(50);
    bench.button("PlayButton")->setFocus();
    QTest::keyClick(bench.button("PlayButton"), Qt::Key_Space);
    EXPECT_TRUE(bench.window->isPlaying());
}

TEST(myTimer, TheTimerPlaysByItself) {
    Bench bench;
    bench.load(100000);
    bench.click("PlayButton");
    EXPECT_TRUE(QTest::qWaitFor([&bench] { return bench.played->count() > 20; }, 10000));
}

TEST(myTimer, StepsGoFromOneToTen) {
    Bench bench;
    bench.load(100);
    bench.click("BackwardButton");
    EXPECT_EQ(bench.window->step(), 1);
    for (int i = 0; i < 12; ++i)
        bench.click("ForwardButton");
    EXPECT_EQ(bench.window->step(), 10);
    bench.window->tick();
    bench.window->tick();
    EXPECT_EQ(bench.lines(), (QStringList{"X0", "X10"}));
    bench.click("BackwardButton");
    EXPECT_EQ(bench.window->step(), 9);
}

TEST(myTimer, ResetGoesHomeAndLeavesStepTwo) {
    Bench bench;
    bench.load(100);
    bench.click("PlayButton");
    for (int i = 0; i < 5; ++i)
        bench.window->tick();
    bench.click("ResetButton");
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_EQ(bench.window->step(), 2);
    EXPECT_EQ(TORNVALE::myTimer::currentLine(), 0);
    EXPECT_EQ(bench.slider()->value(), 0);
    EXPECT_NEAR(bench.x(), 0, 1e-6);
}

TEST(myTimer, GrabbingTheSliderPausesAndScrubs) {
    Bench bench;
    bench.load(100);
    bench.window->resize(400, 120);
    bench.window->show();
    bench.slider()->setValue(7);
    EXPECT_EQ(bench.played->count(), 0) << "not connected before it is held";
    bench.click("PlayButton");
    QTest::mousePress(bench.slider(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_FALSE(bench.window->isPlaying());
    bench.slider()->setValue(42);
    EXPECT_EQ(TORNVALE::myTimer::currentLine(), 42);
    EXPECT_NEAR(bench.x(), 42, 1e-4);
    QTest::mouseRelease(bench.slider(), Qt::LeftButton);
    bench.click("PlayButton");
    bench.played->clear();
    bench.slider()->setValue(3);
    EXPECT_EQ(bench.played->count(), 0) << "playing disconnects it";
}

TEST(myTimer, ArrowKeysOnTheSliderScrubToo) {
    Bench bench;
    bench.load(100);
    QTest::keyClick(bench.slider(), Qt::Key_Right);
    EXPECT_EQ(TORNVALE::myTimer::currentLine(), 1);
    EXPECT_EQ(bench.lines(), QStringList{"X1"});
}

TEST(myTimer, ADelayPausesAndThenJumpsTenLines) {
    Bench bench;
    QString text = QStringLiteral("X0\n(DLY,5000)\n");
    for (int i = 2; i < 40; ++i)
        text += QStringLiteral("X%1\n").arg(i);
    bench.window->SetAnimationText(text);
    bench.click("PlayButton");
    bench.window->tick();
    bench.window->tick();
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_EQ(bench.slider()->value(), 1);
    EXPECT_EQ(bench.lines(), QStringList{"X0"}) << "the delay itself is not played";
    // Grabbing the slider meanwhile does not keep the shot from starting the timer again.
    QTest::mousePress(bench.slider(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    QTest::mouseRelease(bench.slider(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    const int held = TORNVALE::myTimer::currentLine();
    EXPECT_TRUE(QTest::qWaitFor([&bench] { return bench.window->isPlaying(); }, 10000));
    EXPECT_GE(TORNVALE::myTimer::currentLine(), held + 10);
}

TEST(myTimer, ADelayAmongTheLastLinesEndsTheProgram) {
    Bench bench;
    bench.window->SetAnimationText("X0\nX1\n(DLY,1)\nX3");
    bench.button("LoopButton")->setChecked(false);
    bench.click("PlayButton");
    for (int i = 0; i < 3; ++i)
        bench.window->tick();
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_TRUE(QTest::qWaitFor([] { return TORNVALE::myTimer::currentLine() == 0; }, 10000));
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_EQ(bench.slider()->value(), 0);
}

TEST(myTimer, AProgramOfDelaysEnds) {
    Bench bench;
    bench.window->SetAnimationText("(DLY,1)");
    bench.button("LoopButton")->setChecked(false);
    bench.click("PlayButton");
    bench.window->tick();
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_TRUE(QTest::qWaitFor([&bench] { return bench.played->count() == 1; }, 10000));
    EXPECT_FALSE(bench.window->isPlaying());
}

TEST(myTimer, ResetDuringADelayEndsIt) {
    Bench bench;
    bench.window->SetAnimationText("X0\n(DLY,1)\nX2\nX3");
    bench.click("PlayButton");
    bench.window->tick();
    bench.window->tick();
    bench.click("ResetButton");
    QTest::qWait(1200);
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_EQ(TORNVALE::myTimer::currentLine(), 0);
}

TEST(myTimer, ClosingIsAFullReset) {
    Bench bench;
    bench.load(100);
    bench.window->show();
    bench.click("PlayButton");
    for (int i = 0; i < 5; ++i)
        bench.window->tick();
    bench.manager().markCollided({"Y"});
    bench.window->close();
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_EQ(bench.window->step(), 2);
    EXPECT_EQ(TORNVALE::myTimer::currentLine(), 0);
    EXPECT_NEAR(bench.x(), 0, 1e-6);
    EXPECT_TRUE(bench.manager().collidedNodes().isEmpty());
}

TEST(myTimer, ShowsWithThePlayButtonUnderTheMouse) {
    Bench bench;
    bench.window->show();
    const QPoint centre = bench.button("PlayButton")->mapTo(bench.window.get(), QPoint(0, 0)) +
                          bench.button("PlayButton")->rect().center();
    EXPECT_LE((bench.window->pos() + centre - QCursor::pos()).manhattanLength(), 4);
}

TEST(myTimer, AContactStopsItWhenTheBoxIsChecked) {
    Bench bench;
    bench.window->SetAnimationText("Z0\nZ-100\nZ-395\nZ-396\nZ-397\nZ-398\nZ-399");
    bench.click("PlayButton");
    for (int i = 0; i < 3; ++i)
        bench.window->tick();
    EXPECT_FALSE(bench.window->isPlaying());
    EXPECT_TRUE(bench.button("StopOnCollised")->isChecked());
    EXPECT_FALSE(bench.manager().collidedNodes().isEmpty());
    bench.click("PlayButton");
    bench.button("StopOnCollised")->setChecked(false);
    bench.window->tick();
    EXPECT_TRUE(bench.window->isPlaying());
    EXPECT_EQ(bench.lines().last(), "Z-396");
}

TEST(myTimer, NoLineIsPlayedWhileAButtonThatStopsIsHeldDown) {
    Bench bench;
    bench.load(20);
    bench.click("PlayButton");
    for (const char* name : {"PlayButton", "ResetButton"}) {
        QTest::mousePress(bench.button(name), Qt::LeftButton);
        const int before = TORNVALE::myTimer::currentLine();
        bench.window->tick();
        EXPECT_EQ(TORNVALE::myTimer::currentLine(), before) << name;
        QTest::mouseRelease(bench.button(name), Qt::LeftButton, {}, QPoint(-5, -5));  // thought better of it
        EXPECT_TRUE(bench.window->isPlaying()) << name;
        bench.window->tick();
        EXPECT_EQ(TORNVALE::myTimer::currentLine(), before + 1) << name;
    }
}

TEST(myTimer, ContactsAreForgottenWithTheRunThatHadThem) {
    Bench bench;
    const QString touching = QStringLiteral("Z0\nZ-100\nZ-395\nZ-396\nZ-397\nZ-398\nZ-399");
    for (const bool isReset : {true, false}) {
        bench.window->SetAnimationText(touching);
        for (int i = 0; i < 3; ++i)
            bench.window->tick();
        ASSERT_FALSE(bench.manager().collidedNodes().isEmpty());
        if (isReset)
            bench.click("ResetButton");
        else
            bench.window->SetAnimationText("Z0\nZ1");
        EXPECT_TRUE(bench.manager().collidedNodes().isEmpty()) << isReset;
    }
}

TEST(myTimer, OpensAFileWhereTheSettingAllowsIt) {
    Bench bench;
    EXPECT_EQ(bench.button("OpenButton"), nullptr);
    bench.installation.write("data.ini", "[DebugFunction]\nIsAllowReadIsoCode=true\n");
    bench.window.reset();
    bench.window = std::make_unique<TORNVALE::myTimer>();
    bench.installation.write("a.nc", "X5\nX6\nX7\n");
    ASSERT_NE(bench.button("OpenButton"), nullptr);
    {
        ExpectedDialogs dialogs;
        dialogs.answerFile(bench.installation.file("a.nc"));
        bench.click("OpenButton");
    }
    EXPECT_EQ(bench.window->lineCount(), 3);
    EXPECT_TRUE(bench.window->isPlaying());
    bench.window->stop();
    {
        ExpectedDialogs dialogs;
        dialogs.answerFile(bench.installation.file("missing.nc"));
        const LogCapture log;
        bench.click("OpenButton");
        EXPECT_EQ(log.count("Failed to open file: "), 1);
    }
    EXPECT_EQ(bench.window->lineCount(), 3);
}

TEST(myTimer, AMillionLinesLoad) {
    Bench bench;
    bench.load(1000000);
    EXPECT_EQ(bench.window->lineCount(), 1000000);
    EXPECT_EQ(bench.slider()->maximum(), 999999);
}

TEST(myTimer, TellsTheMachineWhoPlaysAndTakesItselfOut) {
    Bench bench;
    EXPECT_EQ(bench.manager().playback(), bench.window.get());
    bench.window.reset();
    EXPECT_EQ(bench.manager().playback(), nullptr);
}

TEST(myTimer, WithoutAMachineNothingHappens) {
    NodesInstallation installation;
    TORNVALE::myTimer window;
    window.SetAnimationText("X1\nX2\nX3");
    window.tick();
    window.show();
    window.close();
    EXPECT_EQ(TORNVALE::myTimer::currentLine(), 0);
}

#include "nc/commandProcessor.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QSignalSpy>

#include "machine/SpindleClass.h"
#include "machine/SpindleStatusWidget.h"
#include "motion/MotionTestSupport.h"

namespace {

struct Machine : SmallMachine {
    Machine() {
        build();
        changed = std::make_unique<QSignalSpy>(&processor(), &CommandProcessor::updateCollisionObject);
    }
    CommandProcessor& processor() { return manager().commandProcessor(); }
    AxisBase& axis(const char* name) { return *manager().findAxis(QString::fromLatin1(name)); }
    SpindleNode& spindle(int number) { return *manager().findSpindle(number); }
    void stopSetting(const QByteArray& value) const {
        installation.write("data.ini", "[MotionNode]\nStopWhenTheSpindleStatusChanges=" + value + "\n");
    }
    std::unique_ptr<QSignalSpy> changed;
};

}  // namespace

TEST(CommandProcessor, ALetterWordMovesItsAxis) {
    Machine machine;
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("X12.5")));
    EXPECT_NEAR(machine.axis("X").currentValue(), 12.5, 1e-5);
    EXPECT_NEAR(machine.axis("Z").currentValue(), 0, 1e-9);
}

TEST(CommandProcessor, UnknownWordsDoNothing) {
    Machine machine;
    for (const char* word : {"", "F7000", "T3", "G1", "?", "x5", "X"})
        EXPECT_FALSE(machine.processor().ProcessWord(QString::fromLatin1(word))) << word;
    EXPECT_NEAR(machine.axis("X").currentValue(), 0, 1e-9);
}

TEST(CommandProcessor, MapsHoldAxesSpindlesAndToolChanges) {
    Machine machine;
    const QMap<QString, SoNode*>& map = machine.processor().commandMap();
    EXPECT_EQ(map.value("X"), &machine.axis("X"));
    EXPECT_EQ(map.value("M3"), &machine.spindle(1));
    EXPECT_EQ(map.value("M5"), &machine.spindle(1));
    EXPECT_EQ(map.value("M8"), &machine.spindle(1));
    EXPECT_EQ(map.value("M13"), &machine.spindle(2));
    EXPECT_EQ(machine.processor().toolChangeCommandMap().keys(), QStringList{"M6"});
    EXPECT_EQ(machine.processor().toolChangeCommandMap().value("M6"), &machine.spindle(1));
}

TEST(CommandProcessor, ALaterEntryReplacesTheFormer) {
    Machine machine;
    machine.processor().addCommandMap({{"X", &machine.axis("Z")}});
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("X7")));
    EXPECT_NEAR(machine.axis("X").currentValue(), 0, 1e-9);
    EXPECT_NEAR(machine.axis("Z").currentValue(), 7, 1e-5);
    machine.processor().addCommandMap({{"X", &machine.spindle(1)}});
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("X9")));
    EXPECT_NEAR(machine.axis("Z").currentValue(), 7, 1e-5);
}

TEST(CommandProcessor, ToolChangeEntriesAreLogged) {
    const LogCapture log;
    Machine machine;
    EXPECT_TRUE(log.contains("key:"));
    EXPECT_TRUE(log.contains("\tvalue:") || log.contains("\\tvalue:"));
}

TEST(CommandProcessor, ASpindleCommandReachesItsSpindle) {
    Machine machine;
    machine.stopSetting("false");
    CountingPlayback playback;
    machine.manager().setPlayback(&playback);
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("M3 S18000")));
    EXPECT_EQ(machine.spindle(1).statusWidget()->findChild<QLineEdit*>("Rpm")->text(), "18000");
    EXPECT_EQ(playback.stops, 0);
}

TEST(CommandProcessor, ASpindleCommandStopsThePlaybackWhenTheSettingAndTheButtonSaySo) {
    Machine machine;
    machine.stopSetting("true");
    CountingPlayback playback;
    machine.manager().setPlayback(&playback);
    {
        const LogCapture log;
        machine.processor().ProcessWord(QStringLiteral("M3 S100"));
        EXPECT_EQ(log.count("StopAnimationWhenSpindleStatusChanges."), 1);
    }
    EXPECT_EQ(playback.stops, 1);
    playback.wanted = false;
    machine.processor().ProcessWord(QStringLiteral("M3 S200"));
    EXPECT_EQ(playback.stops, 1);
    EXPECT_EQ(machine.spindle(1).statusWidget()->findChild<QLineEdit*>("Rpm")->text(), "200");
    machine.stopSetting("yes");
    playback.wanted = true;
    machine.processor().ProcessWord(QStringLiteral("M5"));
    EXPECT_EQ(playback.stops, 1) << "only the text true counts";
}

TEST(CommandProcessor, AToolChangeNeedsBothWordsOnOneLine) {
    Machine machine;
    ToolData three = cylinderTool(1, 3);
    machine.processor().UpdateToolList({&three});
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("M6")));
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("T3")));
    EXPECT_EQ(machine.spindle(1).tool().record().toolNo, 0);
    EXPECT_TRUE(machine.processor().ProcessWord(QStringLiteral("M6 T3")));
    EXPECT_EQ(machine.spindle(1).tool().record().toolNo, 3);
    EXPECT_NE(machine.spindle(1).collisionObject(), nullptr);
}

TEST(CommandProcessor, AnUnknownToolLeavesTheMountedOneAndStillUpdates) {
    Machine machine;
    ToolData three = cylinderTool(1, 3);
    machine.processor().UpdateToolList({&three});
    machine.processor().ProcessWord(QStringLiteral("M6 T3"));
    machine.changed->clear();
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("M6 T99")));
    EXPECT_EQ(machine.spindle(1).tool().record().toolNo, 3);
    ASSERT_EQ(machine.changed->count(), 1);
    EXPECT_EQ(machine.changed->first().first().toStringList(), QStringList());
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("M6 T99999999999999999999")));
    EXPECT_EQ(machine.spindle(1).tool().record().toolNo, 3);
}

TEST(CommandProcessor, AToolOfAnotherSpindleIsNotTaken) {
    Machine machine;
    ToolData other = cylinderTool(2, 3);
    ToolData first = cylinderTool(1, 3, 40);
    ToolData second = cylinderTool(1, 3, 80);
    machine.processor().UpdateToolList({&other});
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("M6 T3")));
    machine.processor().UpdateToolList({&other, &first, &second});
    EXPECT_TRUE(machine.processor().ProcessWord(QStringLiteral("M6 T3")));
    EXPECT_FLOAT_EQ(machine.spindle(1).tool().record().length, 40);
}

TEST(CommandProcessor, AtMostThreeDigitsOfAnMWordCount) {
    Machine machine;
    machine.processor().addCommandMap({{"M100", &machine.spindle(2)}});
    machine.processor().ProcessWord(QStringLiteral("M1000"));  // the spindle sees the line, no speed in it
    machine.processor().addToolChangeCommandMap({{"M200", &machine.spindle(1)}});
    ToolData tool = cylinderTool(1, 4);
    machine.processor().UpdateToolList({&tool});
    EXPECT_TRUE(machine.processor().ProcessWord(QStringLiteral("M2009 T4")));
}

TEST(CommandProcessor, AnMWithoutDigitsIsIgnored) {
    Machine machine;
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("M")));
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("X3 M")));
    EXPECT_NEAR(machine.axis("X").currentValue(), 0, 1e-9);
}

TEST(CommandProcessor, FollowsTheInstalledToolsOfTheLibrary) {
    Machine machine;
    ToolData tool = cylinderTool(1, 8);
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("M6 T8")));
    machine.processor().UpdateToolList({&tool});
    EXPECT_TRUE(machine.processor().ProcessWord(QStringLiteral("M6 T8")));
    machine.processor().UpdateToolList({});
    EXPECT_FALSE(machine.processor().ProcessWord(QStringLiteral("M6 T8")));
}

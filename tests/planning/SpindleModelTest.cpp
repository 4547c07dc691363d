#include "nc/calc/SpindleModel.h"

#include <gtest/gtest.h>

#include "planning/PlanningTestSupport.h"
#include "support/TestSupport.h"

using planningtest::TestItems;

namespace {

QString tenTimes(const char* line) {
    return (QLatin1String(line) + QLatin1Char('\n')).repeated(10);
}

const QString kDelays = QStringLiteral("(DLY,1)\n").repeated(10);

class Spindles : public ::testing::Test {
  protected:
    /// A spindle's item; the text of its body plays no part here.
    PlanItem item(int spindle, int tool, double rpm) { return items_.add(spindle, tool, rpm, 1); }
    const SpindleState& state(int number) { return *model_.find(item(number, 0, 0)); }
    SpindleModel& model() { return model_; }

  private:
    std::unique_ptr<MachineDescription> machine_ = planningtest::planningMachine();
    SpindleModel model_{machine_->spindles, machine_->userCommand.delay};
    TestItems items_;
};

}  // namespace

TEST_F(Spindles, AFreshModelStandsWithoutTools) {
    EXPECT_EQ(model().states().size(), 7);
    EXPECT_EQ(model().runningShafts(), 0);
    for (const SpindleState& spindle : model().states()) {
        EXPECT_EQ(spindle.stopped, 1) << spindle.name.toStdString();
        EXPECT_EQ(spindle.currentToolNumber, -1);
        EXPECT_EQ(spindle.currentTool, nullptr);
        EXPECT_EQ(spindle.speed, 0.0);
        EXPECT_EQ(spindle.name, QStringLiteral("T%1").arg(spindle.number));
    }
}

TEST_F(Spindles, AStartBlockIsTenStartLinesAndTenCheckLines) {
    EXPECT_EQ(model().start(item(1, 5, 6000)), tenTimes("M3 S6000") + tenTimes("M93 S6000"));
    EXPECT_EQ(model().start(item(3, 1, 4500.5)), tenTimes("S4500.5 M23"));
    EXPECT_EQ(state(1).stopped, 0);
    EXPECT_EQ(state(1).speed, 6000.0);
    EXPECT_EQ(state(1).currentToolNumber, 5);
}

TEST_F(Spindles, TheSpeedHasSixSignificantDigits) {
    EXPECT_EQ(model().start(item(3, 1, 1234.5678)), tenTimes("S1234.57 M23"));
    EXPECT_EQ(model().start(item(3, 1, -9000)), tenTimes("S-9000 M23") + kDelays);
}

TEST_F(Spindles, SpeedsWithinTheToleranceNeedNoCommand) {
    EXPECT_FALSE(model().start(item(3, 1, 6000)).isEmpty());
    EXPECT_EQ(model().start(item(3, 2, 6000.09)), QString());
    EXPECT_EQ(state(3).currentToolNumber, 2);
    EXPECT_EQ(model().start(item(3, 1, 6000.11)), tenTimes("S6000.11 M23"));
}

TEST_F(Spindles, AJumpOfTheSpeedGetsTenDelays) {
    EXPECT_EQ(model().start(item(3, 1, 10001)), tenTimes("S10001 M23"));
    EXPECT_EQ(model().start(item(3, 1, 20002)), tenTimes("S20002 M23"));
    EXPECT_EQ(model().start(item(3, 1, 10000)), tenTimes("S10000 M23") + kDelays);
}

TEST_F(Spindles, AStoppedSpindleJumpsFromZero) {
    EXPECT_EQ(model().start(item(3, 1, 18000)), tenTimes("S18000 M23") + kDelays);
    EXPECT_EQ(model().stop(item(3, 1, 18000)), tenTimes("M25"));
    EXPECT_EQ(model().start(item(3, 1, 18000)), tenTimes("S18000 M23") + kDelays);
}

TEST_F(Spindles, NothingIsStoppedTwice) {
    model().start(item(3, 1, 6000));
    EXPECT_EQ(model().stop(item(3, 1, 6000)), tenTimes("M25"));
    EXPECT_EQ(model().stop(item(3, 1, 6000)), QString());
}

TEST_F(Spindles, AForcedStartIsNeverNothing) {
    EXPECT_EQ(model().forcedStart(item(1, 5, 6000)), tenTimes("M3 S6000") + tenTimes("M93 S6000"));
    EXPECT_EQ(model().forcedStart(item(1, 5, 6000)), tenTimes("M3 S6000"));
}

TEST_F(Spindles, ASpindleThatTheMachineLacksHasNoCommands) {
    const PlanItem stranger = item(77, 1, 6000);
    EXPECT_EQ(model().find(stranger), nullptr);
    EXPECT_EQ(model().start(stranger) + model().stop(stranger) + model().check(stranger) +
                  model().changeTool(stranger) + model().forcedStart(stranger) +
                  model().earlyStart(stranger, stranger),
              QString());
}

TEST_F(Spindles, ACoaxialPairTurnsTogether) {
    model().start(item(2, 21, 6000));
    EXPECT_EQ(state(5).stopped, 0);
    EXPECT_EQ(state(5).speed, 6000.0);
    EXPECT_EQ(model().runningShafts(), 1);
    EXPECT_EQ(model().start(item(5, 51, 6000)), QString());
    EXPECT_EQ(model().stop(item(5, 51, 6000)), tenTimes("M55"));
    EXPECT_EQ(state(2).stopped, 1);
    EXPECT_EQ(model().stop(item(2, 21, 6000)), QString());
}

TEST_F(Spindles, SharingIsTheSameToolOrTheSameShaft) {
    EXPECT_TRUE(model().shareSpindle(item(1, 5, 1), item(1, 5, 2)));
    EXPECT_FALSE(model().shareSpindle(item(1, 5, 1), item(1, 6, 1)));
    EXPECT_TRUE(model().shareSpindle(item(2, 21, 1), item(5, 51, 1)));
    EXPECT_TRUE(model().shareSpindle(item(5, 51, 1), item(2, 21, 1)));
    EXPECT_FALSE(model().shareSpindle(item(1, 5, 1), item(3, 5, 1)));
    EXPECT_FALSE(model().shareSpindle(item(1, 5, 1), item(77, 5, 1)));
}

TEST_F(Spindles, AToolChangeStopsWhatTurnsAndEmptiesEverySpindle) {
    model().changeTool(item(1, 5, 6000));
    model().start(item(1, 5, 6000));
    model().start(item(3, 31, 6000));
    EXPECT_EQ(model().changeTool(item(6, 2, 9000)), tenTimes("M5") + tenTimes("M25") + tenTimes("M66 T2"));
    EXPECT_EQ(model().runningShafts(), 0);
    EXPECT_EQ(state(1).currentToolNumber, -1);
    EXPECT_EQ(state(1).currentTool, nullptr);
    EXPECT_EQ(state(1).speed, 0.0);
    EXPECT_EQ(state(6).currentToolNumber, 2);
}

TEST_F(Spindles, OnlyAMagazineChangesItsTool) {
    EXPECT_TRUE(model().needsToolChange(item(1, 5, 1)));
    model().changeTool(item(1, 5, 1));
    EXPECT_FALSE(model().needsToolChange(item(1, 5, 1)));
    EXPECT_TRUE(model().needsToolChange(item(1, 6, 1)));
    EXPECT_FALSE(model().needsToolChange(item(3, 5, 1)));
    EXPECT_EQ(model().changeTool(item(3, 5, 1)), QString());
    EXPECT_FALSE(model().needsToolChange(item(77, 5, 1)));
}

TEST_F(Spindles, AMagazineWithoutAToolChangeTextIsNone) {
    auto machine = planningtest::planningMachine();
    machine->spindles[0]->toolChangeString.clear();
    SpindleModel model(machine->spindles, machine->userCommand.delay);
    model.start(item(1, 5, 6000));
    EXPECT_EQ(model.changeTool(item(1, 6, 6000)), QString());
    EXPECT_FALSE(model.needsToolChange(item(1, 6, 6000)));
    EXPECT_EQ(model.runningShafts(), 1);
}

TEST_F(Spindles, AnEarlyStartHasNoDelays) {
    const PlanItem present = item(1, 5, 6000);
    model().start(present);
    EXPECT_EQ(model().earlyStart(present, item(2, 21, 18000)), tenTimes("M13 S18000") + tenTimes("M94"));
    EXPECT_EQ(model().start(item(2, 21, 18000)), QString());
}

TEST_F(Spindles, AnEarlyStartWaitsWhileTwoShaftsTurn) {
    const PlanItem present = item(1, 5, 6000);
    model().start(present);
    model().start(item(2, 21, 6000));
    EXPECT_EQ(model().earlyStart(present, item(3, 31, 6000)), QString());
    model().stop(item(2, 21, 6000));
    EXPECT_EQ(model().earlyStart(present, item(3, 31, 6000)), tenTimes("S6000 M23"));
}

TEST_F(Spindles, AnEarlyStartLeavesTheShaftAtWorkAlone) {
    const PlanItem present = item(2, 21, 6000);
    model().start(present);
    EXPECT_EQ(model().earlyStart(present, item(5, 51, 9000)), QString());
    EXPECT_EQ(model().earlyStart(present, item(2, 21, 9000)), QString());
    EXPECT_EQ(model().earlyStart(present, item(2, 22, 9000)), QString());
}

TEST_F(Spindles, AnEarlyStartIsNoneWhenTheSpindleTurnsOrNeedsAnotherTool) {
    const PlanItem present = item(2, 21, 6000);
    model().start(present);
    EXPECT_EQ(model().earlyStart(present, item(1, 5, 6000)), QString());
    model().changeTool(item(1, 5, 6000));
    model().start(item(1, 5, 6000));
    EXPECT_EQ(model().earlyStart(present, item(1, 5, 6000)), QString());
}

TEST_F(Spindles, ThreeSpindlesMayShareAShaft) {
    auto machine = planningtest::planningMachine();
    machine->spindles[0]->coaxial = QStringLiteral("T3");
    machine->spindles[2]->coaxial = QStringLiteral("T2");
    machine->spindles[3]->coaxial = QStringLiteral("T9");
    SpindleModel model(machine->spindles, {});
    model.start(item(1, 5, 6000));
    EXPECT_EQ(model.runningShafts(), 1);
    EXPECT_TRUE(model.shareSpindle(item(1, 5, 1), item(5, 1, 1)));
    EXPECT_FALSE(model.shareSpindle(item(1, 5, 1), item(4, 1, 1)));
}

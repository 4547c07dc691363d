#include "nc/machineStatePreprocessing.h"

#include <gtest/gtest.h>

#include <deque>

#include "machine/readConfig.h"
#include "planning/PlannedItem.h"
#include "planning/PlanningTestSupport.h"
#include "planning/ProgramInterpreter.h"
#include "support/TestSupport.h"

// The handle with the real time optimiser, the settings file and items of the program tree.

namespace {

class Preprocessing : public ::testing::Test {
  protected:
    void SetUp() override {
        useMachine(planningtest::planningMachine());
        settings("IsPreLaunch=true\nPreLaunchTime=0.1\n");
    }
    void TearDown() override { ConfigReader::instance().setDescription(nullptr); }

    static void useMachine(std::unique_ptr<MachineDescription> machine) {
        ConfigReader::instance().setDescription(std::move(machine));
    }
    void settings(const QByteArray& lines) const {
        installation_.write(QStringLiteral("data.ini"), "[StatusPreProcessing]\n" + lines);
    }
    void take(const planningtest::TestItems& program) {
        for (const PlanItem& item : program.items)
            items_.emplace_back(item, true);
    }
    PlannedItem& uncheckedItem(const PlanItem& item) { return items_.emplace_back(item, false); }
    PlannedItem& item(std::size_t index) { return items_[index]; }

    QString process(const QString& preAction = {}, const QString& postAction = {}) {
        TORNVALE::machineStatePreprocessing planner;
        return process(planner, preAction, postAction);
    }
    QString process(TORNVALE::machineStatePreprocessing& planner, const QString& preAction = {},
                    const QString& postAction = {}) {
        QList<TORNVALE::ProgramItem*> list;
        for (PlannedItem& item : items_)
            list.append(&item);
        return planner.ProcessChain(planningtest::kHeader, planningtest::kTail, planningtest::kChain,
                                    preAction, postAction, {}, {}, list, {}, {}, nullptr);
    }
    std::deque<PlannedItem>& items() { return items_; }

  private:
    TemporaryInstallation installation_;
    std::deque<PlannedItem> items_;
};

int linesBehind(const QString& text, const QString& command, const QString& bodyFeed) {
    const QString rest = text.mid(text.lastIndexOf(command));
    return rest.count(bodyFeed);
}

}  // namespace

TEST_F(Preprocessing, NoCheckedItemGivesNoText) {
    EXPECT_EQ(process(QStringLiteral("pre")), QString());
}

TEST_F(Preprocessing, AnUncheckedItemTakesNoPart) {
    planningtest::TestItems program;
    program.add(3, 31, 6000);
    planningtest::TestItems unchecked;
    unchecked.add(1, 5, 9000);
    uncheckedItem(unchecked.items[0]);
    take(program);
    uncheckedItem(unchecked.items[0]);
    const QString text = process();
    EXPECT_TRUE(text.startsWith(QStringLiteral("S6000 M23\n")));
    EXPECT_FALSE(text.contains(QStringLiteral("M3 ")));
    EXPECT_FALSE(text.contains(QStringLiteral("M6 ")));
}

TEST_F(Preprocessing, TheTextStartsEarlyOnlyWhenTheSettingSaysTrue) {
    planningtest::TestItems program;
    program.add(3, 31, 6000, 100);
    program.add(2, 21, 6000, 100);
    take(program);
    const QString command = QStringLiteral("M13 S6000\n");
    const QString feed = QStringLiteral("F1000\n");
    EXPECT_EQ(linesBehind(process(), command, feed), 25);
    settings("IsPreLaunch=\" true \"\nPreLaunchTime=0.2\n");
    EXPECT_EQ(linesBehind(process(), command, feed), 50);
    settings("IsPreLaunch=True\nPreLaunchTime=0.2\n");
    EXPECT_EQ(linesBehind(process(), command, feed), 0);
    settings("PreLaunchTime=0.2\n");
    EXPECT_EQ(linesBehind(process(), command, feed), 0);
}

TEST_F(Preprocessing, TheSpindleStartsTheTimeOfTheSettingBeforeTheEndOnEveryPeriod) {
    planningtest::TestItems program;
    program.add(3, 31, 6000, 200);
    program.add(2, 21, 6000, 200);
    take(program);
    for (const int time_ms : {0, 7, 40, 100, 168}) {
        settings("IsPreLaunch=true\nPreLaunchTime=" + QByteArray::number(time_ms / 1000.0) + '\n');
        for (unsigned period_ms = 1; period_ms <= 8; ++period_ms) {
            useMachine(planningtest::planningMachine(period_ms));
            const int period = static_cast<int>(period_ms);
            const QString text = process();
            // A part of a line counts as one: never later than asked for.
            EXPECT_EQ(linesBehind(text, QStringLiteral("M13 S6000\n"), QStringLiteral("F1000\n")),
                      (time_ms + period - 1) / period)
                << time_ms << " ms, lines of " << period_ms << " ms";
            EXPECT_EQ(text.count(QStringLiteral("M13 S6000\n")), 10);
        }
    }
}

TEST_F(Preprocessing, AnAbsentTimeIsNone) {
    planningtest::TestItems program;
    program.add(3, 31, 6000, 100);
    program.add(2, 21, 6000, 100);
    take(program);
    settings("IsPreLaunch=true\n");
    const QString text = process();
    EXPECT_EQ(linesBehind(text, QStringLiteral("M13 S6000\n"), QStringLiteral("F1000\n")), 0);
    EXPECT_LT(text.indexOf(QStringLiteral("M13 S6000\n")), text.indexOf(QStringLiteral("M25\n")));
}

TEST_F(Preprocessing, EveryKindButTheCurveStartsItsSpindle) {
    planningtest::TestItems program;
    program.add(3, 31, 6000);
    program.add(2, 21, 6000);
    take(program);
    for (const int type : {TORNVALE::kIsoItem, TORNVALE::kDrillItem, TORNVALE::kRectangleItem}) {
        item(1).setType(type);
        EXPECT_TRUE(process().contains(QStringLiteral("M13 S6000\n"))) << type;
    }
    item(1).setType(TORNVALE::kCurveItem);
    EXPECT_FALSE(process().contains(QStringLiteral("M13 S6000\n")));
}

TEST_F(Preprocessing, CopiesOfAHandleShareTheSpindles) {
    planningtest::TestItems program;
    program.add(1, 5, 6000);
    take(program);
    TORNVALE::machineStatePreprocessing planner;
    TORNVALE::machineStatePreprocessing copy = planner;
    EXPECT_TRUE(process(planner).startsWith(QStringLiteral("M6 T5\n")));
    EXPECT_TRUE(process(copy).startsWith(QStringLiteral("M3 S6000\n")));
}

TEST_F(Preprocessing, TheEarlyTextOfAnEmptyListIsEmpty) {
    TORNVALE::machineStatePreprocessing planner;
    EXPECT_EQ(planner.PlanningWithPreBoot({}), QString());
}

TEST_F(Preprocessing, AMissingSpindleEndsTheProcess) {
    planningtest::TestItems program;
    program.add(77, 1, 6000);
    take(program);
    EXPECT_FATAL(process(), "spindle is nullptr");
}

TEST_F(Preprocessing, AMissingLeadInEndsTheProcess) {
    planningtest::TestItems program;
    program.add(1, 5, 6000).leadIn.clear();
    take(program);
    EXPECT_FATAL(process(), "not contain lead in");
}

TEST_F(Preprocessing, AMissingToolAxisEndsTheProcess) {
    auto machine = planningtest::planningMachine();
    machine->numericalAxes[2]->id = 6;
    machine->rebuildIndex();
    useMachine(std::move(machine));
    planningtest::TestItems program;
    program.add(1, 5, 6000);
    take(program);
    EXPECT_FATAL(process(), "Id error.not contains.");
}

TEST_F(Preprocessing, AWayThatCannotBeRetimedIsMissingAndShowsTheBox) {
    settings("IsPreLaunch=true\nTrajAlgorithem=9\n");
    planningtest::TestItems program;
    program.add(3, 31, 6000, 3);
    take(program);
    ExpectedDialogs dialogs;
    for (int way = 0; way < 2; ++way)
        dialogs.expectTell(UserDialogs::Kind::Critical, QStringLiteral("Error"),
                           QStringLiteral("Time optimal failed"));
    const QString text = process();
    EXPECT_EQ(
        planningtest::linesOf(text).filter(QStringLiteral("G1 ")).join(QLatin1Char('\n')) + QLatin1Char('\n'),
        program.items[0].body);
}

TEST_F(Preprocessing, RandomChainsRunOnTheMachineWithRealWays) {
    constexpr unsigned kChains = 40;
    for (unsigned seed = 1; seed <= kChains && !HasFailure(); ++seed) {
        const bool startsEarly = seed % 2 == 0;
        settings(startsEarly ? "IsPreLaunch=true\nPreLaunchTime=0.15\n" : "IsPreLaunch=false\n");
        useMachine(planningtest::planningMachine(4));
        std::mt19937 random(seed);
        const planningtest::TestItems program = planningtest::randomItems(random);
        planningtest::TestItems unchecked;
        unchecked.add(6, 1, 12000);
        items().clear();
        for (const PlanItem& item : program.items) {
            if (random() % 3 == 0)
                uncheckedItem(unchecked.items[0]);
            items().emplace_back(item, true);
        }
        // 600 mm/s are 2.4 mm in a period.
        ProgramInterpreter machineAtWork(program.items, {0.15, 4, startsEarly, 2.401, false});
        machineAtWork.run(process());
        EXPECT_TRUE(machineAtWork.faults().empty())
            << "chain " << seed << ": " << planningtest::description(program) << "\n"
            << machineAtWork.report();
    }
}

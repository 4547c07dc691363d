#include <gtest/gtest.h>

#include "nc/calc/ChainPlanner.h"
#include "planning/PlanningTestSupport.h"
#include "planning/ProgramInterpreter.h"
#include "support/TestSupport.h"

// Random chains, planned both ways and run on a machine that was written for this test alone.

namespace {

constexpr unsigned kChains = 600;

struct Outcome {
    int earlyStarts = 0;
    int commands = 0;
};

Outcome checkChain(unsigned seed, bool startsEarly) {
    std::mt19937 random(seed);
    const unsigned period_ms = 1 + seed % 8;
    const auto machine = planningtest::planningMachine(period_ms);
    const planningtest::TestItems program = planningtest::randomItems(random);
    const double time_s = std::uniform_int_distribution<int>(0, 1500)(random) / 1000.0;
    const ChainJob job = planningtest::jobFor(*machine, time_s);
    SpindleModel spindles(machine->spindles, machine->userCommand.delay);
    Diagnostics diagnostics;
    ChainPlanner planner(job, spindles, diagnostics);
    const QString text =
        startsEarly ? planner.PlanningWithPreBoot(program.items) : planner.planPlainly(program.items);

    ProgramInterpreter machineAtWork(program.items, {time_s, period_ms, startsEarly});
    machineAtWork.run(text);
    EXPECT_TRUE(machineAtWork.faults().empty())
        << "chain " << seed << (startsEarly ? ", early" : ", plain") << ", " << time_s << " s, " << period_ms
        << " ms: " << planningtest::description(program) << "\n"
        << machineAtWork.report();
    EXPECT_TRUE(diagnostics.entries.empty()) << "chain " << seed;
    EXPECT_EQ(spindles.runningShafts(), 0) << "chain " << seed;
    Outcome outcome{machineAtWork.earlyStarts(), 0};
    for (const auto& [command, count] : machineAtWork.commands())
        outcome.commands += count;
    return outcome;
}

}  // namespace

TEST(ChainPlannerProperty, PlainChainsRunOnTheMachine) {
    int commands = 0;
    for (unsigned seed = 1; seed <= kChains && !::testing::Test::HasFailure(); ++seed) {
        const Outcome outcome = checkChain(seed, false);
        EXPECT_EQ(outcome.earlyStarts, 0);
        commands += outcome.commands;
    }
    EXPECT_GT(commands, static_cast<int>(kChains) * 4);
}

TEST(ChainPlannerProperty, ChainsWithEarlyStartsRunOnTheMachine) {
    int earlyStarts = 0;
    for (unsigned seed = 1; seed <= kChains && !::testing::Test::HasFailure(); ++seed)
        earlyStarts += checkChain(seed, true).earlyStarts;
    EXPECT_GT(earlyStarts, static_cast<int>(kChains) / 2);
}

#include <gtest/gtest.h>

#include <random>

#include "TruthBench.h"

// NC programs of real items on the shipped machines, played line by line by a machine of the test's own.

namespace {

struct Machine {
    const char* name;
    const char* postProcessor;
    std::vector<const char*> patterns;
};

const std::vector<Machine>& machines() {
    static const std::vector<Machine> list{
        {"TornBridge5", "TornBridge5", {"left", "right", "alternately", "consecutive"}},
        {"TornBridge5", "TornBridge5Tandem", {"tandem", "left", "right"}},
        {"TornNest3", "TornNest3", {"left", "right", "consecutive"}},
        {"TornPortal5", "TornPortal5", {"consoles"}}};
    return list;
}

/// TORNVALE_TRUTH_SEEDS in the environment makes a longer search.
unsigned seeds() {
    constexpr int kSeeds = 16;
    bool isSet = false;
    const int wanted = qEnvironmentVariableIntValue("TORNVALE_TRUTH_SEEDS", &isSet);
    return static_cast<unsigned>(isSet && wanted > 0 ? wanted : kSeeds);
}

}  // namespace

TEST(NcTruth, RandomJobsKeepPathLimitsAndSpindles) {
    int programs = 0;
    int earlyStarts = 0;
    int toolChanges = 0;
    int folded = 0;
    for (const Machine& machine : machines()) {
        TruthBench bench(QString::fromLatin1(machine.name));
        bench.usePostProcessor(QString::fromLatin1(machine.postProcessor));
        for (unsigned seed = 1; seed <= seeds(); ++seed) {
            std::mt19937 random(seed);
            const std::vector<ItemPlan> job = bench.randomJob(random);
            bench.build(job);
            const std::vector<std::optional<double>> times{std::nullopt, 0.0, 0.101, 0.25, 0.5, 6.0};
            // Every pattern meets every time.
            const std::size_t round = seed / machine.patterns.size();
            const std::optional<double> time_s = times[round % times.size()];
            bench.startEarly(time_s);
            const char* pattern = machine.patterns[seed % machine.patterns.size()];
            const TruthBench::Program program = bench.generate(QString::fromLatin1(pattern));
            const std::string faults = bench.faultsOf(program);
            ASSERT_TRUE(faults.empty()) << machine.postProcessor << ' ' << pattern << " seed " << seed
                                        << " early " << time_s.value_or(-1) << '\n'
                                        << faults << TruthBench::description(job);
            ++programs;
        }
        earlyStarts += bench.earlyStarts();
        toolChanges += bench.toolChanges();
        folded += bench.foldedLines();
        EXPECT_GT(bench.largestAcceleration(), 0.9) << machine.name;
        EXPECT_LE(bench.largestAcceleration(), 1.0 + 1e-9) << machine.name;
    }
    RecordProperty("programs", programs);
    // What the loop is for must have occurred.
    EXPECT_GT(earlyStarts, 10);
    EXPECT_GT(toolChanges, 20);
    EXPECT_GT(folded, 5);
}

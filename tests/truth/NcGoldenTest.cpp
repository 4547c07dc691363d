#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "GoldenText.h"
#include "TruthBench.h"
#include "core/InstallationFolder.h"
#include "nc/UserPostProcessor.h"

// The NC program of one fixed job in every pattern of every shipped post-processor, against
// tests/truth/golden (see GoldenText.h for how these are renewed). Each of them must pass the player first.
//
// Followed by hand, in TornBridge5-consecutive.txt and TornBridge5Tandem-tandem.txt:
//
// * both tables stand in the order of the slots, each with its own actions (M82, M83 left; M84, M85 right),
//   its own table axis (Y, V) and the fixed lines G54, G55, M2 in their places; in the tandem file the
//   actions have no comments;
// * the saw's M13 stands 25 lines before the end of the mill's body: 0.1 s of 4 ms; the mill goes on turning
//   under the saw, since the item behind needs it, and gets neither M5 nor M3 there, only its check M93;
// * before M6 T2 comes M5 and a way up to Z0.000; behind it M3, check and one delay, then the way down;
// * M5 stands before the post action and the way home; the last table's way ends at X200.000 Z0.000 C0 A0,
//   where the run's first line stands, with V at its tail, since the first line names no V;
// * M80 and M81 of the second table are the first one's commands again, written again.

namespace {

constexpr double kEarly_s = 0.1;

/// On every table: a mill, a saw that starts early while the mill works, the mill again, then another mill
/// from the magazine; the last item is not checked.
std::vector<ItemPlan> fixedJob(const QStringList& groups, bool isFiveAxis) {
    const QString start = isFiveAxis ? QStringLiteral(" C0 A0") : QString();
    const auto code = [&start](int x) {
        return QStringLiteral("G0 X%1 Y100 Z220%3\nG0 Z130\nG1 Z120 F3000\nG1 X%2\nG1 Y110 F6000\nG0 Z220\n")
            .arg(x)
            .arg(x + 20)
            .arg(start);
    };
    std::vector<ItemPlan> plans;
    for (const QString& group : groups) {
        plans.push_back({group, 1, 1, 18000, code(100), true});
        plans.push_back({group, 2, 1, 6000, code(200), true});
        plans.push_back({group, 1, 1, 18000, code(300), true});
        plans.push_back({group, 1, 2, 12000, code(400), true});
        plans.push_back({group, 1, 3, 12000, code(500), false});
    }
    return plans;
}

void expectGoldenPatterns(const char* machine, const char* postProcessor) {
    TruthBench bench(QString::fromLatin1(machine));
    bench.usePostProcessor(QString::fromLatin1(postProcessor));
    bench.startEarly(kEarly_s);
    const QStringList patterns = TORNVALE::UserPostProcessor::instance().patternNames();
    ASSERT_FALSE(patterns.isEmpty());
    QStringList groups;
    for (const auto& system : bench.machine().workCoordinateSystems)
        groups << system->name;
    const bool isFiveAxis =
        bench.machine().axisMap(bench.machine().machineParameters.kinematicChain.value(0), false).contains(5);
    bench.build(fixedJob(groups, isFiveAxis));
    for (const QString& pattern : patterns) {
        const TruthBench::Program program = bench.generate(pattern);
        EXPECT_EQ(program.items.size() % 4, 0U) << "an item is over a limit";
        EXPECT_EQ(bench.faultsOf(program), "") << pattern.toStdString();
        const QString name = QStringLiteral("%1-%2.txt").arg(QLatin1String(postProcessor), pattern);
        EXPECT_EQ(listing(program.nc), goldenText(name, listing(program.nc))) << name.toStdString();
    }
    EXPECT_GT(bench.earlyStarts(), 0);
    EXPECT_GT(bench.toolChanges(), 0);
}

}  // namespace

TEST(NcGolden, BridgePatterns) {
    expectGoldenPatterns("TornBridge5", "TornBridge5");
}

TEST(NcGolden, BridgeTandemPatterns) {
    expectGoldenPatterns("TornBridge5", "TornBridge5Tandem");
}

TEST(NcGolden, NestPatterns) {
    expectGoldenPatterns("TornNest3", "TornNest3");
}

TEST(NcGolden, PortalPatterns) {
    expectGoldenPatterns("TornPortal5", "TornPortal5");
}

TEST(NcGolden, EveryShippedPostProcessorHasItsFiles) {
    const QDir shipped(shippedInstallation() + QStringLiteral("/UserPostProcessor"));
    const QStringList golden =
        QDir(QStringLiteral(TORNVALE_GOLDEN_FOLDER)).entryList({QStringLiteral("*.txt")});
    for (const QString& file : shipped.entryList({QStringLiteral("*.xml")})) {
        const QString stem = QFileInfo(file).completeBaseName() + QLatin1Char('-');
        EXPECT_TRUE(std::any_of(golden.begin(), golden.end(), [&stem](const QString& name) {
            return name.startsWith(stem);
        })) << stem.toStdString();
    }
}

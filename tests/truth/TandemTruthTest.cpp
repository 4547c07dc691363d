#include <gtest/gtest.h>

#include <QFile>
#include <random>

#include "GoldenText.h"
#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "machine/readConfig.h"
#include "output/OutputTestSupport.h"

// Two chains of one table at once, planned by the machine's own planner: the head with the left table, and
// the right table alone with a spindle of its own. What each chain does alone must be found in the merged
// program, whole, in its order and at its instant.

namespace {

using TORNVALE::ProgramGroup;

constexpr const char* kTable = "V";
constexpr const char* kRapid = "F36000";

QByteArray shipped(const QString& name) {
    QFile file(shippedInstallation() + QLatin1Char('/') + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

/// A body of `lines` lines in the emitted form, from `place` on, a step of 0.4 mm a line.
QString body(const QString& format, double place, int lines, const char* feed) {
    QString text;
    for (int i = 0; i < lines; ++i)
        text += format.arg(place + 0.4 * i, 0, 'f', 3) + QLatin1String(feed) + QLatin1Char('\n');
    return text;
}

struct Bench : OutputBench {
    Bench() : OutputBench(shipped(QStringLiteral("UserPostProcessor/TornBridge5Tandem.xml"))) {
        useMachinePlanner();
        ConfigReader::instance().SetConfig(shippedInstallation() +
                                           QStringLiteral("/machineSample/TornBridge5.xml"));
        settings("[StatusPreProcessing]\nPostProcessor=post.xml\nIsPreLaunch=true\nPreLaunchTime=0.05\n");
    }
};

/// An item whose leads go straight up and down.
void addItem(PlainGroup& group, const char* chain, const QString& format, double place, int lines,
             int spindle, int toolNumber, double rpm) {
    PlainItem& item = group.add(QLatin1String(chain), body(format, place, lines, "F6000"));
    item.tool.record().spindleNo = spindle;
    item.tool.record().toolNo = toolNumber;
    item.speed = rpm;
    item.leadIn = body(format, place, 1, kRapid);
    item.leadOut = body(format, place + 0.4 * (lines - 1), 1, kRapid);
}

const QString kHeadLine = QStringLiteral("G1 X%1 Y300.000 Z-200.000 C0.000 A0.000 ");
const QString kTableLine = QStringLiteral("G1 V%1 ");

void setEnds(PlainGroup& group) {
    const QString head = kHeadLine.arg(100.0, 0, 'f', 3) + QLatin1String(kRapid);
    const QString table = kTableLine.arg(1400.0, 0, 'f', 3) + QLatin1String(kRapid);
    group.setEnds(QLatin1String(kLeft), head, head);
    group.setEnds(QLatin1String(kTable), table, table);
}

/// A line of a planned chain that does not only wait, and the instant at which it stands.
struct Step {
    QString text;
    int instant;
};

std::vector<Step> stepsOf(const QString& planned) {
    std::vector<Step> steps;
    const QStringList lines = planned.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QString text = lines[i].simplified();
        if (!text.isEmpty() && text != QLatin1String("(DLY,1)"))
            steps.push_back({text, i});
    }
    return steps;
}

/// The commands and moves of a line, taken apart where each of them begins.
QStringList piecesOf(QString line) {
    line.remove(QStringLiteral("(DLY,1)"));
    line.replace(QStringLiteral(" G1 "), QStringLiteral("\nG1 "));
    QStringList pieces;
    for (const QString& piece : line.split(QLatin1Char('\n'))) {
        if (!piece.simplified().isEmpty())
            pieces << piece.simplified();
    }
    return pieces;
}

bool isOfTable(const QString& piece) {
    return piece.contains(QLatin1Char('V')) || piece.startsWith(QStringLiteral("M23")) ||
           piece == QLatin1String("M95") || piece == QLatin1String("M25");
}

/// Walks over a merged text with the steps of both chains beside it.
class LockStep {
  public:
    LockStep(std::vector<Step> head, std::vector<Step> table) : chains_{std::move(head), std::move(table)} {}

    std::string faultsOf(const QString& merged) {
        for (const QString& line : merged.split(QLatin1Char('\n'))) {
            if (line.contains(QLatin1Char('M')) && (line.contains(QLatin1Char('G')) || line.count('M') > 1))
                faults_ += "a command shares a block: " + line.toStdString() + '\n';
            for (const QString& piece : piecesOf(line))
                take(piece);
        }
        for (const int chain : {0, 1}) {
            if (next_[chain] != chains_[chain].size())
                faults_ += "chain " + std::to_string(chain) + " breaks off\n";
        }
        return faults_;
    }
    [[nodiscard]] int together() const { return together_; }

  private:
    void take(const QString& piece) {
        const int chain = isOfTable(piece) ? 1 : 0;
        const int other = 1 - chain;
        if (next_[chain] >= chains_[chain].size() || chains_[chain][next_[chain]].text != piece) {
            faults_ += "not the next of its chain: " + piece.toStdString() + '\n';
            return;
        }
        const int instant = chains_[chain][next_[chain]++].instant;
        if (next_[other] < chains_[other].size() && chains_[other][next_[other]].instant < instant)
            faults_ += "too early: " + piece.toStdString() + '\n';
        if (next_[other] > 0 && chains_[other][next_[other] - 1].instant == instant)
            ++together_;
    }

    std::vector<Step> chains_[2];
    std::size_t next_[2] = {0, 0};
    std::string faults_;
    int together_ = 0;
};

}  // namespace

TEST(TandemTruth, EachChainIsWholeAndAtItsInstant) {
    Bench bench;
    constexpr unsigned kJobs = 30;
    int together = 0;
    for (unsigned seed = 1; seed <= kJobs; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&random](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        PlainGroup both("G54");
        PlainGroup head("G54");
        PlainGroup table("G54");
        for (PlainGroup* group : {&both, &head, &table})
            setEnds(*group);
        const int headItems = pick(1, 3);
        for (int i = 0; i < headItems; ++i) {
            const int place = pick(110, 700);
            const int lines = pick(5, 60);
            const int toolNumber = pick(1, 2);
            for (PlainGroup* group : {&both, &head})
                addItem(*group, kLeft, kHeadLine, place, lines, 1, toolNumber, 12000);
        }
        const int tableItems = pick(1, 3);
        for (int i = 0; i < tableItems; ++i) {
            const int place = pick(300, 1300);
            const int lines = pick(5, 60);
            const int rpm = pick(1, 2) * 3000;
            for (PlainGroup* group : {&both, &table})
                addItem(*group, kTable, kTableLine, place, lines, 3, 1, rpm);
        }
        LockStep lockStep(stepsOf(bench.program({&head})), stepsOf(bench.program({&table})));
        ASSERT_EQ(lockStep.faultsOf(bench.program({&both})), "") << "seed " << seed;
        together += lockStep.together();
        for (const QString& line : bench.program({&both}, QStringLiteral("left")).split(QLatin1Char('\n')))
            ASSERT_TRUE(!line.contains('M') || (line.startsWith('M') && line.count('M') == 1))
                << "seed " << seed;
    }
    EXPECT_GT(together, 1000);
}

// The whole text of two chains at once, small enough to be followed with a finger. Followed by hand in
// golden/TornBridge5Tandem-twoChains.txt, instant by instant, from the lines of both chains alone:
//
//   head    0 M80, 1 M82, 2 empty, 3-12 M6, 13-22 M3, 23-32 M93, 33-43 delays (a jump of 12000: ten and one),
//           44... down from Z0, ten M93, eight lines of the body, M5, M83, M81, the way home
//   table   0-9 M23, 10-19 M95, 20 delay, 21-30 the way from V1400, 31-40 M95, 41-48 body, 49 empty,
//           50-59 M25, 60... back to V1400
//
// * Every M word has its line; neighbours differ, so that blocks of ten stay ten where both chains command
//   (M6 against M23: seven pairs, then three against M95), and the empty line 2 stands before M23.
// * Delays share the line of the table's moves (41 to 43), since only M words claim a block. Such a line is
//   no motion line and keeps its words as they are.
// * While the table still cuts (44 to 48), the head's rapid feed stands first and is the one that is kept.
// * The table is back first; what follows carries the head's words only.
//
// Each chain is planned for itself: the head's M6 comes while the table's spindle turns. Chains that do not
// keep out of each other's way have no place in a tandem.
TEST(TandemTruth, TwoChainsAtOnce_WriteTheirGoldenProgram) {
    Bench bench;
    PlainGroup group(QStringLiteral("G54"));
    addItem(group, kLeft, kHeadLine, 101, 8, 1, 1, 12000);
    addItem(group, kTable, kTableLine, 1401, 8, 3, 1, 6000);
    setEnds(group);
    const QString text = bench.program({&group}, QStringLiteral("left"));
    EXPECT_EQ(text, goldenText(QStringLiteral("TornBridge5Tandem-twoChains.txt"), text));
}

// Joining and post-processing of planned programs: two chains behind one another or at once, then marks,
// rapid words and the order of words. The bars: a million lines in 3 s either way, peak memory under six
// times the program's text.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <fstream>
#include <string>

#include "core/InstallationFolder.h"
#include "machine/readConfig.h"
#include "nc/UserPostProcessor.h"
#include "nc/calc/HeaderTail.h"
#include "tools/ToolData.h"

namespace {

using namespace TORNVALE;

constexpr int kLines = 500000;  ///< of each chain

class BenchItem : public ProgramItem {
  public:
    explicit BenchItem(QString chain) : chain_(std::move(chain)) {}
    [[nodiscard]] int itemType() const override { return kIsoItem; }
    [[nodiscard]] const QString& itemName() const override { return text_; }
    [[nodiscard]] const QString& chainName() const override { return chain_; }
    [[nodiscard]] bool isActive() const override { return true; }
    [[nodiscard]] const ToolData* toolData() const override { return &tool_; }
    [[nodiscard]] double rpm() const override { return 0; }
    [[nodiscard]] const QString& LeadIn() const override { return text_; }
    [[nodiscard]] const QString& LeadOut() const override { return text_; }
    [[nodiscard]] const QString& IsoCode() const override { return text_; }
    [[nodiscard]] const QString& WorkCode() const override { return text_; }
    void setTrajNode(trajNode* /*node*/) override {}
    [[nodiscard]] trajNode* pathNode() const override { return nullptr; }

  private:
    QString chain_;
    QString text_;
    ToolData tool_;
};

class BenchGroup : public ProgramGroup {
  public:
    BenchGroup() {
        for (BenchItem* item : {&left, &right})
            list.headerTail.add(ConfigReader::instance().description(), item->chainName());
    }
    [[nodiscard]] QString wcsName() const override { return QStringLiteral("G54"); }
    [[nodiscard]] QList<ProgramItem*> programItems() const override { return {&left, &right}; }
    [[nodiscard]] std::shared_ptr<AuxiliaryAxis> auxiliaryAxis() const override { return nullptr; }
    [[nodiscard]] FormatItems* headerTail() const override { return &list; }

    mutable BenchItem left{QStringLiteral("X->Z->C->A;Y")};
    mutable BenchItem right{QStringLiteral("U->W->B->D;V")};
    mutable FormatItems list;
};

void addAxis(MachineDescription& machine, char letter, int id) {
    auto axis = std::make_unique<numericalAxisStruct>();
    axis->name = QString(QLatin1Char(letter));
    axis->nickName = axis->name;
    axis->homePosition = QStringLiteral("0");
    axis->id = id;
    machine.numericalAxes.push_back(std::move(axis));
}

/// Two heads of five axes, 4 ms, rapid at 50000.
void useMachine() {
    auto machine = std::make_unique<MachineDescription>();
    const std::string letters = "XYZCAUVWBD";
    for (std::size_t i = 0; i < letters.size(); ++i)
        addAxis(*machine, letters[i], static_cast<int>(i % 5) + 1);
    machine->interpolationParameters.interpolationTime = 4;
    machine->interpolationParameters.rapidThreshold = 50000;
    machine->rebuildIndex();
    ConfigReader::instance().setDescription(std::move(machine));
}

/// A planned program: ten feeds at 6000, then ten rapid moves, with a command now and then.
QString program(const char* letters) {
    std::string text;
    char buffer[128];
    for (int i = 0; i < kLines; ++i) {
        if (i % 1000 < 10) {
            text += "M3 S12000\n";
            continue;
        }
        std::snprintf(buffer, sizeof buffer, "G1 %c%.3f %c%.3f %c%.3f %c%.3f %c%.3f  F%d\n", letters[0],
                      i * 0.017 + 1.234, letters[1], (i % 977) * 0.31, letters[2], -3.456 - (i % 13) * 0.1,
                      letters[3], (i % 360) * 0.25, letters[4], (i % 77) * 0.1, i % 20 < 10 ? 6000 : 50000);
        text += buffer;
    }
    return QString::fromStdString(text);
}

/// Peak resident bytes since the last call with `reset`.
double peakBytes(bool reset) {
    if (reset)
        std::ofstream("/proc/self/clear_refs") << 5;
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stod(line.substr(6)) * 1024.0;
    }
    return 0;
}

void write(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

void postProcess(benchmark::State& state, int multiChain) {
    const QTemporaryDir folder;
    setInstallationFolder(folder.path());
    write(folder.filePath("data.ini"), "[StatusPreProcessing]\nPostProcessor=p.xml\n");
    write(folder.filePath("p.xml"),
          "<root><Regulation Rapid=';RAPID' Linear=';LINEAR' RapidMovement='G0' UserHeaderTail='true' "
          "MultiChain='" +
              QByteArray::number(multiChain) +
              "'/><PrePostActions/><Configulation "
              "Name='p'><Coordinate>G54</Coordinate></Configulation></root>");
    useMachine();
    UserPostProcessor& processor = UserPostProcessor::instance();
    processor.reload();
    const QString left = program("XYZCA");
    const QString right = program("UVWBD");
    // A copy for each chain, as the planner makes it.
    processor.setPlanner([&](const ChainPlan& plan) {
        QString text = plan.chain.startsWith(QLatin1Char('X')) ? left : right;
        text.detach();
        return text;
    });
    if (!processor.choosePattern(QStringLiteral("p")))
        qFatal("no pattern");
    BenchGroup group;
    const double before = peakBytes(true);
    QString out;
    for (auto _ : state) {
        out = QString();
        processor.ProcessGroups(out, {&group}, true);
        benchmark::DoNotOptimize(out.data());
    }
    const double textBytes = 2.0 * static_cast<double>(left.size() + right.size());
    state.counters["lines"] = out.count(QLatin1Char('\n'));
    state.counters["textMB"] = textBytes / 1e6;
    state.counters["peakPerText"] = (peakBytes(false) - before + textBytes) / textBytes;
}

void sequentialMillionLines(benchmark::State& state) {
    postProcess(state, 0);
}
BENCHMARK(sequentialMillionLines)->Unit(benchmark::kMillisecond);

void tandemMillionLines(benchmark::State& state) {
    postProcess(state, 1);
}
BENCHMARK(tandemMillionLines)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

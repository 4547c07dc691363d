#include <benchmark/benchmark.h>

#include <QString>
#include <cstdio>
#include <deque>
#include <string>

#include "nc/calc/ChainPlanner.h"
#include "nc/calc/ProgramText.h"

// The items of a chain joined into one text, without the re-timing of the ways between them. The bar: time
// linear in the length, near that of copying the text once.

namespace {

constexpr int kItems = 20;

QString bodyOf(int lines) {
    std::string text;
    char buffer[96];
    for (int i = 0; i < lines; ++i) {
        std::snprintf(buffer, sizeof buffer, "G1 X%.3f Y%.3f Z%.3f C0.000 A0.000  F6000\n", i * 0.017,
                      (i % 977) * 0.31, -3.456 - (i % 13) * 0.1);
        text += buffer;
    }
    return QString::fromStdString(text);
}

std::vector<std::unique_ptr<spindleStruct>> spindles() {
    std::vector<std::unique_ptr<spindleStruct>> list;
    for (int number = 1; number <= 4; ++number) {
        auto spindle = std::make_unique<spindleStruct>();
        spindle->name = QStringLiteral("T%1").arg(number);
        spindle->startString = QStringLiteral("M%13 S#").arg(number);
        spindle->stopString = QStringLiteral("M%15").arg(number);
        spindle->checkString = QStringLiteral("M9%1").arg(number);
        spindle->range = QStringLiteral("1");
        list.push_back(std::move(spindle));
    }
    return list;
}

ChainJob job() {
    ChainJob job;
    job.header = QStringLiteral("G1 X0 Y0 Z0 F36000");
    job.tail = job.header;
    job.homeLine = job.header;
    job.letters = {{1, 'X'}, {2, 'Y'}, {3, 'Z'}};
    job.preLaunchTime_s = 2;
    job.period_s = 0.004;
    job.interpolationTime_ms = 4;
    job.retime = [](const QString& code, bool) { return code + QLatin1Char('\n'); };
    return job;
}

void joinChain(benchmark::State& state) {
    const auto machine = spindles();
    const ChainJob chain = job();
    const QString body = bodyOf(static_cast<int>(state.range(0)) / kItems);
    std::deque<ToolRecord> tools(kItems);
    std::vector<PlanItem> items;
    for (int i = 0; i < kItems; ++i) {
        ToolRecord& tool = tools[static_cast<std::size_t>(i)];
        tool.spindleNo = 1 + i % 4;
        items.push_back({&tool, 6000, false, chain.header, chain.header, body});
    }
    for (auto _ : state) {
        SpindleModel model(machine, QStringLiteral("(DLY,1)"));
        Diagnostics diagnostics;
        QString text = ChainPlanner(chain, model, diagnostics).PlanningWithPreBoot(items);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * kItems * body.size() * 2);
}

void copyText(benchmark::State& state) {
    const QString text = bodyOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QString copy;
        copy.reserve(text.size());
        copy += text;
        benchmark::DoNotOptimize(copy.data());
    }
    state.SetBytesProcessed(state.iterations() * text.size() * 2);
}

void countLines(benchmark::State& state) {
    const QString text = bodyOf(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(countLineFeeds(text));
    state.SetBytesProcessed(state.iterations() * text.size() * 2);
}

}  // namespace

BENCHMARK(joinChain)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(copyText)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(countLines)->Arg(1000000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();

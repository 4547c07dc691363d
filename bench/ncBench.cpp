#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

#include "TA/Trajectory.h"
#include "machine/calc/MachineDescription.h"
#include "nc/calc/LineWriter.h"
#include "nc/calc/ProgramAudit.h"
#include "nc/calc/Retiming.h"
#include "nc/calc/WayPointText.h"

// The passes that run once per line. Items per second are lines per second.

namespace {

const QString kChain = QStringLiteral("X->Y->Z->C->A");

MachineDescription& machine() {
    static MachineDescription description;
    if (description.numericalAxes.empty()) {
        for (int id = 1; id <= 5; ++id) {
            auto axis = std::make_unique<numericalAxisStruct>();
            axis->name = QStringLiteral("XYZCA").mid(id - 1, 1);
            axis->acceleration = QStringLiteral("2000");
            axis->maxVelocity = QStringLiteral("60000");
            axis->id = id;
            description.numericalAxes.push_back(std::move(axis));
        }
        description.interpolationParameters.interpolationTime = 4;
        description.rebuildIndex();
    }
    return description;
}

WayPoints path(int count) {
    WayPoints points;
    for (int i = 0; i < count; ++i) {
        const double t = i * 1e-3;
        WayPoint point;
        for (const double value :
             {900 * std::cos(t), 900 * std::sin(t), -t, 30 * std::sin(t / 3), 20 * std::cos(t / 3), 8000.0})
            point.append(value);
        points.push_back(point);
    }
    return points;
}

QString program(int lines) {
    return FormatWayPoints(path(lines), machine().axisMap(kChain, true), 0);
}

void countLines(benchmark::State& state, int lines) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * lines);
}

}  // namespace

static void readWayPoints(benchmark::State& state) {
    const int lines = static_cast<int>(state.range(0));
    const QString code = program(lines);
    for (auto _ : state)
        benchmark::DoNotOptimize(WayPointsFromCode(machine(), kChain, code, nullptr));
    countLines(state, lines);
}
BENCHMARK(readWayPoints)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

static void formatWayPoints(benchmark::State& state) {
    const int lines = static_cast<int>(state.range(0));
    const WayPoints points = path(lines);
    const AxisMap letters = machine().axisMap(kChain, true);
    for (auto _ : state)
        benchmark::DoNotOptimize(FormatWayPoints(points, letters, 0));
    countLines(state, lines);
}
BENCHMARK(formatWayPoints)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// Five words and the feed, in memory: what sampling costs beside the position itself.
static void writeLines(benchmark::State& state) {
    const int lines = static_cast<int>(state.range(0));
    const WayPoints points = path(lines);
    const QVector<QChar> letters{'X', 'Y', 'Z', 'C', 'A'};
    const QString tail = QStringLiteral(" F8000\n");
    for (auto _ : state) {
        LineWriter writer(letters);
        writer.reserveLines(points.size());
        for (const WayPoint& point : points) {
            writer.appendWords(point.values.data());
            writer.append(tail);
        }
        benchmark::DoNotOptimize(writer.take());
    }
    countLines(state, lines);
}
BENCHMARK(writeLines)->Arg(2000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// A planned motion to its text: positions asked in order, lines written, one conversion at the end.
static void sampleTrajectory(benchmark::State& state) {
    WayPoints points = path(2000);
    for (WayPoint& point : points)
        --point.count;
    const auto options = trajectoryOptions(2, 8000 / 60.0, 0.5, std::vector<double>(5, 2000.0));
    const auto trajectory = TA::Trajectory::Create(trajectoryPoints(points), *options);
    const double period_s = trajectory->GetDuration() / static_cast<double>(state.range(0));
    const TimedPath timed{trajectory->GetDuration(), [&](double t) { return trajectory->GetPosition(t); }};
    const QVector<QChar> letters{'X', 'Y', 'Z', 'C', 'A'};
    for (auto _ : state) {
        Diagnostics diagnostics;
        benchmark::DoNotOptimize(sampleLines(timed, letters, period_s, 8000 / 60.0, diagnostics));
    }
    countLines(state, static_cast<int>(state.range(0)));
}
BENCHMARK(sampleTrajectory)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

static void askPositions(benchmark::State& state) {
    WayPoints points = path(2000);
    for (WayPoint& point : points)
        --point.count;
    const auto options = trajectoryOptions(2, 8000 / 60.0, 0.5, std::vector<double>(5, 2000.0));
    const auto trajectory = TA::Trajectory::Create(trajectoryPoints(points), *options);
    const double period_s = trajectory->GetDuration() / static_cast<double>(state.range(0));
    for (auto _ : state) {
        for (double t = 0; t < trajectory->GetDuration(); t += period_s)
            benchmark::DoNotOptimize(trajectory->GetPosition(t));
    }
    countLines(state, static_cast<int>(state.range(0)));
}
BENCHMARK(askPositions)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

static void auditCode(benchmark::State& state) {
    const int lines = static_cast<int>(state.range(0));
    const QString code = program(lines);
    for (auto _ : state) {
        Diagnostics diagnostics;
        benchmark::DoNotOptimize(auditProgram(machine(), kChain, code, diagnostics));
    }
    countLines(state, lines);
}
BENCHMARK(auditCode)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

static void findLastFeed(benchmark::State& state) {
    const QString code = program(1'000'000);
    for (auto _ : state)
        benchmark::DoNotOptimize(lastFeed(code));
}
BENCHMARK(findLastFeed)->Unit(benchmark::kMicrosecond);

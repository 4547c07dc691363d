#include <benchmark/benchmark.h>

#include <QString>
#include <memory>
#include <vector>

#include "core/calc/NumberText.h"
#include "machine/calc/AxisLimits.h"
#include "machine/calc/Kinematics.h"

// Passes of the machine folder over a program of a million lines or points. Bars on the reference machine:
// limit check 0.3 s, points 0.3 s, text 1.5 s.

namespace {

constexpr int kLines = 1000000;

std::unique_ptr<MachineDescription> machine() {
    struct Axis {
        char letter;
        int id;
        const char* type;
        const char* direction;
    };
    constexpr Axis kAxes[] = {{'X', 1, "LINEAR", "1 0 0"},
                              {'Y', 2, "LINEAR", "0 1 0"},
                              {'Z', 3, "LINEAR", "0 0 1"},
                              {'C', 4, "ROTATION", "0 0 1"},
                              {'A', 5, "ROTATION", "1 0 0"}};
    auto made = std::make_unique<MachineDescription>();
    for (const Axis& each : kAxes) {
        auto axis = std::make_unique<numericalAxisStruct>();
        axis->name = QChar::fromLatin1(each.letter);
        axis->id = each.id;
        axis->type = QLatin1String(each.type);
        axis->direction = QLatin1String(each.direction);
        axis->initialization = QStringLiteral("1 2 150");
        axis->lower = QStringLiteral("-5000");
        axis->upper = QStringLiteral("5000");
        made->numericalAxes.push_back(std::move(axis));
    }
    made->rebuildIndex();
    return made;
}

KinematicTransform transform(const MachineDescription& description) {
    KinematicTool tool;
    tool.length = 120;
    tool.installationName = QStringLiteral("A");
    Diagnostics diagnostics;
    return *KinematicTransform::make(description, tool, 0, SbVec3f(0, 0, 0), QStringLiteral("X->Y->Z->C->A"),
                                     QStringLiteral("G54"), KinematicTransform::kToMachine, diagnostics);
}

/// Rotary values that change at every `period`-th point.
WayPoint pointAt(int i, int period) {
    WayPoint point;
    const int step = i / period;
    for (const double value : {i * 0.001, 500 - i * 0.0007, 30 + step % 97 * 0.013, step % 3600 * 0.1 - 180,
                               step % 900 * 0.1 - 45, 6000.0})
        point.append(value);
    return point;
}

QString program() {
    std::string text;
    for (int i = 0; i < kLines; ++i) {
        const WayPoint point = pointAt(i, 1);
        text += "G1 ";
        for (int axis = 0; axis < 5; ++axis) {
            text += "XYZCA"[axis];
            appendFixed3(text, point[axis]);
            text += ' ';
        }
        text += "F6000\n";
    }
    return QString::fromStdString(text);
}

void limitCheck(benchmark::State& state) {
    const auto description = machine();
    const QString code = program();
    Diagnostics diagnostics;
    auto rows =
        *axisLimitRows(*description, description->axisMap(QStringLiteral("XYZCA"), false), diagnostics);
    for (auto _ : state) {
        if (checkAxisLimits(rows, code))
            state.SkipWithError("the program should lie within the limits");
    }
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(limitCheck)->Unit(benchmark::kMillisecond);

void transformPoints(benchmark::State& state) {
    const auto description = machine();
    const KinematicTransform made = transform(*description);
    WayPoints points;
    for (int i = 0; i < kLines; ++i)
        points.push_back(pointAt(i, static_cast<int>(state.range(0))));
    for (auto _ : state) {
        made.transformPoints(points);
        benchmark::DoNotOptimize(points.data());
    }
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(transformPoints)->ArgName("pointsPerAngle")->Arg(1)->Arg(1000)->Unit(benchmark::kMillisecond);

void transformText(benchmark::State& state) {
    const auto description = machine();
    const QString code = program();
    for (auto _ : state) {
        KinematicTransform made = transform(*description);
        benchmark::DoNotOptimize(made.transformText(code).size());
    }
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(transformText)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

// Planning and sampling times. The counters are figures of the plan, not of the clock.

#include <TA/Trajectory.h>

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace {

using Points = std::vector<std::vector<double>>;

const char* const algorithms[] = {"toppra", "trapezoidal_constant_speed", "trapezoidal"};

TA::Trajectory::Options optionsFor(std::size_t algorithm, double speed) {
    const std::vector<double> accelerations{1000.0, 1000.0, 1000.0, 800.0, 800.0};
    TA::Trajectory::Options options;
    options["algorithm"] = std::string(algorithms[algorithm]);
    options["path_type"] = std::string(algorithm == 1 ? "circle_blend" : "bezier_quadratic_blend");
    options["tolerance_blend"] = 0.5;
    options["tolerance_overlap"] = 0.0;
    options["tolerance_colinear"] = 0.01;
    options["step_size"] = 0.1;
    options["speed"] = speed;
    options["acceleration"] = 1000.0;
    options["acc_limits"] = accelerations;
    if (algorithm == 0)
        options["vel_limits"] = std::vector<double>(accelerations.size(), speed);
    else
        options["vel_limits"] = speed;
    return options;
}

/// 5-D zigzag with segments of 10 units.
Points zigzag(std::size_t count) {
    Points points{{0.0, 0.0, 0.0, 0.0, 0.0}};
    for (std::size_t i = 1; i < count; ++i) {
        std::vector<double> step{6.0, i % 2 == 0 ? 6.0 : -6.0, i % 3 == 0 ? 3.0 : -3.0,
                                 i % 2 == 0 ? -3.0 : 3.0, i % 5 < 2 ? 3.0 : -3.0};
        double length = 0.0;
        for (const double value : step)
            length += value * value;
        std::vector<double> point = points.back();
        for (std::size_t k = 0; k < point.size(); ++k)
            point[k] += step[k] * 10.0 / std::sqrt(length);
        points.push_back(point);
    }
    return points;
}

/// A circle of 1 mm chords while both rotary axes turn.
Points circle(std::size_t count) {
    const double radius = 0.5 / std::sin(std::acos(-1.0) / static_cast<double>(count));
    Points points;
    for (std::size_t i = 0; i < count; ++i) {
        const double angle = 2.0 * std::acos(-1.0) * static_cast<double>(i) / static_cast<double>(count);
        points.push_back({radius * std::cos(angle), radius * std::sin(angle), 5.0, 30.0 * std::sin(angle),
                          angle * 180.0 / std::acos(-1.0)});
    }
    return points;
}

void plan(benchmark::State& state, const Points& points, double speed = 100.0) {
    const auto options = optionsFor(static_cast<std::size_t>(state.range(0)), speed);
    double duration = 0.0;
    for (auto _ : state)  // NOLINT(clang-analyzer-deadcode.DeadStores)
        duration = TA::Trajectory::Create(points, options)->GetDuration();
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.SetLabel(algorithms[state.range(0)]);
    state.counters["motion_s"] = duration;
    state.counters["process_peak_MB"] = static_cast<double>(usage.ru_maxrss) / 1024.0;
    state.counters["per_point"] =
        benchmark::Counter(static_cast<double>(points.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void PlanZigzag1000(benchmark::State& state) {
    plan(state, zigzag(1000));
}
void PlanSlowZigzag1000(benchmark::State& state) {
    plan(state, zigzag(1000), 20.0);
}
void PlanCircle10000(benchmark::State& state) {
    plan(state, circle(10000));
}
void PlanZigzag100000(benchmark::State& state) {
    plan(state, zigzag(100000));
}
void PlanCircle100000(benchmark::State& state) {
    plan(state, circle(100000));
}

void sample(benchmark::State& state, bool ownVector) {
    const auto motion =
        TA::Trajectory::Create(zigzag(1000), optionsFor(static_cast<std::size_t>(state.range(0)), 100.0));
    const double duration = motion->GetDuration();
    std::vector<double> position;
    double t = 0.0;
    for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
        if (ownVector)
            motion->GetPosition(t, position);
        else
            position = motion->GetPosition(t);
        benchmark::DoNotOptimize(position.data());
        t += 0.004;
        if (t > duration)
            t = 0.0;
    }
    state.SetLabel(algorithms[state.range(0)]);
}

void SampleReturnedVector(benchmark::State& state) {
    sample(state, false);
}
void SampleIntoVector(benchmark::State& state) {
    sample(state, true);
}

void AllocateVectorOnly(benchmark::State& state) {
    std::vector<double> position;
    for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
        position = std::vector<double>(5);
        benchmark::DoNotOptimize(position.data());
    }
}

BENCHMARK(PlanZigzag1000)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);
BENCHMARK(PlanSlowZigzag1000)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);
BENCHMARK(PlanCircle10000)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);
BENCHMARK(PlanZigzag100000)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(PlanCircle100000)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(SampleReturnedVector)->DenseRange(0, 2);
BENCHMARK(SampleIntoVector)->DenseRange(0, 2);
BENCHMARK(AllocateVectorOnly);

}  // namespace

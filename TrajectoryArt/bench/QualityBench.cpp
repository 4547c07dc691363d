// Figures that are not times, printed as counters: how far a duration is above the optimum of the same
// path, and what share of its limits a motion uses, measured on its own positions.

#include "../tests/MotionSupport.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace support;

Points zigzag(int count) {
    Points points;
    for (int i = 0; i < count; ++i)
        points.push_back({i * 6.0, i % 2 * 7.0, i % 3 * 2.0, i % 2 * -3.0, i % 5 * 1.0});
    return points;
}

/// Counters: worst over slow, middle and fast feeds; equal and unequal limits of the axes.
void QualityOfZigzag(benchmark::State& state) {
    const auto algorithm = static_cast<Algorithm>(state.range(0));
    double excess = 0.0;
    Measured worst;
    for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
        for (const double speed : {20.0, 50.0, 100.0, 300.0}) {
            for (const double lower : {1.0, 0.3}) {
                const Points points = zigzag(300);
                reference::Limits limits = equalLimits(5, speed, 1000.0, 0.5);
                limits.circle = algorithm == Algorithm::ConstantSpeed;
                limits.axisAccelerations[3] = limits.axisAccelerations[4] = 1000.0 * lower;
                const auto motion = plan(algorithm, points, limits);
                excess = std::max(
                    excess, motion->GetDuration() / reference::optimalDuration(points, limits, 400) - 1.0);
                for (const double period : {0.001, 0.0023, 0.004}) {
                    const Measured measured = measure(*motion, algorithm, points, limits, period, 0.0, 4000);
                    worst.speed = std::max(worst.speed, measured.speed);
                    worst.acceleration = std::max(worst.acceleration, measured.acceleration);
                    worst.deviation = std::max(worst.deviation, measured.deviation);
                }
            }
        }
    }
    state.counters["excess_percent"] = 100.0 * excess;
    state.counters["speed_share"] = worst.speed;
    state.counters["acceleration_share"] = worst.acceleration;
    state.counters["deviation_share"] = worst.deviation;
}

BENCHMARK(QualityOfZigzag)->DenseRange(0, 2)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

#include "Log.h"

#include <TA/Trajectory.h>

#include <atomic>
#include <cstdio>

namespace TA {
namespace {

std::atomic<bool> plansAreLogged{false};

}  // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface hands its texts over by value.
void Initialize(std::string) {}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
void SetLoggerLevel(std::string level) {
    plansAreLogged = level == "trace" || level == "debug";
}

void logPlan(std::size_t pointsGiven, std::size_t pointsKept, double duration_s) {
    if (plansAreLogged)
        std::fprintf(stderr, "TrajectoryArt: %zu points, %zu kept, %.6f s\n", pointsGiven, pointsKept,
                     duration_s);
}

}  // namespace TA

#pragma once

#include <cstddef>

namespace TA {

/// One line about a finished plan, on the standard error stream from level "debug" down.
void logPlan(std::size_t pointsGiven, std::size_t pointsKept, double duration_s);

}  // namespace TA

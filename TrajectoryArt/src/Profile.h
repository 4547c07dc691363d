#pragma once

#include "Path.h"
#include "PlanOptions.h"

#include <cstdint>
#include <vector>

namespace TA {

/// A stretch of one line or blend that is passed with constant acceleration of the parameter:
/// s(t) = s0 + v0 (t - t0) + a/2 (t - t0)^2.
struct Phase {
    double start_s;           ///< t0, seconds
    double parameter;         ///< s0
    double speed;             ///< v0
    double halfAcceleration;  ///< a/2
    std::uint32_t piece;      ///< number of the line, or of the point that the blend rounds
    bool blend;
};

/// Contiguous in time and along the path; start and end at rest.
struct Profile {
    std::vector<Phase> phases;
    double duration_s = 0.0;
};

/// Finds the fastest profile along a path with at least one line.
Profile planProfile(const Path& path, const PlanOptions& options);

}  // namespace TA

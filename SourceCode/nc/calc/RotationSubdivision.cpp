#include "nc/calc/RotationSubdivision.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr int kAxisEntries = 5;
}

std::optional<double> subdivisionSteps(const WayPoint& from, const WayPoint& to,
                                       const RotationLimits& limits) {
    const double swing = std::max(std::abs(to[3] - from[3]), std::abs(to[4] - from[4]));
    if (!(swing >= limits.angle_deg))
        return std::nullopt;
    const double distance = std::hypot(to[0] - from[0], to[1] - from[1], to[2] - from[2]);
    if (!(distance <= limits.distance_mm))
        return std::nullopt;
    return std::floor(swing / limits.step_deg);
}

WayPoint subdivisionPoint(const WayPoint& from, const WayPoint& to, std::size_t index, std::size_t steps,
                          double feed) {
    const double part = static_cast<double>(index) / static_cast<double>(steps);
    WayPoint point;
    for (int i = 0; i < kAxisEntries; ++i)
        point.append(from[i] + part * (to[i] - from[i]));
    point.append(feed);
    return point;
}

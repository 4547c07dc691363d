#pragma once

#include <cstddef>
#include <optional>

#include "core/calc/WayPoint.h"

/// When a big rotary swing over a short way gets points of its own.
struct RotationLimits {
    double distance_mm = 3.0;  ///< longer moves are left alone
    double angle_deg = 10.0;   ///< smaller swings are left alone
    double step_deg = 0.1;     ///< swing of axis 4 or 5, the larger, from point to point
};

/// How many steps the move from `from` to `to` is divided into; nothing when it is left alone. May be
/// beyond every integer.
[[nodiscard]] std::optional<double> subdivisionSteps(const WayPoint& from, const WayPoint& to,
                                                     const RotationLimits& limits);

/// Point `index` of `steps` on the straight line between two way points: five axis entries and the feed, no
/// auxiliary value.
[[nodiscard]] WayPoint subdivisionPoint(const WayPoint& from, const WayPoint& to, std::size_t index,
                                        std::size_t steps, double feed);

#pragma once

#include <array>
#include <cstddef>
#include <vector>

using ArcPoint = std::array<double, 3>;

/// A circular arc in the first two coordinates, the third running evenly along it (mm). Of the two arcs of
/// this radius it is the one of at most 180 degrees.
struct Arc {
    ArcPoint start{};
    ArcPoint end{};
    double radius_mm = 0;
    bool clockwise = true;
};

enum class ArcFault {
    None,
    NoChord,         ///< start and end coincide in the first two coordinates
    ChordTooLong,    ///< chord above twice the radius
    RadiusTooLarge,  ///< above kLargestArcRadius_mm
    TooManyPoints    ///< more points than allowed
};

/// Beyond it a centre in double precision is no longer exact to a micrometre.
inline constexpr double kLargestArcRadius_mm = 1e9;

/// Points along the arc, 1 mm apart by arc length, the first near the start; the end itself is appended
/// exactly. `points` is overwritten, and empty when there is a fault.
[[nodiscard]] ArcFault arcPoints(const Arc& arc, std::size_t mostPoints, std::vector<ArcPoint>& points);

#pragma once

#include <TA/Trajectory.h>

#include <cstddef>
#include <vector>

namespace TA {

/// How corners are rounded; it also decides how acceleration is limited.
enum class BlendShape {
    Bezier,  ///< quadratic Bezier curve, acceleration limited per axis
    Circle   ///< circular arc, length of the acceleration vector limited
};

/// The options of Trajectory::Create, checked, in one form for all algorithms.
struct PlanOptions {
    BlendShape shape = BlendShape::Bezier;
    double blendTolerance = 0.0;            ///< in units of the points, 0: every corner is a stop
    double overlapShare = 0.0;              ///< share of blendTolerance within which points coincide
    double colinearShare = 0.0;             ///< share of blendTolerance within which points are collinear
    double speed = 0.0;                     ///< largest path speed
    std::vector<double> axisSpeeds;         ///< empty: only the path speed is limited
    std::vector<double> axisAccelerations;  ///< for BlendShape::Bezier
    double totalAcceleration = 0.0;  ///< for BlendShape::Circle; otherwise the length of axisAccelerations
};

/// Reads and checks the options for points with `dimension` entries; 0 when there is no point to tell.
/// Throws std::invalid_argument with a sentence that names the option.
PlanOptions readOptions(const Trajectory::Options& options, std::size_t dimension);

}  // namespace TA

#pragma once

#include <cstddef>
#include <vector>

/// The fastest motion along a blended polyline, found on a fine grid by code that shares nothing with
/// the library: every point is kept, every blend is built from its definition, every node is searched by
/// bisection. Slow, plain, and converging to the optimum as the grid becomes finer.
namespace reference {

using Vector = std::vector<double>;

struct Limits {
    bool circle = false;  ///< circular blends and one total acceleration, else Bezier and one per axis
    double tolerance = 0.5;
    double speed = 100.0;
    Vector axisSpeeds;          ///< may be empty
    Vector axisAccelerations;   ///< Bezier
    double acceleration = 0.0;  ///< circle
};

/// Seconds. Every line and every blend gets `nodes` intervals.
double optimalDuration(const std::vector<Vector>& points, const Limits& limits, int nodes);

/// The distance of a point from a segment.
double distanceToSegment(const Vector& point, const Vector& from, const Vector& to);

}  // namespace reference

#pragma once

#include <cstddef>
#include <vector>

namespace TA {

/// A polyline without coinciding neighbours, with its segments' unit directions and lengths.
///
/// Vectors lie in rows of `stride` numbers, an even count; entries behind `dimension` are zero. So
/// passes over a row need no remainder, and an axis that is not there never limits anything.
struct Polyline {
    std::size_t dimension = 0;
    std::size_t stride = 0;
    std::size_t count = 0;       ///< points
    double magnitude = 0.0;      ///< largest |coordinate|; its rounding is the finest that can be told
    double dropped = 0.0;        ///< bound of the distance of dropped coinciding points from the kept ones
    std::vector<double> points;  ///< count rows
    std::vector<double> directions;  ///< count - 1 rows, each of length 1
    std::vector<double> lengths;     ///< count - 1
    std::vector<double> sag;  ///< count - 1: largest distance of a dropped collinear point; empty: all 0

    const double* point(std::size_t i) const { return points.data() + i * stride; }
    const double* direction(std::size_t i) const { return directions.data() + i * stride; }
    double sagOf(std::size_t i) const { return sag.empty() ? 0.0 : sag[i]; }
};

/// Checks the points and drops those within `overlap` of the point kept before (at least exact
/// duplicates and what rounding cannot tell from them). First and last point always stay.
/// Throws std::invalid_argument that names the index of a point at fault.
Polyline readPolyline(const std::vector<std::vector<double>>& points, double overlap);

}  // namespace TA

#include "nc/calc/ArcPoints.h"

#include <algorithm>
#include <cmath>
#include <limits>

// Sketch, counter-clockwise (the centre lies left of the chord S -> E; clockwise: right):
//
//            C            c = |E - S|, u = (E - S) / c, M the middle of the chord
//           /|\           h = sqrt(R^2 - (c/2)^2)
//        R / |h\ R        C = M + h * (-u_y, u_x)
//         /  |  \         .
//        S---M---E        invariant: every point lies at distance R from C

namespace {

constexpr double kFullTurn = 6.283185307179586;

/// How far a chord may exceed the diameter by rounding alone: the coordinates come from single precision, so
/// a half circle's ends carry an error of a unit in the last place each. Never more than a thousandth of R.
double roundingAllowance(const Arc& arc) {
    double largest = 0.0;
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}})
        largest = std::max({largest, std::abs(arc.start[i]), std::abs(arc.end[i])});
    constexpr double kUnit = std::numeric_limits<float>::epsilon();
    return std::min(2.0 * kUnit * largest, 1e-3 * std::abs(arc.radius_mm));
}

double sweepOf(const Arc& arc, double a0, double a1) {
    double sweep = arc.clockwise ? a0 - a1 : a1 - a0;
    if (sweep < 0.0)
        sweep += kFullTurn;
    // The arc is never above a half turn; a chord too short for the two angles to differ may come out as a
    // full one.
    constexpr double kClearlyAboveHalf = 0.6 * kFullTurn;
    return sweep > kClearlyAboveHalf ? 0.0 : sweep;
}

}  // namespace

ArcFault arcPoints(const Arc& arc, std::size_t mostPoints, std::vector<ArcPoint>& points) {
    points.clear();
    const ArcPoint& s = arc.start;
    const ArcPoint& e = arc.end;
    const double radius = arc.radius_mm;
    const double chord = std::hypot(e[0] - s[0], e[1] - s[1]);
    if (!(chord > 0.0))
        return ArcFault::NoChord;
    if (chord > 2.0 * radius + roundingAllowance(arc))
        return ArcFault::ChordTooLong;
    if (radius > kLargestArcRadius_mm)
        return ArcFault::RadiusTooLarge;

    const double side = arc.clockwise ? -1.0 : 1.0;
    const double height = side * std::sqrt(std::max(0.0, radius * radius - chord * chord / 4.0));
    const double centreX = (s[0] + e[0]) / 2.0 - height * (e[1] - s[1]) / chord;
    const double centreY = (s[1] + e[1]) / 2.0 + height * (e[0] - s[0]) / chord;
    const double a0 = std::atan2(s[1] - centreY, s[0] - centreX);
    const double a1 = std::atan2(e[1] - centreY, e[0] - centreX);
    const double sweep = sweepOf(arc, a0, a1);
    const double length = sweep * radius;
    if (!(length + 2.0 <= static_cast<double>(mostPoints)))
        return ArcFault::TooManyPoints;

    const auto steps = static_cast<std::size_t>(std::floor(length));
    points.reserve(steps + 2);
    for (std::size_t i = 0; i <= steps; ++i) {
        const auto along = static_cast<double>(i);
        const double turned = along / radius;
        const double angle = turned > sweep ? a1 : a0 + side * turned;
        const double part = length == 0.0 ? 0.0 : std::min(length, along) / length;
        points.push_back({centreX + radius * std::cos(angle), centreY + radius * std::sin(angle),
                          s[2] + (e[2] - s[2]) * part});
    }
    points.push_back(e);
    return ArcFault::None;
}

#pragma once

#include "Reference.h"

#include <TA/Trajectory.h>

#include <memory>
#include <string>
#include <vector>

namespace support {

using Points = std::vector<std::vector<double>>;

enum class Algorithm { Toppra, ConstantSpeed, Trapezoidal };

inline constexpr Algorithm everyAlgorithm[] = {Algorithm::Toppra, Algorithm::ConstantSpeed,
                                               Algorithm::Trapezoidal};

/// Equal limits of all axes.
reference::Limits equalLimits(std::size_t dimension, double speed, double acceleration, double tolerance);

/// The same limits in another unit of length.
reference::Limits scaled(reference::Limits limits, double factor);
Points scaled(Points points, double factor);

TA::Trajectory::Options optionsOf(Algorithm algorithm, const reference::Limits& limits);
std::shared_ptr<TA::Trajectory> plan(Algorithm algorithm, const Points& points,
                                     const reference::Limits& limits);

/// What the positions themselves show, each as a share of its limit.
struct Measured {
    double speed = 0.0;         ///< first differences
    double acceleration = 0.0;  ///< second differences, at rest before the start and behind the end
    double deviation = 0.0;     ///< distance from the polyline
    bool finite = true;
};

/// Samples every `period_s`, at most `most` of them from `start_s` on. What rounding of the coordinates
/// adds to a difference is taken off.
Measured measure(const TA::Trajectory& motion, Algorithm algorithm, const Points& points,
                 const reference::Limits& limits, double period_s, double start_s = 0.0,
                 std::size_t most = 20000);

/// All of a motion: limits at several periods, deviation, end points, rest at both ends. The text is
/// empty, or says what is wrong.
std::string faults(const TA::Trajectory& motion, Algorithm algorithm, const Points& points,
                   const reference::Limits& limits, std::size_t samples = 4000);

/// Plans and checks with all three algorithms.
std::string faultsOfAll(const Points& points, const reference::Limits& limits, std::size_t samples = 4000);

/// The points as C++ text, to repeat a failure.
std::string print(const Points& points);

}  // namespace support

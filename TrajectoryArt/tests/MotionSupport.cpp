#include "MotionSupport.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

namespace support {
namespace {

/// How much of a limit a motion may use, by measurement.
constexpr double mostOfLimit = 1.0001;

double magnitudeOf(const Points& points) {
    double magnitude = 0.0;
    for (const auto& point : points)
        for (const double value : point)
            magnitude = std::max(magnitude, std::abs(value));
    return magnitude;
}

double distanceToPolyline(const std::vector<double>& position, const Points& points) {
    double nearest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        nearest = std::min(nearest, reference::distanceToSegment(position, points[i], points[i + 1]));
    return nearest;
}

double speedShare(const std::vector<double>& a, const std::vector<double>& b, double period, double rounding,
                  Algorithm algorithm, const reference::Limits& limits) {
    double square = 0.0;
    double share = 0.0;
    for (std::size_t k = 0; k < a.size(); ++k) {
        const double speed = std::max(0.0, std::abs(b[k] - a[k]) - rounding) / period;
        square += speed * speed;
        if (algorithm == Algorithm::Toppra && !limits.axisSpeeds.empty())
            share = std::max(share, speed / limits.axisSpeeds[k]);
    }
    return std::max(share, std::sqrt(square) / limits.speed);
}

double accelerationShare(const std::vector<double>& a, const std::vector<double>& b,
                         const std::vector<double>& c, double period, double rounding, Algorithm algorithm,
                         const reference::Limits& limits) {
    double square = 0.0;
    double share = 0.0;
    for (std::size_t k = 0; k < a.size(); ++k) {
        const double difference = std::abs((c[k] - b[k]) - (b[k] - a[k]));
        const double value = std::max(0.0, difference - rounding) / (period * period);
        square += value * value;
        share = std::max(share, value / limits.axisAccelerations[k]);
    }
    return algorithm == Algorithm::ConstantSpeed ? std::sqrt(square) / limits.acceleration : share;
}

std::string describe(const Measured& measured, double period) {
    std::ostringstream text;
    if (!measured.finite)
        text << "a position is not finite; ";
    if (measured.speed > mostOfLimit)
        text << "speed " << measured.speed << " of its limit at period " << period << "; ";
    if (measured.acceleration > mostOfLimit)
        text << "acceleration " << measured.acceleration << " of its limit at period " << period << "; ";
    if (measured.deviation > 1.0 + 1e-9)
        text << "deviation " << measured.deviation << " of the tolerance; ";
    return text.str();
}

}  // namespace

reference::Limits equalLimits(std::size_t dimension, double speed, double acceleration, double tolerance) {
    reference::Limits limits;
    limits.speed = speed;
    limits.tolerance = tolerance;
    limits.acceleration = acceleration;
    limits.axisAccelerations.assign(dimension, acceleration);
    return limits;
}

reference::Limits scaled(reference::Limits limits, double factor) {
    limits.speed *= factor;
    limits.tolerance *= factor;
    limits.acceleration *= factor;
    for (double& value : limits.axisAccelerations)
        value *= factor;
    for (double& value : limits.axisSpeeds)
        value *= factor;
    return limits;
}

Points scaled(Points points, double factor) {
    for (auto& point : points)
        for (double& value : point)
            value *= factor;
    return points;
}

TA::Trajectory::Options optionsOf(Algorithm algorithm, const reference::Limits& limits) {
    TA::Trajectory::Options options;
    options["tolerance_blend"] = limits.tolerance;
    options["tolerance_overlap"] = 0.0;
    options["tolerance_colinear"] = 0.01;
    if (algorithm == Algorithm::ConstantSpeed) {
        options["algorithm"] = std::string("trapezoidal_constant_speed");
        options["path_type"] = std::string("circle_blend");
        options["speed"] = limits.speed;
        options["acceleration"] = limits.acceleration;
        return options;
    }
    options["path_type"] = std::string("bezier_quadratic_blend");
    options["acc_limits"] = limits.axisAccelerations;
    if (algorithm == Algorithm::Trapezoidal) {
        options["algorithm"] = std::string("trapezoidal");
        options["vel_limits"] = limits.speed;
        return options;
    }
    options["algorithm"] = std::string("toppra");
    options["vel_limits"] = limits.axisSpeeds.empty()
                                ? std::vector<double>(limits.axisAccelerations.size(), limits.speed)
                                : limits.axisSpeeds;
    options["speed"] = limits.speed;
    options["step_size"] = 0.1;
    return options;
}

std::shared_ptr<TA::Trajectory> plan(Algorithm algorithm, const Points& points,
                                     const reference::Limits& limits) {
    return TA::Trajectory::Create(points, optionsOf(algorithm, limits));
}

Measured measure(const TA::Trajectory& motion, Algorithm algorithm, const Points& points,
                 const reference::Limits& limits, double period_s, double start_s, std::size_t most) {
    Measured result;
    const double rounding = 16.0 * std::numeric_limits<double>::epsilon() * magnitudeOf(points);
    const auto needed = static_cast<std::size_t>((motion.GetDuration() - start_s) / period_s) + 4;
    const std::size_t count = std::min(most, needed);
    std::vector<double> a = motion.GetPosition(start_s - 2.0 * period_s);
    std::vector<double> b = motion.GetPosition(start_s - period_s);
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<double> c = motion.GetPosition(start_s + static_cast<double>(i) * period_s);
        for (const double value : c)
            result.finite = result.finite && std::isfinite(value);
        result.speed = std::max(result.speed, speedShare(b, c, period_s, rounding, algorithm, limits));
        result.acceleration =
            std::max(result.acceleration, accelerationShare(a, b, c, period_s, rounding, algorithm, limits));
        if (i % 8 == 0)
            result.deviation =
                std::max(result.deviation, (distanceToPolyline(c, points) - rounding) / limits.tolerance);
        a = std::move(b);
        b = std::move(c);
    }
    return result;
}

std::string faults(const TA::Trajectory& motion, Algorithm algorithm, const Points& points,
                   const reference::Limits& limits, std::size_t samples) {
    const double duration = motion.GetDuration();
    if (!std::isfinite(duration) || duration <= 0.0)
        return "duration " + std::to_string(duration);
    std::string text;
    if (motion.GetPosition(0.0) != points.front() || motion.GetPosition(duration) != points.back())
        text += "an end is not its point; ";
    const double fine = duration / static_cast<double>(samples);
    for (const double period : {fine, 0.0005, 0.001, 0.0023, 0.004})
        text += describe(measure(motion, algorithm, points, limits, period, 0.0, samples + 4), period);
    return text;
}

std::string faultsOfAll(const Points& points, const reference::Limits& limits, std::size_t samples) {
    std::string text;
    for (const Algorithm algorithm : everyAlgorithm) {
        const std::string fault =
            faults(*plan(algorithm, points, limits), algorithm, points, limits, samples);
        if (!fault.empty())
            text += "algorithm " + std::to_string(static_cast<int>(algorithm)) + ": " + fault + "\n";
    }
    return text;
}

std::string print(const Points& points) {
    std::ostringstream text;
    text.precision(17);
    text << "{";
    for (const auto& point : points) {
        text << "{";
        for (std::size_t k = 0; k < point.size(); ++k)
            text << (k == 0 ? "" : ", ") << point[k];
        text << "}, ";
    }
    text << "}";
    return text.str();
}

}  // namespace support

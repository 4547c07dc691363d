#include "PlanOptions.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

namespace TA {
namespace {

/// Points dropped with a share of the blend tolerance leave the rest to the corners; a quarter is the
/// most that they may take, so that a careless share cannot use up the room for blending.
constexpr double largestShare = 0.25;

[[noreturn]] void fail(const std::string& name, const std::string& complaint) {
    throw std::invalid_argument("Option \"" + name + "\" " + complaint + ".");
}

const Trajectory::Option& find(const Trajectory::Options& options, const std::string& name) {
    const auto found = options.find(name);
    if (found == options.end())
        fail(name, "is missing");
    return found->second;
}

std::string text(const Trajectory::Options& options, const std::string& name) {
    const auto* value = std::get_if<std::string>(&find(options, name));
    if (value == nullptr)
        fail(name, "must be a text");
    return *value;
}

/// A whole number counts as a number; a bool does not.
double number(const Trajectory::Options& options, const std::string& name) {
    const Trajectory::Option& option = find(options, name);
    double value = 0.0;
    if (const auto* real = std::get_if<double>(&option))
        value = *real;
    else if (const auto* whole = std::get_if<int>(&option))
        value = *whole;
    else
        fail(name, "must be a number");
    if (!std::isfinite(value))
        fail(name, "must be finite");
    return value;
}

double positive(const Trajectory::Options& options, const std::string& name) {
    const double value = number(options, name);
    if (value <= 0.0)
        fail(name, "must be above zero");
    return value;
}

double notNegative(const Trajectory::Options& options, const std::string& name) {
    const double value = number(options, name);
    if (value < 0.0)
        fail(name, "must not be negative");
    return value;
}

std::vector<double> positives(const Trajectory::Options& options, const std::string& name,
                              std::size_t dimension) {
    const auto* values = std::get_if<std::vector<double>>(&find(options, name));
    if (values == nullptr)
        fail(name, "must be a vector of numbers");
    if (dimension != 0 && values->size() != dimension)
        fail(name, "has " + std::to_string(values->size()) + " entries, but a point has " +
                       std::to_string(dimension));
    for (std::size_t k = 0; k < values->size(); ++k) {
        if (!std::isfinite((*values)[k]))
            fail(name, "must be finite in entry " + std::to_string(k));
        if ((*values)[k] <= 0.0)
            fail(name, "must be above zero in entry " + std::to_string(k));
    }
    return *values;
}

double lengthOf(const std::vector<double>& values) {
    double sum = 0.0;
    for (const double value : values)
        sum = std::hypot(sum, value);
    return sum;
}

void requirePathType(const Trajectory::Options& options, const std::string& offered,
                     const std::string& algorithm) {
    const std::string given = text(options, "path_type");
    if (given != offered)
        fail("path_type", "is \"" + given + "\", but \"" + algorithm + "\" offers \"" + offered + "\"");
}

/// A number limits the path speed. A vector limits the axes, and its length the path speed with them.
void readSpeeds(const Trajectory::Options& options, std::size_t dimension, bool speedRequired,
                PlanOptions& result) {
    if (std::holds_alternative<std::vector<double>>(find(options, "vel_limits"))) {
        result.axisSpeeds = positives(options, "vel_limits", dimension);
        result.speed = lengthOf(result.axisSpeeds);
    } else {
        result.speed = positive(options, "vel_limits");
    }
    if (!speedRequired && !options.contains("speed"))
        return;
    result.speed = std::min(result.speed, positive(options, "speed"));
}

void readBezier(const Trajectory::Options& options, std::size_t dimension, const std::string& algorithm,
                PlanOptions& result) {
    const bool stepped = algorithm == "toppra";
    requirePathType(options, "bezier_quadratic_blend", algorithm);
    result.shape = BlendShape::Bezier;
    readSpeeds(options, dimension, stepped, result);
    result.axisAccelerations = positives(options, "acc_limits", dimension);
    result.totalAcceleration = lengthOf(result.axisAccelerations);
    if (stepped)
        positive(options, "step_size");  // the grid chooses itself; the value is only checked
}

}  // namespace

PlanOptions readOptions(const Trajectory::Options& options, std::size_t dimension) {
    PlanOptions result;
    const std::string algorithm = text(options, "algorithm");
    if (algorithm == "toppra" || algorithm == "trapezoidal") {
        readBezier(options, dimension, algorithm, result);
    } else if (algorithm == "trapezoidal_constant_speed") {
        requirePathType(options, "circle_blend", algorithm);
        result.shape = BlendShape::Circle;
        result.speed = positive(options, "speed");
        result.totalAcceleration = positive(options, "acceleration");
    } else {
        fail("algorithm", "is \"" + algorithm + "\", which is not an algorithm of this library");
    }
    result.blendTolerance = notNegative(options, "tolerance_blend");
    result.overlapShare = std::min(notNegative(options, "tolerance_overlap"), largestShare);
    result.colinearShare = std::min(notNegative(options, "tolerance_colinear"), largestShare);
    return result;
}

}  // namespace TA

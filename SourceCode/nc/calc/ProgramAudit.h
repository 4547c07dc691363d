#pragma once

#include <QChar>
#include <QString>
#include <cstddef>
#include <optional>
#include <vector>

#include "core/calc/Diagnostics.h"
#include "machine/calc/MachineDescription.h"

// What a re-timed program asks of the machine, measured from its own lines and from nothing else.
//
// The controller runs one line per interpolation period p. With q[k] the positions of the lines, at rest on
// q[0] before the first and on q[n-1] behind the last one:
//
//     v[k] = (q[k] - q[k-1]) / p      a[k] = (v[k] - v[k-1]) / p      j[k] = (a[k] - a[k-1]) / p
//
// The last line of a run stands at the end of the motion, less than a period behind the line before. That is
// measured with a whole period as well, for so it is driven; it is also where the motion is one period later,
// since it rests there. So a motion whose acceleration stays below a limit never measures above it, the
// last step included.
//
// A tool change is driven by a cycle of the machine: the axes rest in front of it, and behind it they rest
// where the program finds them.

/// Rounding to three decimals moves each position by half of the last one, mm or degrees.
inline constexpr double kTextRounding = 0.0005;

/// What rounding alone can add to a measured velocity (per minute) and acceleration (per s^2): each position
/// of the difference quotient is off by kTextRounding at most.
[[nodiscard]] double velocityNoise_perMin(double period_s);
[[nodiscard]] double accelerationNoise_perS2(double period_s);

/// Largest values of one axis, mm or degrees.
struct AxisDemand {
    QChar letter;
    double maxVelocity_perMin = 0;
    double velocityLimit_perMin = 0;
    double maxAcceleration_perS2 = 0;
    double accelerationLimit_perS2 = 0;
    double maxJerk_perS3 = 0;
    double jerkLimit_perS3 = 0;
};

/// True when the axis is over its limit by more than the rounding of the text explains. A limit that is not a
/// positive number is not held against the program, and neither is jerk, which the planner does not limit.
[[nodiscard]] bool isOverVelocityLimit(const AxisDemand& axis, double period_s);
[[nodiscard]] bool isOverAccelerationLimit(const AxisDemand& axis, double period_s);
[[nodiscard]] bool isOverLimits(const AxisDemand& axis, double period_s);  ///< one of the two

struct ProgramAudit {
    std::size_t lines = 0;  ///< lines that are not empty
    double period_s = 0;
    double seconds = 0;  ///< lines times period
    std::vector<AxisDemand> axes;

    /// True when isOverLimits holds for an axis.
    [[nodiscard]] bool hasViolation() const;
};

/// Measures emitted code for the axes of `chain`, an axis of id 6 included. Words are modal; an axis rests
/// until its first word. Every line that is not empty lasts one period. Nothing and a Warning when the
/// machine has no interpolation period or the chain no axis.
[[nodiscard]] std::optional<ProgramAudit> auditProgram(const MachineDescription& machine,
                                                       const QString& chain, QStringView code,
                                                       Diagnostics& diagnostics);

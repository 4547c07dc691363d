#pragma once

#include <QChar>
#include <QString>
#include <QVector>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "core/calc/Diagnostics.h"
#include "core/calc/WayPoint.h"
#include "machine/calc/MachineDescription.h"
#include "nc/calc/AuxiliaryAxis.h"

// What re-timing needs beside the trajectory library: its options, the sampling of a finished trajectory
// into text, and the letters and limits of a chain.

/// Options as the trajectory library takes them.
using TrajectoryOptions =
    std::unordered_map<std::string, std::variant<std::string, double, bool, int, std::vector<double>>>;

/// Options of algorithm 0, 1 or 2; nothing for any other number. `speed` caps the path speed (points' units
/// per second), `accelerations` has one entry per dimension (per s^2).
[[nodiscard]] std::optional<TrajectoryOptions> trajectoryOptions(int algorithm, double speed_perS,
                                                                 double toleranceBlend_mm,
                                                                 const std::vector<double>& accelerations);

/// `points` as the library takes them.
[[nodiscard]] std::vector<std::vector<double>> trajectoryPoints(const WayPoints& points);

/// Neighbours that are equal in every entry reduced to one.
[[nodiscard]] WayPoints withoutRepeats(const WayPoints& points);

/// The line of a path that is a single point; one blank stands before its "F".
[[nodiscard]] QString singlePointLine(const WayPoint& point, const QVector<QChar>& letters,
                                      double speed_mmPerS);

/// A trajectory as sampling sees it.
struct TimedPath {
    double duration_s = 0;
    std::function<std::vector<double>(double)> positionAt;  ///< time in s -> one entry per letter
};

/// What sampling says when a position has not one entry per letter.
inline constexpr const char* kPositionSizeError = "position size not equal names size";

/// Lines that one text may have: eleven hours at 4 ms. The text of such a program is near the longest that
/// one text object can hold, so more is refused before memory is asked for.
inline constexpr double kMaxLines = 10'000'000;

/// One line per `period`, from time 0 on by repeated addition, and one line at exactly the end. Two blanks
/// stand before "F": the words end with one and the tail begins with one; readers search for words.
/// A duration of 0 gives an empty text. A duration or period that is not finite and positive, more than
/// kMaxLines, or a position of another size gives an empty text and a Fatal (size) or Warning diagnostic.
[[nodiscard]] QString sampleLines(const TimedPath& path, const QVector<QChar>& letters, double period_s,
                                  double speed_mmPerS, Diagnostics& diagnostics);

/// True when the planner can work with this path: every coordinate within 1e9 mm or degrees of zero, a speed
/// above zero. Otherwise a Warning tells which is not.
[[nodiscard]] bool isPlannable(const WayPoints& points, double speed_mmPerS, Diagnostics& diagnostics);

/// Letters and limits of the dimensions of a path, all of one size.
struct PathAxes {
    QVector<QChar> letters;
    std::vector<double> accelerations;  ///< per s^2
    std::vector<double> jerks;          ///< per s^3
};

/// The axes of `chain` by rising id and, last, the auxiliary axis when there is one.
[[nodiscard]] PathAxes pathAxes(const MachineDescription& machine, const QString& chain,
                                const AuxiliaryAxis* auxiliary);

/// The chain's own axis of id 6 as an auxiliary axis that stands at its `lower`; nothing without one.
[[nodiscard]] std::optional<AuxiliaryAxis> auxiliaryOfChain(const MachineDescription& machine,
                                                            const QString& chain);

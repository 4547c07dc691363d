#pragma once

#include <QChar>
#include <QString>
#include <QVector>
#include <cstddef>
#include <vector>

#include "core/calc/WayPoint.h"
#include "machine/calc/MachineDescription.h"
#include "nc/calc/AuxiliaryAxis.h"

// What the planner gets of a path: stretches of one feed, in the entries of the axes that the chain has.

/// The axes of a chain by rising id, that of id 6 included.
struct PlannerAxes {
    std::vector<int> ids;
    QVector<QChar> letters;             ///< as written to the controller
    std::vector<double> accelerations;  ///< mm or degrees per s^2
    std::vector<double> jerks;          ///< mm or degrees per s^3
};

/// Limits of the axis of id 6 are the group's auxiliary axis's, without one the machine file's.
[[nodiscard]] PlannerAxes plannerAxes(const MachineDescription& machine, const QString& chain,
                                      const AuxiliaryAxis* auxiliary);

/// The way points [begin, end) of a path at one feed. Every run but the first begins with the last point of
/// the run before it, so that runs share their seams.
struct FeedRun {
    std::size_t begin = 0;
    std::size_t end = 0;
    double feed_mmPerMin = 0;
};

/// The path cut where its feed changes; feeds are compared exactly.
[[nodiscard]] std::vector<FeedRun> feedRuns(const WayPoints& path);

/// The points of a run without feed, one entry for each of `ids`. `auxiliaryValue` is the entry of id 6 on
/// way points that have none.
[[nodiscard]] WayPoints plannerPoints(const WayPoints& path, const FeedRun& run, const std::vector<int>& ids,
                                      double auxiliaryValue);

/// Seconds that the run takes at the very least: max(L / v, 2 sqrt(L / |a|)) for a path of length L from
/// rest to rest at speed v. 0 without motion, infinite without speed.
[[nodiscard]] double leastRunTime_s(const WayPoints& plannerPoints, double feed_mmPerMin,
                                    const std::vector<double>& accelerations);

/// Most characters that writing the path with this many letters can take.
[[nodiscard]] double mostCharacters(const WayPoints& path, int letterCount);

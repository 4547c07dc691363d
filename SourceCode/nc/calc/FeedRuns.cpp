#include "nc/calc/FeedRuns.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int kAuxiliaryId = 6;

double distance(const WayPoint& a, const WayPoint& b) {
    double square = 0.0;
    for (int i = 0; i < a.size(); ++i)
        square += (b[i] - a[i]) * (b[i] - a[i]);
    return std::sqrt(square);
}

double lengthOf(const WayPoints& points) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += distance(points[i - 1], points[i]);
    return length;
}

double norm(const std::vector<double>& vector) {
    double square = 0.0;
    for (const double entry : vector)
        square += entry * entry;
    return std::sqrt(square);
}

}  // namespace

PlannerAxes plannerAxes(const MachineDescription& machine, const QString& chain,
                        const AuxiliaryAxis* auxiliary) {
    PlannerAxes axes;
    const AxisMap letters = machine.axisMap(chain, true);
    for (auto it = letters.begin(); it != letters.end(); ++it) {
        const numericalAxisStruct* const axis = machine.findAxis(it.value());
        if (axis == nullptr || it.key() < 1 || it.key() > kAuxiliaryId)
            continue;
        const bool fromGroup = it.key() == kAuxiliaryId && auxiliary != nullptr;
        axes.ids.push_back(it.key());
        axes.letters.push_back(it.value());
        axes.accelerations.push_back(fromGroup ? auxiliary->acceleration : axis->acceleration.toDouble());
        axes.jerks.push_back(fromGroup ? auxiliary->jerk : axis->jerk.toDouble());
    }
    return axes;
}

std::vector<FeedRun> feedRuns(const WayPoints& path) {
    std::vector<FeedRun> runs;
    for (std::size_t i = 0; i < path.size();) {
        const double feed = path[i].back();
        FeedRun run{i == 0 ? 0 : i - 1, i, feed};
        while (run.end < path.size() && path[run.end].back() == feed)
            ++run.end;
        i = run.end;
        runs.push_back(run);
    }
    return runs;
}

WayPoints plannerPoints(const WayPoints& path, const FeedRun& run, const std::vector<int>& ids,
                        double auxiliaryValue) {
    WayPoints points;
    points.reserve(run.end - run.begin);
    for (std::size_t i = run.begin; i < run.end; ++i) {
        const WayPoint& source = path[i];
        WayPoint point;
        for (const int id : ids) {
            const bool hasEntry = id < source.size();  // the last entry is the feed
            point.append(hasEntry ? source[id - 1] : auxiliaryValue);
        }
        points.push_back(point);
    }
    return points;
}

double leastRunTime_s(const WayPoints& plannerPoints, double feed_mmPerMin,
                      const std::vector<double>& accelerations) {
    constexpr double kSecondsPerMinute = 60.0;
    const double length = lengthOf(plannerPoints);
    if (length == 0.0)
        return 0.0;
    constexpr double kNever = std::numeric_limits<double>::infinity();
    // A feed that the re-timing of code takes for none either.
    constexpr double kNoFeed_mmPerMin = 0.1;
    if (!(feed_mmPerMin >= kNoFeed_mmPerMin) || !std::isfinite(length))
        return kNever;
    const double atSpeed = length / (feed_mmPerMin / kSecondsPerMinute);
    const double acceleration = norm(accelerations);
    // Limits that the machine file lacks are for the planner to judge.
    return acceleration > 0.0 ? std::max(atSpeed, 2.0 * std::sqrt(length / acceleration)) : atSpeed;
}

double mostCharacters(const WayPoints& path, int letterCount) {
    double largest = 1.0;
    for (const WayPoint& point : path) {
        for (int i = 0; i < point.size(); ++i)
            largest = std::max(largest, std::abs(point[i]));
    }
    const double digits = std::floor(std::log10(largest)) + 2.0;  // with a sign
    constexpr double kWordRest = 6.0;                             // letter, point, three decimals, blank
    constexpr double kLineRest = 6.0;                             // "G1 ", "F", line feed, rounding up
    return static_cast<double>(path.size()) * (letterCount * (digits + kWordRest) + digits + kLineRest);
}

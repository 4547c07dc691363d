#include "nc/calc/Retiming.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/calc/NumberText.h"
#include "nc/calc/LineWriter.h"

namespace {

// Thresholds of the library for dropping coinciding and collinear points.
constexpr double kToleranceOverlap = 0.0;
constexpr double kToleranceColinear = 0.01;
constexpr double kStepSize = 0.1;  ///< discretisation of the path for the solver of algorithm 0

constexpr double kSecondsPerMinute = 60.0;

QString feedTail(double speed_mmPerS) {
    std::string tail = " F";
    appendFixed0(tail, speed_mmPerS * kSecondsPerMinute);
    tail += '\n';
    return QString::fromStdString(tail);
}

double lineCountOf(double duration_s, double period_s) {
    return std::ceil(duration_s / period_s) + 1;
}

bool isSampleable(double duration_s, double period_s, Diagnostics& diagnostics) {
    if (!std::isfinite(duration_s) || duration_s < 0) {
        diagnostics.add(Severity::Warning,
                        QStringLiteral("the trajectory's duration of %1 s is no time").arg(duration_s));
        return false;
    }
    if (!std::isfinite(period_s) || period_s <= 0) {
        diagnostics.add(Severity::Warning,
                        QStringLiteral("interpolationTime of the machine file is %1 ms, expected a positive "
                                       "number")
                            .arg(period_s * 1000.0));
        return false;
    }
    const double lines = lineCountOf(duration_s, period_s);
    if (lines > kMaxLines) {
        diagnostics.add(Severity::Warning,
                        QStringLiteral("the program would run %1 s and have %2 lines, expected at most %3")
                            .arg(duration_s)
                            .arg(lines)
                            .arg(kMaxLines, 0, 'f', 0));
        return false;
    }
    return true;
}

/// Writes samples until the text is as long as it may be.
class Sampler {
  public:
    Sampler(const TimedPath& path, std::size_t letters, LineWriter& writer, QString tail)
        : path_(path), letters_(letters), writer_(writer), tail_(std::move(tail)) {}

    bool writeAt(double time_s, Diagnostics& diagnostics) {
        const std::vector<double> position = path_.positionAt(time_s);
        if (position.size() != letters_) {
            diagnostics.add(Severity::Fatal, QString::fromLatin1(kPositionSizeError));
            return false;
        }
        writer_.appendWords(position.data());
        writer_.append(tail_);
        if (writer_.isFull()) {
            diagnostics.add(Severity::Warning, QStringLiteral("the program is longer than a text can be"));
            return false;
        }
        return true;
    }

  private:
    const TimedPath& path_;
    std::size_t letters_;
    LineWriter& writer_;
    QString tail_;
};

}  // namespace

std::optional<TrajectoryOptions> trajectoryOptions(int algorithm, double speed_perS, double toleranceBlend_mm,
                                                   const std::vector<double>& accelerations) {
    TrajectoryOptions options{{"tolerance_blend", toleranceBlend_mm},
                              {"tolerance_overlap", kToleranceOverlap},
                              {"tolerance_colinear", kToleranceColinear}};
    switch (algorithm) {
        case 0:
            options["algorithm"] = std::string("toppra");
            options["path_type"] = std::string("bezier_quadratic_blend");
            options["vel_limits"] = std::vector<double>(accelerations.size(), speed_perS);
            options["acc_limits"] = accelerations;
            options["step_size"] = kStepSize;
            options["speed"] = speed_perS;
            return options;
        case 1:
            options["algorithm"] = std::string("trapezoidal_constant_speed");
            options["path_type"] = std::string("circle_blend");
            options["speed"] = speed_perS;
            options["acceleration"] =
                accelerations.empty() ? 0.0 : *std::max_element(accelerations.begin(), accelerations.end());
            return options;
        case 2:
            options["algorithm"] = std::string("trapezoidal");
            options["path_type"] = std::string("bezier_quadratic_blend");
            options["vel_limits"] = speed_perS;  // one number here, not a vector
            options["acc_limits"] = accelerations;
            return options;
        default:
            return std::nullopt;
    }
}

std::vector<std::vector<double>> trajectoryPoints(const WayPoints& points) {
    std::vector<std::vector<double>> result;
    result.reserve(points.size());
    for (const WayPoint& point : points)
        result.emplace_back(point.values.begin(), point.values.begin() + point.size());
    return result;
}

WayPoints withoutRepeats(const WayPoints& points) {
    WayPoints result = points;
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

QString singlePointLine(const WayPoint& point, const QVector<QChar>& letters, double speed_mmPerS) {
    LineWriter writer(letters);
    writer.appendWords(point.values.data());  // entries that the point has not are 0
    writer.appendFeed(speed_mmPerS * kSecondsPerMinute);
    return writer.take();
}

QString sampleLines(const TimedPath& path, const QVector<QChar>& letters, double period_s,
                    double speed_mmPerS, Diagnostics& diagnostics) {
    if (path.duration_s == 0.0 || !isSampleable(path.duration_s, period_s, diagnostics))
        return {};
    LineWriter writer(letters);
    writer.reserveLines(static_cast<std::size_t>(lineCountOf(path.duration_s, period_s)) + 1);
    Sampler sampler(path, static_cast<std::size_t>(letters.size()), writer, feedTail(speed_mmPerS));
    double time_s = 0.0;
    while (time_s < path.duration_s) {
        if (!sampler.writeAt(time_s, diagnostics))
            return {};
        time_s += period_s;  // a sum, not a product: the times of the lines are made so
    }
    if (!sampler.writeAt(path.duration_s, diagnostics))
        return {};
    return writer.take();
}

bool isPlannable(const WayPoints& points, double speed_mmPerS, Diagnostics& diagnostics) {
    constexpr double kFarthest = 1e9;
    if (!std::isfinite(speed_mmPerS) || speed_mmPerS <= 0) {
        diagnostics.add(Severity::Warning, QStringLiteral("a feed of F%1 moves nothing, expected more than 0")
                                               .arg(speed_mmPerS * kSecondsPerMinute));
        return false;
    }
    for (std::size_t index = 0; index < points.size(); ++index) {
        for (int i = 0; i < points[index].size(); ++i) {
            if (std::abs(points[index][i]) <= kFarthest)
                continue;
            diagnostics.add(Severity::Warning, QStringLiteral("way point %1 lies at %2, expected at most %3")
                                                   .arg(index + 1)
                                                   .arg(points[index][i])
                                                   .arg(kFarthest, 0, 'f', 0));
            return false;
        }
    }
    return true;
}

PathAxes pathAxes(const MachineDescription& machine, const QString& chain, const AuxiliaryAxis* auxiliary) {
    PathAxes axes;
    for (const QChar letter : machine.axisMap(chain, false))
        axes.letters.append(letter);
    axes.accelerations = machine.accelerations(chain);
    axes.jerks = machine.jerks(chain);
    if (auxiliary != nullptr && !auxiliary->name.isEmpty()) {
        axes.letters.append(auxiliary->name[0]);
        axes.accelerations.push_back(auxiliary->acceleration);
        axes.jerks.push_back(auxiliary->jerk);
    }
    return axes;
}

std::optional<AuxiliaryAxis> auxiliaryOfChain(const MachineDescription& machine, const QString& chain) {
    const std::shared_ptr<AuxiliaryAxis> axis = auxiliaryAxisOf(machine, chain);
    return axis == nullptr ? std::nullopt : std::optional(*axis);
}

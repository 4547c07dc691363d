#include "nc/multiThreadedTimeOptimal.h"

#include <QDebug>
#include <cmath>
#include <exception>
#include <utility>

#include "TA/Trajectory.h"
#include "core/ParaReader.h"
#include "core/UserDialogs.h"
#include "machine/readConfig.h"
#include "nc/calc/Retiming.h"
#include "nc/calc/WayPointText.h"

namespace {

void report(const Diagnostics& diagnostics) {
    for (const Diagnostic& entry : diagnostics.entries) {
        if (entry.severity == Severity::Fatal)
            qFatal("%s", qUtf8Printable(entry.text));
        qWarning().noquote() << entry.text;
    }
}

/// The auxiliary axis that takes part: the group's, otherwise the chain's own axis of id 6.
std::optional<AuxiliaryAxis> auxiliaryInUse(const std::shared_ptr<AuxiliaryAxis>& ofGroup,
                                            const QString& chain) {
    if (ofGroup != nullptr && !ofGroup->name.isEmpty())
        return *ofGroup;
    return auxiliaryOfChain(ConfigReader::instance().description(), chain);
}

/// Points of the code; the chain's own axis of id 6 stands still at its value when the code never names it.
WayPoints readPoints(const QString& code, const QString& chain, const std::optional<AuxiliaryAxis>& auxiliary,
                     bool isOfGroup) {
    const MachineDescription& machine = ConfigReader::instance().description();
    WayPoints points = WayPointsFromCode(machine, chain, code, auxiliary ? &*auxiliary : nullptr);
    if (auxiliary && !isOfGroup && !code.contains(auxiliary->name)) {
        for (WayPoint& point : points)
            point.back() = auxiliary->value;
    }
    return points;
}

}  // namespace

multiThreadedTimeOptimal::multiThreadedTimeOptimal(WayPoints points, std::vector<double> accelerations,
                                                   std::vector<double> jerks, double speed_mmPerS)
    : speed_mmPerS_(speed_mmPerS),
      accelerations_(std::move(accelerations)),
      jerks_(std::move(jerks)),
      points_(std::move(points)) {
    constexpr double kMillisecondsPerSecond = 1000.0;
    samplingPeriod_s_ = ConfigReader::instance().description().interpolationParameters.interpolationTime /
                        kMillisecondsPerSecond;
    const ParaReader settings;
    algorithm_ = settings.integer(QStringLiteral("StatusPreProcessing/TrajAlgorithem"), 2);
    toleranceBlend_mm_ = settings.number(QStringLiteral("StatusPreProcessing/ToleranceBlend"), 0.5);
}

std::shared_ptr<TA::Trajectory> multiThreadedTimeOptimal::algorithm(const WayPoints& points) const {
    qInfo() << "trajectory algorithm:" << algorithm_ << "\ttolerance_blend:" << toleranceBlend_mm_;
    const std::optional<TrajectoryOptions> options =
        trajectoryOptions(algorithm_, speed_mmPerS_, toleranceBlend_mm_, accelerations_);
    if (!options)
        return nullptr;
    try {
        return TA::Trajectory::Create(trajectoryPoints(points), *options);
    } catch (const std::exception& error) {
        qFatal("Exception caught in algorithm: %s.reset step size.do it again", error.what());
    } catch (...) {
        qFatal("Unknown exception caught in algorithm.reset step size.do it again");
    }
}

QString multiThreadedTimeOptimal::FormatIso(const QVector<QChar>& letters) {
    const WayPoints path = withoutRepeats(points_);
    if (path.empty())
        return {};
    if (path.size() == 1)
        return singlePointLine(path.front(), letters, speed_mmPerS_);
    Diagnostics diagnostics;
    QString text;
    if (isPlannable(path, speed_mmPerS_, diagnostics)) {
        const std::shared_ptr<TA::Trajectory> trajectory = algorithm(path);
        if (trajectory == nullptr)
            return {};
        // Only the form that returns a vector: a closed library has no other.
        const TimedPath timed{trajectory->GetDuration(),
                              [&trajectory](double time_s) { return trajectory->GetPosition(time_s); }};
        text = sampleLines(timed, letters, samplingPeriod_s_, speed_mmPerS_, diagnostics);
    }
    report(diagnostics);
    return text;
}

QString multiThreadedTimeOptimal::TimeOptimizeCode(const QString& code, const QString& chain,
                                                   const std::shared_ptr<AuxiliaryAxis>& auxiliary,
                                                   double factor, bool densePoint) {
    constexpr double kLeastFeed_mmPerMin = 0.1;
    constexpr double kSecondsPerMinute = 60.0;
    const std::optional<AuxiliaryAxis> axis = auxiliaryInUse(auxiliary, chain);
    WayPoints points = readPoints(code, chain, axis, auxiliary != nullptr);
    if (densePoint)
        points = smoothCorners(points);
    if (points.size() < 2)
        return {};
    const double feed_mmPerMin = lastFeed(code) * factor;
    if (std::abs(feed_mmPerMin) < kLeastFeed_mmPerMin)
        return {};

    PathAxes axes = pathAxes(ConfigReader::instance().description(), chain, axis ? &*axis : nullptr);
    multiThreadedTimeOptimal planner(std::move(points), std::move(axes.accelerations), std::move(axes.jerks),
                                     feed_mmPerMin / kSecondsPerMinute);
    QString text = planner.FormatIso(axes.letters);
    if (text.isEmpty())
        userDialogs().tell(UserDialogs::Kind::Critical, QStringLiteral("Error"),
                           QStringLiteral("Time optimal failed"));
    return text;
}

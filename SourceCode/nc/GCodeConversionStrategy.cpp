#include "nc/GCodeConversionStrategy.h"

#include <QDebug>
#include <QElapsedTimer>

#include "core/UserDialogs.h"
#include "core/calc/NumberText.h"
#include "machine/Transform.h"
#include "machine/readConfig.h"
#include "nc/calc/FeedRuns.h"
#include "nc/calc/IsoLetters.h"
#include "nc/calc/IsoPlacement.h"
#include "nc/calc/PathSplit.h"
#include "nc/calc/Retiming.h"
#include "nc/calc/WayPointText.h"
#include "nc/multiThreadedTimeOptimal.h"

namespace HandleIsoCode {

namespace {

constexpr int kForward = 0;

// A text holds at most 2^30 characters; half of it leaves room for the copies on the way.
constexpr double kMostCharacters = 5e8;
// Eleven hours at 4 ms.
constexpr double kMostReTimedLines = 1e7;

constexpr double kSecondsPerMinute = 60.0;

const MachineDescription& machine() {
    return ConfigReader::instance().description();
}

void logTime(const QString& name, const QElapsedTimer& timer) {
    qInfo().noquote() << QStringLiteral("\t\tName:") << name << QStringLiteral("Time:") << timer.elapsed()
                      << QStringLiteral(" ms");
}

}  // namespace

GCodeConverter::GCodeConverter(const QString& chain)
    : Chain(chain),
      rapidFeed(machine().interpolationParameters.rapidThreshold),
      interpreter_(machine(), chain, diagnostics_) {
    report();
}

bool GCodeConverter::doIt(const QString& code) {
    QElapsedTimer timer;
    timer.start();
    clearTexts();
    refused_ = false;
    if (!readProgram(code)) {
        wayPoints().clear();
        return false;
    }
    const std::size_t count = wayPoints().size();
    if (!writeTexts()) {
        clearTexts();
        wayPoints().clear();
        return false;
    }
    logTime(QStringLiteral("way points:%1 do it").arg(count), timer);
    return true;
}

bool GCodeConverter::readProgram(const QString& code) {
    interpreter_.rapidFeed = rapidFeed;
    interpreter_.auxiliaryValue =
        auxiliaryAxis ? std::optional<double>(auxiliaryAxis->value) : std::optional<double>();
    refused_ = !interpreter_.run(code, diagnostics_);
    report();
    return !refused_;
}

bool GCodeConverter::writeTexts() {
    DoUserTransform();
    DoUserMirror();
    if (!canBeWritten())
        return false;
    WorkCode = FormatWayPoints(wayPoints());
    if (tool != nullptr) {
        TransformationOperator(tool, axisShift, UserCoordinate, Chain, WCSName, kForward)
            .transformPoints(wayPoints());
        // From here on the path is in machine axes.
        if (!canBeWritten())
            return false;
    }
    takeShorterFifth(wayPoints(), previousFifth);
    LeadIn = FormatWayPoints(splitHead(wayPoints(), rapidFeed));
    LeadOut = FormatWayPoints(splitTail(wayPoints(), rapidFeed));
    if (reTime)
        IsoCode = DoTrajectoryOptimization();
    return !refused_;
}

bool GCodeConverter::canBeWritten() {
    if (!allFinite(wayPoints()))
        return refuse("a place of the program is out of range");
    if (mostCharacters(wayPoints(), WayPoint::kMaxEntries) > kMostCharacters)
        return refuse("the code of the program would be longer than a text can be");
    return true;
}

bool GCodeConverter::canBePlanned(const WayPoints& points, double feed_mmPerMin) {
    refused_ = !isPlannable(points, feed_mmPerMin / kSecondsPerMinute, diagnostics_);
    report();
    return !refused_;
}

bool GCodeConverter::HandleUPR(const QString& directive) {
    const bool done = interpreter_.handleUpr(directive, diagnostics_);
    report();
    return done;
}

void GCodeConverter::ResetAxis_1_2_3_Name() {
    static_cast<void>(interpreter_.resetLetters(diagnostics_));
    report();
}

void GCodeConverter::DoUserTransform() {
    const PlacementOutcome outcome =
        placeByUser(machine(), Chain, translation, offset, wayPoints(), diagnostics_);
    report();
    if (outcome == PlacementOutcome::OffsetIgnored)
        userDialogs().tell(UserDialogs::Kind::Warning, QStringLiteral("Warning"),
                           QStringLiteral("type not 3 or 3+2.offset is invalid."));
}

void GCodeConverter::DoUserMirror() {
    static_cast<void>(mirrorByUser(machine(), Chain, mirrorAngle, wayPoints(), diagnostics_));
    report();
}

QString GCodeConverter::DoTrajectoryOptimization() {
    if (wayPoints().empty())
        return {};
    QElapsedTimer timer;
    timer.start();
    const PlannerAxes axes = plannerAxes(machine(), Chain, auxiliaryAxis.get());
    const double auxiliary = auxiliaryValueOf(machine(), Chain, auxiliaryAxis.get());
    const double mostSeconds =
        kMostReTimedLines * machine().interpolationParameters.interpolationTime / 1000.0;
    double seconds = 0.0;
    QString code;
    for (const FeedRun& run : feedRuns(wayPoints())) {
        WayPoints points = plannerPoints(wayPoints(), run, axes.ids, auxiliary);
        const double leastTime_s = leastRunTime_s(points, run.feed_mmPerMin, axes.accelerations);
        if (leastTime_s > 0.0 && !canBePlanned(points, run.feed_mmPerMin))
            return {};
        seconds += leastTime_s;
        if (!(seconds <= mostSeconds)) {
            static_cast<void>(refuse("the program would run without an end at its feeds"));
            return {};
        }
        code += multiThreadedTimeOptimal(std::move(points), axes.accelerations, axes.jerks,
                                         run.feed_mmPerMin / kSecondsPerMinute)
                    .FormatIso(axes.letters);
    }
    logTime(QStringLiteral("Time Optimal"), timer);
    return code;
}

double GCodeConverter::ReadWord(QStringView line, QChar letter, bool* ok) {
    const std::optional<double> word = readWord(line, letter);
    if (ok != nullptr)
        *ok = word.has_value();
    return word.value_or(0.0);
}

QString GCodeConverter::FormatWayPoints(const WayPoints& points) const {
    const double auxiliary = auxiliaryValueOf(machine(), Chain, auxiliaryAxis.get());
    return ::FormatWayPoints(points, machine().axisMap(Chain, true), auxiliary);
}

bool GCodeConverter::refuse(const char* reason) {
    diagnostics_.add(Severity::Warning, QString::fromLatin1(reason));
    report();
    refused_ = true;
    return false;
}

void GCodeConverter::report() {
    for (; reported_ < diagnostics_.entries.size(); ++reported_) {
        const Diagnostic& entry = diagnostics_.entries[reported_];
        switch (entry.severity) {
            case Severity::Fatal:
                qFatal("%s", qUtf8Printable(entry.text));
            case Severity::Warning:
                qWarning().noquote() << (entry.line > 0 ? QStringLiteral("ISO line %1: ").arg(entry.line)
                                                        : QStringLiteral("ISO: ")) +
                                            entry.text;
                break;
            case Severity::Info:
                qInfo().noquote() << entry.text;
                break;
            case Severity::Debug:
                qDebug().noquote() << entry.text;
                break;
        }
    }
}

void GCodeConverter::clearTexts() {
    LeadIn.clear();
    LeadOut.clear();
    WorkCode.clear();
    IsoCode.clear();
}

}  // namespace HandleIsoCode

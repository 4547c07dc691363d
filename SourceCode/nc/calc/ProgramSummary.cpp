#include "nc/calc/ProgramSummary.h"

#include <algorithm>
#include <cmath>

#include "core/calc/NumberText.h"

namespace {

std::size_t countLines(QStringView code) {
    LineReader reader(code);
    std::size_t count = 0;
    while (reader.next())
        count += reader.line().isEmpty() ? 0U : 1U;
    return count;
}

QString whole(double value) {
    return QString::number(value, 'f', 0);
}

/// "4980 of 6000 mm/min": a limit that the machine file does not give is left out.
QString against(double measured, double limit, const QString& unit) {
    const QString value = whole(measured);
    if (limit > 0)
        return QStringLiteral("%1 of %2 %3").arg(value, whole(limit), unit);
    return QStringLiteral("%1 %2").arg(value, unit);
}

QString axisLine(const AxisDemand& axis, double period_s) {
    return QStringLiteral("axis %1: speed %2, acceleration %3%4\n")
        .arg(QString(axis.letter),
             against(axis.maxVelocity_perMin, axis.velocityLimit_perMin, QStringLiteral("per min")),
             against(axis.maxAcceleration_perS2, axis.accelerationLimit_perS2, QStringLiteral("per s^2")),
             isOverLimits(axis, period_s) ? QStringLiteral(", OVER") : QString());
}

}  // namespace

std::optional<ProgramSummary> summarizeProgram(const MachineDescription& machine, const QString& chain,
                                               QStringView workCode, QStringView isoCode, bool exceededTravel,
                                               Diagnostics& diagnostics) {
    const std::optional<ProgramAudit> audit = auditProgram(machine, chain, isoCode, diagnostics);
    if (!audit)
        return std::nullopt;
    ProgramSummary summary;
    summary.wayPoints = countLines(workCode);
    summary.lines = audit->lines;
    summary.seconds = audit->seconds;
    summary.period_s = audit->period_s;
    summary.axes = audit->axes;
    summary.isOverDynamicLimits = audit->hasViolation();
    summary.isOverTravelLimits = exceededTravel;
    return summary;
}

QString runTimeText(double seconds) {
    constexpr qint64 kTenthsPerMinute = 600;
    constexpr qint64 kMinutesPerHour = 60;
    const auto tenths = static_cast<qint64>(std::llround(seconds * 10));
    const qint64 minutes = tenths / kTenthsPerMinute;
    const double rest_s = static_cast<double>(tenths % kTenthsPerMinute) / 10.0;
    if (minutes == 0)
        return QStringLiteral("%1 s").arg(rest_s, 0, 'f', 1);
    const QString restText = QStringLiteral("%1 s").arg(rest_s, 4, 'f', 1, QLatin1Char('0'));
    if (minutes < kMinutesPerHour)
        return QStringLiteral("%1 min %2").arg(minutes).arg(restText);
    return QStringLiteral("%1 h %2 min %3")
        .arg(minutes / kMinutesPerHour)
        .arg(minutes % kMinutesPerHour, 2, 10, QLatin1Char('0'))
        .arg(restText);
}

QString summaryText(const ProgramSummary& summary) {
    QString text = QStringLiteral("way points: %1\nlines: %2\nrun time: %3 (%4 ms per line)\n")
                       .arg(summary.wayPoints)
                       .arg(summary.lines)
                       .arg(runTimeText(summary.seconds))
                       .arg(summary.period_s * 1000.0);
    for (const AxisDemand& axis : summary.axes)
        text += axisLine(axis, summary.period_s);
    text += QStringLiteral("speed and acceleration: %1 (three decimals alone measure up to %2 per s^2)\n")
                .arg(summary.isOverDynamicLimits ? QStringLiteral("over a limit")
                                                 : QStringLiteral("within the limits"),
                     whole(accelerationNoise_perS2(summary.period_s)));
    text += QStringLiteral("travel: %1\n")
                .arg(summary.isOverTravelLimits ? QStringLiteral("over a limit")
                                                : QStringLiteral("within the limits"));
    return text;
}

#include "nc/calc/ProgramAudit.h"

#include <algorithm>
#include <cmath>

#include "core/calc/NumberText.h"

namespace {

constexpr double kSecondsPerMinute = 60.0;

/// Difference quotients of one axis, fed with one position per period.
class AxisMeter {
  public:
    explicit AxisMeter(double period_s) : period_s_(period_s) {}

    void step(double position) {
        if (!isPlaced_) {
            isPlaced_ = true;
            position_ = position;
        }
        const double velocity = (position - position_) / period_s_;
        const double acceleration = (velocity - velocity_) / period_s_;
        const double jerk = (acceleration - acceleration_) / period_s_;
        largestVelocity_ = std::max(largestVelocity_, std::abs(velocity));
        largestAcceleration_ = std::max(largestAcceleration_, std::abs(acceleration));
        largestJerk_ = std::max(largestJerk_, std::abs(jerk));
        position_ = position;
        velocity_ = velocity;
        acceleration_ = acceleration;
    }

    /// Rests, and then stands wherever the next step says.
    void release() {
        comeToRest();
        isPlaced_ = false;
    }

    /// The axis stays where it is until its velocity and acceleration are 0.
    void comeToRest() {
        for (int i = 0; i < 3; ++i)
            step(position_);
    }

    [[nodiscard]] bool isPlaced() const { return isPlaced_; }
    [[nodiscard]] double position() const { return position_; }
    [[nodiscard]] double largestVelocity_perS() const { return largestVelocity_; }
    [[nodiscard]] double largestAcceleration_perS2() const { return largestAcceleration_; }
    [[nodiscard]] double largestJerk_perS3() const { return largestJerk_; }

  private:
    double period_s_;
    bool isPlaced_ = false;
    double position_ = 0;
    double velocity_ = 0;
    double acceleration_ = 0;
    double largestVelocity_ = 0;
    double largestAcceleration_ = 0;
    double largestJerk_ = 0;
};

struct MeteredAxis {
    QChar letter;
    AxisMeter meter;
};

void stepLine(QStringView line, std::vector<MeteredAxis>& axes) {
    for (MeteredAxis& axis : axes) {
        const std::optional<double> word = readWord(line, axis.letter);
        if (word)
            axis.meter.step(*word);
        else if (axis.meter.isPlaced())
            axis.meter.step(axis.meter.position());
    }
}

/// The command that changes the tool of a spindle, "M6 T#" with a number for the mark.
struct ToolChange {
    QString before;
    QString behind;

    [[nodiscard]] bool isOn(QStringView line) const {
        if (!line.startsWith(before) || !line.endsWith(behind))
            return false;
        const auto count = line.size() - before.size() - behind.size();
        if (count <= 0)
            return false;
        const QStringView number = line.mid(before.size(), count);
        return std::all_of(number.begin(), number.end(), [](QChar c) { return c.isDigit(); });
    }
};

std::vector<ToolChange> toolChanges(const MachineDescription& machine) {
    std::vector<ToolChange> changes;
    for (const auto& spindle : machine.spindles) {
        const int mark = spindle->toolChangeString.indexOf(QLatin1Char('#'));
        if (mark > 0)
            changes.push_back(
                {spindle->toolChangeString.left(mark), spindle->toolChangeString.mid(mark + 1)});
    }
    return changes;
}

AxisDemand demandOf(const MeteredAxis& axis, const numericalAxisStruct& record) {
    AxisDemand demand;
    demand.letter = axis.letter;
    demand.maxVelocity_perMin = axis.meter.largestVelocity_perS() * kSecondsPerMinute;
    demand.velocityLimit_perMin = record.maxVelocity.toDouble();
    demand.maxAcceleration_perS2 = axis.meter.largestAcceleration_perS2();
    demand.accelerationLimit_perS2 = record.acceleration.toDouble();
    demand.maxJerk_perS3 = axis.meter.largestJerk_perS3();
    demand.jerkLimit_perS3 = record.jerk.toDouble();
    return demand;
}

bool isOver(double measured, double limit, double noise) {
    constexpr double kArithmetic = 1e-9;  // of the difference quotients themselves
    return limit > 0 && measured > (limit + noise) * (1 + kArithmetic);
}

}  // namespace

double velocityNoise_perMin(double period_s) {
    return 2 * kTextRounding / period_s * kSecondsPerMinute;
}

double accelerationNoise_perS2(double period_s) {
    return 4 * kTextRounding / (period_s * period_s);
}

bool isOverVelocityLimit(const AxisDemand& axis, double period_s) {
    return isOver(axis.maxVelocity_perMin, axis.velocityLimit_perMin, velocityNoise_perMin(period_s));
}

bool isOverAccelerationLimit(const AxisDemand& axis, double period_s) {
    return isOver(axis.maxAcceleration_perS2, axis.accelerationLimit_perS2,
                  accelerationNoise_perS2(period_s));
}

bool isOverLimits(const AxisDemand& axis, double period_s) {
    return isOverVelocityLimit(axis, period_s) || isOverAccelerationLimit(axis, period_s);
}

bool ProgramAudit::hasViolation() const {
    return std::any_of(axes.begin(), axes.end(),
                       [this](const AxisDemand& axis) { return isOverLimits(axis, period_s); });
}

std::optional<ProgramAudit> auditProgram(const MachineDescription& machine, const QString& chain,
                                         QStringView code, Diagnostics& diagnostics) {
    constexpr double kMillisecondsPerSecond = 1000.0;
    ProgramAudit audit;
    audit.period_s = machine.interpolationParameters.interpolationTime / kMillisecondsPerSecond;
    if (audit.period_s <= 0) {
        diagnostics.add(Severity::Warning,
                        QStringLiteral("interpolationTime of the machine file is 0 ms, expected a positive "
                                       "number"));
        return std::nullopt;
    }
    std::vector<MeteredAxis> axes;
    for (const QChar letter : machine.axisMap(chain, true))
        axes.push_back({letter, AxisMeter(audit.period_s)});
    if (axes.empty()) {
        diagnostics.add(Severity::Warning, QStringLiteral("the chain \"%1\" has no axis").arg(chain));
        return std::nullopt;
    }

    const std::vector<ToolChange> changes = toolChanges(machine);
    LineReader reader(code);
    while (reader.next()) {
        const QStringView line = reader.line();
        if (line.isEmpty())
            continue;
        ++audit.lines;
        if (std::any_of(changes.begin(), changes.end(),
                        [line](const ToolChange& change) { return change.isOn(line); }))
            std::for_each(axes.begin(), axes.end(), [](MeteredAxis& axis) { axis.meter.release(); });
        else
            stepLine(line, axes);
    }
    audit.seconds = static_cast<double>(audit.lines) * audit.period_s;
    for (MeteredAxis& axis : axes) {
        axis.meter.comeToRest();
        audit.axes.push_back(demandOf(axis, *machine.findAxis(axis.letter)));
    }
    return audit;
}

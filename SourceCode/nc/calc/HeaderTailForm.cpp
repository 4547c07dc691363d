#include "nc/calc/HeaderTailForm.h"

#include <QStringView>

#include "core/calc/NumberText.h"
#include "nc/calc/WayPointText.h"

namespace {

constexpr int kToolAxisId = 3;

/// A rising tool axis clears the part by this much, mm.
constexpr double kRaise_mm = 100.0;

bool takesPart(const AuxiliaryAxis* auxiliary) {
    return auxiliary != nullptr && !auxiliary->name.isEmpty();
}

/// General format with six digits; in decimals where that would be an exponent, which no reader takes.
QString generalText(double value) {
    const QString text = QString::number(value);
    return text.contains(QLatin1Char('e')) ? QString::number(value, 'f', 3) : text;
}

bool isWithin(const numericalAxisStruct& axis, double value) {
    bool hasLower = false;
    bool hasUpper = false;
    const double lower = axis.lower.toDouble(&hasLower);
    const double upper = axis.upper.toDouble(&hasUpper);
    return hasLower && hasUpper && lower <= value && value <= upper;
}

}  // namespace

QMap<int, QString> formAxes(const MachineDescription& machine, const QString& chain,
                            const AuxiliaryAxis* auxiliary) {
    QMap<int, QString> labels;
    const AxisMap letters = machine.axisMap(chain, false);
    for (auto it = letters.begin(); it != letters.end(); ++it)
        labels.insert(it.key(), it.value());
    if (takesPart(auxiliary))
        labels.insert(auxiliary->id, auxiliary->name);
    return labels;
}

std::optional<QString> lineFromValues(const MachineDescription& machine, const QString& chain,
                                      const AuxiliaryAxis* auxiliary, const QMap<int, double>& values) {
    QString line = QStringLiteral("G1 ");
    const QMap<int, QString> axes = formAxes(machine, chain, auxiliary);
    for (auto it = axes.begin(); it != axes.end(); ++it) {
        const auto value = values.constFind(it.key());
        if (value == values.constEnd())
            return std::nullopt;
        line += it.value() + QString::number(*value, 'f', 3);
    }
    return line + QLatin1Char('F') + QString::number(machine.interpolationParameters.rapidThreshold, 'f', 0);
}

QMap<int, double> valuesFromLine(const MachineDescription& machine, const QString& chain,
                                 const AuxiliaryAxis* auxiliary, const QString& line) {
    const AuxiliaryAxis* const used = takesPart(auxiliary) ? auxiliary : nullptr;
    const WayPoints points = WayPointsFromCode(machine, chain, line, used);
    QMap<int, double> values;
    if (points.empty())
        return values;
    // Entries stand in the order of the ids, the auxiliary axis last: the order of the form's axes.
    int entry = 0;
    for (const int id : formAxes(machine, chain, used).keys())
        values.insert(id, points.front()[entry++]);
    return values;
}

QString raisedLine(const MachineDescription& machine, const QString& chain, const QString& line) {
    const QChar letter = machine.axisMap(chain, false).value(kToolAxisId);
    const numericalAxisStruct* const axis = letter.isNull() ? nullptr : machine.findAxis(letter);
    const int place = axis == nullptr ? -1 : line.indexOf(letter);
    if (place < 0)
        return line;
    const QStringView run = numberRun(line, place + 1);
    const std::optional<double> value = numberFromRun(run);
    if (!value || !isWithin(*axis, *value + kRaise_mm))
        return line;
    return QString(line).replace(place + 1, static_cast<int>(run.size()), generalText(*value + kRaise_mm));
}

void proposeOptimal(const MachineDescription& machine, HeaderTailRecord& record) {
    record.header = raisedLine(machine, record.chain, record.itemHeader);
    record.tail = raisedLine(machine, record.chain, record.itemTail);
}

void resetToHome(const MachineDescription& machine, HeaderTailRecord& record) {
    record.header = machine.homeLine(record.chain);
    record.tail = record.header;
}

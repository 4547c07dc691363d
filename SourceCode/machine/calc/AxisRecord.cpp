#include "machine/calc/AxisRecord.h"

#include <QLocale>
#include <cmath>

#include "machine/calc/MachineDescription.h"

namespace {

double finiteNumber(const QString& text) {
    const double number = text.toDouble();
    return std::isfinite(number) ? number : 0.0;
}

SbVec3f finite(const SbVec3f& vector) {
    const auto part = [&vector](int i) { return std::isfinite(vector[i]) ? vector[i] : 0.0F; };
    return {part(0), part(1), part(2)};
}

}  // namespace

AxisReading readAxis(const numericalAxisStruct& axis) {
    AxisReading reading;
    AxisRecord& record = reading.record;
    record.name = axis.name;
    record.kind = AxisRecord::Numerical;
    record.motionType = motionTypeFromText(axis.type);
    record.id = axis.id;
    const std::optional<SbVec3f> place = threeNumbers(axis.initialization);
    const std::optional<SbVec3f> direction = threeNumbers(axis.direction);
    const std::optional<SbVec3f> color = threeNumbers(axis.color);
    reading.hasVectors = place && direction;
    reading.hasColor = color.has_value();
    if (place)
        record.offset = finite(*place) * -1.0F;
    if (direction)
        record.direction = finite(*direction);
    if (color)
        record.color = SbColor(finite(*color));
    record.home = finiteNumber(axis.homePosition);
    record.lower = finiteNumber(axis.lower);
    record.upper = finiteNumber(axis.upper);
    record.modelPath = axis.modelPath;
    reading.dynamics = {finiteNumber(axis.maxVelocity), finiteNumber(axis.acceleration),
                        finiteNumber(axis.jerk)};
    return reading;
}

std::optional<AxisRecord> readAxis(const nonNumericalAxisStruct& part) {
    const std::optional<SbVec3f> place = threeNumbers(part.initialization);
    const std::optional<SbVec3f> direction = threeNumbers(part.direction);
    const std::optional<SbVec3f> color = threeNumbers(part.color);
    if (!place || !direction || !color)
        return std::nullopt;
    AxisRecord record;
    record.name = part.name;
    record.kind = AxisRecord::NonNumerical;
    record.motionType = motionTypeFromText(part.type);
    record.offset = finite(*place);
    record.direction = finite(*direction);
    record.color = SbColor(finite(*color));
    record.lower = finiteNumber(part.lower);
    record.upper = finiteNumber(part.upper);
    record.modelPath = part.modelPath;
    return record;
}

std::optional<float> wordValue(QStringView word) {
    static const QLocale plain = [] {
        QLocale locale = QLocale::c();
        locale.setNumberOptions(QLocale::RejectGroupSeparator);
        return locale;
    }();
    if (word.isEmpty())
        return std::nullopt;
    bool converted = false;
    const float value = plain.toFloat(word.mid(1), &converted);
    if (!converted || !std::isfinite(value))
        return std::nullopt;
    return value;
}

#include "machine/calc/SpindleRecord.h"

#include <QStringList>
#include <QVector>
#include <cmath>

namespace {

QVector<float> numbersOf(const QString& text) {
    QVector<float> numbers;
    for (const QString& part : text.trimmed().split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const float number = part.toFloat();
        numbers.append(std::isfinite(number) ? number : 0.0F);
    }
    return numbers;
}

SbVec3f firstThree(const QVector<float>& numbers) {
    return {numbers.value(0), numbers.value(1), numbers.value(2)};
}

/// Brackets of the text mean themselves; "#" is the speed, capture group 1.
QString startPattern(const QString& startString) {
    QString pattern;
    for (const QChar letter : startString) {
        if (QStringLiteral("[]{}()").contains(letter))
            pattern.append(QLatin1Char('\\'));
        if (letter == QLatin1Char('#'))
            pattern.append(QStringLiteral("(-?\\d*\\.?\\d+)"));
        else
            pattern.append(letter);
    }
    return pattern;
}

bool matches(const QRegularExpression& pattern, const QString& line, QRegularExpressionMatch* match) {
    if (pattern.pattern().isEmpty() || !pattern.isValid())
        return false;
    *match = pattern.match(line);
    return match->hasMatch();
}

}  // namespace

SpindleRecord readSpindle(const spindleStruct& spindle, Diagnostics& diagnostics) {
    constexpr int kPlaceParts = 4;
    constexpr int kDirectionParts = 3;
    SpindleRecord record;
    record.name = spindle.name;
    record.number = spindle.name.trimmed().remove(QLatin1Char('T')).toInt();
    const QVector<float> place = numbersOf(spindle.initialization);
    if (place.size() != kPlaceParts)
        diagnostics.add(Severity::Debug, QStringLiteral("\tname:") + spindle.name);
    record.offset = firstThree(place) * -1.0F;
    record.angle_deg = place.value(3);
    record.startString = spindle.startString;
    record.stopString = spindle.stopString;
    record.checkString = spindle.checkString;
    record.toolChangeString = spindle.toolChangeString;
    record.range = spindle.range.toInt();
    record.hasToolChanger = record.range > 1;
    record.coaxial = spindle.coaxial;
    record.parent = spindle.parent;
    record.color = SbColor(firstThree(numbersOf(spindle.color)));
    const QVector<float> direction = numbersOf(spindle.direction);
    if (direction.size() == kDirectionParts)
        record.direction = firstThree(direction);
    else
        diagnostics.addKey(Severity::Debug, QStringLiteral("SpindleNode/DirectionFormatErrorMsg"),
                           spindle.name);
    return record;
}

QString firstMCode(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral("M\\d+"));
    return pattern.match(text).captured(0);
}

SpindleCommands::SpindleCommands(const SpindleRecord& spindle)
    : start_(startPattern(spindle.startString)), stop_(spindle.stopString), check_(spindle.checkString) {}

SpindleReaction SpindleCommands::reactionTo(const QString& line) const {
    QRegularExpressionMatch match;
    if (matches(start_, line, &match)) {
        const QString speed = match.captured(1);
        return {SpindleReaction::Start, speed.toDouble(), speed};
    }
    if (matches(stop_, line, &match))
        return {SpindleReaction::Stop, 0, QStringLiteral("0.0")};
    if (matches(check_, line, &match))
        return {SpindleReaction::Check, 0, {}};
    return {};
}

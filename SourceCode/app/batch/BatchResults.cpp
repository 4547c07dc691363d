#include "app/batch/BatchResults.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

namespace {

QByteArray textOf(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Indented);  // ends in a line feed
}

}  // namespace

QString ConvertedTexts::section(const QString& name) const {
    if (name == QLatin1String("WorkCode"))
        return WorkCode;
    if (name == QLatin1String("LeadIn"))
        return LeadIn;
    if (name == QLatin1String("IsoCode"))
        return IsoCode;
    return name == QLatin1String("LeadOut") ? LeadOut : QString();
}

QByteArray convertedJson(const ConvertedTexts& texts) {
    return textOf({{QStringLiteral("WorkCode"), texts.WorkCode},
                   {QStringLiteral("LeadIn"), texts.LeadIn},
                   {QStringLiteral("IsoCode"), texts.IsoCode},
                   {QStringLiteral("LeadOut"), texts.LeadOut}});
}

QByteArray checkJson(const std::vector<AxisLimitRow>& rows, bool isExceeded) {
    QJsonArray axes;
    for (const AxisLimitRow& row : rows)
        axes.append(QJsonObject{{QStringLiteral("letter"), QString(row.letter)},
                                {QStringLiteral("lower"), row.lower},
                                {QStringLiteral("upper"), row.upper},
                                {QStringLiteral("min"), row.min},
                                {QStringLiteral("max"), row.max}});
    return textOf({{QStringLiteral("exceeded"), isExceeded}, {QStringLiteral("axes"), axes}});
}

QByteArray auditJson(const ProgramAudit& audit) {
    QJsonArray axes;
    for (const AxisDemand& axis : audit.axes)
        axes.append(QJsonObject{{QStringLiteral("letter"), QString(axis.letter)},
                                {QStringLiteral("maxVelocity"), axis.maxVelocity_perMin},
                                {QStringLiteral("velocityLimit"), axis.velocityLimit_perMin},
                                {QStringLiteral("maxAcceleration"), axis.maxAcceleration_perS2},
                                {QStringLiteral("accelerationLimit"), axis.accelerationLimit_perS2},
                                {QStringLiteral("maxJerk"), axis.maxJerk_perS3},
                                {QStringLiteral("jerkLimit"), axis.jerkLimit_perS3}});
    return textOf({{QStringLiteral("lines"), static_cast<qint64>(audit.lines)},
                   {QStringLiteral("seconds"), audit.seconds},
                   {QStringLiteral("axes"), axes}});
}

QByteArray simulationJson(const SimulationResult& result) {
    // Written by hand: a program that scrapes along for a million lines makes a long list.
    std::vector<QByteArray> pairs;
    for (const auto& [first, second] : result.pairs) {
        QByteArray names = QJsonDocument(QJsonArray{first, second}).toJson(QJsonDocument::Compact);
        names = names.mid(1, names.size() - 2);
        const int comma = names.indexOf("\",\"") + 1;
        pairs.push_back(", \"first\": " + names.left(comma) + ", \"second\": " + names.mid(comma + 1) + '}');
    }
    QByteArray text = "{\n    \"collisions\": [";
    const char* separator = "\n        ";
    for (const SimulatedContact& contact : result.contacts) {
        text += separator;
        text +=
            "{\"line\": " + QByteArray::number(contact.line) + pairs[static_cast<std::size_t>(contact.pair)];
        separator = ",\n        ";
    }
    text += result.contacts.empty() ? "],\n" : "\n    ],\n";
    text += "    \"lines\": " + QByteArray::number(result.lines) +
            ",\n    \"seconds\": " + QByteArray::number(result.seconds, 'g', 12) + "\n}\n";
    return text;
}

QString exceededText(const std::vector<AxisLimitRow>& rows) {
    QStringList parts;
    for (const AxisLimitRow& row : rows) {
        if (row.belowLower())
            parts.append(QStringLiteral("%1 reaches %2, expected %3 or more")
                             .arg(row.letter)
                             .arg(row.min)
                             .arg(row.lower));
        if (row.aboveUpper())
            parts.append(QStringLiteral("%1 reaches %2, expected %3 or less")
                             .arg(row.letter)
                             .arg(row.max)
                             .arg(row.upper));
    }
    return parts.join(QStringLiteral("; "));
}

QString violationText(const ProgramAudit& audit) {
    QStringList parts;
    for (const AxisDemand& axis : audit.axes) {
        if (isOverVelocityLimit(axis, audit.period_s))
            parts.append(QStringLiteral("%1 runs at %2 per min, expected at most %3")
                             .arg(axis.letter)
                             .arg(axis.maxVelocity_perMin)
                             .arg(axis.velocityLimit_perMin));
        if (isOverAccelerationLimit(axis, audit.period_s))
            parts.append(QStringLiteral("%1 accelerates by %2 per s^2, expected at most %3")
                             .arg(axis.letter)
                             .arg(axis.maxAcceleration_perS2)
                             .arg(axis.accelerationLimit_perS2));
    }
    return parts.join(QStringLiteral("; "));
}

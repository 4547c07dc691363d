#pragma once

#include <QByteArray>
#include <QString>
#include <utility>
#include <vector>

#include "machine/calc/AxisLimits.h"
#include "nc/calc/ProgramAudit.h"

// The results of tornvale-batch in their outer form: UTF-8, one JSON object, a line feed at the end.

/// The four texts of a conversion.
struct ConvertedTexts {
    QString WorkCode;
    QString LeadIn;
    QString IsoCode;
    QString LeadOut;

    /// The text of that name; empty for any other name.
    [[nodiscard]] QString section(const QString& name) const;
};

[[nodiscard]] QByteArray convertedJson(const ConvertedTexts& texts);
[[nodiscard]] QByteArray checkJson(const std::vector<AxisLimitRow>& rows, bool isExceeded);
[[nodiscard]] QByteArray auditJson(const ProgramAudit& audit);

/// Two nodes that touched on a line of the program.
struct SimulatedContact {
    int line = 0;  ///< from 1
    int pair = 0;  ///< which of the simulation's pairs
};

/// What a simulation found. The same few parts touch again and again, so their name paths stand once.
struct SimulationResult {
    int lines = 0;
    double seconds = 0;
    std::vector<std::pair<QString, QString>> pairs;
    std::vector<SimulatedContact> contacts;
};

[[nodiscard]] QByteArray simulationJson(const SimulationResult& result);

/// Which axes left their limits, and by what, as one sentence.
[[nodiscard]] QString exceededText(const std::vector<AxisLimitRow>& rows);
/// Which axes are asked for more velocity or acceleration than they have, as one sentence.
[[nodiscard]] QString violationText(const ProgramAudit& audit);

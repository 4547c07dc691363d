#pragma once

#include <QByteArray>
#include <QString>
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

/// Which axes left their limits, and by what, as one sentence.
[[nodiscard]] QString exceededText(const std::vector<AxisLimitRow>& rows);
/// Which axes are asked for more velocity or acceleration than they have, as one sentence.
[[nodiscard]] QString violationText(const ProgramAudit& audit);

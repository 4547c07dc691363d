#pragma once

#include <QChar>
#include <QString>
#include <QStringView>
#include <optional>
#include <vector>

#include "core/calc/Diagnostics.h"
#include "machine/calc/MachineDescription.h"

/// One axis of the limit check; mm or degrees.
struct AxisLimitRow {
    QChar letter;
    double lower = 0;
    double upper = 0;
    double min = 0;  ///< lowest value seen; starts at 0
    double max = 0;  ///< highest value seen; starts at 0

    [[nodiscard]] bool belowLower() const { return lower > min; }
    [[nodiscard]] bool aboveUpper() const { return max > upper; }
};

/// Nothing, and a Fatal diagnostic, when an axis's direction is not three numbers. A letter that names no
/// axis ends the rows.
[[nodiscard]] std::optional<std::vector<AxisLimitRow>> axisLimitRows(const MachineDescription& machine,
                                                                     const AxisMap& letters,
                                                                     Diagnostics& diagnostics);

/// Carries the words of `code` into min and max, line by line and in row order within a line, until a row
/// leaves its limits; the result tells whether one did, and the words behind that one stay unseen. Of each
/// line the first place of a row's letter counts, comments included; a letter without a number counts as
/// absent. Because min and max start at 0, limits that exclude 0 fail at the first line; empty lines are
/// none.
[[nodiscard]] bool checkAxisLimits(std::vector<AxisLimitRow>& rows, QStringView code);

#pragma once

#include <QString>
#include <optional>

#include "core/calc/WayPoint.h"
#include "nc/calc/ProgramSummary.h"

/// The job that a new user sees first: a sample program of the installation, converted for a tool of the
/// library, re-timed and checked.
struct Demonstration {
    QString program;   ///< path below the installation folder
    QString toolName;  ///< as the tool library shows it
    QString workCoordinateName;
    QString chain;
    QString machineCode;  ///< LeadIn, re-timed body and LeadOut, machine axes
    WayPoints timedPath;  ///< tool path in work coordinates, one point per interpolation period
    ProgramSummary summary;
};

/// Runs `program` (relative to the installation folder) with the library's tool of index `toolIndex` in the
/// machine's first work coordinate system and its first chain. Nothing when a piece of it is missing or the
/// program is refused; `problem` then says what, in a sentence.
[[nodiscard]] std::optional<Demonstration> runDemonstration(const QString& program, int toolIndex,
                                                            QString& problem);

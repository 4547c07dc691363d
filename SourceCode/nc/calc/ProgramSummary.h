#pragma once

#include <QString>
#include <cstddef>
#include <optional>

#include "core/calc/Diagnostics.h"
#include "machine/calc/MachineDescription.h"
#include "nc/calc/ProgramAudit.h"

/// One converted program at a glance: how long it is, how long it runs and how near it comes to the limits of
/// the machine.
struct ProgramSummary {
    std::size_t wayPoints = 0;  ///< lines of the code in work coordinates
    std::size_t lines = 0;      ///< of the re-timed code, one per interpolation period
    double seconds = 0;
    double period_s = 0;
    std::vector<AxisDemand> axes;
    bool isOverDynamicLimits = false;  ///< velocity or acceleration of an axis
    bool isOverTravelLimits = false;   ///< position of an axis, as the limit checker found it
};

/// Sums up `workCode` and the re-timed `isoCode` of one program. `exceededTravel` is the limit checker's
/// answer for that code. Nothing and a diagnostic where auditProgram gives nothing.
[[nodiscard]] std::optional<ProgramSummary> summarizeProgram(const MachineDescription& machine,
                                                             const QString& chain, QStringView workCode,
                                                             QStringView isoCode, bool exceededTravel,
                                                             Diagnostics& diagnostics);

/// The summary as lines of text: one fact per line, then one line per axis with its largest speed and
/// acceleration beside the limits. Ends in a line feed.
[[nodiscard]] QString summaryText(const ProgramSummary& summary);

/// "1 h 02 min 03.4 s", "2 min 03.4 s" or "3.4 s".
[[nodiscard]] QString runTimeText(double seconds);

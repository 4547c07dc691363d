#pragma once

#include <Inventor/SbVec3f.h>

#include <QString>
#include <optional>

#include "core/calc/Diagnostics.h"
#include "core/calc/WayPoint.h"
#include "machine/calc/MachineDescription.h"

// Where the user puts a program: translation, offset in the work plane, mirroring. Way points in the work
// frame, mm and degrees, changed in place.

/// Directions of the chain's rotary axes of id 4 and 5, as the machine file has them.
struct RotaryDirections {
    SbVec3f fourth{0, 0, 0};
    SbVec3f fifth{0, 0, 0};
};

/// Nothing, and a Fatal diagnostic "axis 4 or 5 is not found" or "axis 4 or 5 direction is not found".
[[nodiscard]] std::optional<RotaryDirections> rotaryDirections(const MachineDescription& machine,
                                                               const QString& chain,
                                                               Diagnostics& diagnostics);

enum class PlacementOutcome {
    Done,
    OffsetIgnored,  ///< there is an offset and the rotary values change: only the translation was applied
    Failed          ///< see the Fatal diagnostic
};

/// Adds the translation to X, Y, Z. When the rotary values of all points agree within 0.001 degrees the
/// offset, turned by R4(axis 4) and then by R5(axis 5), is added too.
[[nodiscard]] PlacementOutcome placeByUser(const MachineDescription& machine, const QString& chain,
                                           const SbVec3f& translation_mm, const SbVec3f& offset_mm,
                                           WayPoints& points, Diagnostics& diagnostics);

/// Adds the angle to axis 4 and turns the sign of axis 5, on machines whose axis 4 has the direction
/// (0, 0, 1) and axis 5 (1, 0, 0); on any other machine nothing changes and nothing is said, which must stay.
/// An angle of 0 does nothing. False: see the Fatal diagnostic.
[[nodiscard]] bool mirrorByUser(const MachineDescription& machine, const QString& chain, int angle_deg,
                                WayPoints& points, Diagnostics& diagnostics);

#pragma once

#include <optional>

#include "core/calc/Diagnostics.h"
#include "machine/calc/MachineDescription.h"
#include "nc/calc/AuxiliaryAxis.h"

// Letters of a chain: `name` is what the controller reads, `nickName` what ISO programs are written in.

/// Each letter of `letters` is taken as an axis's `name` and replaced by the first character of that axis's
/// `nickName`. A letter that names no axis gives nothing and the Fatal diagnostic
/// "Error: Can't find the axis name".
[[nodiscard]] std::optional<AxisMap> nickNameLetters(const MachineDescription& machine,
                                                     const AxisMap& letters, Diagnostics& diagnostics);

/// Value of the chain's axis of id 6, mm or degrees: that of the group's auxiliary axis, without one the
/// axis's `lower`; 0 when the chain has no such axis.
[[nodiscard]] double auxiliaryValueOf(const MachineDescription& machine, QStringView chain,
                                      const AuxiliaryAxis* auxiliary);

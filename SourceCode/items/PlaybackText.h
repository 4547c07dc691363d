#pragma once

#include <QString>

struct AuxiliaryAxis;

namespace TORNVALE {

/// "W12.500": nick name and value with three decimals.
[[nodiscard]] QString auxiliaryWord(const AuxiliaryAxis& axis);

/// Hands code to the playback window as its new program, moves the auxiliary axis (may be nullptr) to its
/// value, and shows the window.
void playText(const QString& code, const AuxiliaryAxis* axis);

}  // namespace TORNVALE

#pragma once

#include <QString>
#include <QVector>

class UserTopItem;
struct AuxiliaryAxis;

namespace TORNVALE {

/// "W12.500": nick name and value with three decimals.
[[nodiscard]] QString auxiliaryWord(const AuxiliaryAxis& axis);

/// Hands code to the playback window as its new program, moves the auxiliary axis (may be nullptr) to its
/// value, and shows the window.
void playText(const QString& code, const AuxiliaryAxis* axis);

/// The planned programs of these groups, one behind the other.
[[nodiscard]] QString joinedProgram(const QVector<UserTopItem*>& groups);
/// Plays it. A box tells of an item whose spindle the machine lacks; nothing is played then.
void playGroups(const QVector<UserTopItem*>& groups);

}  // namespace TORNVALE

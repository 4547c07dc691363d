#pragma once

#include <QMap>
#include <QString>
#include <optional>

#include "machine/calc/MachineDescription.h"
#include "nc/calc/AuxiliaryAxis.h"
#include "nc/calc/HeaderTail.h"

// Header and tail lines as the forms of their editor show them: a value for each axis. The chain's axes stand
// under their ids 1 to 5, the group's auxiliary axis under its own.

/// Label of each axis of a form, by id: the letters of the chain, and the auxiliary axis's name.
[[nodiscard]] QMap<int, QString> formAxes(const MachineDescription& machine, const QString& chain,
                                          const AuxiliaryAxis* auxiliary);

/// "G1 X0.000Y0.000Z700.000F7000": a word for each axis of the form with three decimals, without blanks
/// between them, and the rapid feed. Nothing when an axis has no value.
[[nodiscard]] std::optional<QString> lineFromValues(const MachineDescription& machine, const QString& chain,
                                                    const AuxiliaryAxis* auxiliary,
                                                    const QMap<int, double>& values);

/// The values of the first way point of `line`; empty when it has none.
[[nodiscard]] QMap<int, double> valuesFromLine(const MachineDescription& machine, const QString& chain,
                                               const AuxiliaryAxis* auxiliary, const QString& line);

/// A better start and end: those of the items, 100 mm up axis 3 where the axis's limits allow it.
void proposeOptimal(const MachineDescription& machine, HeaderTailRecord& record);

/// `line` with the word of axis 3 raised by 100 in general format with six digits; as it was when the result
/// would leave the axis's limits, or without such a word or axis.
[[nodiscard]] QString raisedLine(const MachineDescription& machine, const QString& chain,
                                 const QString& line);

/// Both lines become the home line of the record's chain.
void resetToHome(const MachineDescription& machine, HeaderTailRecord& record);

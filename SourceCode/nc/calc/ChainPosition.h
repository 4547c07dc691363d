#pragma once

#include <QMap>
#include <QString>
#include <QStringView>

#include "machine/calc/MachineDescription.h"
#include "nc/calc/AuxiliaryAxis.h"

// Where a chain stands, as a map from axis letter to value in mm or degrees. The auxiliary axis stands under
// its whole name.

using ChainPosition = QMap<QString, double>;

/// The first or last motion line of a text, trimmed; empty when it has none.
[[nodiscard]] QStringView firstMotionLine(QStringView text);
[[nodiscard]] QStringView lastMotionLine(QStringView text);

/// The position that a line of emitted code goes to: the chain's axes without id 6, and the auxiliary axis
/// when there is one. An axis without a word on the line is not in the map.
[[nodiscard]] ChainPosition linePosition(const MachineDescription& machine, const QString& chain,
                                         QStringView line, const AuxiliaryAxis* auxiliary);

/// The same of a header, for every axis of the chain: the first L-?\d+(\.\d+)? of each letter L.
[[nodiscard]] ChainPosition headerPosition(const MachineDescription& machine, const QString& chain,
                                           QStringView header);

/// The rapid line to a position, in the emitted form: the chain's axes of which `position` has a value. Empty
/// when it has none.
[[nodiscard]] QString positionLine(const MachineDescription& machine, const QString& chain,
                                   const ChainPosition& position, const AuxiliaryAxis* auxiliary);

#pragma once

#include <QString>
#include <QVector>
#include <memory>
#include <optional>

#include "core/calc/WayPoint.h"
#include "machine/calc/MachineDescription.h"
#include "nc/calc/AuxiliaryAxis.h"

// The emitted form of code, read and written: "G1 X100.000 Y20.000 Z-3.000 C0.000 A0.000 F5000\n".

/// Way points of emitted code, without feeds: the machine letters of the chain by rising id, id 6 left out,
/// then the auxiliary axis by its whole name. Words are modal from zero; every line that is not empty gives
/// a way point.
[[nodiscard]] WayPoints WayPointsFromCode(const MachineDescription& machine, const QString& chain,
                                          const QString& code, const AuxiliaryAxis* auxiliary);

/// One line per way point: for each id of `letters` (machine letters, id 6 included) its word from entry
/// id - 1 with three decimals, then the feed, the last entry, without decimals. The word of id 6 is
/// `auxiliaryValue` on way points that have no entry for it.
[[nodiscard]] QString FormatWayPoints(const WayPoints& points, const AxisMap& letters, double auxiliaryValue);

/// The feed of a code text: the number behind its last "F" that has one, 0 when none has.
[[nodiscard]] double lastFeed(QStringView code);

/// Rounds each corner sharper than 15 degrees (first three coordinates) by six samples of a quadratic Bezier
/// curve; three points or fewer come back unchanged.
[[nodiscard]] WayPoints smoothCorners(const WayPoints& points);

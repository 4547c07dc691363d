#pragma once

#include <QChar>
#include <QList>
#include <QString>
#include <QStringView>
#include <QVector>

#include "core/calc/Diagnostics.h"
#include "machine/calc/MachineDescription.h"

// The code of a program item as text: machine code in the emitted form, lines separated by "\n".

/// Groups of axis ids, in the order in which the groups move.
using AxisGroups = QVector<QList<int>>;

namespace SharedMethods {

/// Takes over, for each id of `axisIdList`, the word of that axis from `source` into `target`: the first
/// "<letter>-?digits[.digits]" of each text, letters from `chain`. Warns "Failed: source, target, chain, or
/// axisIdList is empty." and changes nothing when one of them is; warns "Replace failed. Axis ID:" and the id
/// when a text lacks the word, and goes on.
void ReplaceSpecifyAxis(const QString& source, QString& target, const AxisMap& chain,
                        const QList<int>& axisIdList, Diagnostics& diagnostics);

}  // namespace SharedMethods

/// Joins two positions or paths. With fewer than two groups: `first`, line feed, `second`. Otherwise the
/// lines of `first`, then one line per group in which the axes of the group, too, stand where `second`
/// has them; every line ends with a line feed. When `first` has no line, the plain form.
[[nodiscard]] QString joinByAxisGroups(const QString& first, const QString& second, const AxisMap& chain,
                                       const AxisGroups& groups, Diagnostics& diagnostics);

/// The lines of `code` and behind them a copy of the last one with the words of `ids` taken from `home`;
/// every line ends with a line feed.
[[nodiscard]] QString withLastLineAt(const QString& home, const QString& code, const AxisMap& chain,
                                     const QList<int>& ids, Diagnostics& diagnostics);
/// The same with a copy of the first line before the lines.
[[nodiscard]] QString withFirstLineAt(const QString& home, const QString& code, const AxisMap& chain,
                                      const QList<int>& ids, Diagnostics& diagnostics);

/// Last value of the axis `letter` in `code`: behind the last letter that has a number; 0 when none has.
[[nodiscard]] double lastAxisValue(QStringView code, QChar letter);

/// Turns a rotary axis the other way round when that is nearer. Let v be the first value of `letter` in
/// `code` and v' = v - 360 for v > 0, else v + 360. When |previous - v'| < |previous - v|, the first value of
/// every line is replaced by its own v' in general format with six digits; otherwise `code` comes back.
/// Degrees. One walk over the text.
[[nodiscard]] QString shortestRotaryPath(const QString& code, QChar letter, double previous_deg);

/// Run time of the joined texts, s: a re-timed program has one line per interpolation period.
[[nodiscard]] double runTime_s(QStringView leadIn, QStringView isoCode, QStringView leadOut,
                               unsigned period_ms);
/// Run time of one text, s: (line feeds + 1) periods.
[[nodiscard]] double runTime_s(QStringView code, unsigned period_ms);

/// `block` and a line feed, ten times: holds the machine still for ten interpolation periods.
[[nodiscard]] QString tenCopies(const QString& block);

#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include "core/calc/Diagnostics.h"
#include "machine/calc/MachineDescription.h"
#include "nc/calc/AxisSequences.h"

// Axis words of emitted lines, changed in place: for the few lines that lead from one item to the next.

/// In every line of `text` the word of axis `id` gets `value`, mm or degrees, with three decimals: the
/// characters behind the letter, up to the first that is no digit, "-" or ".", are replaced. Lines without
/// the word stay. Without that axis in `letters`: the Fatal diagnostic "Id error.not contains.", `text` stays
/// and false comes back.
[[nodiscard]] bool ModifyAxisPosition(QString& text, const AxisMap& letters, int id, double value,
                                      Diagnostics& diagnostics);

/// Gives the first word of `letter` in `target` the number of the first one in `source`: a letter with an
/// optional "-", digits and optional decimals. False, and nothing changed, when one of them lacks the word.
[[nodiscard]] bool takeAxisWord(QString& target, QStringView source, QChar letter);

/// `target` with the words of the axes `ids` as they stand in `source`, see takeAxisWord. An id whose word is
/// missing in one of them keeps what `target` has, and is the Warning "Replace failed. Axis ID:" with the id.
/// Ids that the chain has not are left out.
[[nodiscard]] QString withAxisWords(QString target, QStringView source, const AxisMap& letters,
                                    const QList<int>& ids, Diagnostics& diagnostics);

/// The path from the last line of `from` to the first line of `to`, axis group by axis group: `from`, a line
/// for each group with the words of that group, too, as `to` has them, and `to` itself. With fewer than two
/// groups, or when one of the texts has no line: `from`, line feed, `to`.
[[nodiscard]] QString joinedPath(const QString& from, const QString& to, const AxisMap& letters,
                                 const AxisSequences& sequence, Diagnostics& diagnostics);

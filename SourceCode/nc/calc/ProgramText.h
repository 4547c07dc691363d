#pragma once

#include <QString>
#include <QStringView>

// Texts in which every line lasts one interpolation period: their lines, their duration, and the insertion
// of commands at an instant.

/// The line feeds of a text. More than 100000 characters are counted on all of the hardware's threads; the
/// call returns when all have finished.
[[nodiscard]] qsizetype countLineFeeds(QStringView text);

/// Line feeds times `interpolationTime_ms`, in milliseconds; 32-bit unsigned arithmetic, so it wraps beyond
/// 49 days.
[[nodiscard]] quint32 runTime_ms(QStringView text, unsigned interpolationTime_ms);

/// The first and the last line that is not empty, without its line feed; empty when there is none.
[[nodiscard]] QStringView firstLineOf(QStringView text);
[[nodiscard]] QStringView lastLineOf(QStringView text);

/// Appends `text` to `out` with `block` inserted so that it stands `preLaunchTime_s` before the end of the
/// text, each line lasting `period_s`: of n lines, at line index n - time / period, truncated. A text that is
/// shorter than the time gets the block in front. `block` is whole lines; an empty one changes nothing. What
/// is appended ends in a line feed unless both are empty. A time that is not positive counts as 0: behind the
/// last line.
void InsertPreLaunch(QString& out, QStringView text, QStringView block, double preLaunchTime_s,
                     double period_s);

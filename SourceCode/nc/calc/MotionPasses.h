#pragma once

#include <QString>

// The first passes over the text of a work coordinate segment. Each reads a text once and returns the new
// one. A text that becomes too long comes back empty (see OutputText).

/// Inserts `rapid` or `linear` as a line of its own before each line at which motion changes between rapid
/// and not rapid. Motion starts as rapid: the first line is `rapid`, an empty one when that text is empty. A
/// line whose feed cannot be read changes nothing.
[[nodiscard]] QString withMotionMarks(const QString& text, const QString& rapid, const QString& linear,
                                      double rapidThreshold_mmPerMin);

/// Puts `prepend` in front of each line that starts with "G1". Does nothing without `prepend`, nor without a
/// mark for linear motion.
[[nodiscard]] QString withPrepended(const QString& text, const QString& prepend, const QString& linear);

/// Makes lines at the feed of rapid moves rapid lines: `word` replaces their "G1" or "G01", and the feed
/// goes. A line with several feeds is rapid only when all of them are. A word of fewer than two characters,
/// or with the number 1 such as "G1", changes nothing.
[[nodiscard]] QString withRapidWords(const QString& text, const QString& word,
                                     double rapidThreshold_mmPerMin);

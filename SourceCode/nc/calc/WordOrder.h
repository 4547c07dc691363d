#pragma once

#include <QChar>
#include <QString>
#include <QVector>
#include <optional>

#include "core/calc/Diagnostics.h"

// The last passes over the text of a work coordinate segment: one order of words on every motion line, and
// the first and last motion line of a segment that has no header and tail of its own.

/// Equal neighbouring lines become one, and every motion line is written anew: the motion word, the word of
/// each letter of `letters` in that order, the feed word, joined with blanks. A repeated word is written
/// once, as it stood first; a Warning tells of the first line on which two words of one axis differ.
///
/// A motion line starts, behind blanks and the text `prepend`, with G0 to G3 and has a word of `letters`. One
/// that holds anything else stays as it is, so that no word is lost; so do all other lines.
[[nodiscard]] QString withOrderedWords(const QString& text, const QVector<QChar>& letters,
                                       const QString& prepend, Diagnostics& diagnostics);

/// Equal neighbouring lines become one, and the first and the last motion line get the word of the tool that
/// stands at that end, "t1.000". Nothing is added where the tool is not known.
[[nodiscard]] QString withToolWords(const QString& text, const QString& prepend, std::optional<int> firstTool,
                                    std::optional<int> lastTool);

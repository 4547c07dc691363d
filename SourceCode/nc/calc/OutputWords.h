#pragma once

#include <QChar>
#include <QStringView>
#include <optional>

// Words of output lines, found without copying. Each search gives what the pattern beside it would match;
// digits are 0 to 9.

/// Length of the number -?\d+(\.\d+)? that starts at `place`; 0 when none does.
[[nodiscard]] qsizetype numberLength(QStringView line, qsizetype place);

/// A word found in a line: the letter and its number.
struct FoundWord {
    qsizetype place = 0;
    qsizetype length = 0;
};

/// The first match of L-?\d+(\.\d+)? at or behind `from`, L the letter; nothing when there is none.
[[nodiscard]] std::optional<FoundWord> findWord(QStringView line, QChar letter, qsizetype from = 0);

/// True for a match of M\d+ anywhere in the line.
[[nodiscard]] bool holdsCommand(QStringView line);

/// The first match of G0?1(?![\d.]) at or behind `from`: the word of a linear move, but not the head of G17.
[[nodiscard]] std::optional<FoundWord> findLinearWord(QStringView line, qsizetype from = 0);

/// The feed of a line for its motion mark: the text behind the first "F", up to the next [A-Z/s], as a
/// number; nothing when it is none.
[[nodiscard]] std::optional<double> feedOfLine(QStringView line);

/// True when a feed is that of rapid moves, both in mm per minute.
[[nodiscard]] bool isRapidFeed(double feed, double rapidThreshold);

/// Length of the motion word ^G0*[0-3](?![\d.]), at most three digits, at the start of `line`; 0 without one.
[[nodiscard]] qsizetype motionWordLength(QStringView line);

/// A motion line: trimmed, it starts with a motion word.
[[nodiscard]] bool isMotionLine(QStringView line);

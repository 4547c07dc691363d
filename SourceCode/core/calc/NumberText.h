#pragma once

#include <QChar>
#include <QString>
#include <QStringView>
#include <optional>
#include <string>

// Numbers in NC code, read from and written to text a million times per program: no allocation, no locale.

/// The run of digits, "." and "-" that starts at `position` of `line` (may be empty).
[[nodiscard]] QStringView numberRun(QStringView line, qsizetype position);

/// The number that the whole of `run` spells: an optional leading "-", digits with at most one ".", at
/// least one digit. Anything else ("", "-", "1-2", "1.2.3", a value outside the range of double) is no
/// number.
[[nodiscard]] std::optional<double> numberFromRun(QStringView run);

/// The word of `letter` in `line`: the number behind the first occurrence of the letter (case-sensitive).
/// No letter or no number behind it gives nothing.
[[nodiscard]] std::optional<double> readWord(QStringView line, QChar letter);

/// Appends `value` with three decimals, to the letter what QString::number(value, 'f', 3) writes.
void appendFixed3(std::string& text, double value);

/// Appends `value` without decimals, to the letter what QString::number(value, 'f', 0) writes.
void appendFixed0(std::string& text, double value);

/// Writes `value` with three decimals to `out` (at least kFixedWidth bytes) and returns the end, or nullptr
/// when the value needs the slow form (outside +-1e9, not finite, or so near to a tie that only exact
/// arithmetic settles it).
inline constexpr int kFixedWidth = 24;
[[nodiscard]] char* writeFixed3(char* out, double value);
[[nodiscard]] char16_t* writeFixed3(char16_t* out, double value);  ///< the same into a QString's memory

/// One line of a text at a time, without copying: lines are separated by "\n"; empty lines are reported
/// too, so that `lineNumber` counts as an editor does. Leading and trailing white space and a byte order
/// mark are trimmed off each line.
class LineReader {
  public:
    explicit LineReader(QStringView text) : text_(text) {}
    /// Moves to the next line; false behind the last one.
    bool next();
    [[nodiscard]] QStringView line() const { return line_; }
    [[nodiscard]] int lineNumber() const { return number_; }

  private:
    QStringView text_;
    QStringView line_;
    qsizetype position_ = 0;
    int number_ = 0;
};

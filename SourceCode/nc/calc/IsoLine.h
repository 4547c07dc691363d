#pragma once

#include <QChar>
#include <QStringView>
#include <array>
#include <optional>
#include <string>

/// One line of an ISO program, its block number taken off. The first place of every capital letter is found
/// in one pass, so that a word costs one look-up. Keeps its memory from line to line.
class IsoLine {
  public:
    IsoLine() = default;
    IsoLine(const IsoLine&) = delete;
    IsoLine& operator=(const IsoLine&) = delete;

    /// `line` without white space at its ends; it must outlive the use of this object. The first "N",
    /// wherever it stands, goes with the digits right behind it: "ANGLE" becomes "AGLE", which must stay so.
    void set(QStringView line);

    [[nodiscard]] QStringView text() const { return text_; }
    /// Nothing to read: an empty line, or one that begins with ";", "//" or "%".
    [[nodiscard]] bool isIgnored() const { return ignored_; }
    /// "(" first and ")" last.
    [[nodiscard]] bool isDirective() const;
    /// What stands between the brackets of a directive.
    [[nodiscard]] QStringView directive() const { return text_.mid(1, text_.size() - 2); }
    /// Holds a "=".
    [[nodiscard]] bool isAssignment() const { return assignment_; }

    [[nodiscard]] bool has(QChar letter) const { return placeOf(letter) >= 0; }
    /// The number behind the first occurrence of the letter; nothing when there is none.
    [[nodiscard]] std::optional<double> word(QChar letter) const;
    /// Place of the first occurrence, -1 when there is none.
    [[nodiscard]] qsizetype placeOf(QChar letter) const;

  private:
    static constexpr std::size_t kLetters = 26;

    [[nodiscard]] QStringView withoutBlockNumber(QStringView line);
    void findLetters();

    QStringView text_;
    std::u16string joined_;  // what stands before and behind the block number
    std::array<int, kLetters> first_{};
    bool ignored_ = true;
    bool assignment_ = false;
};

/// The G words of a line from left to right. A "G" without digits ends the scan.
class GWords {
  public:
    static constexpr int kUnknown = -1;  ///< a number that does not fit 32 bits

    explicit GWords(const IsoLine& line) : text_(line.text()), place_(line.placeOf(u'G')) {}
    /// The digits behind the next "G" as a number (G2.5 is G2); nothing when the scan is over.
    [[nodiscard]] std::optional<int> next();

  private:
    QStringView text_;
    qsizetype place_;
};

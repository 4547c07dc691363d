#pragma once

#include <QChar>
#include <QString>
#include <QVector>
#include <array>
#include <cstddef>
#include <vector>

/// Writes lines of the emitted form, "G1 X100.000 Y20.000 F5000\n", into one growing text. One object writes
/// one text: the letters are the same on every line.
class LineWriter {
  public:
    /// Longest text, characters: near what one QString can hold.
    static constexpr qsizetype kMaxLength = 1'000'000'000;

    /// At most WayPoint::kMaxEntries letters take part.
    explicit LineWriter(const QVector<QChar>& letters);

    /// Number of words on a line.
    [[nodiscard]] std::size_t wordCount() const { return words_.size(); }
    /// Makes room for this many lines of usual width; the memory is not touched before it is written.
    void reserveLines(std::size_t lines);

    /// Starts a line: "G1 ", then letter, value with three decimals and a blank for each of wordCount()
    /// values.
    void appendWords(const double* values);
    /// Ends a line: "F", the feed without decimals, line feed.
    void appendFeed(double feed_mmPerMin);
    /// Ends a line with a text that was made before.
    void append(const QString& tail);

    /// True when the text has reached kMaxLength; nothing more is written then.
    [[nodiscard]] bool isFull() const { return used_ > kMaxLength; }
    /// Hands the text over; empty when it is full, since half a program is none. Nothing is written after.
    [[nodiscard]] QString take();

  private:
    /// What stands before a value: " Y", on the first word "G1 X".
    struct Word {
        std::array<char16_t, 4> before{};
        int length = 0;
    };

    [[nodiscard]] char16_t* room(qsizetype characters);
    char16_t* appendSlowly(double value, qsizetype charactersToCome);

    std::vector<Word> words_;
    qsizetype longestLine_ = 0;  ///< characters that the words of one line take at most in the fast form
    QString buffer_;             ///< longer than what is used
    qsizetype used_ = 0;
};

#pragma once

#include <QStringView>
#include <QVarLengthArray>

/// What a part of a line of NC code is, for its colour.
enum class CodeWordKind : quint8 {
    Number,       ///< N10
    Preparatory,  ///< G1
    Command,      ///< M3
    AxisLetter,   ///< X of X10.5; centres of arcs (I J K R) too
    AxisValue,    ///< 10.5 of X10.5
    Feed,         ///< F3000
    Tool,         ///< S12000, T3, D1, H1
    Comment,      ///< (text), ; and // to the end of the line, a line of %
    Other,        ///< any other word: P1, L2
};

struct CodeSpan {
    int start;
    int length;
    CodeWordKind kind;
};
using CodeSpans = QVarLengthArray<CodeSpan, 32>;

/// One word of a line at a time: a capital letter that no letter precedes, with the number behind it
/// ("X-1.5", "X+1.5"; a letter without a number is no word). Comments are reported too, as one word. Small
/// letters make no words: the machine does not read them.
class CodeWordReader {
  public:
    explicit CodeWordReader(QStringView line) : line_(line) {}
    /// Moves to the next word or comment; false behind the last one.
    bool next();
    [[nodiscard]] bool isComment() const { return comment_; }
    [[nodiscard]] QChar letter() const { return line_[start_]; }
    [[nodiscard]] int start() const { return start_; }
    [[nodiscard]] int length() const { return end_ - start_; }
    [[nodiscard]] QStringView word() const { return line_.mid(start_, end_ - start_); }

  private:
    bool readComment();
    bool readWord();

    QStringView line_;
    int start_ = 0;
    int end_ = 0;
    bool comment_ = false;
};

/// Appends the words and comments of `line`, from left to right; an axis word gives two spans, its letter and
/// its value. What lies between is plain text.
void appendCodeSpans(QStringView line, CodeSpans& spans);

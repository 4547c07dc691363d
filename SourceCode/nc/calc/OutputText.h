#pragma once

#include <QString>
#include <QStringView>

/// One growing text for the output passes. When it would pass kMaxLength it is full and takes no more: half a
/// program is none, so take() gives an empty text then and the caller tells its user.
class OutputText {
  public:
    /// Characters; near what one QString can hold.
    static constexpr qsizetype kMaxLength = 1'000'000'000;

    /// Makes room for about this many characters.
    explicit OutputText(qsizetype expectedLength = 0);

    void append(QStringView text);
    void append(char16_t character) { append(QStringView(&character, 1)); }
    /// The text and a line feed.
    void appendLine(QStringView line);
    void append(qsizetype count, char16_t character);
    /// Puts a text in at an earlier place.
    void insert(qsizetype place, const QString& text);

    [[nodiscard]] qsizetype size() const { return text_.size(); }
    [[nodiscard]] bool isFull() const { return full_; }
    [[nodiscard]] QString take();

  private:
    [[nodiscard]] bool makeRoom(qsizetype characters);

    QString text_;
    bool full_ = false;
};

/// The lines of a text one after the other, as splitting at every line feed gives them: empty ones too, with
/// nothing trimmed, and one more than there are line feeds.
class LineWalk {
  public:
    explicit LineWalk(QStringView text) : rest_(text) {}
    /// Moves to the next line; false behind the last one.
    bool next();
    [[nodiscard]] QStringView line() const { return line_; }
    /// True while no line is left.
    [[nodiscard]] bool atEnd() const { return atEnd_; }

  private:
    QStringView rest_;
    QStringView line_;
    bool atEnd_ = false;
};

/// Calls `write(line)` for each line of `text` and sets a line feed between what it writes. A pass that adds
/// lines writes their line feeds itself.
template <typename Write>
void forLines(QStringView text, OutputText& out, const Write& write) {
    LineWalk lines(text);
    for (bool first = true; lines.next(); first = false) {
        if (!first)
            out.append(u'\n');
        write(lines.line());
    }
}

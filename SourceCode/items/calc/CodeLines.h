#pragma once

#include <QString>
#include <QStringView>
#include <vector>

/// The lines of one text, found without a copy of it: line i starts at an offset of the shared text. Lines
/// end at "\n"; a "\r" before it belongs to the end. A last line without "\n" counts, the nothing behind a
/// last
/// "\n" does not. Lines, columns and offsets count from 0.
///
/// The index has one page for about 32 lines or 1024 letters, so it stays below a fifth of the text even when
/// all lines are empty, and a look-up walks at most one page however long a single line is.
class CodeLines {
  public:
    CodeLines() = default;
    /// One pass over the text, which is shared and not copied.
    explicit CodeLines(QString text);

    [[nodiscard]] const QString& text() const { return text_; }
    [[nodiscard]] int count() const { return count_; }
    /// Letters of the longest line.
    [[nodiscard]] int longest() const { return longest_; }

    /// Line `index` without its end; an empty view outside of the text.
    [[nodiscard]] QStringView line(int index) const;
    /// Offset of the first letter of line `index`; the text's size behind the last line.
    [[nodiscard]] int start(int index) const;
    /// The line that holds the letter at `offset`, its "\n" included; -1 outside of the text.
    [[nodiscard]] int lineAt(int offset) const;
    /// The line that the playback, which leaves out lines without a letter, counts as number `played`; -1
    /// when it has no such line.
    [[nodiscard]] int lineOfPlayed(int played) const;
    /// Lines `first` to `last` as they stand in the text, without the end of the last.
    [[nodiscard]] QStringView block(int first, int last) const;
    /// Memory of the index beside the text, bytes.
    [[nodiscard]] qint64 indexBytes() const;

  private:
    struct Page {
        int line;    ///< its first line
        int start;   ///< offset of that line
        int played;  ///< lines with letters before it
    };
    [[nodiscard]] const Page& pageOfLine(int index) const;
    /// Offset behind the "\n" that ends the line at `start`, or behind the text.
    [[nodiscard]] int behindLine(int start) const;

    QString text_;
    std::vector<Page> pages_;  ///< by line; the last one stands behind the text
    int count_ = 0;
    int longest_ = 0;
};

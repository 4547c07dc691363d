#pragma once

#include <QFontMetricsF>
#include <QPair>
#include <QStyledItemDelegate>

#include "items/calc/CodeSearch.h"
#include "items/calc/CodeWords.h"

class CodeModel;

/// Draws one line of NC code on a white ground: the gutter with the line's number, the words in their
/// colours, matches of the search, the selected lines and the running line. Rows reach over the whole width
/// of the view; the text is shifted to the left by the scroll offset, the gutter stays.
class CodeDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit CodeDelegate(const CodeModel& model, QObject* parent = nullptr);

    /// Measures the gutter and the rows for this font and the model's line count.
    void setFont(const QFont& font);
    [[nodiscard]] int gutterWidth() const { return gutterWidth_; }
    [[nodiscard]] int rowHeight() const { return rowHeight_; }
    /// Width of the row's text with the mark of a clipped line, pixels, without the gutter.
    [[nodiscard]] int textWidth(int row) const;
    /// Left and right border of these letters of a row, pixels from the text's left end, clipped as the row
    /// is.
    [[nodiscard]] QPair<int, int> textPlace(int row, int column, int length) const;
    /// Width of the widest line, when all letters have the width of a figure.
    [[nodiscard]] int usualWidth() const;

    void setOffset(int pixels) { offset_ = pixels; }
    /// -1 for none.
    void setRunningLine(int row) { runningLine_ = row; }
    [[nodiscard]] int runningLine() const { return runningLine_; }
    /// Marks all matches of `search`, and the one at `offset` of the text (-1 for none) more strongly.
    void setSearch(const CodeSearch& search, int offset);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    [[nodiscard]] static QColor colorOf(CodeWordKind kind);
    [[nodiscard]] static QColor runningColor() { return {0xff, 0xe3, 0x9c}; }
    [[nodiscard]] static QColor selectionColor() { return {0xcf, 0xe4, 0xfb}; }
    [[nodiscard]] static QColor gutterColor() { return {0xf1, 0xf2, 0xf4}; }
    [[nodiscard]] static QColor matchColor() { return {0xff, 0xf3, 0x8a}; }
    [[nodiscard]] static QColor currentMatchColor() { return {0xff, 0xb3, 0x47}; }

  private:
    [[nodiscard]] qreal advance(const QString& text, int from, int length) const;
    void paintText(QPainter& painter, const QRect& row, const QString& text, bool clipped) const;
    void paintMatches(QPainter& painter, const QRect& row, const QString& text, int line) const;
    void paintGutter(QPainter& painter, const QRect& row, int line) const;

    const CodeModel& model_;
    QFont font_;
    QFontMetricsF metrics_;
    qreal figureWidth_ = 0;
    bool equalWidths_ = false;
    int gutterWidth_ = 0;
    int rowHeight_ = 1;
    int offset_ = 0;
    int runningLine_ = -1;
    CodeSearch search_;
    int match_ = -1;
};

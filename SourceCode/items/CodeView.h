#pragma once

#include <QAbstractItemView>

class CodeDelegate;
class CodeModel;
class CodeSearch;

/// The list of lines. All rows have one height, so every question of place is one division: a program of a
/// million lines costs what one of a hundred does (QListView lays out each row, about 40 ms and 13 MB a
/// million). The vertical bar counts rows, the horizontal one pixels.
class CodeView : public QAbstractItemView {
    Q_OBJECT
  public:
    /// Neither is owned; both outlive the view.
    CodeView(CodeModel& model, CodeDelegate& delegate, QWidget* parent = nullptr);

    /// What is written in the middle of a view without lines.
    void setEmptyText(const QString& text);
    /// Marks the row and brings it into view; -1 for none.
    void setRunningLine(int row);
    [[nodiscard]] int topRow() const;
    void setTopRow(int row);
    /// Rows that are shown whole.
    [[nodiscard]] int rowsInView() const;
    /// Makes `row` the current and only selected one, in the middle of the view if it was out of sight.
    void goTo(int row);
    /// The same for the line that holds the letter at `offset` of the text; `length` letters come into view.
    void goToMatch(int offset, int length);
    /// Marks the matches, see CodeDelegate.
    void setSearch(const CodeSearch& search, int offset);
    /// The selected lines in their order, "\n" between them.
    [[nodiscard]] QString selectedText() const;
    [[nodiscard]] int currentRow() const { return currentIndex().row(); }

    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;
    void reset() override;
    /// A typed letter would look through all rows; the search field does that better.
    void keyboardSearch(const QString& /*text*/) override {}

  Q_SIGNALS:
    /// The user went to this row with a click, Enter or the arrow keys, without extending the selection.
    void lineChosen(int row);
    void currentRowChanged(int row);

  protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] int horizontalOffset() const override;
    [[nodiscard]] int verticalOffset() const override;
    [[nodiscard]] bool isIndexHidden(const QModelIndex& index) const override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    [[nodiscard]] QRect rowRect(int row) const;
    [[nodiscard]] int widestInView() const;
    void measureFont();
    void chooseOnClick(const QModelIndex& index);

    CodeModel& model_;
    CodeDelegate& delegate_;
    QString emptyText_;
    int textWidth_ = 0;  ///< widest text known, pixels
};

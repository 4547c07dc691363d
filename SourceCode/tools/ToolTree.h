#pragma once

#include <QString>
#include <QTreeWidget>

class ToolData;

/// The tree of the tool library window: two top rows with tools below them.
class ToolTree : public QTreeWidget {
    Q_OBJECT
  public:
    /// `headerLabels`: the labels of the columns, separated by "-".
    explicit ToolTree(const QString& headerLabels, QWidget* parent = nullptr);

    /// A new top row, open, across all columns.
    [[nodiscard]] QTreeWidgetItem* addRoot(const QString& title);
    /// The selected tools in the order of the rows.
    [[nodiscard]] QList<ToolData*> selectedTools() const;
    /// The tools below a top row.
    [[nodiscard]] static QList<ToolData*> toolsUnder(const QTreeWidgetItem* root);

    /// Sorts the rows below each top row by a column; the selection stays.
    void sortRows(int column, Qt::SortOrder order);
    /// Makes every column as wide as its header and its texts need.
    void fitColumns();

  private:
    void sortNumbers(QTreeWidgetItem& root, int column, Qt::SortOrder order);
};

/// The row as a tool; nullptr for a top row and for none.
[[nodiscard]] ToolData* toolOfRow(QTreeWidgetItem* row);

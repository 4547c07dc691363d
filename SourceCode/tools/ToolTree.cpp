#include "tools/ToolTree.h"

#include <QHeaderView>
#include <algorithm>

#include "tools/ToolData.h"
#include "tools/calc/ToolSorting.h"

ToolData* toolOfRow(QTreeWidgetItem* row) {
    const bool isTool = row != nullptr && row->type() == ToolData::kItemType;
    return isTool ? static_cast<ToolData*>(row) : nullptr;
}

ToolTree::ToolTree(const QString& headerLabels, QWidget* parent) : QTreeWidget(parent) {
    setColumnCount(ToolData::kColumnCount);
    setHeaderLabels(headerLabels.split(QLatin1Char('-')));
    setAlternatingRowColors(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setIconSize({25, 25});
    setExpandsOnDoubleClick(false);
    header()->setSectionsClickable(true);
    header()->setSectionsMovable(false);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    header()->setDefaultAlignment(Qt::AlignCenter);
    header()->setStretchLastSection(false);
    header()->setSortIndicatorShown(true);
    header()->setSortIndicator(-1, Qt::AscendingOrder);  // the first click on any column sorts upwards
    connect(header(), &QHeaderView::sectionClicked, this,
            [this](int column) { sortRows(column, header()->sortIndicatorOrder()); });
}

QTreeWidgetItem* ToolTree::addRoot(const QString& title) {
    auto* root = new QTreeWidgetItem(this, {title});  // owned by this tree
    root->setFirstColumnSpanned(true);
    root->setExpanded(true);
    return root;
}

QList<ToolData*> ToolTree::toolsUnder(const QTreeWidgetItem* root) {
    QList<ToolData*> tools;
    for (int row = 0; row < root->childCount(); ++row) {
        if (ToolData* tool = toolOfRow(root->child(row)))
            tools.append(tool);
    }
    return tools;
}

QList<ToolData*> ToolTree::selectedTools() const {
    QList<ToolData*> tools;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        for (ToolData* tool : toolsUnder(topLevelItem(i))) {
            if (tool->isSelected())
                tools.append(tool);
        }
    }
    return tools;
}

void ToolTree::sortRows(int column, Qt::SortOrder order) {
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (column < kNumberColumns)
            sortNumbers(*topLevelItem(i), column, order);
        else
            topLevelItem(i)->sortChildren(column, order);
    }
}

void ToolTree::sortNumbers(QTreeWidgetItem& root, int column, Qt::SortOrder order) {
    QStringList texts;
    QList<QTreeWidgetItem*> selected;
    for (int row = 0; row < root.childCount(); ++row) {
        texts.append(root.child(row)->text(column));
        if (root.child(row)->isSelected())
            selected.append(root.child(row));
    }
    QTreeWidgetItem* const current = currentItem();
    const QList<QTreeWidgetItem*> rows = root.takeChildren();
    QList<QTreeWidgetItem*> sorted;
    for (const int row : toolRowOrder(texts, order))
        sorted.append(rows[row]);
    root.addChildren(sorted);
    root.setExpanded(true);
    if (current != nullptr && current->parent() == &root)
        setCurrentItem(current, 0, QItemSelectionModel::NoUpdate);
    for (QTreeWidgetItem* row : selected)
        row->setSelected(true);
}

void ToolTree::fitColumns() {
    constexpr int kMargin = 14;
    constexpr int kLeastWidth = 60;
    constexpr int kMostWidth = 260;
    for (int column = 0; column < columnCount(); ++column) {
        const int needed = std::max(header()->sectionSizeHint(column), sizeHintForColumn(column) + kMargin);
        header()->resizeSection(column, qBound(kLeastWidth, needed, kMostWidth));
    }
}

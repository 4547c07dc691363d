#include "machine/NodeTreeItem.h"

#include <QTreeWidget>

void NodeTreeItem::detach(QTreeWidgetItem* item) {
    if (item == nullptr)
        return;
    if (item->parent() != nullptr)
        item->parent()->removeChild(item);
    else if (item->treeWidget() != nullptr)
        item->treeWidget()->takeTopLevelItem(item->treeWidget()->indexOfTopLevelItem(item));
}

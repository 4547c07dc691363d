#pragma once

#include <QString>
#include <QTreeWidgetItem>

/// A node's row of the machine tree: its name in column 1, which is also its role Qt::UserRole, and a flag
/// that tells the kind of node in role Qt::UserRole + 1. Rows die with their tree, so each side tells the
/// other when it goes: the row empties `slot`, the node's pointer to it.
class NodeTreeItem final : public QTreeWidgetItem {
  public:
    static constexpr int kNameColumn = 1;
    static constexpr int kInfoColumn = 2;

    NodeTreeItem(QTreeWidgetItem*& slot, const QString& name, const QString& flag) : slot_(&slot) {
        rename(*this, name);
        setData(kNameColumn, Qt::UserRole + 1, flag);
    }
    NodeTreeItem(const NodeTreeItem&) = delete;
    NodeTreeItem& operator=(const NodeTreeItem&) = delete;
    ~NodeTreeItem() override { *slot_ = nullptr; }

    static void rename(QTreeWidgetItem& item, const QString& name) {
        item.setText(kNameColumn, name);
        item.setData(kNameColumn, Qt::UserRole, name);
    }
    /// Takes the row out of whatever row or tree holds it; the node owns it again.
    static void detach(QTreeWidgetItem* item);

  private:
    QTreeWidgetItem** slot_;
};

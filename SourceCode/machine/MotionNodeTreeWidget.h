#pragma once

#include <QTreeWidget>

class MotionNodeManager;

/// The machine as a tree: chains, fixed work zones and parts with collision check below the machine's type.
/// A double click on a node's row opens the window by which it is moved or set.
class MotionNodeTreeWidget : public QTreeWidget {
    Q_OBJECT
  public:
    /// `manager` must outlive the tree.
    explicit MotionNodeTreeWidget(MotionNodeManager& manager, QWidget* parent = nullptr);
    /// Gives the rows back to the machine's nodes.
    ~MotionNodeTreeWidget() override;

  private:
    void showMenu(const QPoint& place);
    void openNode(QTreeWidgetItem* item);

    MotionNodeManager& manager_;
    QTreeWidgetItem* machineRow_;
};

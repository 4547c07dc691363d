#pragma once

#include <QVector>

class UserTopItemManager;

namespace TORNVALE {

class CodeManagerItem;

/// Which items stood in which group, and in which order, before rows were dragged.
class TreeOrder {
  public:
    explicit TreeOrder(const UserTopItemManager& root);

    /// After the drop: the dragged item, and all others that have come to another group with it, react to
    /// their new place; what stands behind a change generates anew. False when nothing has moved. Groups and
    /// items must still be those of before.
    bool settle(const UserTopItemManager& root, const CodeManagerItem* dragged) const;

  private:
    QVector<QVector<CodeManagerItem*>> groups_;
};

}  // namespace TORNVALE

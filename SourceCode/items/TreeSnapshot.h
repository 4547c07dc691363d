#pragma once

#include <QString>
#include <QVector>
#include <vector>

#include "items/ItemState.h"
#include "items/UserTopItem.h"
#include "nc/calc/HeaderTail.h"

class UserTopItemManager;

namespace TORNVALE {

/// All programs at one moment. Cheap: the states are shared with the items and with other moments.
struct TreeSnapshot {
    struct Group {
        QString wcsName;
        bool checked = true;
        QVector<SharedItemState> items;
        std::vector<HeaderTailRecord> headerTail;
        UserTopItem::KeptBlocks keptBlocks;
    };
    bool checked = true;  ///< of the root
    QVector<Group> groups;
};

/// Brings the derived texts of the groups up to date: playing, which does it too, is no change.
[[nodiscard]] TreeSnapshot takeSnapshot(const UserTopItemManager& root);

/// Whether both hold the same programs. The check marks of root and groups are no difference: no document
/// keeps them.
[[nodiscard]] bool sameSnapshot(const TreeSnapshot& one, const TreeSnapshot& other);

/// The programs become those of the snapshot, without generating anything. Items that are in it already
/// stay, and move when they have to.
void restoreSnapshot(UserTopItemManager& root, const TreeSnapshot& snapshot);

}  // namespace TORNVALE

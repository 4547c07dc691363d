#pragma once

#include <QString>
#include <QVector>
#include <vector>

#include "items/ItemState.h"
#include "nc/calc/HeaderTail.h"

class UserTopItemManager;

namespace TORNVALE {

/// All programs at one moment. Cheap: the states are shared with the items and with other moments.
struct TreeSnapshot {
    struct Group {
        QString wcsName;
        QVector<SharedItemState> items;
        std::vector<HeaderTailRecord> headerTail;
    };
    QVector<Group> groups;
};

[[nodiscard]] TreeSnapshot takeSnapshot(const UserTopItemManager& root);

/// Whether both show the same programs.
[[nodiscard]] bool sameSnapshot(const TreeSnapshot& one, const TreeSnapshot& other);

/// The programs become those of the snapshot, without generating anything. Items that are in it already
/// stay, and move when they have to.
void restoreSnapshot(UserTopItemManager& root, const TreeSnapshot& snapshot);

}  // namespace TORNVALE

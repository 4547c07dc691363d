#include "items/TreeOrder.h"

#include <QSet>
#include <algorithm>

#include "items/CodeManagerItem.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"

namespace TORNVALE {

namespace {

int firstDifference(const QVector<CodeManagerItem*>& one, const QVector<CodeManagerItem*>& other) {
    const auto place = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    return static_cast<int>(place.first - one.begin());
}

}  // namespace

TreeOrder::TreeOrder(const UserTopItemManager& root) {
    for (const UserTopItem* group : root.groups())
        groups_.append(group->items());
}

bool TreeOrder::settle(const UserTopItemManager& root, const CodeManagerItem* dragged) const {
    const QVector<UserTopItem*> groups = root.groups();
    const TreeOrder now(root);
    if (now.groups_ == groups_)
        return false;
    QVector<CodeManagerItem*> moved;
    for (int g = 0; g < groups.size(); ++g) {
        const QSet<CodeManagerItem*> known(groups_[g].begin(), groups_[g].end());
        for (CodeManagerItem* item : now.groups_[g]) {
            if ((item == dragged || !known.contains(item)) && item->type() != kCurveItem)
                moved.append(item);
        }
    }
    // The names that they had elsewhere are free.
    for (CodeManagerItem* item : qAsConst(moved))
        item->setName({});
    for (CodeManagerItem* item : qAsConst(moved)) {
        item->reactToNewPlace();
        if (!item->isActive())
            item->doIt();  // the checked ones follow below
    }
    for (int g = 0; g < groups.size(); ++g) {
        if (now.groups_[g] != groups_[g])
            groups[g]->regenerateFrom(firstDifference(now.groups_[g], groups_[g]));
    }
    return true;
}

}  // namespace TORNVALE

#include "items/TreeSnapshot.h"

#include <map>
#include <memory>

#include "items/CodeManagerItem.h"
#include "items/ItemMaker.h"
#include "items/UserTopItemManager.h"

namespace TORNVALE {

namespace {

bool isChecked(const QTreeWidgetItem& row) {
    return row.checkState(CodeManagerItem::kNameColumn) == Qt::Checked;
}

}  // namespace

TreeSnapshot takeSnapshot(const UserTopItemManager& root) {
    TreeSnapshot snapshot;
    snapshot.checked = isChecked(root);
    for (UserTopItem* group : root.groups()) {
        group->refreshDerivedTexts();
        TreeSnapshot::Group part{group->wcsName(),
                                 isChecked(*group),
                                 {},
                                 group->headerTail()->headerTail.records(),
                                 group->keptBlocks()};
        for (const CodeManagerItem* item : group->items())
            part.items.append(item->state());
        snapshot.groups.append(std::move(part));
    }
    return snapshot;
}

bool sameSnapshot(const TreeSnapshot& one, const TreeSnapshot& other) {
    if (one.groups.size() != other.groups.size())
        return false;
    for (int g = 0; g < one.groups.size(); ++g) {
        const TreeSnapshot::Group& left = one.groups[g];
        const TreeSnapshot::Group& right = other.groups[g];
        if (left.items.size() != right.items.size() || left.headerTail != right.headerTail ||
            left.keptBlocks != right.keptBlocks)
            return false;
        for (int i = 0; i < left.items.size(); ++i) {
            if (left.items[i] != right.items[i] && !sameState(*left.items[i], *right.items[i]))
                return false;
        }
    }
    return true;
}

void restoreSnapshot(UserTopItemManager& root, const TreeSnapshot& snapshot) {
    std::map<quint64, std::unique_ptr<CodeManagerItem>> present;
    root.takeCheckState(snapshot.checked);
    for (UserTopItem* group : root.groups()) {
        for (CodeManagerItem* item : group->items())
            present.emplace(item->state()->id, group->release(item));
    }
    for (const TreeSnapshot::Group& part : snapshot.groups) {
        UserTopItem* group = root.group(part.wcsName);
        if (group == nullptr)
            continue;
        group->takeCheckState(part.checked);
        group->headerTail()->headerTail.setRecords(part.headerTail);
        group->setKeptBlocks(part.keptBlocks);
        for (const SharedItemState& state : part.items) {
            const auto known = present.find(state->id);
            std::unique_ptr<CodeManagerItem> item;
            if (known != present.end())
                item = std::move(known->second);
            else
                item = makeItem(state->type);
            CodeManagerItem* row = item.get();
            group->adopt(std::move(item), -1);
            if (row->state() != state)
                row->restore(*state);
        }
    }
}

}  // namespace TORNVALE

#include "items/UserTopItemManager.h"

#include "core/LanguageReader.h"
#include "items/CodeManagerItem.h"
#include "items/PlaybackText.h"
#include "items/TreeMenu.h"
#include "items/UserTopItem.h"
#include "nc/UserPostProcessor.h"

using TORNVALE::treeEntry;

UserTopItemManager::UserTopItemManager() : QTreeWidgetItem(kItemType) {
    setFlags(Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
    setText(0, TORNVALE::LanguageReader::instance().text(QStringLiteral("UserTopItemManager"),
                                                         QStringLiteral("Title")));
    takeCheckState(true);
}

QVector<UserTopItem*> UserTopItemManager::groups() const {
    QVector<UserTopItem*> list;
    for (int i = 0; i < childCount(); ++i) {
        if (auto* group = dynamic_cast<UserTopItem*>(child(i)))
            list.append(group);
    }
    return list;
}

UserTopItem* UserTopItemManager::group(const QString& wcsName) const {
    for (UserTopItem* group : groups()) {
        if (group->wcsName() == wcsName)
            return group;
    }
    return nullptr;
}

QJsonObject UserTopItemManager::Get() const {
    QJsonObject object;
    for (const UserTopItem* group : groups())
        object.insert(group->wcsName(), group->Get());
    return object;
}

void UserTopItemManager::Set(const QJsonObject& object) {
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (UserTopItem* named = group(entry.key()))
            named->Set(entry.value().toObject());
    }
}

void UserTopItemManager::clear() {
    for (UserTopItem* group : groups())
        group->clear();
}

void UserTopItemManager::play() {
    TORNVALE::playGroups(groups());
}

void UserTopItemManager::popupMenu(const QPoint& place, const std::function<void()>& removeAll) {
    TORNVALE::popupTreeMenu({treeEntry("AnimationAction", "play.png", [this] { play(); }),
                             treeEntry("RemoveAllItemsAction", "delete.png", removeAll)},
                            place);
}

void UserTopItemManager::takeCheckState(bool checked) {
    QTreeWidgetItem::setData(TORNVALE::CodeManagerItem::kNameColumn, Qt::CheckStateRole,
                             checked ? Qt::Checked : Qt::Unchecked);
}

void UserTopItemManager::setData(int column, int role, const QVariant& value) {
    QTreeWidgetItem::setData(column, role, value);
    if (column != TORNVALE::CodeManagerItem::kNameColumn || role != Qt::CheckStateRole)
        return;
    for (UserTopItem* group : groups())
        group->setCheckState(column, checkState(column));
}

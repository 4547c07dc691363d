#pragma once

#include <QJsonObject>
#include <QTreeWidgetItem>
#include <QVector>
#include <functional>

#include "nc/ProgramItem.h"

class QPoint;
class UserTopItem;

/// The root of the program tree, above one group per work coordinate system.
class UserTopItemManager : public QTreeWidgetItem {
  public:
    static constexpr int kItemType = TORNVALE::kProgramRoot;

    UserTopItemManager();

    [[nodiscard]] QVector<UserTopItem*> groups() const;
    /// nullptr when there is none of this work coordinate system.
    [[nodiscard]] UserTopItem* group(const QString& wcsName) const;

    /// One object per group, keyed by its work coordinate system.
    [[nodiscard]] QJsonObject Get() const;
    /// Keys that name no group are skipped.
    void Set(const QJsonObject& object);
    /// Destroys the items of all groups.
    void clear();
    /// Merges all groups and plays them.
    void play();
    void popupMenu(const QPoint& place, const std::function<void()>& removeAll);

    /// The root's own check mark; groups and items stay as they are.
    void takeCheckState(bool checked);

    void setData(int column, int role, const QVariant& value) override;
};

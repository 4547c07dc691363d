#pragma once

#include <QKeySequence>
#include <QMenu>
#include <QString>
#include <functional>
#include <vector>

/// One entry of a menu: adding a command to the window is one of these.
struct MenuEntry {
    const char* key;                               ///< language key in its menu's group, and object name
    const char* icon = nullptr;                    ///< resource path
    QKeySequence shortcut = {};                    ///< empty for none
    std::function<void()> command = nullptr;       ///< what it does
    QMenu* subMenu = nullptr;                      ///< shown in its place, not owned
    std::function<void(bool)> switched = nullptr;  ///< a checkable entry, off at first
    const char* group = nullptr;                   ///< that has the key, when it is not the menu's own
};

/// A menu of the group "Tornvale/<group>", titled by its key "Title"; owned by `parent`.
/// Every entry gets a key of its own to press.
[[nodiscard]] QMenu* makeMenu(QWidget* parent, const char* group, const std::vector<MenuEntry>& entries);

/// The same for the titles of menus that stand side by side on a bar.
void giveMnemonics(const std::vector<QMenu*>& menus);

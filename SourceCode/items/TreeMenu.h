#pragma once

#include <QString>
#include <functional>
#include <vector>

class QPoint;

namespace TORNVALE {

/// One entry of a context menu of the program tree.
struct TreeMenuEntry {
    QString text;
    const char* icon;  ///< file in ":/Icon"
    const char* name;  ///< object name of the action
    std::function<void()> command;
};

/// An entry whose text is the key of the same name in "TreeWidgetManager/ContextMenu".
[[nodiscard]] TreeMenuEntry treeEntry(const char* key, const char* icon, std::function<void()> command);

/// Shows a menu with a separator between all entries, inside the screen that `place` is on. It deletes
/// itself when it closes.
void popupTreeMenu(const std::vector<TreeMenuEntry>& entries, const QPoint& place);

}  // namespace TORNVALE

#include "items/TreeMenu.h"

#include <QAction>
#include <QIcon>
#include <QMenu>

#include "core/LanguageReader.h"

namespace TORNVALE {

TreeMenuEntry treeEntry(const char* key, const char* icon, std::function<void()> command) {
    return {
        LanguageReader::instance().text(QStringLiteral("TreeWidgetManager/ContextMenu"), QLatin1String(key)),
        icon, key, std::move(command)};
}

void popupTreeMenu(const std::vector<TreeMenuEntry>& entries, const QPoint& place) {
    auto* menu = new QMenu;  // deletes itself when it closes
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const TreeMenuEntry& entry : entries) {
        if (!menu->isEmpty())
            menu->addSeparator();
        QAction* action =
            menu->addAction(QIcon(QStringLiteral(":/Icon/") + QLatin1String(entry.icon)), entry.text);
        action->setObjectName(QLatin1String(entry.name));
        QObject::connect(action, &QAction::triggered, menu, entry.command);
    }
    menu->popup(place);
}

}  // namespace TORNVALE

#include "app/MainMenus.h"

#include <QAction>
#include <QIcon>

#include "core/LanguageReader.h"

QMenu* makeMenu(QWidget* parent, const char* group, const std::vector<MenuEntry>& entries) {
    const QString path = QStringLiteral("Tornvale/") + QLatin1String(group);
    const auto textOf = [&path](const char* key) {
        return TORNVALE::LanguageReader::instance().text(path, QLatin1String(key));
    };
    auto* menu = new QMenu(textOf("Title"), parent);  // owned by the parent
    menu->setObjectName(QLatin1String(group));
    for (const MenuEntry& entry : entries) {
        QAction* action =
            entry.subMenu == nullptr ? menu->addAction(textOf(entry.key)) : menu->addMenu(entry.subMenu);
        action->setText(textOf(entry.key));
        action->setObjectName(QLatin1String(entry.key));
        if (entry.icon != nullptr)
            action->setIcon(QIcon(QStringLiteral(":/Icon/") + QLatin1String(entry.icon)));
        action->setShortcut(entry.shortcut);
        if (entry.command)
            QObject::connect(action, &QAction::triggered, menu, entry.command);
        if (entry.switched) {
            action->setCheckable(true);
            QObject::connect(action, &QAction::toggled, menu, entry.switched);
        }
    }
    return menu;
}

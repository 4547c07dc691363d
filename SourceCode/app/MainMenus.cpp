#include "app/MainMenus.h"

#include <QAction>
#include <QIcon>

#include "app/calc/MenuMnemonics.h"
#include "core/LanguageReader.h"

QMenu* makeMenu(QWidget* parent, const char* group, const std::vector<MenuEntry>& entries) {
    const QString path = QStringLiteral("Tornvale/") + QLatin1String(group);
    const auto textOf = [&path](const char* key, const char* other = nullptr) {
        return TORNVALE::LanguageReader::instance().text(other == nullptr ? path : QLatin1String(other),
                                                         QLatin1String(key));
    };
    auto* menu = new QMenu(textOf("Title"), parent);  // owned by the parent
    menu->setObjectName(QLatin1String(group));
    QVector<MenuText> texts;
    for (const MenuEntry& entry : entries)
        texts.append({textOf(entry.key, entry.group), QLatin1String(entry.key)});
    const QVector<QString> marked = withMnemonics(texts);
    int row = 0;
    for (const MenuEntry& entry : entries) {
        QAction* action =
            entry.subMenu == nullptr ? menu->addAction(QString()) : menu->addMenu(entry.subMenu);
        action->setText(marked[row]);
        action->setToolTip(texts[row++].text);
        action->setObjectName(QLatin1String(entry.key));
        if (entry.icon != nullptr)
            action->setIcon(QIcon(QLatin1String(entry.icon)));
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

void giveMnemonics(const std::vector<QMenu*>& menus) {
    QVector<MenuText> titles;
    for (const QMenu* menu : menus)
        titles.append({menu->title(), menu->objectName()});
    const QVector<QString> marked = withMnemonics(titles);
    int place = 0;
    for (QMenu* menu : menus)
        menu->setTitle(marked[place++]);
}

#include "core/RecentFiles.h"

#include <QFileInfo>
#include <QSettings>
#include <algorithm>

#include "core/InstallationFolder.h"
#include "core/calc/RecentPaths.h"

namespace {
const QString kArray = QStringLiteral("General");
const QString kKey = QStringLiteral("history");
}  // namespace

RecentFiles::RecentFiles(QObject* parent)
    : QObject(parent), historyPath_(installationPath(QStringLiteral("history.ini"))) {
    rebuildMenu();
}

QStringList RecentFiles::paths() const {
    QSettings settings(historyPath_, QSettings::IniFormat);
    QStringList paths;
    // A damaged file may claim any length: no more is read than would ever be written.
    const int count = std::min(settings.beginReadArray(kArray), kRecentPaths);
    for (int i = 0; i < count; ++i) {
        settings.setArrayIndex(i);
        const QString path = settings.value(kKey).toString();
        if (!path.isEmpty())
            paths.append(path);
    }
    return paths;
}

void RecentFiles::add(const QString& path) {
    store(withRecentPath(paths(), path));
    rebuildMenu();
}

void RecentFiles::rebuildMenu() {
    QStringList existing;
    for (const QString& path : paths()) {
        if (QFileInfo(path).isFile())
            existing.append(path);
    }
    menu_.clear();
    for (int i = 0; i < existing.size(); ++i) {
        const QString path = existing[i];
        QAction* action = menu_.addAction(recentPathText(i + 1, path));
        connect(action, &QAction::triggered, this, [this, path] { Q_EMIT fileChosen(path); });
    }
    menu_.menuAction()->setEnabled(!existing.isEmpty());
}

void RecentFiles::store(const QStringList& paths) const {
    QSettings settings(historyPath_, QSettings::IniFormat);
    settings.remove(kArray);
    settings.beginWriteArray(kArray, paths.size());
    for (int i = 0; i < paths.size(); ++i) {
        settings.setArrayIndex(i);
        settings.setValue(kKey, paths[i]);
    }
    settings.endArray();
}

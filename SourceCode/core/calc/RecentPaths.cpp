#include "core/calc/RecentPaths.h"

QStringList withRecentPath(QStringList paths, const QString& path) {
    if (!path.isEmpty()) {
        paths.removeAll(path);
        paths.append(path);
    }
    while (paths.size() > kRecentPaths)
        paths.removeFirst();
    return paths;
}

QString recentPathText(int number, const QString& path) {
    QString shown = path;
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    return QStringLiteral("&%1 %2").arg(QString::number(number), shown);
}

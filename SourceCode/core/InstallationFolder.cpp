#include "core/InstallationFolder.h"

#include <QCoreApplication>
#include <QDir>

namespace {
QString& chosenFolder() {
    static QString folder;
    return folder;
}
}  // namespace

QString installationFolder() {
    return chosenFolder().isEmpty() ? QCoreApplication::applicationDirPath() : chosenFolder();
}

void setInstallationFolder(const QString& folder) {
    chosenFolder() = folder.isEmpty() ? QString() : QDir(folder).absolutePath();
}

QString installationPath(const QString& path) {
    return QDir::isAbsolutePath(path) ? path : installationFolder() + QLatin1Char('/') + path;
}

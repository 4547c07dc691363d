#include "app/Packages.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include "core/InstallationFolder.h"

namespace Packages {

namespace {

/// Replaces `target` as a whole or leaves it.
bool copyFile(const QString& source, const QString& target) {
    if (QFileInfo(source).canonicalFilePath() == QFileInfo(target).canonicalFilePath())
        return true;
    if (!QDir().mkpath(QFileInfo(target).absolutePath()))
        return false;
    const QString beside = target + QStringLiteral(".new");
    QFile::remove(beside);
    if (!QFile::copy(source, beside))
        return false;
    QFile::setPermissions(beside, QFile::permissions(beside) | QFile::WriteOwner);
    if (QFileInfo::exists(target) && !QFile::remove(target)) {
        QFile::remove(beside);
        return false;
    }
    return QFile::rename(beside, target);
}

/// The list is complete before the first copy: a target inside the source must not feed itself.
QStringList copyFolder(const QString& source, const QString& target) {
    const QDir from(source);
    QStringList files;
    const QString own = QDir(target).absolutePath() + QLatin1Char('/');
    for (QDirIterator file(source, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                           QDirIterator::Subdirectories);
         file.hasNext();) {
        const QString path = QFileInfo(file.next()).absoluteFilePath();
        if (!path.startsWith(own))
            files.append(from.relativeFilePath(path));
    }
    files.sort();
    QStringList failed;
    for (const QString& file : qAsConst(files)) {
        if (!copyFile(from.filePath(file), QDir(target).filePath(file)))
            failed.append(file);
    }
    return failed;
}

}  // namespace

QString dataFolder() {
    return QDir(QStringLiteral("machineSample")).exists() ? QDir::currentPath()
                                                          : installationPath(QStringLiteral("."));
}

QStringList exportTo(const QString& target) {
    const QDir data(dataFolder());
    QStringList failed;
    for (const char* folder : {"machineSample", "UserPostProcessor", "automaticFixtures"})
        failed +=
            copyFolder(data.filePath(QLatin1String(folder)), QDir(target).filePath(QLatin1String(folder)));
    for (const char* file : {"data.ini", "toollib.json"}) {
        const QString name = QLatin1String(file);
        if (!copyFile(data.filePath(name), QDir(target).filePath(name)))
            failed.append(name);
    }
    return failed;
}

QStringList importFrom(const QString& source) {
    const QString data = QDir(dataFolder()).absolutePath();
    const QString from = QDir(source).absolutePath();
    return from == data ? QStringList() : copyFolder(from, data);
}

}  // namespace Packages

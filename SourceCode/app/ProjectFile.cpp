#include "app/ProjectFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>
#include <limits>

namespace ProjectFile {

qint64 freeSpace_bytes(const QString& folder) {
    const QStorageInfo storage(folder);
    return storage.isValid() ? storage.bytesAvailable() : std::numeric_limits<qint64>::max();
}

Saved write(const QString& path, const QByteArray& content, const FreeSpace& freeSpace) {
    if (QFileInfo(path).fileName().isEmpty())
        return Saved::NoName;
    // Put in the place of a device or a pipe, the new file would take it away from the system.
    if (const QFileInfo present(path); present.exists() && !present.isFile())
        return Saved::CannotOpen;
    // A file of its own beside the document until all is on disk: the old document stays whole till then.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Saved::CannotOpen;
    if (freeSpace(QFileInfo(path).absolutePath()) < content.size())
        return Saved::NoSpace;
    if (file.write(content) != content.size() || !file.commit())
        return Saved::CannotWrite;
    return QFileInfo::exists(path) ? Saved::Yes : Saved::CannotWrite;
}

bool read(const QString& path, QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    content = file.readAll();
    return true;
}

}  // namespace ProjectFile

#include "app/ProjectFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>

namespace ProjectFile {

Saved write(const QString& path, const QByteArray& content) {
    if (QFileInfo(path).fileName().isEmpty())
        return Saved::NoName;
    // A file of its own beside the document until all is on disk: the old document stays whole till then.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Saved::CannotOpen;
    const QStorageInfo storage(QFileInfo(path).absolutePath());
    if (storage.isValid() && storage.bytesAvailable() < content.size())
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

#include "core/WholeFile.h"

#include <QFileInfo>
#include <QSaveFile>

bool writeWhole(const QString& path, const QByteArray& content, QString* problem) {
    QSaveFile file(path);
    const QFileInfo present(path);
    const bool isReplaceable = !present.exists() || present.isFile() || present.isDir();  // the file says why
    if (isReplaceable && file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
        file.commit())
        return true;
    if (problem != nullptr)
        *problem = isReplaceable ? file.errorString() : QStringLiteral("it is no file");
    return false;
}

#include "items/SourceFile.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include "items/calc/SourceText.h"

namespace TORNVALE {

std::optional<QString> readSourceFile(const QString& path) {
    constexpr qint64 kLargestFile_bytes = 512LL << 20;
    const auto ignore = [&path](const QString& reason) {
        qWarning().noquote() << QStringLiteral("%1 is not read: %2").arg(path, reason);
        return std::nullopt;
    };
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return ignore(QStringLiteral("it is no file"));  // a pipe would be waited for
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return ignore(file.errorString());
    const QByteArray bytes = file.read(kLargestFile_bytes + 1);
    if (file.error() != QFileDevice::NoError)
        return ignore(file.errorString());
    if (bytes.size() > kLargestFile_bytes)
        return ignore(QStringLiteral("it has more than 512 MB"));
    return decodedSource(bytes);
}

}  // namespace TORNVALE

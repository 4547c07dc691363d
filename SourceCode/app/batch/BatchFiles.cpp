#include "app/batch/BatchFiles.h"

#include <QFile>
#include <QFileInfo>
#include <cstdio>

#include "core/WholeFile.h"

namespace {

/// Reads to the end, but never more than the limit: a device may have no end.
std::variant<QByteArray, Failure> readAll(QFile& file, const QString& place, ExitStatus status) {
    constexpr qint64 kPiece = qint64{1} << 20;
    QByteArray bytes;
    while (true) {
        const QByteArray piece = file.read(kPiece);
        if (piece.isEmpty())
            break;
        bytes += piece;
        if (bytes.size() > kMaxInputBytes)
            return Failure{status, place, QStringLiteral("is longer than %1 bytes").arg(kMaxInputBytes)};
    }
    if (file.error() != QFileDevice::NoError)
        return Failure{status, place, QStringLiteral("cannot be read: %1").arg(file.errorString())};
    return bytes;
}

Failure cannotWrite(const QString& place, const QString& why) {
    return {ExitStatus::WrongCall, place, QStringLiteral("cannot be written: %1").arg(why)};
}

std::optional<Failure> writeDirectly(QFile& file, const QString& place, const QByteArray& bytes) {
    if (file.write(bytes) != bytes.size() || !file.flush())
        return cannotWrite(place, file.errorString());
    return std::nullopt;
}

}  // namespace

std::variant<QByteArray, Failure> readBytes(const QString& path, ExitStatus statusOfFailure) {
    if (path == QLatin1String("-")) {
        QFile input;
        if (!input.open(stdin, QIODevice::ReadOnly))
            return Failure{statusOfFailure, QStringLiteral("-"), QStringLiteral("standard input is closed")};
        return readAll(input, QStringLiteral("-"), statusOfFailure);
    }
    const QFileInfo info(path);
    if (!info.exists())
        return Failure{statusOfFailure, path, QStringLiteral("does not exist, expected a file")};
    if (info.isDir())
        return Failure{statusOfFailure, path, QStringLiteral("is a folder, expected a file")};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Failure{statusOfFailure, path, QStringLiteral("cannot be read: %1").arg(file.errorString())};
    return readAll(file, path, statusOfFailure);
}

QString textOf(const QByteArray& bytes) {
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

std::variant<QString, Failure> readText(const QString& path) {
    std::variant<QByteArray, Failure> bytes = readBytes(path, ExitStatus::BadInput);
    if (Failure* failure = std::get_if<Failure>(&bytes))
        return std::move(*failure);
    return textOf(std::get<QByteArray>(bytes));
}

std::optional<Failure> writeResult(const std::optional<QString>& path, const QByteArray& bytes) {
    if (!path || *path == QLatin1String("-")) {
        QFile output;
        const QString place = QStringLiteral("standard output");
        if (!output.open(stdout, QIODevice::WriteOnly))
            return cannotWrite(place, output.errorString());
        return writeDirectly(output, place, bytes);
    }
    const QFileInfo info(*path);
    if (info.isDir())
        return cannotWrite(*path, QStringLiteral("it is a folder, expected a file"));
    if (info.exists() && !info.isFile()) {  // a device or a pipe cannot be replaced
        QFile device(*path);
        if (!device.open(QIODevice::WriteOnly))
            return cannotWrite(*path, device.errorString());
        return writeDirectly(device, *path, bytes);
    }
    QString problem;
    if (!writeWhole(*path, bytes, &problem))
        return cannotWrite(*path, problem);
    return std::nullopt;
}

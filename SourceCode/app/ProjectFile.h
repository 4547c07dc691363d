#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

/// Files of project documents on disk.
namespace ProjectFile {

enum class Saved { Yes, CannotOpen, NoName, NoSpace, CannotWrite };

/// Bytes that may still be written in this folder.
using FreeSpace = std::function<qint64(const QString& folder)>;
/// As the storage says; as many as there can be when it does not say.
[[nodiscard]] qint64 freeSpace_bytes(const QString& folder);

/// Writes the whole document or leaves the file as it was.
[[nodiscard]] Saved write(const QString& path, const QByteArray& content,
                          const FreeSpace& freeSpace = freeSpace_bytes);

/// False when the file cannot be read.
[[nodiscard]] bool read(const QString& path, QByteArray& content);

}  // namespace ProjectFile

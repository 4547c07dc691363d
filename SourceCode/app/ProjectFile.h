#pragma once

#include <QByteArray>
#include <QString>

/// Files of project documents on disk.
namespace ProjectFile {

enum class Saved { Yes, CannotOpen, NoName, NoSpace, CannotWrite };

/// Writes the whole document or leaves the file as it was.
[[nodiscard]] Saved write(const QString& path, const QByteArray& content);

/// False when the file cannot be read.
[[nodiscard]] bool read(const QString& path, QByteArray& content);

}  // namespace ProjectFile

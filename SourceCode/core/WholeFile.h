#pragma once

#include <QByteArray>
#include <QString>

/// Writes the file whole, or leaves what stood there: it takes its place when all of it is on disk. False
/// when that fails, with the system's reason in `problem`. A device or a pipe is not replaced.
[[nodiscard]] bool writeWhole(const QString& path, const QByteArray& content, QString* problem = nullptr);

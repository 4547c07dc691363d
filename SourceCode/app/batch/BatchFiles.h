#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <variant>

#include "app/batch/BatchReport.h"

// The files of tornvale-batch: whole texts in, whole results out.

/// Longest input, bytes: half of what a text can hold.
inline constexpr qint64 kMaxInputBytes = 500'000'000;

/// Bytes of UTF-8 as a text; zero bytes in the middle are no end.
[[nodiscard]] QString textOf(const QByteArray& bytes);

/// The text of a file, UTF-8; "-" is standard input. Bytes that are no UTF-8 become U+FFFD.
[[nodiscard]] std::variant<QString, Failure> readText(const QString& path);

/// The bytes of a file.
[[nodiscard]] std::variant<QByteArray, Failure> readBytes(const QString& path, ExitStatus statusOfFailure);

/// Writes to the file, or to standard output without one. A regular file is replaced in one step, once
/// everything is on disk; until then, and on every failure, it stays as it was.
[[nodiscard]] std::optional<Failure> writeResult(const std::optional<QString>& path, const QByteArray& bytes);

#pragma once

#include <QDateTime>
#include <QString>
#include <QtGlobal>

/// "DEBUG", "WARNING", "CRITICAL", "FATAL" or "INFO"; "UNKNOWN" for a value outside the enumeration.
[[nodiscard]] QString logLevelWord(QtMsgType type);

/// One line of the log, without its line end: "[time] [level] [function] message". `function` may be null:
/// "unknown". The message stands as it is, place markers included.
[[nodiscard]] QString logLine(const QDateTime& time, QtMsgType type, const char* function,
                              const QString& message);

/// A log file above this many bytes makes room for a new one.
inline constexpr qint64 kLargestLog_bytes = 0xA00000;

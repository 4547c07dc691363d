#pragma once

#include <QString>
#include <QtGlobal>

/// The log of the system, for qInstallMessageHandler: appends one line per message to `log.txt` of the
/// installation folder, from any thread. A log above 10 MiB is deleted first; one that cannot be written
/// loses the line. A fatal message ends the process with status 1 once its line is written.
///
/// Costs a file opened and closed per message: not for what happens per point.
void writeLogMessage(QtMsgType type, const QMessageLogContext& context, const QString& message);

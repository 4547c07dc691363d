#include "core/MessageHandler.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QTextStream>
#include <cstdlib>

#include "core/InstallationFolder.h"
#include "core/calc/LogText.h"

namespace {

/// Empty before there is an application object, whose folder the log stands in; afterwards, and behind the
/// end of that object, the last folder known. Asking Qt for the folder without such an object would log.
QString logFile() {
    static QString path;
    if (QCoreApplication::instance() != nullptr)
        path = installationPath(QStringLiteral("log.txt"));
    return path;
}

void appendToLog(const QString& line) {
    const QString path = logFile();
    if (path.isEmpty())
        return;
    if (QFileInfo(path).size() > kLargestLog_bytes)
        QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        return;
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    stream << line << '\n';
}

}  // namespace

void writeLogMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    static QMutex* const mutex = new QMutex;  // owned by nobody: messages come until the process is gone
    static thread_local bool writing = false;
    if (writing)
        return;  // a message about writing the log, or of an object that exit() destroys below
    const QMutexLocker lock(mutex);
    writing = true;
    appendToLog(logLine(QDateTime::currentDateTime(), type, context.function, message));
    // The lock is kept: other threads wait here instead of working with what exit() destroys.
    if (type == QtFatalMsg)
        std::exit(1);
    writing = false;
}

#include "core/calc/LogText.h"

QString logLevelWord(QtMsgType type) {
    switch (type) {
        case QtDebugMsg:
            return QStringLiteral("DEBUG");
        case QtWarningMsg:
            return QStringLiteral("WARNING");
        case QtCriticalMsg:
            return QStringLiteral("CRITICAL");
        case QtFatalMsg:
            return QStringLiteral("FATAL");
        case QtInfoMsg:
            return QStringLiteral("INFO");
    }
    return QStringLiteral("UNKNOWN");
}

QString logLine(const QDateTime& time, QtMsgType type, const char* function, const QString& message) {
    // One call of arg for all four: a message may hold place markers of its own.
    return QStringLiteral("[%1] [%2] [%3] %4")
        .arg(time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")), logLevelWord(type),
             function != nullptr ? QString::fromUtf8(function) : QStringLiteral("unknown"), message);
}

#include "app/batch/BatchReport.h"

#include <QByteArray>
#include <QMutex>
#include <QMutexLocker>
#include <cstdio>
#include <cstdlib>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

/// Shared with the message handler, which any thread may enter.
struct ReportState {
    QMutex mutex;
    QString machineFile = QStringLiteral("machine");
    QString programFile = QStringLiteral("program");
    QString lastWarning;
    bool isQuiet = false;
};

ReportState& state() {
    static ReportState* const kState = new ReportState;  // owned by the process, outlives late messages
    return *kState;
}

QString oneLine(QString text) {
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = QLatin1Char(' ');
    }
    return text.simplified();
}

void printLine(const QString& place, const QString& text) {
    const QByteArray line =
        QStringLiteral("tornvale-batch: %1: %2\n").arg(oneLine(place), oneLine(text)).toUtf8();
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
    std::fflush(stderr);
}

bool isTerminal() {
#ifdef Q_OS_WIN
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

/// The letters that a program switches to are its own choice; every other fatal message is about the machine.
bool isAboutTheProgram(const QString& fatalText) {
    return fatalText.startsWith(QLatin1String("Error: Can't find the axis name"));
}

void handleMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    ReportState& report = state();
    const QMutexLocker lock(&report.mutex);
    if (type == QtWarningMsg || type == QtCriticalMsg)
        report.lastWarning = text;
    if (type != QtFatalMsg)
        return;
    const bool isProgram = isAboutTheProgram(text);
    printLine(isProgram ? report.programFile : report.machineFile, text);
    std::_Exit(static_cast<int>(isProgram ? ExitStatus::BadInput : ExitStatus::BadInstallation));
}

}  // namespace

void printError(const QString& place, const QString& text) {
    printLine(place, text);
}

void printSummary(const QString& place, const QString& text) {
    printLine(place, text);
}

void printNote(const QString& place, const QString& text) {
    if (!state().isQuiet)
        printLine(place, text);
}

void printProgress(const QString& place, const QString& text) {
    if (isTerminal())
        printNote(place, text);
}

void setQuiet(bool isQuiet) {
    state().isQuiet = isQuiet;
}

void installBatchLog() {
    qInstallMessageHandler(handleMessage);
}

void setFatalPlaces(const QString& machineFile, const QString& programFile) {
    const QMutexLocker lock(&state().mutex);
    state().machineFile = machineFile;
    state().programFile = programFile;
}

QString lastWarning() {
    const QMutexLocker lock(&state().mutex);
    return state().lastWarning;
}

void forgetWarnings() {
    const QMutexLocker lock(&state().mutex);
    state().lastWarning.clear();
}

void BatchDialogs::tell(Kind /*kind*/, const QString& title, const QString& text, QWidget* /*parent*/) {
    printError(place_, QStringLiteral("%1: %2").arg(title, text));
}

bool BatchDialogs::ask(const QString& title, const QString& text, QWidget* /*parent*/) {
    printError(place_, QStringLiteral("%1: %2 (answered with No)").arg(title, text));
    return false;
}

std::optional<QString> BatchDialogs::chooseItem(const QString& title, const QString& label,
                                                const QStringList& /*items*/) {
    printError(place_, QStringLiteral("%1: %2 (cancelled)").arg(title, label));
    return std::nullopt;
}

std::optional<double> BatchDialogs::askNumber(const QString& title, const QString& label, double /*value*/,
                                              double /*low*/, double /*high*/, int /*decimals*/) {
    printError(place_, QStringLiteral("%1: %2 (cancelled)").arg(title, label));
    return std::nullopt;
}

QString BatchDialogs::openFile(const QString& caption, const QString& /*folder*/, const QString& /*filter*/) {
    printError(place_, QStringLiteral("%1 (cancelled)").arg(caption));
    return {};
}

QString BatchDialogs::saveFile(const QString& caption, const QString& /*folder*/, const QString& /*filter*/) {
    printError(place_, QStringLiteral("%1 (cancelled)").arg(caption));
    return {};
}

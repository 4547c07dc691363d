#include <QApplication>
#include <QTextCodec>
#include <optional>
#include <variant>

#include "TA/Trajectory.h"
#include "app/batch/BatchCommands.h"
#include "app/batch/BatchFiles.h"
#include "core/UserDialogs.h"
#include "core/Version.h"

namespace {

int print(const QString& text) {
    if (const std::optional<Failure> failure = writeResult(std::nullopt, text.toUtf8())) {
        printError(failure->place, failure->text);
        return static_cast<int>(failure->status);
    }
    return static_cast<int>(ExitStatus::Done);
}

int runCall(const BatchCall& call) {
    if (call.help)
        return print(batchHelp());
    if (call.version)
        return print(QStringLiteral("tornvale-batch %1\n").arg(builtVersion()));
    setQuiet(call.quiet);
    BatchDialogs dialogs(call.input);
    setUserDialogs(&dialogs);
    const ExitStatus status = runCommand(call);
    setUserDialogs(nullptr);
    return static_cast<int>(status);
}

}  // namespace

int main(int argc, char** argv) {
    installBatchLog();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#ifndef Q_OS_WIN
    // Names of files are UTF-8, whatever a script's locale says.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    int ownArguments = 1;  // the options are this program's own, none is the toolkit's
    const QApplication application(ownArguments, argv);

    TA::SetLoggerLevel("error");
    TA::Initialize("zh");
    const std::variant<BatchCall, WrongCall> call = readCommandLine(arguments);
    if (const WrongCall* wrong = std::get_if<WrongCall>(&call)) {
        printError(wrong->argument, wrong->text);
        return static_cast<int>(ExitStatus::WrongCall);
    }
    return runCall(std::get<BatchCall>(call));
}

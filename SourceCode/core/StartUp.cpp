#include "core/StartUp.h"

#include <TA/Trajectory.h>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSplashScreen>
#include <iostream>
#include <memory>
#include <optional>

#include "app/Tornvale.h"
#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/MessageHandler.h"
#include "core/ParaReader.h"
#include "core/QtTexts.h"
#include "core/Restart.h"
#include "core/SingleInstanceGuard.h"
#include "core/UserDialogs.h"
#include "core/calc/MachineChoice.h"
#include "nc/myTimer.h"
#include "tools/ToolData.h"

namespace {

constexpr int kRefused = -1;
const QString kUsedConfig = QStringLiteral("Config/UsedConfig");

QString mainText(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("Main"), QLatin1String(key));
}

void tellRefusal(const char* key) {
    userDialogs().tell(UserDialogs::Kind::Warning, mainText("Title"), mainText(key));
}

bool isFile(const QString& path) {
    return QFileInfo::exists(path) && QFileInfo(path).isFile();
}

void startTrajectoryLibrary() {
    std::cout << "set ta logger level" << std::endl;
    TA::SetLoggerLevel("error");
    std::cout << "call ta initialize" << std::endl;
    TA::Initialize("zh");  // always this word, whatever the user's language
    std::cout << "ta initialize finished!" << std::endl;
}

void showOnSplash(QSplashScreen& splash, const char* key) {
    splash.showMessage(mainText(key), Qt::AlignLeft, Qt::black);
}

/// What the user picks when the settings name no machine; stored for the next start. Cancelling is silent.
std::optional<QString> chosenMachine(ParaReader& settings) {
    const QDir folder(installationPath(QStringLiteral("machineSample")));
    const QStringList offered = offeredMachines(folder.entryList({kMachineFilter}));
    const QString name = userDialogs()
                             .chooseItem(mainText("SelectConfig"), mainText("SelectConfig"), offered)
                             .value_or(QString());
    if (name.isEmpty())
        return std::nullopt;
    const QString path = chosenMachinePath(name);
    // Relative to the working directory, and stored so: it must stay this way.
    if (!isFile(path)) {
        tellRefusal("ConfigFileErrorMsg");
        return std::nullopt;
    }
    settings.setValue(kUsedConfig, path);
    return path;
}

std::optional<QString> machinePath(ParaReader& settings) {
    const QString path = installationPath(settings.value(kUsedConfig).toString());
    return isFile(path) ? path : chosenMachine(settings);
}

void openProjectArgument(Tornvale& window, int argc, char** argv) {
    if (argc < 2)
        return;
    const QString path = QString::fromLocal8Bit(argv[1]);
    if (isFile(path) && isProjectSuffix(QFileInfo(path).suffix()))
        window.openProject(path);
}

/// What ./run.sh shows: a project or a program of the installation, named by the environment.
void startDemonstration(Tornvale& window) {
    const QString program = qEnvironmentVariable("TORNVALE_DEMONSTRATION");
    if (program.isEmpty() || !window.loadDemonstration(program))
        return;
    TORNVALE::myTimer& playback = TORNVALE::myTimer::instance();
    playback.show();
    constexpr int kMargin = 40;
    const QRect area = window.geometry();
    playback.move(area.right() - playback.frameGeometry().width() - kMargin,
                  area.bottom() - playback.frameGeometry().height() - kMargin);
}

bool isOnlyInstance(SingleInstanceGuard& guard) {
    return !guard.isAnotherRunning() && guard.tryToRun();
}

int runWindow(int argc, char** argv) {
    QSplashScreen splash{QPixmap(installationPath(QStringLiteral("LogoInfo.jpg")))};
    splash.show();
    showOnSplash(splash, "Loading");

    const auto settings = std::make_unique<ParaReader>();
    const std::optional<QString> machine = machinePath(*settings);
    if (!machine)
        return kRefused;

    Tornvale window(*machine);
    QCoreApplication::processEvents();
    showOnSplash(splash, "LoadedSucessful");
    window.show();
    window.showMaximized();
    splash.finish(&window);
    window.offerRecovery();
    openProjectArgument(window, argc, argv);
    startDemonstration(window);
    return QApplication::exec();
}

}  // namespace

namespace {

int runApplication(int argc, char** argv, QString& program) {
    const QApplication application(argc, argv);
    program = QCoreApplication::applicationFilePath();
    TORNVALE::LanguageReader::instance();
    const QtTexts qtTexts(ParaReader().value(QStringLiteral("MainInterface/Language")).toString());
    SingleInstanceGuard guard(mainText("Title"));
    if (!isOnlyInstance(guard)) {
        tellRefusal("SingleInstanceGuardErrorMsg");
        return kRefused;
    }
    // The guard outlives the window, the splash and the settings.
    return runWindow(argc, argv);
}

}  // namespace

int startTornvale(int argc, char** argv) {
    startTrajectoryLibrary();
    qRegisterMetaType<ToolData>("ToolData");
    qInstallMessageHandler(writeLogMessage);  // before Qt itself has something to say
    QString program;
    const int status = runApplication(argc, argv, program);
    // Only now is nothing of this process in the way of the next one.
    if (takeRestartRequest())
        QProcess::startDetached(program, {});
    return status;
}

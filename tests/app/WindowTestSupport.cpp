#include "WindowTestSupport.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMenuBar>
#include <QSettings>
#include <QTimer>

#include "InstallationCopy.h"
#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/Restart.h"
#include "core/getUniquelyIdentifies.h"
#include "nc/UserPostProcessor.h"
#include "tools/ToolManager.h"

TemporaryInstallation& WindowBench::installation() {
    static TemporaryInstallation folder;
    return folder;
}

WindowBench::WindowBench() {
    QDir(installation().path()).removeRecursively();
    QDir().mkpath(installation().path());
    setInstallationFolder(installation().path());
    for (const char* name : {"language/english.json", "data/UniquelyIdentifies.json", "oak.jpg"}) {
        QFile shipped(shippedInstallation() + QLatin1Char('/') + QLatin1String(name));
        EXPECT_TRUE(shipped.open(QIODevice::ReadOnly)) << name;
        write(QLatin1String(name), shipped.readAll());
    }
    write("Tornvale3.3.0.5.rc", "FILEVERSION 3,3,0,5\n");
    write("toollib.json", "{}");
    write("models/Box.stl", smallModel());
    write("machineSample/Small.xml", smallMachine());
    write("UserPostProcessor/Small.xml", smallPostProcessor());
    settings({});
    TORNVALE::LanguageReader::instance().reload();
    getUniquelyIdentifies::instance().reload();
    TORNVALE::UserPostProcessor::instance().reload();
    TORNVALE::ToolsManager::instance().removeInstalledTools();
}

WindowBench::~WindowBench() {
    window_.reset();
    EXPECT_FALSE(takeRestartRequest()) << "nobody looked at the restart";
    // A quit that met no event loop would end the first one of the next test.
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
}

Tornvale& WindowBench::open() {
    window_ = std::make_unique<Tornvale>(file("machineSample/Small.xml"));
    return *window_;
}

QAction* WindowBench::action(const char* key) {
    for (QMenu* menu : window_->findChildren<QMenu*>()) {
        for (QAction* action : menu->actions()) {
            if (action->objectName() == QLatin1String(key))
                return action;
        }
    }
    ADD_FAILURE() << "no action " << key;
    return nullptr;
}

void WindowBench::trigger(const char* key) {
    if (QAction* found = action(key))
        found->trigger();
}

void WindowBench::settings(const QByteArray& lines) const {
    write("data.ini",
          "[Config]\nUsedConfig=machineSample/Small.xml\n[StatusPreProcessing]\n"
          "PostProcessor=UserPostProcessor/Small.xml\n[MainInterface]\nLanguage=English\n" +
              lines);
}

QString WindowBench::setting(const char* key) const {
    return QSettings(file("data.ini"), QSettings::IniFormat).value(QLatin1String(key)).toString();
}

#include "MainWindowBench.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTimer>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/Restart.h"
#include "core/getUniquelyIdentifies.h"
#include "nc/UserPostProcessor.h"
#include "tools/ToolManager.h"

TemporaryInstallation& MainWindowBench::installation() {
    static TemporaryInstallation folder;
    return folder;
}

void MainWindowBench::clear() {
    QDir(installation().path()).removeRecursively();
    QDir().mkpath(installation().path());
    setInstallationFolder(installation().path());
}

MainWindowBench::~MainWindowBench() {
    window_.reset();
    EXPECT_FALSE(takeRestartRequest()) << "nobody looked at the restart";
    // A quit that met no event loop would end the first one of the next test.
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
}

void MainWindowBench::ship(const QStringList& names) const {
    for (const QString& name : names) {
        QFile shipped(shippedInstallation() + QLatin1Char('/') + name);
        EXPECT_TRUE(shipped.open(QIODevice::ReadOnly)) << name.toStdString();
        write(name, shipped.readAll());
    }
}

void MainWindowBench::readAnew() {
    TORNVALE::LanguageReader::instance().reload();
    getUniquelyIdentifies::instance().reload();
    TORNVALE::UserPostProcessor::instance().reload();
    TORNVALE::ToolsManager::instance().removeInstalledTools();
}

Tornvale& MainWindowBench::open() {
    window_ = std::make_unique<Tornvale>(file(machine_));
    return *window_;
}

QAction* MainWindowBench::action(const char* key) {
    for (QMenu* menu : window_->findChildren<QMenu*>()) {
        for (QAction* action : menu->actions()) {
            if (action->objectName() == QLatin1String(key))
                return action;
        }
    }
    ADD_FAILURE() << "no action " << key;
    return nullptr;
}

void MainWindowBench::trigger(const char* key) {
    if (QAction* found = action(key))
        found->trigger();
}

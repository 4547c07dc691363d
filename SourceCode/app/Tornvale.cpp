#include "app/Tornvale.h"

#include <QDebug>
#include <QIcon>
#include <QTabWidget>
#include <cstdlib>
#include <iostream>

#include "app/Demonstration.h"
#include "app/DemonstrationPage.h"
#include "app/MachineSummaryPage.h"
#include "app/Snapshot.h"
#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "core/Version.h"
#include "machine/readConfig.h"

namespace {

QString text(const char* group, const char* key) {
    return TORNVALE::LanguageReader::instance().text(QLatin1String(group), QLatin1String(key));
}

void readMachine(const QString& path) {
    ConfigReader& reader = ConfigReader::instance();
    reader.SetConfig(path);
    if (reader.isValid())
        return;
    userDialogs().tell(UserDialogs::Kind::Warning, QStringLiteral("Fatal"),
                       text("Tornvale", "ConfigFileErrorMsg"));
    std::exit(1);
}

}  // namespace

Tornvale::Tornvale(const QString& machinePath, QWidget* parent)
    : QMainWindow(parent),
      pages_(new QTabWidget(this)),                    // owned by this window
      demonstration_(new DemonstrationPage(pages_)) {  // owned by its parent
    readMachine(machinePath);
    setWindowIcon(QIcon(QStringLiteral(":/Icon/Logo.png")));
    setWindowTitle(text("Tornvale", "Title") + QStringLiteral(" - ") + applicationVersion());
    setCentralWidget(pages_);
    pages_->addTab(new MachineSummaryPage(ConfigReader::instance().description(), pages_),  // owned by pages_
                   text("Tornvale/MachineSummary", "Title"));
    pages_->addTab(demonstration_, text("Tornvale/Demonstration", "Title"));
    pages_->setCurrentWidget(demonstration_);
    resize(1200, 800);
    runDemonstrationJob();
    scheduleSnapshot(*this);
}

void Tornvale::runDemonstrationJob() {
    QString problem;
    const auto job = runDemonstration(QStringLiteral("programs/FiveAxisContour.nc"), 0, problem);
    if (!job) {
        qWarning().noquote() << problem;
        demonstration_->showProblem(problem);
        return;
    }
    demonstration_->show(*job);
    std::cout << job->program.toStdString() << '\n' << summaryText(job->summary).toStdString() << std::flush;
}

bool Tornvale::openProject(const QString& path) {
    userDialogs().tell(UserDialogs::Kind::Information, text("Tornvale/OpenFile", "Title"),
                       text("Tornvale/OpenFile", "NotSupportedMsg").arg(path), this);
    return false;
}

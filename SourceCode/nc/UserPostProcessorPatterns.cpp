#include <QAction>
#include <QActionGroup>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QToolBar>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "nc/UserPostProcessor.h"

namespace TORNVALE {

namespace {

void tellNoPatterns() {
    userDialogs().tell(UserDialogs::Kind::Critical, QStringLiteral("Error"),
                       QStringLiteral("Not defined user post processor.\n"
                                      "check:data.ini->StatusPreProcessing->PostProcessor existed?"));
}

}  // namespace

QToolBar* UserPostProcessor::GetToolBar() {
    if (!toolBar_.isNull())
        return toolBar_;
    toolBar_ = new QToolBar(LanguageReader::instance().text(  // owned by the window that takes it
        QStringLiteral("UserPostProcessor"), QStringLiteral("Title")));
    toolBar_->setObjectName(QStringLiteral("UserPostProcessorToolBar"));
    toolBar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    actionGroup_ = new QActionGroup(toolBar_);  // owned by the tool bar
    actionGroup_->setExclusive(true);
    const QString folder = installationPath(QStringLiteral("UserPostProcessor")) + QLatin1Char('/');
    qInfo().noquote() << "User post processor dir:" << folder;
    const QVector<PatternRow> rows = PostProcessorConfigulation::GetPatternData();
    for (const PatternRow& row : rows) {
        QAction* const action = toolBar_->addAction(QIcon(folder + row.image), row.nickName);
        action->setCheckable(true);
        action->setProperty("name", row.name);
        actionGroup_->addAction(action);
        QObject::connect(action, &QAction::toggled, toolBar_, [this, name = row.name](bool checked) {
            if (checked)
                chosen_ = name;
        });
    }
    if (rows.isEmpty())
        tellNoPatterns();
    else if (!checkAction(chosen_))
        actionGroup_->actions().first()->setChecked(true);  // without a pattern the NC file would be empty
    return toolBar_;
}

/// Checks the action of a pattern; false when there is none.
bool UserPostProcessor::checkAction(const std::optional<QString>& name) const {
    if (!name || actionGroup_.isNull())
        return false;
    for (QAction* action : actionGroup_->actions()) {
        if (action->property("name").toString() == *name) {
            action->setChecked(true);
            return true;
        }
    }
    return false;
}

QStringList UserPostProcessor::patternNames() const {
    QStringList names;
    for (const PatternRow& row : patternRows(configuration_->root))
        names.append(row.name);
    return names;
}

bool UserPostProcessor::choosePattern(const QString& name) {
    if (configuration_->pattern(name).isNull())
        return false;
    chosen_ = name;
    checkAction(chosen_);
    return true;
}

QDomElement UserPostProcessor::pattern() const {
    return chosen_ ? configuration_->pattern(*chosen_) : QDomElement();
}

bool UserPostProcessor::hasPatternOrTells() const {
    const bool hasPattern = !pattern().isNull();
    if (!hasPattern)
        tellNoPatterns();
    return hasPattern;
}

QStringList UserPostProcessor::GetCoordinateList() const {
    return coordinateList(pattern());
}

QString UserPostProcessor::outputPath(const QString& documentPath) const {
    const QDomElement chosen = pattern();
    const auto part = [this, &chosen](const QString& name) {
        return chosen.attribute(name, configuration_->root.attribute(name));
    };
    return configuration_->OutputDir.filePath(part(QStringLiteral("Prefix")) +
                                              QFileInfo(documentPath).completeBaseName() +
                                              part(QStringLiteral("Suffix")));
}

void UserPostProcessor::reload() {
    delete toolBar_.data();
    chosen_.reset();
    planner_ = {};
    configuration_ = std::make_unique<PostProcessorConfigulation>();
}

}  // namespace TORNVALE

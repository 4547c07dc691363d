#include "app/batch/BatchProject.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "app/calc/ProjectDocument.h"
#include "items/IsoItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/MotionNodeManager.h"
#include "machine/readConfig.h"
#include "nc/UserPostProcessor.h"
#include "tools/ToolManager.h"

namespace {

QJsonObject itemJson(const QString& group, const TORNVALE::CodeManagerItem& item) {
    return {{QStringLiteral("group"), group},
            {QStringLiteral("name"), item.itemName()},
            {QStringLiteral("type"), item.itemType()},
            {QStringLiteral("chain"), item.chainName()},
            {QStringLiteral("checked"), item.isActive()},
            {QStringLiteral("inLimits"), item.isInLimits()},
            {QStringLiteral("Time"), item.record().Time},
            {QStringLiteral("WorkCode"), item.WorkCode()},
            {QStringLiteral("LeadIn"), item.LeadIn()},
            {QStringLiteral("IsoCode"), item.IsoCode()},
            {QStringLiteral("LeadOut"), item.LeadOut()}};
}

/// Empty when nothing is wrong with the item.
QString faultOf(const TORNVALE::CodeManagerItem& item) {
    if (item.IsoCode().isEmpty()) {
        const auto* iso = dynamic_cast<const TORNVALE::IsoItem*>(&item);
        const QString reason = iso != nullptr ? iso->problem() : QString();
        return QStringLiteral("has no code%1").arg(reason.isEmpty() ? reason : QStringLiteral(": ") + reason);
    }
    return item.isInLimits() ? QString() : QStringLiteral("leaves the limits of the machine");
}

}  // namespace

BatchProject::BatchProject()
    : machine_(std::make_unique<MotionNodeManager>(ConfigReader::instance().description())),
      programs_(std::make_unique<TreeWidgetManager>(*machine_)) {}

BatchProject::~BatchProject() = default;

std::optional<Failure> BatchProject::load(const QString& place, const QByteArray& document) {
    const std::optional<ProjectDocument> project = readProject(document);
    if (!project)
        return Failure{ExitStatus::BadInput, place,
                       QStringLiteral("is no project, expected a JSON document in UTF-8")};
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    tools.loadFromProject(project->toolList);
    machine_->fromJson(project->machine, project->isLegacy);
    static_cast<void>(programs_->Set(project->tree, project->isLegacy));
    machine_->UpdateToolList(tools.installedTools());
    return std::nullopt;
}

Outcome BatchProject::items(const QString& place) const {
    QJsonArray list;
    Outcome outcome;
    for (const UserTopItem* group : programs_->root().groups()) {
        for (const TORNVALE::CodeManagerItem* item : group->items()) {
            list.append(itemJson(group->wcsName(), *item));
            const QString fault = faultOf(*item);
            if (!fault.isEmpty() && !outcome.failure)
                outcome.failure =
                    Failure{ExitStatus::ProgramAtFault, place,
                            QStringLiteral("%1 of %2 %3").arg(item->itemName(), group->wcsName(), fault)};
        }
    }
    outcome.result = QJsonDocument(QJsonObject{{QStringLiteral("items"), list}}).toJson();
    return outcome;
}

QString BatchProject::machineProgram() const {
    QVector<TORNVALE::ProgramGroup*> groups;
    for (UserTopItem* group : programs_->root().groups()) {
        group->refreshDerivedTexts();
        groups.append(group);
    }
    QString text;
    TORNVALE::UserPostProcessor::instance().ProcessGroups(text, groups, false);
    return text;
}

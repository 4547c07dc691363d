#include "app/batch/BatchProject.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cctype>

#include "app/calc/ProjectDocument.h"
#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "items/GenerateIsoCode.h"
#include "items/GenerationProgress.h"
#include "items/IsoItem.h"
#include "items/PlaybackText.h"
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

QString postProcessorPath() {
    return installationPath(
        ParaReader().value(QStringLiteral("StatusPreProcessing/PostProcessor")).toString());
}

/// Names the item that is being generated.
class ItemNotes final : public TORNVALE::GenerationProgress {
  public:
    explicit ItemNotes(QString place) : place_(std::move(place)) { set(this); }
    ~ItemNotes() override { set(nullptr); }
    ItemNotes(const ItemNotes&) = delete;
    ItemNotes& operator=(const ItemNotes&) = delete;

    void begin(int count) override { count_ = count; }
    [[nodiscard]] bool step(const QString& itemName) override {
        printProgress(place_, QStringLiteral("item %1 of %2: %3").arg(++done_).arg(count_).arg(itemName));
        return true;
    }
    void end() override {}

  private:
    QString place_;
    int count_ = 0;
    int done_ = 0;
};

}  // namespace

bool looksLikeProject(const QByteArray& text) {
    const QByteArray mark("\xEF\xBB\xBF");
    const auto* const first =
        std::find_if_not(text.begin() + (text.startsWith(mark) ? mark.size() : 0), text.end(),
                         [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; });
    return first != text.end() && *first == '{';
}

BatchProject::BatchProject() = default;

BatchProject::~BatchProject() = default;

std::optional<Failure> BatchProject::load(const QString& place, const QByteArray& document) {
    const std::optional<ProjectDocument> project = readProject(document);
    if (!project)
        return Failure{ExitStatus::BadInput, place,
                       QStringLiteral("is no project, expected a JSON document in UTF-8")};
    if (project->machine.isEmpty() && project->tree.isEmpty() && !project->toolList.isObject())
        return Failure{ExitStatus::BadInput, place,
                       QStringLiteral("is no project, expected programs, tools or work coordinate systems")};
    machine_ = std::make_unique<MotionNodeManager>(ConfigReader::instance().description());
    programs_ = std::make_unique<TreeWidgetManager>(*machine_);
    const ItemNotes notes(place);
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

Outcome BatchProject::generate(const BatchCall& call) const {
    TORNVALE::UserPostProcessor& postProcessor = TORNVALE::UserPostProcessor::instance();
    const QStringList patterns = postProcessor.patternNames();
    if (patterns.isEmpty())
        return {std::nullopt,
                Failure{ExitStatus::BadInstallation, postProcessorPath(),
                        QStringLiteral("gives no pattern, expected a post-processor with a Configulation")}};
    const QString pattern = call.pattern.value_or(patterns.first());
    if (!postProcessor.choosePattern(pattern))
        return {std::nullopt,
                Failure{ExitStatus::WrongCall, QStringLiteral("--pattern"),
                        QStringLiteral("%1 is no pattern of %2, expected one of %3")
                            .arg(pattern, postProcessorPath(), patterns.join(QStringLiteral(", ")))}};
    const TORNVALE::NcProgram program = TORNVALE::makeNcProgram(programs_->root());
    if (!program.refusal.isEmpty())
        return {std::nullopt, Failure{ExitStatus::ProgramAtFault, call.input, program.refusal}};
    if (program.text.isEmpty())
        return {
            std::nullopt,
            Failure{ExitStatus::ProgramAtFault, call.input,
                    QStringLiteral("gives no program with the pattern %1: %2").arg(pattern, lastWarning())}};
    constexpr int kDecimals = 3;
    return {program.text.toUtf8(), std::nullopt,
            QStringLiteral("%1 lines, %2 s, %3")
                .arg(program.lines)
                .arg(program.seconds, 0, 'f', kDecimals)
                .arg(call.outputFile.value_or(QStringLiteral("standard output")))};
}

std::variant<QString, Failure> BatchProject::machineProgram(const QString& place) const {
    const QVector<UserTopItem*> groups = programs_->root().groups();
    const QString missing = TORNVALE::missingSpindleText(groups);
    if (!missing.isEmpty())
        return Failure{ExitStatus::ProgramAtFault, place, missing};
    return TORNVALE::joinedProgram(groups);
}

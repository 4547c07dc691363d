#include "nc/machineStatePreprocessing.h"

#include <QDebug>

#include "core/ParaReader.h"
#include "machine/readConfig.h"
#include "nc/ProgramItem.h"
#include "nc/calc/ChainPlanner.h"
#include "nc/multiThreadedTimeOptimal.h"
#include "tools/ToolData.h"

namespace TORNVALE {

struct machineStatePreprocessing::Record {
    explicit Record(const MachineDescription& machine)
        : spindles(machine.spindles, machine.userCommand.delay) {
        constexpr double kMillisecondsPerSecond = 1000.0;
        job.interpolationTime_ms = machine.interpolationParameters.interpolationTime;
        job.period_s = job.interpolationTime_ms / kMillisecondsPerSecond;
    }

    QList<itemStruct> items;
    SpindleModel spindles;
    QString output;
    QString chain;
    ChainJob job;
    QMap<QString, double> startCoordinates;
    std::shared_ptr<AuxiliaryAxis> auxiliaryAxis;
};

namespace {

std::vector<PlanItem> planItems(const QList<itemStruct>& items) {
    std::vector<PlanItem> planned;
    planned.reserve(static_cast<std::size_t>(items.size()));
    for (const itemStruct& item : items) {
        planned.push_back({&item.tool->record(), item.rpm, item.type == kCurveItem, item.LeadIn, item.LeadOut,
                           item.IsoCode});
    }
    return planned;
}

void report(const Diagnostics& diagnostics) {
    for (const Diagnostic& entry : diagnostics.entries) {
        if (entry.severity == Severity::Fatal)
            qFatal("%s", qUtf8Printable(entry.text));
        qWarning().noquote() << entry.text;
    }
}

itemStruct itemOf(const ProgramItem& item) {
    return {item.toolData(),
            item.IsoCode(),
            item.itemName(),
            item.rpm(),
            item.itemType() == kCurveItem ? kCurveItem : kIsoItem,
            item.LeadIn(),
            item.LeadOut()};
}

}  // namespace

machineStatePreprocessing::machineStatePreprocessing()
    : record_(std::make_shared<Record>(ConfigReader::instance().description())) {}

QString machineStatePreprocessing::ProcessChain(
    const QString& header, const QString& tail, const QString& chain, const QString& preAction,
    const QString& postAction, const AxisSequences& entrySequences, const AxisSequences& exitSequences,
    const QList<ProgramItem*>& items, const QMap<QString, double>& startCoordinates,
    const QMap<QString, double>& endCoordinates, const std::shared_ptr<AuxiliaryAxis>& auxiliaryAxis) {
    const MachineDescription& machine = ConfigReader::instance().description();
    ChainJob& job = record_->job;
    job.header = header;
    job.tail = tail;
    job.homeLine = machine.homeLine(chain);
    job.preAction = preAction;
    job.postAction = postAction;
    job.letters = machine.axisMap(chain, false);
    job.entry = entrySequences;
    job.exit = exitSequences;
    job.endCoordinates = endCoordinates;
    record_->chain = chain;
    record_->startCoordinates = startCoordinates;
    record_->auxiliaryAxis = auxiliaryAxis;
    record_->items.clear();
    for (const ProgramItem* item : items) {
        if (item != nullptr && item->isActive())
            record_->items.append(itemOf(*item));
    }

    const ParaReader settings;
    job.preLaunchTime_s = settings.number(QStringLiteral("StatusPreProcessing/PreLaunchTime"), 0.0);
    const QString isPreLaunch =
        settings.value(QStringLiteral("StatusPreProcessing/IsPreLaunch")).toString().trimmed();
    record_->output = isPreLaunch == QLatin1String("true") ? PlanningWithPreBoot(record_->items)
                                                           : planPlainly(record_->items);
    return record_->output;
}

QString machineStatePreprocessing::PlanningWithPreBoot(const QList<itemStruct>& items) {
    return plan(items, true);
}

QString machineStatePreprocessing::planPlainly(const QList<itemStruct>& items) {
    return plan(items, false);
}

QString machineStatePreprocessing::plan(const QList<itemStruct>& items, bool startsEarly) {
    record_->job.retime = [chain = record_->chain, axis = record_->auxiliaryAxis](const QString& code,
                                                                                  bool densePoint) {
        return multiThreadedTimeOptimal::TimeOptimizeCode(code, chain, axis, 1.0, densePoint);
    };
    Diagnostics diagnostics;
    ChainPlanner planner(record_->job, record_->spindles, diagnostics);
    const std::vector<PlanItem> planned = planItems(items);
    QString text = startsEarly ? planner.PlanningWithPreBoot(planned) : planner.planPlainly(planned);
    report(diagnostics);
    return text;
}

}  // namespace TORNVALE

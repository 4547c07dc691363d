#include "app/batch/BatchCommands.h"

#include <QElapsedTimer>

#include "app/batch/BatchFiles.h"
#include "app/batch/BatchInstallation.h"
#include "app/batch/BatchMachine.h"
#include "app/batch/BatchProject.h"
#include "app/batch/BatchResults.h"
#include "machine/Transform.h"
#include "machine/calc/AxisLimits.h"
#include "machine/readConfig.h"
#include "nc/GCodeConversionStrategy.h"
#include "nc/calc/ProgramAudit.h"
#include "nc/multiThreadedTimeOptimal.h"
#include "tools/ToolData.h"

namespace {

/// Everything that a command works on.
struct Job {
    const BatchCall& call;
    WorkPlace place;
    std::shared_ptr<ToolData> tool;
    QString text;

    [[nodiscard]] const MachineDescription& machine() const { return ConfigReader::instance().description(); }
};

Outcome failed(ExitStatus status, const QString& place, const QString& text) {
    return {std::nullopt, Failure{status, place, text}};
}

Failure programFailure(const Job& job, const QString& text, int line = 0) {
    const QString place = line > 0 ? QStringLiteral("%1:%2").arg(job.call.input).arg(line) : job.call.input;
    return {ExitStatus::ProgramAtFault, place, text};
}

SbVec3f vectorOf(const BatchCall::Triple& numbers) {
    return {static_cast<float>(numbers[0]), static_cast<float>(numbers[1]), static_cast<float>(numbers[2])};
}

/// What the log says about a text that stayed empty, otherwise what a user would have to give.
QString reasonOr(const QString& expected) {
    const QString reason = lastWarning();
    return reason.isEmpty() ? expected : QStringLiteral("the program cannot be re-timed: %1").arg(reason);
}

void setUp(HandleIsoCode::GCodeConverter& converter, const Job& job) {
    converter.WCSName = job.place.workCoordinate;
    converter.tool = job.tool.get();
    converter.UserCoordinate = vectorOf(job.call.userCoordinate_mm);
    converter.translation = vectorOf(job.call.translation_mm);
    converter.offset = vectorOf(job.call.offset_mm);
    converter.mirrorAngle = job.call.mirror_deg;
    converter.axisShift = job.call.shift_mm;
    converter.previousFifth = job.call.previousFifth_deg;
}

/// The last warning is why a program was refused; those before it only deserve a note.
std::optional<Failure> reportConversion(const Job& job, const Diagnostics& diagnostics, bool isDone) {
    std::vector<const Diagnostic*> warnings;
    for (const Diagnostic& entry : diagnostics.entries) {
        if (entry.severity == Severity::Warning)
            warnings.push_back(&entry);
    }
    std::optional<Failure> failure;
    if (!isDone) {
        const Diagnostic reason = warnings.empty() ? Diagnostic{} : *warnings.back();
        failure =
            programFailure(job, QStringLiteral("the program is refused: %1").arg(reason.text), reason.line);
        if (!warnings.empty())
            warnings.pop_back();
    }
    for (const Diagnostic* warning : warnings)
        printNote(programFailure(job, {}, warning->line).place, QStringLiteral("warning: ") + warning->text);
    return failure;
}

Outcome convert(Job& job) {
    HandleIsoCode::GCodeConverter converter(job.place.chain);
    setUp(converter, job);
    const bool isDone = converter.doIt(job.text);
    Outcome outcome;
    outcome.failure = reportConversion(job, converter.diagnostics(), isDone);
    if (!isDone)
        return outcome;
    if (converter.WorkCode.isEmpty())
        outcome.failure =
            programFailure(job, QStringLiteral("the program makes no motion, expected axis words"));
    else if (converter.IsoCode.isEmpty())
        outcome.failure = programFailure(
            job, reasonOr(QStringLiteral("the program cannot be re-timed, see TrajAlgorithem of data.ini")));
    const ConvertedTexts texts{converter.WorkCode, converter.LeadIn, converter.IsoCode, converter.LeadOut};
    outcome.result = job.call.section ? texts.section(*job.call.section).toUtf8() : convertedJson(texts);
    return outcome;
}

Outcome transform(Job& job) {
    constexpr int kLayoutOnly = 2;
    if (job.tool == nullptr)
        printNote(job.call.input, QStringLiteral("no --tool is given, so no coordinate changes"));
    TransformationOperator transformation(
        job.tool.get(), job.call.extraLength_mm, vectorOf(job.call.userCoordinate_mm), job.place.chain,
        job.place.workCoordinate, job.tool != nullptr ? job.call.mode : kLayoutOnly);
    QByteArray result = transformation.transformText(job.text).toUtf8();
    if (!result.isEmpty())
        result += '\n';
    return {result, std::nullopt};
}

Outcome retime(Job& job) {
    const QString code = multiThreadedTimeOptimal::TimeOptimizeCode(job.text, job.place.chain, nullptr,
                                                                    job.call.factor, job.call.densePoint);
    if (!code.isEmpty())
        return {code.toUtf8(), std::nullopt};
    return {
        std::nullopt,
        programFailure(job, reasonOr(QStringLiteral("there is nothing to re-time, expected two way points "
                                                    "and a feed of 0.1 or more")))};
}

Outcome check(Job& job) {
    Diagnostics diagnostics;
    std::optional<std::vector<AxisLimitRow>> rows =
        axisLimitRows(job.machine(), job.machine().axisMap(job.place.chain, false), diagnostics);
    if (!rows)
        return failed(ExitStatus::BadInstallation, job.machine().path, diagnostics.entries.back().text);
    Outcome outcome;
    const bool isExceeded = checkAxisLimits(*rows, job.text);
    if (isExceeded)
        outcome.failure = programFailure(job, exceededText(*rows));
    outcome.result = checkJson(*rows, isExceeded);
    return outcome;
}

Outcome audit(Job& job) {
    Diagnostics diagnostics;
    const std::optional<ProgramAudit> measured =
        auditProgram(job.machine(), job.place.chain, job.text, diagnostics);
    if (!measured)
        return failed(ExitStatus::BadInstallation, job.machine().path, diagnostics.entries.back().text);
    Outcome outcome;
    if (measured->hasViolation())
        outcome.failure = programFailure(job, violationText(*measured));
    outcome.result = auditJson(*measured);
    return outcome;
}

Outcome run(Job& job) {
    switch (job.call.command) {
        case BatchCommand::Convert:
            return convert(job);
        case BatchCommand::Transform:
            return transform(job);
        case BatchCommand::Retime:
            return retime(job);
        case BatchCommand::Check:
            return check(job);
        case BatchCommand::Audit:
            return audit(job);
        case BatchCommand::Items:
        case BatchCommand::Generate:
        case BatchCommand::Simulate:
        case BatchCommand::Picture:
            break;  // these need the machine's scene and no chain
    }
    return {};
}

ExitStatus report(const Failure& failure) {
    printError(failure.place, failure.text);
    return failure.status;
}

ExitStatus finish(const BatchCall& call, const Outcome& outcome, const QElapsedTimer& timer) {
    if (outcome.failure)
        report(*outcome.failure);
    if (outcome.result) {
        if (const std::optional<Failure> failure = writeResult(call.outputFile, *outcome.result))
            return report(*failure);
        if (!outcome.summary.isEmpty())
            printSummary(call.input, outcome.summary);
        printProgress(call.input,
                      QStringLiteral("%1 bytes in %2 ms").arg(outcome.result->size()).arg(timer.elapsed()));
    }
    return outcome.failure ? outcome.failure->status : ExitStatus::Done;
}

Outcome runProject(const BatchCall& call, const QByteArray& document) {
    BatchProject project;
    if (const std::optional<Failure> failure = project.load(call.input, document))
        return {std::nullopt, *failure};
    if (call.command == BatchCommand::Items)
        return project.items(call.input);
    if (call.command == BatchCommand::Generate)
        return project.generate(call);
    const std::variant<QString, Failure> program = project.machineProgram(call.input);
    if (const Failure* failure = std::get_if<Failure>(&program))
        return {std::nullopt, *failure};
    return BatchMachine(project.machine()).run(call, std::get<QString>(program));
}

/// The commands that need the machine's scene.
ExitStatus runOnMachine(const BatchCall& call, const QElapsedTimer& timer) {
    printProgress(call.input, QStringLiteral("reading"));
    std::variant<QByteArray, Failure> bytes = readBytes(call.input, ExitStatus::BadInput);
    if (const Failure* failure = std::get_if<Failure>(&bytes))
        return report(*failure);
    auto& input = std::get<QByteArray>(bytes);
    const bool wantsProject = call.command == BatchCommand::Items || call.command == BatchCommand::Generate;
    if (wantsProject || looksLikeProject(input))
        return finish(call, runProject(call, input), timer);
    const auto tools = readTools(call);
    if (const Failure* failure = std::get_if<Failure>(&tools))
        return report(*failure);
    BatchMachine machine(std::get<QVector<ToolRecord>>(tools));
    const QString code = textOf(input);
    input = {};  // not in memory twice while it is played
    return finish(call, machine.run(call, code), timer);
}

bool needsScene(BatchCommand command) {
    return command == BatchCommand::Items || command == BatchCommand::Generate ||
           command == BatchCommand::Simulate || command == BatchCommand::Picture;
}

}  // namespace

ExitStatus runCommand(const BatchCall& call) {
    QElapsedTimer timer;
    timer.start();
    const std::variant<QString, Failure> machineFile = useInstallation(call);
    if (const Failure* failure = std::get_if<Failure>(&machineFile))
        return report(*failure);
    setFatalPlaces(std::get<QString>(machineFile), call.input);

    if (needsScene(call.command))
        return runOnMachine(call, timer);

    const auto place = workPlace(ConfigReader::instance().description(), call);
    if (const Failure* failure = std::get_if<Failure>(&place))
        return report(*failure);
    const auto tool = findTool(call);
    if (const Failure* failure = std::get_if<Failure>(&tool))
        return report(*failure);
    printProgress(call.input, QStringLiteral("reading"));
    std::variant<QString, Failure> text = readText(call.input);
    if (const Failure* failure = std::get_if<Failure>(&text))
        return report(*failure);

    Job job{call, std::get<WorkPlace>(place), std::get<std::shared_ptr<ToolData>>(tool),
            std::move(std::get<QString>(text))};
    printProgress(call.input, QStringLiteral("working on %1 characters").arg(job.text.size()));
    forgetWarnings();
    return finish(call, run(job), timer);
}

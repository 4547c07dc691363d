#include "app/Demonstration.h"

#include <QFile>

#include "core/InstallationFolder.h"
#include "core/Version.h"
#include "machine/Transform.h"
#include "machine/calc/AxisLimits.h"
#include "machine/readConfig.h"
#include "nc/GCodeConversionStrategy.h"
#include "nc/calc/WayPointText.h"
#include "tools/ToolData.h"

namespace {

constexpr int kToTip = 1;  // machine axes back to the tool tip

std::optional<QByteArray> readInstalled(const QString& name, QString& problem) {
    QFile file(installationPath(name));
    if (file.open(QIODevice::ReadOnly))
        return file.readAll();
    problem = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
    return std::nullopt;
}

std::optional<ToolRecord> toolOfLibrary(int index, QString& problem) {
    const QString name = QStringLiteral("toollib.json");
    const std::optional<QByteArray> bytes = readInstalled(name, problem);
    if (!bytes)
        return std::nullopt;
    Diagnostics diagnostics;
    const std::optional<ToolLibrary> library = readToolLibrary(*bytes, applicationVersion(), diagnostics);
    for (const ToolRecord& tool : library ? library->tools : QVector<ToolRecord>()) {
        if (tool.index == index)
            return tool;
    }
    problem = QStringLiteral("%1: no tool of index %2").arg(name).arg(index);
    return std::nullopt;
}

bool exceedsTravel(const MachineDescription& machine, const QString& chain, const QString& code) {
    Diagnostics diagnostics;
    auto rows = axisLimitRows(machine, machine.axisMap(chain, false), diagnostics);
    return !rows || checkAxisLimits(*rows, code);
}

QString firstReason(const Diagnostics& diagnostics) {
    for (const Diagnostic& entry : diagnostics.entries) {
        if (entry.severity == Severity::Warning)
            return QStringLiteral("%1: %2").arg(entry.line).arg(entry.text);
    }
    return QStringLiteral("no code");
}

}  // namespace

std::optional<Demonstration> runDemonstration(const QString& program, int toolIndex, QString& problem) {
    const MachineDescription& machine = ConfigReader::instance().description();
    if (machine.workCoordinateSystems.empty() || machine.workCoordinateSystems[0]->kinematicChain.isEmpty()) {
        problem = QStringLiteral("%1: no work coordinate system with a chain").arg(machine.path);
        return std::nullopt;
    }
    const std::optional<QByteArray> text = readInstalled(program, problem);
    const std::optional<ToolRecord> record = text ? toolOfLibrary(toolIndex, problem) : std::nullopt;
    if (!record)
        return std::nullopt;

    Demonstration result;
    result.program = program;
    result.workCoordinateName = machine.workCoordinateSystems[0]->name;
    result.chain = machine.workCoordinateSystems[0]->kinematicChain[0];
    ToolData tool;
    tool.record() = *record;
    result.toolName = tool.displayText();
    HandleIsoCode::GCodeConverter converter(result.chain);
    converter.tool = &tool;
    converter.WCSName = result.workCoordinateName;
    if (!converter.doIt(QString::fromUtf8(*text))) {
        problem = program + QLatin1Char(':') + firstReason(converter.diagnostics());
        return std::nullopt;
    }
    result.machineCode = converter.LeadIn + converter.IsoCode + converter.LeadOut;
    result.timedPath = WayPointsFromCode(machine, result.chain, converter.IsoCode, nullptr);
    TransformationOperator(&tool, 0.0, SbVec3f(0, 0, 0), result.chain, result.workCoordinateName, kToTip)
        .transformPoints(result.timedPath);
    Diagnostics diagnostics;
    const auto summary =
        summarizeProgram(machine, result.chain, converter.WorkCode, converter.IsoCode,
                         exceedsTravel(machine, result.chain, result.machineCode), diagnostics);
    if (!summary) {
        problem = program + QStringLiteral(": ") + firstReason(diagnostics);
        return std::nullopt;
    }
    result.summary = *summary;
    return result;
}

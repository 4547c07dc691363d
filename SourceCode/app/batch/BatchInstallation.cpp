#include "app/batch/BatchInstallation.h"

#include <QFileInfo>

#include "app/batch/BatchFiles.h"
#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "core/Version.h"
#include "machine/calc/MachineFile.h"
#include "machine/readConfig.h"
#include "tools/ChainSawLibrary.h"
#include "tools/ToolData.h"
#include "tools/calc/ChainSawValues.h"
#include "tools/calc/ToolRecord.h"

namespace {

Failure unusable(const QString& place, const QString& text) {
    return {ExitStatus::BadInstallation, place, text};
}

Failure wrong(const QString& option, const QString& text) {
    return {ExitStatus::WrongCall, option, text};
}

/// The text of a "Group/Key" in the user's language, the key itself when the table lacks it.
QString textOf(const Diagnostic& entry) {
    const QString translated = TORNVALE::LanguageReader::instance().text(
        entry.key.section(QLatin1Char('/'), 0, 0), entry.key.section(QLatin1Char('/'), 1));
    return (translated.isEmpty() ? entry.key : translated) + entry.text;
}

std::variant<QString, Failure> machinePath(const BatchCall& call) {
    if (call.machineFile)
        return *call.machineFile;
    const QString settings = installationPath(QStringLiteral("data.ini"));
    const QString used = ParaReader().value(QStringLiteral("Config/UsedConfig")).toString();
    if (used.isEmpty())
        return unusable(settings,
                        QStringLiteral("names no machine, expected Config/UsedConfig or --machine"));
    return installationPath(used);
}

std::variant<std::unique_ptr<MachineDescription>, Failure> readMachine(const QString& path) {
    std::variant<QByteArray, Failure> bytes = readBytes(path, ExitStatus::BadInstallation);
    if (Failure* failure = std::get_if<Failure>(&bytes))
        return std::move(*failure);
    Diagnostics diagnostics;
    std::optional<XmlError> refusal;
    auto machine = readMachineFile(std::get<QByteArray>(bytes), diagnostics, &refusal);
    if (refusal) {
        const QString place = refusal->line > 0 ? QStringLiteral("%1:%2").arg(path).arg(refusal->line) : path;
        return unusable(place, QStringLiteral("is no machine file: %1").arg(refusal->text));
    }
    if (!machine->valid) {
        QStringList missing;
        for (const Diagnostic& entry : diagnostics.entries)
            missing.append(textOf(entry));
        return unusable(path,
                        QStringLiteral("is no complete machine: %1").arg(missing.join(QStringLiteral("; "))));
    }
    machine->path = path;
    return machine;
}

/// The first name or letter of a chain text that the machine does not have.
std::optional<QString> unknownName(const MachineDescription& machine, const QString& chain) {
    QString names = chain;
    names.replace(QLatin1String("->"), QLatin1String(";"));
    for (const QString& part : names.split(QLatin1Char(';'))) {
        const QString name = part.trimmed();
        const auto isNamed = [&name](const auto& record) { return record->name == name; };
        const bool isRecord =
            std::any_of(machine.numericalAxes.begin(), machine.numericalAxes.end(), isNamed) ||
            std::any_of(machine.nonNumericalAxes.begin(), machine.nonNumericalAxes.end(), isNamed);
        if (isRecord)
            continue;
        for (const QChar letter : name) {
            if (machine.findAxis(letter) == nullptr)
                return name.length() > 1 ? QStringLiteral("%1 in %2").arg(letter).arg(name) : QString(letter);
        }
    }
    return std::nullopt;
}

std::optional<Failure> checkChain(const MachineDescription& machine, const QString& chain) {
    QString known;
    for (const auto& axis : machine.numericalAxes)
        known += axis->name + QLatin1Char(' ');
    if (const std::optional<QString> name = unknownName(machine, chain))
        return wrong(
            QStringLiteral("--chain"),
            QStringLiteral("%1 is no axis of the machine, expected some of %2").arg(*name, known.trimmed()));
    if (machine.axisMap(chain, true).isEmpty())
        return wrong(QStringLiteral("--chain"),
                     QStringLiteral("\"%1\" names no axis, expected some of %2").arg(chain, known.trimmed()));
    return std::nullopt;
}

QString libraryPath(const BatchCall& call) {
    return call.toolFile.value_or(installationPath(QStringLiteral("toollib.json")));
}

}  // namespace

std::variant<QString, Failure> useInstallation(const BatchCall& call) {
    if (call.dataFolder) {
        const QFileInfo folder(*call.dataFolder);
        if (!folder.isDir())
            return unusable(*call.dataFolder, QStringLiteral("is no folder, expected an installation"));
        setInstallationFolder(folder.absoluteFilePath());
    }
    std::variant<QString, Failure> path = machinePath(call);
    if (std::holds_alternative<Failure>(path))
        return path;
    auto machine = readMachine(std::get<QString>(path));
    if (Failure* failure = std::get_if<Failure>(&machine))
        return std::move(*failure);
    auto& description = std::get<std::unique_ptr<MachineDescription>>(machine);
    if (description->interpolationParameters.interpolationTime == 0)
        return unusable(
            std::get<QString>(path),
            QStringLiteral("interpolationTime is missing or 0, expected a number of milliseconds"));
    ConfigReader::instance().setDescription(std::move(description));
    return path;
}

std::variant<WorkPlace, Failure> workPlace(const MachineDescription& machine, const BatchCall& call) {
    WorkPlace place;
    const workCoordinateSystemStruct* system = nullptr;
    if (call.workCoordinate) {
        system = machine.findWorkCoordinateSystem(*call.workCoordinate);
        QStringList names;
        for (const auto& known : machine.workCoordinateSystems)
            names.append(known->name);
        if (system == nullptr)
            return wrong(QStringLiteral("--wcs"),
                         QStringLiteral("%1 is no work coordinate system of the machine, expected one of %2")
                             .arg(*call.workCoordinate, names.join(QStringLiteral(", "))));
    } else if (!machine.workCoordinateSystems.empty()) {
        system = machine.workCoordinateSystems.front().get();
    }
    if (system != nullptr)
        place.workCoordinate = system->name;
    if (call.chain) {
        place.chain = *call.chain;
        if (const std::optional<Failure> failure = checkChain(machine, place.chain))
            return *failure;
        return place;
    }
    if (system == nullptr || system->kinematicChain.isEmpty())
        return unusable(machine.path,
                        QStringLiteral("gives no kinematic chain, expected one in its first work "
                                       "coordinate system or --chain"));
    place.chain = system->kinematicChain.first();
    if (machine.axisMap(place.chain, true).isEmpty())
        return unusable(machine.path, QStringLiteral("the chain \"%1\" names no axis").arg(place.chain));
    return place;
}

std::variant<QVector<ToolRecord>, Failure> readTools(const BatchCall& call) {
    const QString path = libraryPath(call);
    const std::variant<QByteArray, Failure> bytes = readBytes(path, ExitStatus::BadInstallation);
    if (const Failure* failure = std::get_if<Failure>(&bytes))
        return *failure;
    Diagnostics diagnostics;
    std::optional<ToolLibrary> library =
        readToolLibrary(std::get<QByteArray>(bytes), applicationVersion(), diagnostics);
    if (!library)
        return unusable(path, QStringLiteral("is no tool library, expected a JSON object of tools"));
    for (ToolRecord& tool : library->tools) {
        if (!tool.isChainSaw())
            continue;
        if (const auto values = ChainSawLibrary::values(tool.chainSaw))
            applyChainSawCompensations(*values, tool);
    }
    return library->tools;
}

std::variant<std::shared_ptr<ToolData>, Failure> findTool(const BatchCall& call) {
    if (!call.tool)
        return std::shared_ptr<ToolData>();
    const auto tools = readTools(call);
    if (const Failure* failure = std::get_if<Failure>(&tools))
        return *failure;
    QStringList indices;
    for (const ToolRecord& tool : std::get<QVector<ToolRecord>>(tools)) {
        indices.append(QString::number(tool.index));
        if (tool.index == *call.tool)
            return std::make_shared<ToolData>(tool);
    }
    return wrong(QStringLiteral("--tool"),
                 QStringLiteral("%1 is no tool of %2, expected one of %3")
                     .arg(*call.tool)
                     .arg(libraryPath(call),
                          indices.isEmpty() ? QStringLiteral("none") : indices.join(QStringLiteral(", "))));
}

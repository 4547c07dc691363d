#include "machine/readConfig.h"

#include <QDebug>
#include <QJsonObject>

#include "core/LanguageReader.h"
#include "machine/calc/MachineFile.h"

using TORNVALE::LanguageReader;

namespace {

const QString kGroup = QStringLiteral("ConfigReader");
const QString kParseError = QStringLiteral("ParseErrorMsg");

/// The parse message has three places to fill, every other one takes its text behind it.
QString messageOf(const Diagnostic& entry, const std::optional<XmlError>& refusal) {
    if (entry.key.isEmpty())
        return entry.text;
    const QString name = entry.key.section(QLatin1Char('/'), 1);
    const QString text = LanguageReader::instance().text(kGroup, name);
    if (name != kParseError || !refusal || text.isEmpty())
        return text + entry.text;
    return text.arg(refusal->text, QString::number(refusal->line), QString::number(refusal->column));
}

}  // namespace

void UserFixtureList::print() const {
    qDebug().noquote() << QStringLiteral("Name:%1 Path:%2 Number:%3 Distance:%4")
                              .arg(key, value, QString::number(number), QString::number(distance));
}

ConfigReader::ConfigReader() : description_(std::make_unique<MachineDescription>()) {}

ConfigReader& ConfigReader::instance() {
    static ConfigReader* const kReader = new ConfigReader;  // owned by the process, never destroyed
    return *kReader;
}

void ConfigReader::SetConfig(const QString& path) {
    Diagnostics diagnostics;
    std::optional<XmlError> refusal;
    std::unique_ptr<MachineDescription> machine = loadMachineFile(path, diagnostics, &refusal);
    for (const Diagnostic& entry : diagnostics.entries)
        qDebug().noquote() << messageOf(entry, refusal);
    if (machine != nullptr && !refusal) {
        description_ = std::move(machine);
        return;
    }
    // A file that cannot be opened must leave the valid flag as it was; only a refused one clears it.
    description_->path = path;
    description_->valid = description_->valid && !refusal;
}

void ConfigReader::setDescription(std::unique_ptr<MachineDescription> description) {
    description_ = description != nullptr ? std::move(description) : std::make_unique<MachineDescription>();
}

QList<numericalAxisStruct*> ConfigReader::numericalAxes() const {
    QList<numericalAxisStruct*> list;
    for (const auto& axis : description_->numericalAxes)
        list.append(axis.get());
    return list;
}

QList<spindleStruct*> ConfigReader::spindles() const {
    QList<spindleStruct*> list;
    for (const auto& spindle : description_->spindles)
        list.append(spindle.get());
    return list;
}

QList<workCoordinateSystemStruct*> ConfigReader::workCoordinateSystems() const {
    QList<workCoordinateSystemStruct*> list;
    for (const auto& system : description_->workCoordinateSystems)
        list.append(system.get());
    return list;
}

QString ConfigReader::rotationDirection(int direction) {
    if (direction != 0 && direction != 1)
        return QStringLiteral("Unknown");
    const QJsonObject texts = LanguageReader::instance()
                                  .group(QStringLiteral("Tv"))
                                  .value(QStringLiteral("RotationDirection"))
                                  .toObject();
    return texts.value(direction == 0 ? QStringLiteral("CW") : QStringLiteral("CCW")).toString();
}

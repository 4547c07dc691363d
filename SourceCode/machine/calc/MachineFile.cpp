#include "machine/calc/MachineFile.h"

#include <QDomDocument>
#include <QFile>
#include <array>

namespace {

QString key(const char* name) {
    return QStringLiteral("ConfigReader/") + QLatin1String(name);
}

/// Text of the first child element of this name; empty when there is none, for comments too.
QString textOf(const QDomNode& record, const char* name) {
    return record.firstChildElement(QLatin1String(name)).text();
}

double numberOf(const QDomNode& record, const char* name) {
    return textOf(record, name).toDouble();
}

template <typename Record>
struct TextField {
    const char* name;
    QString Record::*member;
};

template <typename Record, std::size_t Count>
void readTexts(const QDomNode& node, const std::array<TextField<Record>, Count>& fields, Record& record) {
    for (const TextField<Record>& field : fields)
        record.*field.member = textOf(node, field.name);
}

constexpr std::array<TextField<numericalAxisStruct>, 13> kAxisTexts = {{
    {"name", &numericalAxisStruct::name},
    {"nickName", &numericalAxisStruct::nickName},
    {"homePosition", &numericalAxisStruct::homePosition},
    {"maxVelocity", &numericalAxisStruct::maxVelocity},
    {"lower", &numericalAxisStruct::lower},
    {"upper", &numericalAxisStruct::upper},
    {"jerk", &numericalAxisStruct::jerk},
    {"acceleration", &numericalAxisStruct::acceleration},
    {"color", &numericalAxisStruct::color},
    {"initialization", &numericalAxisStruct::initialization},
    {"direction", &numericalAxisStruct::direction},
    {"type", &numericalAxisStruct::type},
    {"modelPath", &numericalAxisStruct::modelPath},
}};

constexpr std::array<TextField<nonNumericalAxisStruct>, 9> kPartTexts = {{
    {"name", &nonNumericalAxisStruct::name},
    {"parent", &nonNumericalAxisStruct::parent},
    {"color", &nonNumericalAxisStruct::color},
    {"initialization", &nonNumericalAxisStruct::initialization},
    {"type", &nonNumericalAxisStruct::type},
    {"modelPath", &nonNumericalAxisStruct::modelPath},
    {"direction", &nonNumericalAxisStruct::direction},
    {"lower", &nonNumericalAxisStruct::lower},
    {"upper", &nonNumericalAxisStruct::upper},
}};

constexpr std::array<TextField<spindleStruct>, 12> kSpindleTexts = {{
    {"name", &spindleStruct::name},
    {"initialization", &spindleStruct::initialization},
    {"startString", &spindleStruct::startString},
    {"reverseString", &spindleStruct::reverseString},
    {"stopString", &spindleStruct::stopString},
    {"checkString", &spindleStruct::checkString},
    {"toolChangeString", &spindleStruct::toolChangeString},
    {"range", &spindleStruct::range},
    {"coaxial", &spindleStruct::coaxial},
    {"parent", &spindleStruct::parent},
    {"color", &spindleStruct::color},
    {"direction", &spindleStruct::direction},
}};

constexpr std::array<TextField<machineParametersStruct>, 5> kParameterTexts = {{
    {"systemVendor", &machineParametersStruct::systemVendor},
    {"decimal", &machineParametersStruct::decimal},
    {"machineType", &machineParametersStruct::machineType},
    {"type", &machineParametersStruct::type},
    {"serialNumber", &machineParametersStruct::serialNumber},
}};

constexpr std::array<TextField<workCoordinateSystemStruct>, 4> kWorkSystemTexts = {{
    {"parent", &workCoordinateSystemStruct::parent},
    {"nickName", &workCoordinateSystemStruct::nickName},
    {"name", &workCoordinateSystemStruct::name},
    {"initialization", &workCoordinateSystemStruct::initialization},
}};

struct NumberField {
    const char* name;
    double interpolationParametersStruct::*member;
};

constexpr std::array<NumberField, 8> kInterpolationNumbers = {{
    {"minAcceleration", &interpolationParametersStruct::minAcceleration},
    {"rapidThreshold", &interpolationParametersStruct::rapidThreshold},
    {"decelerationAngle", &interpolationParametersStruct::decelerationAngle},
    {"angleThreshold", &interpolationParametersStruct::angleThreshold},
    {"angleMaxFeedrate", &interpolationParametersStruct::angleMaxFeedrate},
    {"deltaG0", &interpolationParametersStruct::deltaG0},
    {"deltaG1", &interpolationParametersStruct::deltaG1},
    {"interpolationSmooth", &interpolationParametersStruct::interpolationSmooth},
}};

int idOfNickName(const QString& nickName) {
    static const QMap<QString, int> kIds = {{QStringLiteral("X"), 1}, {QStringLiteral("Y"), 2},
                                            {QStringLiteral("Z"), 3}, {QStringLiteral("C"), 4},
                                            {QStringLiteral("B"), 4}, {QStringLiteral("A"), 5}};
    constexpr int kAuxiliary = 6;
    return kIds.value(nickName, kAuxiliary);
}

/// Every child element of "kinematicChain" gives one entry, whatever its name.
QStringList chainsOf(const QDomNode& node) {
    QStringList chains;
    const QDomElement list = node.firstChildElement(QStringLiteral("kinematicChain"));
    for (QDomElement entry = list.firstChildElement(); !entry.isNull(); entry = entry.nextSiblingElement())
        chains.append(entry.text().trimmed());
    return chains;
}

std::unique_ptr<numericalAxisStruct> axisFrom(const QDomNode& node) {
    auto axis = std::make_unique<numericalAxisStruct>();
    readTexts(node, kAxisTexts, *axis);
    if (axis->nickName.isEmpty())
        axis->nickName = axis->name;
    const QString isRtcp = textOf(node, "isRTCP");
    axis->isRTCP = isRtcp.isEmpty() || isRtcp == QLatin1String("true");
    const QString id = textOf(node, "id");
    axis->id = id.isEmpty() ? idOfNickName(axis->nickName) : id.toInt();
    return axis;
}

std::unique_ptr<nonNumericalAxisStruct> partFrom(const QDomNode& node) {
    auto part = std::make_unique<nonNumericalAxisStruct>();
    readTexts(node, kPartTexts, *part);
    return part;
}

std::unique_ptr<spindleStruct> spindleFrom(const QDomNode& node) {
    auto spindle = std::make_unique<spindleStruct>();
    readTexts(node, kSpindleTexts, *spindle);
    return spindle;
}

std::unique_ptr<workCoordinateSystemStruct> workSystemFrom(const QDomNode& node) {
    auto system = std::make_unique<workCoordinateSystemStruct>();
    readTexts(node, kWorkSystemTexts, *system);
    system->kinematicChain = chainsOf(node);
    return system;
}

/// Every child node is a record: a comment too, with all its fields empty.
template <typename List, typename Read>
void readRecords(const QDomElement& element, List& list, Read read) {
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling())
        list.push_back(read(node));
}

/// Every field is overwritten: one that the element lacks becomes 0, not the record's initial value.
interpolationParametersStruct interpolationFrom(const QDomElement& element) {
    interpolationParametersStruct parameters;
    parameters.interpolationTime = textOf(element, "interpolationTime").toUInt();
    for (const NumberField& field : kInterpolationNumbers)
        parameters.*field.member = numberOf(element, field.name);
    return parameters;
}

userCommandStruct userCommandFrom(const QDomElement& element) {
    userCommandStruct command;
    command.delay = textOf(element, "delay");
    const QDomElement list = element.firstChildElement(QStringLiteral("startList"));
    for (QDomElement entry = list.firstChildElement(); !entry.isNull(); entry = entry.nextSiblingElement())
        command.startList.insert(textOf(entry, "kinematicChain"), textOf(entry, "string"));
    return command;
}

QMap<QString, bool> collisionObjectsFrom(const QDomElement& list) {
    QMap<QString, bool> objects;
    for (QDomElement entry = list.firstChildElement(); !entry.isNull(); entry = entry.nextSiblingElement()) {
        const bool value = entry.attribute(QStringLiteral("value")) == QLatin1String("true");
        objects.insert(entry.attribute(QStringLiteral("key")), value);
    }
    return objects;
}

/// An entry whose number or distance does not convert is left out without a message.
std::vector<UserFixtureList> fixturesFrom(const QDomElement& list) {
    std::vector<UserFixtureList> fixtures;
    for (QDomElement entry = list.firstChildElement(); !entry.isNull(); entry = entry.nextSiblingElement()) {
        bool numberOk = false;
        bool distanceOk = false;
        UserFixtureList fixture;
        fixture.key = entry.attribute(QStringLiteral("key"));
        fixture.value = entry.attribute(QStringLiteral("value"));
        fixture.number = entry.attribute(QStringLiteral("number")).toInt(&numberOk);
        fixture.distance = entry.attribute(QStringLiteral("distance")).toFloat(&distanceOk);
        if (numberOk && distanceOk)
            fixtures.push_back(fixture);
    }
    return fixtures;
}

/// Reads the children of the root in their fixed order.
class MachineFileReader {
  public:
    MachineFileReader(const QDomElement& root, MachineDescription& machine, Diagnostics& diagnostics)
        : root_(root), machine_(machine), diagnostics_(diagnostics) {}

    void read() {
        const QDomElement parameters = required("machineParameters", "MachParaIsEmptyMsg");
        readTexts(parameters, kParameterTexts, machine_.machineParameters);
        machine_.machineParameters.kinematicChain = chainsOf(parameters);
        readRecords(required("numericalAxis", "AxisNCNodeIsEmptyMsg"), machine_.numericalAxes, axisFrom);
        reportStrangeIds();
        readRecords(required("nonNumericalAxis", "AxisNonNCNodeIsEmptyMsg"), machine_.nonNumericalAxes,
                    partFrom);
        readRecords(required("spindle", "SpindleNodeIsEmptyMsg"), machine_.spindles, spindleFrom);
        const QDomElement interpolation = required("interpolationParameters", "InterpolationNodeIsEmpty");
        if (interpolation.isNull())
            return;  // must stay: everything behind it is left unread
        machine_.interpolationParameters = interpolationFrom(interpolation);
        const QDomElement workSystems = element("userCoordinateSystem");
        if (workSystems.isNull())
            return;  // must stay: no message, and everything behind it is left unread
        readRecords(workSystems, machine_.workCoordinateSystems, workSystemFrom);
        machine_.userCommand = userCommandFrom(required("userCommand", "UserCommandIsEmpty"));
        machine_.collisionObjectList = collisionObjectsFrom(element("collisionObjectList"));
        machine_.fixtures = fixturesFrom(element("userFixtureList"));
    }

  private:
    [[nodiscard]] QDomElement element(const char* name) const {
        return root_.firstChildElement(QLatin1String(name));
    }

    QDomElement required(const char* name, const char* missingKey) {
        const QDomElement found = element(name);
        if (found.isNull()) {
            diagnostics_.addKey(Severity::Debug, key(missingKey));
            machine_.valid = false;
        }
        return found;
    }

    /// An id that is no role is kept as it stands, but such an axis is in no chain's map.
    void reportStrangeIds() {
        for (const auto& axis : machine_.numericalAxes) {
            if (axis->id < 1 || axis->id > 6)
                diagnostics_.add(Severity::Debug,
                                 QStringLiteral("axis ") + axis->name +
                                     QStringLiteral(": id %1 is none of 1 to 6").arg(axis->id));
        }
    }

    QDomElement root_;
    MachineDescription& machine_;
    Diagnostics& diagnostics_;
};

}  // namespace

std::unique_ptr<MachineDescription> readMachineFile(const QByteArray& bytes, Diagnostics& diagnostics,
                                                    std::optional<XmlError>* refusal) {
    auto machine = std::make_unique<MachineDescription>();
    QDomDocument document;
    const std::optional<XmlError> error = readXml(bytes, document);
    if (refusal != nullptr)
        *refusal = error;
    if (error) {
        machine->valid = false;
        const QString place = QStringLiteral(", line %1, column %2").arg(error->line).arg(error->column);
        diagnostics.addKey(Severity::Debug, key("ParseErrorMsg"), error->text + place, error->line);
        return machine;
    }
    MachineFileReader(document.documentElement(), *machine, diagnostics).read();
    machine->rebuildIndex();
    return machine;
}

std::unique_ptr<MachineDescription> loadMachineFile(const QString& path, Diagnostics& diagnostics,
                                                    std::optional<XmlError>* refusal) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        diagnostics.addKey(Severity::Debug, key("InvalidErrorMsg"), QStringLiteral("\tFile:") + path);
        return nullptr;
    }
    // One byte more than is read at most, so that a file that is too large is told from one that just fits.
    const QByteArray bytes = file.read(XmlBounds().bytes + 1);
    auto machine = readMachineFile(bytes, diagnostics, refusal);
    machine->path = path;
    return machine;
}

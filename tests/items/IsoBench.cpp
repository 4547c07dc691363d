#include "IsoBench.h"

#include <QDir>

#include "core/LanguageReader.h"
#include "items/IsoEditor.h"
#include "machine/readConfig.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

namespace {

void addAxis(MachineDescription& machine, const char* name, int id, const char* direction) {
    numericalAxisStruct axis = axisRecord(QString::fromLatin1(name), id < 4 ? "LINEAR" : "ROTATION");
    axis.id = id;
    axis.direction = QString::fromLatin1(direction);
    axis.lower = QStringLiteral("-1000");
    axis.upper = QStringLiteral("1000");
    axis.acceleration = QStringLiteral("4000");
    axis.jerk = QStringLiteral("40000");
    axis.maxVelocity = QStringLiteral("60000");
    machine.numericalAxes.push_back(std::make_unique<numericalAxisStruct>(axis));
}

std::unique_ptr<MachineDescription> benchMachine() {
    auto machine = std::make_unique<MachineDescription>();
    machine->machineParameters.kinematicChain = QStringList{QStringLiteral("X->Y->Z->C->A")};
    addAxis(*machine, "X", 1, "1 0 0");
    addAxis(*machine, "Y", 2, "0 1 0");
    addAxis(*machine, "Z", 3, "0 0 1");
    addAxis(*machine, "C", 4, "0 0 1");
    addAxis(*machine, "A", 5, "1 0 0");
    spindleStruct spindle;
    spindle.name = QStringLiteral("T1");
    spindle.parent = QStringLiteral("X->Y->Z->C->A");
    spindle.initialization = QStringLiteral("0 0 40 0");
    spindle.range = QStringLiteral("12");
    spindle.color = QStringLiteral("1 1 1");
    machine->spindles.push_back(std::make_unique<spindleStruct>(spindle));
    workCoordinateSystemStruct zone;
    zone.name = QStringLiteral("G54");
    zone.nickName = QStringLiteral("left");
    zone.kinematicChain = QStringList{QStringLiteral("XYZCA")};
    zone.initialization = QStringLiteral("100 -50 7");
    machine->workCoordinateSystems.push_back(std::make_unique<workCoordinateSystemStruct>(zone));
    machine->interpolationParameters.interpolationTime = 4;
    machine->interpolationParameters.rapidThreshold = 20000;
    return machine;
}

}  // namespace

IsoBench::IsoBench(const std::function<void(MachineDescription&)>& change) {
    auto machine = benchMachine();
    if (change)
        change(*machine);
    machine->rebuildIndex();
    ConfigReader::instance().setDescription(std::move(machine));
    const MachineDescription& description = ConfigReader::instance().description();
    manager_ = std::make_unique<MotionNodeManager>(description);
    WorkCoordinateSystem* zone = manager_->findWorkCoordinateSystem(QStringLiteral("G54"));
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Information, english("WorkCoordinateSystem", "Title"),
                       english("WorkCoordinateSystem", "AddUserCoordinateSystemSucessful"));
    zone->addUserCoordinateSystem()->setTranslation(SbVec3f(10, 20, 30));
    auto& tools = TORNVALE::ToolsManager::instance();
    for (const auto& [number, length] : {std::pair{3, 80.0F}, {5, 120.0F}})
        tools.addTool(new ToolData(tool(number, length)), tools.installedRoot());  // owned by the root
    group_ = std::make_unique<UserTopItem>(*description.workCoordinateSystems.front());
}

IsoBench::~IsoBench() {
    TORNVALE::IsoEditor::release(nullptr);
    group_.reset();
    TORNVALE::ToolsManager::instance().removeInstalledTools();
    manager_.reset();
    ConfigReader::instance().setDescription(nullptr);
}

TORNVALE::IsoItem& IsoBench::add(const QString& source) {
    auto made = std::make_unique<TORNVALE::IsoItem>();
    TORNVALE::IsoItem& item = *made;
    group_->adopt(std::move(made), -1);
    item.reactToNewPlace();
    item.SetTool(TORNVALE::ToolsManager::instance().installedTools().first(), false);
    item.editIso().sourceCodeString = source;
    return item;
}

TORNVALE::IsoItem& IsoBench::made(const QString& source) {
    TORNVALE::IsoItem& item = add(source);
    item.doIt();
    return item;
}

userCoordinateSystem& IsoBench::system(int id) {
    return *manager_->findWorkCoordinateSystem(QStringLiteral("G54"))->userCoordinateSystem(id);
}

ToolRecord IsoBench::tool(int toolNo, float length_mm) {
    ToolRecord tool;
    tool.index = toolNo;
    tool.toolNo = toolNo;
    tool.length = length_mm;
    tool.rpm = 1000.0F * static_cast<float>(toolNo);
    return tool;
}

QString english(const char* group, const char* key) {
    return TORNVALE::LanguageReader::instance().text(QString::fromLatin1(group), QString::fromLatin1(key));
}

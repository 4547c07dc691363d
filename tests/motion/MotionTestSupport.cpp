#include "motion/MotionTestSupport.h"

namespace {

numericalAxisStruct smallAxis(const QString& name, int id, const QString& direction,
                              const QString& initialization) {
    numericalAxisStruct record = axisRecord(name, QStringLiteral("LINEAR"));
    record.id = id;
    record.direction = direction;
    record.initialization = initialization;  // an axis stands at the negated place
    record.lower = QStringLiteral("-1000");
    record.upper = QStringLiteral("1000");
    return record;
}

}  // namespace

SmallMachine::SmallMachine() {
    machine.machineParameters.type = QStringLiteral("SmallMachine");
    machine.machineParameters.machineType = QStringLiteral("Small");
    machine.machineParameters.kinematicChain = QStringList{QStringLiteral("X->Z;Y")};
    for (const numericalAxisStruct& axis :
         {smallAxis(QStringLiteral("X"), 1, QStringLiteral("1 0 0"), QStringLiteral("0 0 -500")),
          smallAxis(QStringLiteral("Y"), 2, QStringLiteral("0 1 0"), QStringLiteral("0 0 0")),
          smallAxis(QStringLiteral("Z"), 3, QStringLiteral("0 0 1"), QStringLiteral("0 0 100"))})
        machine.numericalAxes.push_back(std::make_unique<numericalAxisStruct>(axis));
    for (const auto& [name, place] :
         {std::pair{QStringLiteral("Bed"), QStringLiteral("300 0 0")}, {QStringLiteral("Lamp"), "600 0 0"}}) {
        nonNumericalAxisStruct part = partRecord(name, QStringLiteral("FIXED"));
        part.initialization = place;
        machine.nonNumericalAxes.push_back(std::make_unique<nonNumericalAxisStruct>(part));
    }
    spindleStruct first = spindleRecord(QStringLiteral("T1"), QStringLiteral("X->Z"));
    first.range = QStringLiteral("4");
    first.toolChangeString = QStringLiteral("M6");
    spindleStruct second = spindleRecord(QStringLiteral("T2"), QStringLiteral("X->Z"));
    second.startString = QStringLiteral("M13 S#");
    second.stopString = QStringLiteral("M15");
    second.checkString = QString();
    second.initialization = QStringLiteral("-50 0 0 0");
    for (const spindleStruct& spindle : {first, second})
        machine.spindles.push_back(std::make_unique<spindleStruct>(spindle));
    for (const auto& [name, parent, place] :
         {std::tuple{QStringLiteral("G54"), QStringLiteral("Y"), QStringLiteral("0 0 0")},
          {QStringLiteral("G55"), QString(), QStringLiteral("-300 0 0")}}) {
        workCoordinateSystemStruct zone;
        zone.name = name;
        zone.parent = parent;
        zone.initialization = place;
        machine.workCoordinateSystems.push_back(std::make_unique<workCoordinateSystemStruct>(zone));
    }
    machine.collisionObjectList = {{QStringLiteral("Bed"), true}, {QStringLiteral("Lamp"), false}};
    machine.rebuildIndex();
}

MotionNodeManager& SmallMachine::build() {
    manager_.reset();
    machine.rebuildIndex();
    manager_ = std::make_unique<MotionNodeManager>(machine);
    return *manager_;
}

spindleStruct spindleRecord(const QString& name, const QString& parent) {
    spindleStruct record;
    record.name = name;
    record.parent = parent;
    record.initialization = QStringLiteral("0 0 0 0");
    record.startString = QStringLiteral("M3 S#");
    record.stopString = QStringLiteral("M5");
    record.checkString = QStringLiteral("M8");
    record.range = QStringLiteral("1");
    record.color = QStringLiteral("0.5 0.5 0.5");
    return record;
}

ToolData cylinderTool(int spindleNo, int toolNo, float length_mm) {
    ToolRecord record;
    record.spindleNo = spindleNo;
    record.toolNo = toolNo;
    record.length = length_mm;
    record.diameter = 10;
    record.contour = {SbVec3f(5, 0, 0), SbVec3f(5, 0, -length_mm)};
    return ToolData(record);
}

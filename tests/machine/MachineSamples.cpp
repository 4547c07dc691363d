#include "MachineSamples.h"

std::unique_ptr<MachineDescription> sampleMachine(const std::vector<SampleAxis>& axes) {
    auto machine = std::make_unique<MachineDescription>();
    for (const SampleAxis& sample : axes) {
        auto axis = std::make_unique<numericalAxisStruct>();
        axis->name = axis->nickName = sample.name;
        axis->id = sample.id;
        axis->type = sample.type;
        axis->direction = sample.direction;
        axis->initialization = sample.initialization;
        axis->lower = sample.lower;
        axis->upper = sample.upper;
        axis->homePosition = QStringLiteral("0");
        machine->numericalAxes.push_back(std::move(axis));
    }
    machine->rebuildIndex();
    return machine;
}

std::unique_ptr<MachineDescription> fiveAxisMachine() {
    const QString rotation = QStringLiteral("ROTATION");
    auto machine = sampleMachine({
        {QStringLiteral("X"), 1, QStringLiteral("LINEAR"), QStringLiteral("1 0 0"), QStringLiteral("1 2 3")},
        {QStringLiteral("Y"), 2, QStringLiteral("LINEAR"), QStringLiteral("0 1 0"), QStringLiteral("10 0 0")},
        {QStringLiteral("Z"), 3, QStringLiteral("LINEAR"), QStringLiteral("0 0 1"),
         QStringLiteral("0 20 30")},
        {QStringLiteral("C"), 4, rotation, QStringLiteral("0 0 1"), QStringLiteral("7 8 9")},
        {QStringLiteral("A"), 5, rotation, QStringLiteral("1 0 0"), QStringLiteral("0 0 150")},
        {QStringLiteral("V"), 6, QStringLiteral("LINEAR"), QStringLiteral("0 1 0"), QStringLiteral("5 5 5")},
    });
    for (const auto& [name, place] : {std::pair(QStringLiteral("T1"), QStringLiteral("1 2 30 5")),
                                      std::pair(QStringLiteral("T2"), QStringLiteral("0 0 0 0"))}) {
        auto spindle = std::make_unique<spindleStruct>();
        spindle->name = name;
        spindle->initialization = place;
        machine->spindles.push_back(std::move(spindle));
    }
    auto system = std::make_unique<workCoordinateSystemStruct>();
    system->name = QStringLiteral("G54");
    system->initialization = QStringLiteral("100 200 300");
    machine->workCoordinateSystems.push_back(std::move(system));
    return machine;
}

QByteArray sampleMachineFile() {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<anything>
 <machineParameters>
  <systemVendor>Vendor</systemVendor><decimal>3</decimal><machineType>Bridge</machineType>
  <type>Root</type><serialNumber>S-1</serialNumber>
  <kinematicChain><one> X->Y->Z->C->A;V->W </one><!-- no entry --><two>U</two></kinematicChain>
 </machineParameters>
 <numericalAxis>
  <axis><name>X</name><nickName>X</nickName><homePosition>1</homePosition><maxVelocity>2</maxVelocity>
   <lower>-3</lower><upper>4</upper><jerk>5</jerk><acceleration>6</acceleration><color>0 0.5 1</color>
   <initialization>7 8 9</initialization><direction>1 0 0</direction><type>LINEAR</type>
   <modelPath>models/x.stl</modelPath><isRTCP>true</isRTCP><id>1</id></axis>
 </numericalAxis>
 <nonNumericalAxis>
  <part><name>Bed</name><parent>X</parent><color>1 1 1</color><initialization>1 2 3</initialization>
   <type>FIXED</type><modelPath>models/bed.stl</modelPath><direction>0 0 1</direction><lower>-1</lower>
   <upper>1</upper></part>
 </nonNumericalAxis>
 <spindle>
  <s><name>T1</name><initialization>1 2 3 4</initialization><startString>M3 S#</startString>
   <reverseString>true</reverseString><stopString>M5</stopString><checkString>M7</checkString>
   <toolChangeString>M6 T#</toolChangeString><range>12</range><coaxial>T2</coaxial><parent>X->A</parent>
   <color>0 0 1</color><direction>0 0 -1</direction></s>
 </spindle>
 <interpolationParameters>
  <interpolationTime>4</interpolationTime><minAcceleration>301</minAcceleration>
  <rapidThreshold>8000</rapidThreshold><decelerationAngle>11</decelerationAngle>
  <angleThreshold>86</angleThreshold><angleMaxFeedrate>1201</angleMaxFeedrate><deltaG0>101</deltaG0>
  <deltaG1>51</deltaG1><interpolationSmooth>0.5</interpolationSmooth>
 </interpolationParameters>
 <userCoordinateSystem>
  <w><parent>V</parent><nickName>left</nickName><name>G54</name><initialization>1 2 3</initialization>
   <kinematicChain><c> X->A </c><c>V</c></kinematicChain></w>
 </userCoordinateSystem>
 <userCommand>
  <delay>G4 F1</delay>
  <startList><a><string>M10</string><kinematicChain>X->A</kinematicChain></a></startList>
 </userCommand>
 <collisionObjectList><o key="X" value="true"/><o key="Y" value="True"/></collisionObjectList>
 <userFixtureList><f key="V" value="automaticFixtures/a.xml" number="3" distance="1.5"/></userFixtureList>
</anything>
)";
}

QByteArray sampleMachineFileWithout(const QByteArray& element) {
    QByteArray file = sampleMachineFile();
    const QByteArray end = "</" + element + ">";
    const int first = file.indexOf("<" + element + ">");
    file.remove(first, file.indexOf(end, first) + end.size() - first);
    return file;
}

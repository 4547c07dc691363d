#include "BridgeModels.h"
#include "Fittings.h"
#include "Models.h"

namespace modelgen::bridge {

namespace {

constexpr double tableCentre = 750.0;  ///< the tables stand at x = -750 and x = 750
constexpr double railOffset = 450.0;   ///< of a table's two rails from its centre
constexpr double beamFront = 420.0;
constexpr double beamLow = 1650.0;
constexpr double beamHigh = 2250.0;

/// A long box beam along Y with a row of windows in its flanks.
Mesh bedBeam(double x) {
    Area flank(chamfered(rectangle(-1400, 120, 1650, 540), 12));
    for (int i = 0; i < 6; ++i) {
        const double y = -1230.0 + 485.0 * i;
        flank.holes.push_back(roundedRectangle(y, 210, y + 330, 440, 60, 4));
    }
    return prismX(flank, x - 100, x + 100, 5);
}

Mesh conveyor() {
    Mesh mesh = prismY(chamfered(Outline{{-170, 120},
                                         {170, 120},
                                         {210, 420},
                                         {180, 420},
                                         {145, 160},
                                         {-145, 160},
                                         {-180, 420},
                                         {-210, 420}},
                                 4),
                       -1390, 1640, 3);
    const Mesh slat = block({-140, -14, 161}, {140, 14, 171}, 0);
    mesh.add(array(slat, 50, {0, 60, 0}), at(0, -1350, 0));
    mesh.add(block({-230, 1660, 130}, {230, 1990, 560}, 18));
    mesh.add(servoMotor(150, 260), at(120, 1830, 556));
    return mesh;
}

}  // namespace

Mesh bed() {
    Mesh mesh;
    for (const double side : {-1.0, 1.0}) {
        for (const double rail : {-1.0, 1.0}) {
            const double x = side * tableCentre + rail * railOffset;
            mesh.add(bedBeam(x));
            for (const double y : {-1300.0, -560.0, 180.0, 920.0, 1560.0}) {
                mesh.add(levellingFoot(75, 124), at(x, y, 0));
            }
        }
        const double low = side * tableCentre - railOffset + 96;
        const double high = side * tableCentre + railOffset - 96;
        for (const double y : {-1340.0, -560.0, 180.0, 920.0, 1520.0}) {
            mesh.add(block({low, y, 170}, {high, y + 90, 470}, 8));
        }
        mesh.add(block({side * tableCentre - 60, -1330, 430}, {side * tableCentre + 60, -1210, 545}, 6));
        mesh.add(block({side * tableCentre - 60, 1500, 430}, {side * tableCentre + 60, 1630, 545}, 6));
    }
    mesh.add(conveyor());
    return mesh;
}

Mesh bedRails() {
    Mesh mesh;
    const Mesh rail = linearRail(3010, 45, 300).placed(turnZ(90));
    for (const double side : {-1.0, 1.0}) {
        for (const double offset : {-1.0, 1.0}) {
            mesh.add(rail, at(side * tableCentre + offset * railOffset, -1385, 540.2));
        }
        const double x = side * tableCentre;
        mesh.add(cylinder(25, -1500, 1340, 2, 24), at(x, 0, 502) * turnX(90));
        mesh.add(gearBox(130, 110), at(x, 1632, 502) * turnX(-90));
        mesh.add(servoMotor(150, 290), at(x, 1741, 502) * turnX(-90));
    }
    return mesh;
}

namespace {

Mesh column() {
    Area flank(
        chamfered(Outline{{430, 40}, {1250, 40}, {1250, 220}, {930, 1150}, {900, 1660}, {430, 1660}}, 22));
    flank.holes.push_back(rounded(Outline{{570, 280}, {1010, 280}, {840, 840}, {570, 840}}, 70, 5));
    flank.holes.push_back(roundedRectangle(560, 1000, 790, 1420, 60, 4));
    Mesh mesh = prismX(flank, 1600, 2100, 12);
    mesh.add(block({1550, 390, 0}, {2150, 1300, 45}, 8));
    for (const double y : {430.0, 1260.0}) {
        mesh.add(screwRow(44, {1580, y, 44.5}, {135, 0, 0}, 5));
    }
    return mesh;
}

}  // namespace

Mesh portal() {
    Mesh mesh = column();
    mesh.add(column().mirroredX());
    const Outline beam{{beamFront, beamLow},       {870, beamLow},    {900, beamLow + 60},
                       {900, beamHigh - 60},       {840, beamHigh},   {520, beamHigh},
                       {beamFront, beamHigh - 45}, {beamFront, 2070}, {beamFront + 30, 2050},
                       {beamFront + 30, 1850},     {beamFront, 1830}};
    mesh.add(prismX(beam, -2250, 2250, 4));
    const Mesh rib =
        prismX(chamfered(Outline{{890, 1720}, {965, 1790}, {965, 2110}, {890, 2180}}, 8), 0, 22, 3);
    mesh.add(array(rib, 9, {530, 0, 0}), at(-2131, 0, 0));
    for (const double side : {-1.0, 1.0}) {
        const Outline gusset =
            chamfered(Outline{{0, 1390}, {40, 1390}, {330, 1620}, {330, 1652}, {0, 1652}}, 6);
        const Mesh plate = prismY(gusset, 560, 600, 4);
        mesh.add(side < 0 ? plate.placed(at(-1606, 0, 0)) : plate.mirroredX().placed(at(1606, 0, 0)));
    }
    return mesh;
}

Mesh portalTrim() {
    Mesh mesh;
    const Outline cap = rounded(
        Outline{{355, 1600}, {950, 1600}, {985, 1700}, {985, 2215}, {880, 2310}, {470, 2310}, {355, 2235}},
        40, 4);
    const Mesh end = prismX(cap, 2246, 2330, 14);
    mesh.add(end);
    mesh.add(end.mirroredX());
    const Mesh door =
        prismX(Area(chamfered(Outline{{500, 150}, {1160, 150}, {1160, 230}, {890, 1130}, {500, 1130}}, 20)),
               2096, 2118, 6);
    mesh.add(door);
    mesh.add(door.mirroredX());
    mesh.add(block({-2240, 560, 2244}, {2240, 640, 2264}, 5));
    return mesh;
}

Mesh portalRails() {
    Mesh mesh;
    const Mesh rail = linearRail(4300, 45, 300).placed(turnX(90));
    for (const double z : {1745.0, 2155.0}) {
        mesh.add(rail, at(-2150, beamFront - 0.2, z));
    }
    mesh.add(gearRack(136, 30, 40, 32).placed(turnX(90)), at(-2040, beamFront + 29.5, 1900));
    const Mesh buffer = cylinder(28, 0, 60, 5, 20).placed(alongX());
    for (const double z : {1800.0, 2100.0}) {
        mesh.add(buffer, at(-2200, beamFront - 45, z));
        mesh.add(buffer, at(2140, beamFront - 45, z));
        mesh.add(block({-2225, beamFront - 80, z - 40}, {-2196, beamFront + 4, z + 40}, 3));
        mesh.add(block({2196, beamFront - 80, z - 40}, {2225, beamFront + 4, z + 40}, 3));
    }
    return mesh;
}

Mesh cableTrack() {
    Mesh mesh = prismX(chamfered(Outline{{690, 2249},
                                         {850, 2249},
                                         {850, 2320},
                                         {842, 2320},
                                         {842, 2258},
                                         {698, 2258},
                                         {698, 2320},
                                         {690, 2320}},
                                 2),
                       -2200, 2200, 2);
    mesh.add(energyChain(55, 76, 130, 58), at(-2170, 705, 2260));
    return mesh;
}

Mesh planeMark() {
    return block({-5, -5, -5}, {5, 5, 5}, 1);
}

}  // namespace modelgen::bridge

namespace modelgen {

std::vector<Model> bridgeModels() {
    const std::string folder = "TornBridge5/";
    return {
        {folder + "Bed.stl", bridge::bed},
        {folder + "BedRails.stl", bridge::bedRails},
        {folder + "Bridge.stl", bridge::portal},
        {folder + "BridgeTrim.stl", bridge::portalTrim},
        {folder + "BridgeRails.stl", bridge::portalRails},
        {folder + "CableTrack.stl", bridge::cableTrack},
        {folder + "ToolMagazine.stl", bridge::toolMagazine},
        {folder + "Cabinet.stl", bridge::cabinet},
        {folder + "CabinetTrim.stl", bridge::cabinetTrim},
        {folder + "Console.stl", bridge::console},
        {folder + "AxisY.stl", bridge::table},
        {folder + "LeftCarriage.stl", bridge::tableCarriage},
        {folder + "LeftPods.stl", bridge::pods},
        {folder + "LeftStops.stl", bridge::stops},
        {folder + "AxisX.stl", bridge::carriage},
        {folder + "CarriageDrive.stl", bridge::carriageDrive},
        {folder + "AxisZ.stl", bridge::ram},
        {folder + "RamDrive.stl", bridge::ramDrive},
        {folder + "ExtractionHood.stl", bridge::extraction},
        {folder + "AxisC.stl", bridge::fork},
        {folder + "ForkDrive.stl", bridge::forkDrive},
        {folder + "AxisA.stl", bridge::head},
        {folder + "SpindleNoses.stl", bridge::noses},
        {folder + "PlaneAxis.stl", bridge::planeMark},
    };
}

}  // namespace modelgen

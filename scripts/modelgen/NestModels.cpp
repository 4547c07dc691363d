#include "Fittings.h"
#include "Models.h"

// A nesting router with a moving gantry and a fixed table. Machine frame: the floor is z = 0, the gantry
// travels along X. Frames of X, Y and Z: the spindle's centre line is x = 0, y = 0 in all three.

namespace modelgen {

namespace {

constexpr double boardTop = 900.0;
constexpr double railY = 930.0;      ///< of the gantry's rails on both sides of the bed
constexpr double ledge = 560.0;      ///< height on which the rails lie
constexpr double beamFace = -150.0;  ///< front face of the gantry's beam

Mesh nestBed() {
    Mesh mesh;
    Area flank(chamfered(rectangle(-1800, 110, 1800, 776), 16));
    for (int i = 0; i < 6; ++i) {
        const double x = -1650.0 + 560.0 * i;
        flank.holes.push_back(roundedRectangle(x, 210, x + 400, 480, 60, 4));
    }
    mesh.add(prismY(flank, -850, -790, 5));
    mesh.add(prismY(flank, 790, 850, 5));
    for (int i = 0; i < 7; ++i) {
        const double x = -1790.0 + 590.0 * i;
        mesh.add(block({x, -796, 300}, {x + 40, 796, 770}, 5));
    }
    for (const double side : {-1.0, 1.0}) {
        const Mesh ledgeBeam =
            prismX(chamfered(Outline{{846, 420}, {870, 420}, {1000, 520}, {1000, ledge}, {846, ledge}}, 6),
                   -1850, 1850, 4);
        mesh.add(side > 0 ? ledgeBeam : ledgeBeam.mirroredY());
        for (const double x : {-1650.0, -830.0, 0.0, 830.0, 1650.0}) {
            mesh.add(levellingFoot(70, 116), at(x, side * 818, 0));
        }
    }
    return mesh;
}

Mesh nestBoard() {
    Mesh mesh = block({-1620, -820, 774}, {1620, 820, 880}, 6);
    const Mesh pad = prism(chamfered(rectangle(0, 0, 192, 192), 6), 879, boardTop, 2);
    for (int row = 0; row < 8; ++row) {
        mesh.add(array(pad, 16, {200, 0, 0}), at(-1596, -796 + 200.0 * row, 0));
    }
    return mesh;
}

Mesh nestRails() {
    Mesh mesh;
    const Mesh rail = linearRail(3680, 45, 300);
    const Mesh rack = gearRack(120, 30, 30, 26);
    for (const double side : {-1.0, 1.0}) {
        mesh.add(rail, at(-1840, side * railY, ledge + 0.2));
        mesh.add(rack.placed(turnX(side * -90)), at(-1800, side * 999, 470));
    }
    return mesh;
}

Mesh nestGantry() {
    Mesh mesh;
    for (const double side : {-1.0, 1.0}) {
        Area leg(chamfered(
            Outline{{-420, 625}, {60, 625}, {60, 700}, {-130, 1000}, {-130, 1640}, {-420, 1640}}, 16));
        leg.holes.push_back(rounded(Outline{{-360, 720}, {-100, 720}, {-200, 980}, {-360, 980}}, 40, 4));
        const double y = side * railY;
        mesh.add(prismY(leg, y - 50, y + 50, 6));
        for (const double x : {-330.0, -30.0}) {
            mesh.add(runner(140), at(x, y, ledge));
            mesh.add(block({x - 80, y - 62, 617}, {x + 80, y + 62, 640}, 3));
        }
    }
    const Outline beam{{-400, 1320},          {beamFace, 1320},      {beamFace, 1395},
                       {beamFace - 25, 1410}, {beamFace - 25, 1510}, {beamFace, 1525},
                       {beamFace, 1600},      {-360, 1600},          {-400, 1560}};
    mesh.add(prismY(beam, -985, 985, 4));
    mesh.add(block({-440, -1000, 1230}, {-120, -976, 1650}, 8));
    mesh.add(block({-440, 976, 1230}, {-120, 1000, 1650}, 8));
    return mesh;
}

Mesh nestGantryRails() {
    Mesh mesh;
    // Along Y on the front face: head towards +X.
    const Mesh rail = linearRail(1940, 45, 270).placed(turnZ(90) * turnX(90));
    for (const double z : {1358.0, 1562.0}) {
        mesh.add(rail, at(beamFace + 0.2, -970, z));
    }
    mesh.add(gearRack(62, 30, 30, 24).placed(turnZ(90) * turnX(90)), at(beamFace - 25.3, -940, 1460));
    return mesh;
}

Mesh nestGantryDrive() {
    Mesh mesh;
    for (const double side : {-1.0, 1.0}) {
        const double y = side * (railY - 10);
        mesh.add(gearBox(110, 90), at(-240, y, 1636));
        mesh.add(servoMotor(120, 220), at(-240, y, 1724));
    }
    mesh.add(prismY(chamfered(Outline{{-400, 1596},
                                      {-290, 1596},
                                      {-290, 1660},
                                      {-296, 1660},
                                      {-296, 1603},
                                      {-394, 1603},
                                      {-394, 1660},
                                      {-400, 1660}},
                              1.5),
                    -820, 820, 2));
    mesh.add(energyChain(24, 62, 90, 46).placed(turnZ(90)), at(-300, -780, 1606));
    return mesh;
}

Mesh nestCarriage() {
    Mesh mesh;
    for (const double z : {1358.0, 1562.0}) {
        for (const double y : {-120.0, 120.0}) {
            mesh.add(runner(110).placed(turnZ(90) * turnX(90)), at(beamFace, y, z));
        }
    }
    const Area plate(chamfered(rectangle(-190, 1260, 190, 1640), 26));
    mesh.add(prismX(plate, beamFace + 58, beamFace + 84, 5));
    for (const double y : {-165.0, 165.0}) {
        mesh.add(screwRow(16, {beamFace + 83.5, y, 1300}, {0, 0, 75}, 5, turnY(90)));
    }
    for (const double y : {-90.0, 90.0}) {
        mesh.add(block({beamFace + 82, y - 26, 1270}, {beamFace + 102, y + 26, 1630}, 3));
    }
    return mesh;
}

Mesh nestRam() {
    Mesh mesh = prism(chamfered(rectangle(beamFace + 104, -130, 60, 130), 22), 60, 560, 5);
    mesh.add(prismX(roundedRectangle(-100, 90, 100, 530, 20), 58, 66, 3));
    for (const double y : {-84.0, 84.0}) {
        mesh.add(screwRow(11, {65.5, y, 120}, {0, 0, 95}, 5, turnY(90)));
    }
    // Clamp of the spindle motor.
    mesh.add(prism(Area(roundedRectangle(-86, -96, 96, 96, 30), {circle({0, 0}, 66, 40)}), 0, 70, 4));
    return mesh;
}

Mesh nestMotor() {
    Mesh mesh = cylinder(65, -70, 180, 4, 44);
    const Mesh fin = turnedRing(chamfered(rectangle(60, 0, 74, 7), 1.2), 44);
    mesh.add(array(fin, 4, {0, 0, 14}), at(0, 0, -62));
    mesh.add(servoMotor(110, 200), at(-20, 0, 556));
    // Drilling unit in front of the spindle.
    mesh.add(block({-50, -232, -40}, {50, -110, 90}, 10));
    for (const double y : {-140.0, -204.0}) {
        mesh.add(cylinder(22, -70, -30, 3, 28), at(0, y, 0));
    }
    mesh.add(
        pipe(smoothWay({{-20, 60, 640}, {-60, 140, 700}, {-180, 150, 760}, {-300, 40, 720}}, 8), {12}, 12));
    return mesh;
}

Mesh nestNoses() {
    Mesh mesh = spindleNose(48, 20, 52).placed(at(0, 0, -120));
    mesh.add(spindleNose(20, 8, 32), at(0, -140, -100));
    mesh.add(spindleNose(20, 8, 32), at(0, -204, -100));
    return mesh;
}

Mesh nestHood() {
    Mesh mesh = turnedRing(Outline{{86, -52}, {112, -52}, {118, -40}, {118, 10}, {86, 10}}, 44);
    mesh.add(cylinder(44, 0, 70, 3, 28), at(0, 128, -30));
    mesh.add(block({-40, 88, -44}, {40, 132, -6}, 5));
    const std::vector<Vec3> way =
        smoothWay({{0, 128, 36}, {4, 150, 180}, {0, 186, 420}, {-40, 190, 700}, {-160, 170, 860}}, 14);
    mesh.add(pipe(way, {42, 48}, 22));
    return mesh;
}

Mesh nestConsole() {
    Mesh mesh = block({-330, -260, 100}, {330, 260, 1180}, 14);
    mesh.add(block({-300, -230, 0}, {300, 230, 104}, 6));
    const Mesh desk = prismX(
        chamfered(Outline{{-300, 1176}, {230, 1176}, {230, 1560}, {150, 1560}, {-40, 1300}, {-300, 1240}}, 8),
        -320, 320, 6);
    mesh.add(desk);
    for (int i = 0; i < 9; ++i) {
        mesh.add(cylinder(13, 0, 12, 2, 16), at(-240.0 + 60 * i, -180, 1264) * turnX(13));
    }
    for (int i = 0; i < 8; ++i) {
        mesh.add(block({-200, -266, 300.0 + 34 * i}, {200, -258, 312.0 + 34 * i}, 2));
    }
    return mesh;
}

}  // namespace

std::vector<Model> nestModels() {
    const std::string folder = "TornNest3/";
    return {
        {folder + "Bed.stl", nestBed},
        {folder + "Board.stl", nestBoard},
        {folder + "BedRails.stl", nestRails},
        {folder + "AxisX.stl", nestGantry},
        {folder + "GantryRails.stl", nestGantryRails},
        {folder + "GantryDrive.stl", nestGantryDrive},
        {folder + "AxisY.stl", nestCarriage},
        {folder + "AxisZ.stl", nestRam},
        {folder + "SpindleMotor.stl", nestMotor},
        {folder + "SpindleNoses.stl", nestNoses},
        {folder + "ExtractionHood.stl", nestHood},
        {folder + "Console.stl", nestConsole},
    };
}

}  // namespace modelgen

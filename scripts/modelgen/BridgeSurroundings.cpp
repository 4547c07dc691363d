#include "BridgeModels.h"
#include "Fittings.h"

namespace modelgen::bridge {

namespace {

/// A tool in its holder, hanging with its taper up; the gripper groove is at z = 0.
Mesh heldTool(double radius, double length) {
    return turned({{0, -90 - length},
                   {radius, -90 - length},
                   {radius, -90},
                   {22, -88},
                   {25, -82},
                   {25, -26},
                   {32, -20},
                   {32, -7},
                   {28, -4},
                   {28, 4},
                   {32, 7},
                   {32, 14},
                   {22, 15},
                   {16, 62},
                   {0, 62}},
                  14);
}

}  // namespace

Mesh toolMagazine() {
    Mesh mesh = block({-180, -180, 0}, {180, 180, 30}, 6);
    mesh.add(tower({{28, roundedRectangle(-110, -110, 110, 110, 30)},
                    {140, roundedRectangle(-75, -75, 75, 75, 24)},
                    {880, roundedRectangle(-68, -68, 68, 68, 24)}}));
    mesh.add(cylinder(120, 876, 930, 6, 40));
    mesh.add(turnedRing(chamfered(rectangle(70, 924, 168, 948), 4), 48));
    mesh.add(servoMotor(110, 200), at(0, 0, 926));
    for (int i = 0; i < 12; ++i) {
        const Placement place = turnZ(30.0 * i);
        Mesh fork = block({150, -34, 928}, {190, 34, 944}, 3);
        fork.add(block({182, -38, 928}, {226, -29, 944}, 2));
        fork.add(block({182, 29, 928}, {226, 38, 944}, 2));
        mesh.add(fork, place);
        const double radius = 5.0 + 1.7 * (i * 5 % 8);
        mesh.add(heldTool(radius, 55 + 9.0 * (i * 7 % 6)), place * at(205, 0, 936));
    }
    for (const double x : {-150.0, 150.0}) {
        mesh.add(screwRow(30, {x, -140, 29.5}, {0, 280, 0}, 2));
    }
    return mesh;
}

Mesh cabinet() {
    Mesh mesh = block({-330, -600, 100}, {330, 600, 2050}, 10);
    mesh.add(block({-300, -570, 0}, {300, 570, 104}, 6));
    mesh.add(block({-340, -610, 2046}, {340, 610, 2085}, 8));
    mesh.add(block({-200, -300, 2083}, {200, 300, 2240}, 12));
    return mesh;
}

Mesh cabinetTrim() {
    Mesh mesh;
    for (const double y : {-590.0, 8.0}) {
        const Area door(roundedRectangle(y, 140, y + 582, 2020, 16, 3));
        mesh.add(prismX(door, -344, -328, 4));
        for (int i = 0; i < 9; ++i) {
            mesh.add(block({-349, y + 140, 300.0 + 34 * i}, {-341, y + 440, 312.0 + 34 * i}, 2));
        }
    }
    for (const double y : {-40.0, 40.0}) {
        mesh.add(block({-372, y - 9, 980}, {-356, y + 9, 1180}, 4));
        mesh.add(block({-360, y - 7, 992}, {-342, y + 7, 1008}, 2));
        mesh.add(block({-360, y - 7, 1152}, {-342, y + 7, 1168}, 2));
    }
    // Signal tower on the roof.
    mesh.add(cylinder(16, 2084, 2330, 2, 20), at(250, -480, 0));
    for (int i = 0; i < 3; ++i) {
        mesh.add(cylinder(34, 2326.0 + 62 * i, 2382.0 + 62 * i, 5, 28), at(250, -480, 0));
    }
    mesh.add(cylinder(30, 2510, 2530, 6, 28), at(250, -480, 0));
    return mesh;
}

Mesh console() {
    Mesh mesh = prism(roundedRectangle(-190, -190, 190, 190, 60), 0, 26, 5);
    mesh.add(cylinder(44, 20, 980, 4, 32));
    mesh.add(block({-70, -60, 960}, {70, 60, 1060}, 10));
    const Placement tilt = at(0, -20, 1070) * turnX(-18);
    Mesh box = block({-260, -60, 0}, {260, 50, 420}, 14);
    box.add(
        prismY(Area(roundedRectangle(-235, 130, 235, 400, 14), {roundedRectangle(-212, 152, 212, 378, 8)}),
               -72, -56, 3));
    for (int row = 0; row < 2; ++row) {
        for (int i = 0; i < 10; ++i) {
            const double x = -216.0 + 44 * i;
            const double z = 30.0 + 44 * row;
            box.add(prismY(roundedRectangle(x, z, x + 32, z + 32, 6), -68, -58, 3));
        }
    }
    mesh.add(box, tilt);
    mesh.add(turned({{0, 0}, {24, 0}, {24, 16}, {34, 22}, {34, 34}, {28, 40}, {0, 40}}, 28),
             tilt * at(200, -10, 414));
    return mesh;
}

}  // namespace modelgen::bridge

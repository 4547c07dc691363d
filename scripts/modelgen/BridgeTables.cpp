#include "BridgeModels.h"
#include "Fittings.h"

namespace modelgen::bridge {

namespace {

/// Half of a T-slot's outline, downward from a table top at height 0; x counts from the slot's middle.
void appendSlot(Outline& top, double y, double z) {
    // The top is walked towards smaller y, so the slot's far flank comes first.
    top.insert(top.end(), {{y + 8, z},
                           {y + 8, z - 16},
                           {y + 15, z - 16},
                           {y + 15, z - 28},
                           {y - 15, z - 28},
                           {y - 15, z - 16},
                           {y - 8, z - 16},
                           {y - 8, z}});
}

}  // namespace

Mesh table() {
    Outline section{{-50, -180}, {1250, -180}, {1250, -100}};
    for (int i = 8; i >= 0; --i) {
        appendSlot(section, 50.0 + 137.5 * i, -100);
    }
    section.push_back({-50, -100});
    Mesh mesh = prismX(section, -50, 1350, 2);
    // Edge strips with screws, front and back, and the vacuum connections below the front edge.
    mesh.add(block({-44, -58, -176}, {1344, -48, -112}, 2));
    mesh.add(screwRow(16, {0, -57.5, -144}, {130, 0, 0}, 11, turnX(90)));
    for (int i = 0; i < 4; ++i) {
        mesh.add(cylinder(14, 0, 46, 3, 20), at(250.0 + 270.0 * i, -57, -164) * turnX(90));
    }
    return mesh;
}

Mesh tableCarriage() {
    Mesh mesh;
    for (const double x : {200.0, 1100.0}) {
        for (const double y : {150.0, 1050.0}) {
            mesh.add(runner(150).placed(turnZ(90)), at(x, y, -409.8));
            mesh.add(block({x - 75, y - 95, -351.5}, {x + 75, y + 95, -330}, 3));
        }
        mesh.add(block({x - 60, -30, -331}, {x + 60, 1230, -178}, 6));
    }
    const Mesh rib = ribPlate(1340, 150, 24, 84, 8).placed(turnX(90));
    for (const double y : {-6.0, 293.0, 590.0, 887.0, 1206.0}) {
        mesh.add(rib, at(-20, y + 24, -329));
    }
    mesh.add(block({650 - 70, 520, -500}, {650 + 70, 700, -325}, 6));
    mesh.add(cylinder(56, 500, 720, 3, 32), at(650, 0, -448) * turnX(-90));
    mesh.add(block({1348, 200, -330}, {1378, 1000, -250}, 4));
    return mesh;
}

namespace {

/// One vacuum pod: foot with clamping claws, body, rubber seal with its suction hole.
Mesh pod() {
    Mesh mesh = prism(roundedRectangle(-62, -62, 62, 62, 10, 2), -99.8, -82, 2);
    mesh.add(tower({{-84, roundedRectangle(-50, -50, 50, 50, 14, 2)},
                    {-40, roundedRectangle(-48, -48, 48, 48, 14, 2)},
                    {-30, roundedRectangle(-58, -58, 58, 58, 14, 2)},
                    {-14, roundedRectangle(-58, -58, 58, 58, 14, 2)},
                    {-12, roundedRectangle(-56, -56, 56, 56, 14, 2)}}));
    mesh.add(
        prism(Area(roundedRectangle(-56, -56, 56, 56, 14, 2), {roundedRectangle(-46, -46, 46, 46, 10, 2)}),
              -12.5, 0, 1.5));
    for (int i = -1; i <= 1; ++i) {
        mesh.add(block({-44, 26.0 * i - 4, -12.5}, {44, 26.0 * i + 4, -1}, 1));
    }
    mesh.add(cylinder(9, -12.4, -4, 1, 16), at(0, 13, 0));
    mesh.add(cylinder(7, 56, 88, 2, 12), at(0, 0, -62) * turnX(90));
    return mesh;
}

}  // namespace

Mesh pods() {
    Mesh mesh;
    const Mesh one = pod();
    for (const double y : {187.5, 600.0, 1012.5}) {
        for (int i = 0; i < 4; ++i) {
            mesh.add(one, at(140 + 340.0 * i, y, 0));
        }
    }
    return mesh;
}

namespace {

/// A pneumatic stop whose pin touches the lines x = 0 or y = 0 from outside; the pin stands at the origin.
Mesh stop() {
    Mesh mesh = prism(roundedRectangle(-24, -24, 24, 24, 6, 2), -99.9, -30, 2);
    mesh.add(cylinder(15, -31, -12, 2, 20));
    mesh.add(turned({{0, -13}, {7.5, -13}, {7.5, 22}, {5, 27}, {0, 27}}, 20));
    mesh.add(cylinder(5, 20, 40, 1, 12), at(0, 6, -70) * turnX(90));
    return mesh;
}

}  // namespace

Mesh stops() {
    Mesh mesh;
    const Mesh one = stop();
    for (const double y : {120.0, 520.0, 960.0}) {
        mesh.add(one, at(-8, y, 0) * turnZ(-90));
    }
    for (const double x : {120.0, 640.0, 1180.0}) {
        mesh.add(one, at(x, -8, 0));
    }
    return mesh;
}

}  // namespace modelgen::bridge

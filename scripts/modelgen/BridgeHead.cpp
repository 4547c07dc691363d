#include "BridgeModels.h"
#include "Fittings.h"
#include "HeadParts.h"

namespace modelgen::bridge {

namespace {

constexpr double axisA = -360.0;    ///< height of the A axis in the frame of C
constexpr double beamFace = 120.0;  ///< front face of the bridge in the frame of X
constexpr double ramBack = -190.0;  ///< back of the ram in the frames of X and Z
constexpr double ramAxis = -300.0;  ///< y of the C axis in the frames of X and Z

/// Stands a part that lies along X with its head up upright along Z with its head towards +Y.
Placement uprightFacingBack() {
    return turnZ(-90) * turnY(-90);
}

Mesh carriageRunners() {
    Mesh mesh;
    for (const double z : {-155.0, 255.0}) {
        for (const double x : {-170.0, 170.0}) {
            mesh.add(runner(130).placed(turnX(90)), at(x, beamFace, z));
        }
    }
    for (const double x : {-90.0, 90.0}) {
        for (const double z : {150.0, 430.0}) {
            mesh.add(runner(120).placed(uprightFacingBack()), at(x, ramBack, z));
        }
    }
    return mesh;
}

}  // namespace

Mesh carriage() {
    Mesh mesh = carriageRunners();
    const Area plate(chamfered(rectangle(-240, -240, 240, 560), 40),
                     {roundedRectangle(-60, -190, 60, 40, 20)});
    mesh.add(prismY(plate, 18, 62, 6));
    const Mesh cheek =
        prismX(chamfered(Outline{{-131.5, 70}, {20, -180}, {20, 540}, {-131.5, 510}}, 14), 48, 132, 6);
    mesh.add(cheek);
    mesh.add(cheek.mirroredX());
    mesh.add(block({-50, -120, 60}, {50, 24, 120}, 5));
    mesh.add(block({-50, -120, 460}, {50, 24, 500}, 5));
    for (const double z : {-215.0, 535.0}) {
        mesh.add(screwRow(26, {-180, 18.5, z}, {60, 0, 0}, 7, turnX(90)));
    }
    // Side covers over the runners.
    const Mesh cover =
        prismX(rounded(Outline{{22, -230}, {80, -230}, {80, 210}, {58, 300}, {22, 300}}, 12, 3), 236, 250, 4);
    mesh.add(cover);
    mesh.add(cover.mirroredX());
    return mesh;
}

Mesh carriageDrive() {
    Mesh mesh;
    mesh.add(block({60, -60, 558}, {230, 110, 590}, 5));
    mesh.add(gearBox(130, 120), at(145, 25, 588));
    mesh.add(servoMotor(140, 270), at(145, 25, 706));
    mesh.add(block({-225, 30, 556}, {-25, 250, 576}, 4));
    mesh.add(block({-215, 230, 560}, {-45, 252, 660}, 4));
    mesh.add(
        pipe(smoothWay({{145, 110, 920}, {145, 190, 900}, {60, 220, 760}, {-90, 210, 640}}, 8), {11}, 12));
    return mesh;
}

Mesh ram() {
    const Outline section = chamfered(rectangle(-120, -410, 120, ramBack), 26);
    Mesh mesh = prism(section, 0, 1150, 5);
    mesh.add(turned({{0, -0.2}, {150, -0.2}, {156, 6}, {156, 26}, {128, 52}, {0, 52}}, 48)
                 .placed(at(0, ramAxis, 0)));
    for (int i = 0; i < 12; ++i) {
        const double angle = radians(30.0 * i + 15);
        mesh.add(capScrew(16), at(141 * std::cos(angle), ramAxis + 141 * std::sin(angle), 38));
    }
    const Mesh rail = linearRail(1110, 45, 270).placed(uprightFacingBack());
    mesh.add(rail, at(-90, ramBack - 0.2, 20));
    mesh.add(rail, at(90, ramBack - 0.2, 20));
    // Front and side panels with their screws.
    mesh.add(prismY(roundedRectangle(-86, 120, 86, 1090, 24), -418, -408, 3));
    for (const double x : {-70.0, 70.0}) {
        mesh.add(screwRow(12, {x, -417.5, 150}, {0, 0, 182}, 6, turnX(90)));
    }
    const Mesh side = prismX(roundedRectangle(-375, 160, -225, 1060, 20), 118, 126, 2.5);
    mesh.add(side);
    mesh.add(side.mirroredX());
    return mesh;
}

Mesh ramDrive() {
    Mesh mesh = block({-100, -390, 1148}, {100, -210, 1196}, 8);
    mesh.add(gearBox(120, 90), at(0, -300, 1194));
    mesh.add(servoMotor(130, 240), at(0, -300, 1282));
    mesh.add(cylinder(16, 60, 1100, 2, 20), at(0, -168, 0));
    mesh.add(block({-34, -206, 30}, {34, -140, 66}, 4));
    return mesh;
}

Mesh extraction() {
    Mesh mesh = turnedRing(Outline{{162, 6}, {212, 6}, {218, 12}, {218, 70}, {206, 78}, {162, 78}}, 48)
                    .placed(at(0, ramAxis, 0));
    mesh.add(cylinder(46, 0, 60, 3, 28), at(-192, ramAxis, 66));
    const std::vector<Vec3> way = smoothWay({{-192, -300, 120},
                                             {-205, -296, 260},
                                             {-214, -288, 520},
                                             {-214, -288, 860},
                                             {-206, -260, 1180},
                                             {-190, -120, 1390},
                                             {-180, 90, 1430}},
                                            14);
    mesh.add(pipe(way, {44, 50}, 22));
    mesh.add(cylinder(52, -30, 30, 3, 28), at(-180, 96, 1430) * turnX(-90));
    for (const double z : {420.0, 900.0}) {
        mesh.add(turnedRing(chamfered(rectangle(50.5, -12, 56, 12), 1.5), 28), at(-214, -288, z));
        mesh.add(block({-166, -300, z - 10}, {-112, -276, z + 10}, 2));
    }
    return mesh;
}

Mesh fork() {
    Mesh mesh = turned({{0, -96},
                        {118, -96},
                        {140, -78},
                        {140, -52},
                        {134, -46},
                        {134, -38},
                        {142, -32},
                        {142, -4},
                        {136, -1},
                        {0, -1}},
                       56);
    mesh.add(
        prism(rounded(Outline{{-128, -100}, {214, -118}, {214, 118}, {-128, 100}}, 46, 6), -104, -66, 6));
    mesh.add(milledArm(86, -axisA, 122), at(136, 0, 0));
    return mesh;
}

Mesh forkDrive() {
    Mesh mesh = swivelDrive().placed(at(220.5, 0, axisA) * turnY(90));
    mesh.add(block({218, -30, -250}, {262, 30, -150}, 6));
    mesh.add(pipe(smoothWay({{245, 0, -152}, {244, -4, -90}, {190, -6, -40}, {138, -6, -40}}, 7), {14}, 14));
    return mesh;
}

Mesh head() {
    Mesh mesh = millingUnit();
    mesh.add(turned({{0, 90}, {64, 90}, {64, 120}, {56, 132}, {56, 141}, {0, 141}}, 40).placed(turnX(-90)));
    // Drilling unit with its straight and its inclined outlet.
    mesh.add(block({-204, -72, -70}, {-84, 72, 62}, 12));
    mesh.add(turned({{0, -124}, {30, -124}, {36, -116}, {36, -64}, {0, -64}}, 32).placed(at(-150, 0, 0)));
    mesh.add(turned({{0, -124}, {30, -124}, {36, -116}, {36, -40}, {0, -40}}, 32)
                 .placed(at(-150, 0, 0) * turnX(45)));
    // Gear of the chain saw.
    mesh.add(prismX(rounded(rectangle(-56, -58, 56, 58), 26, 5), -314, -200, 6));
    mesh.add(turned({{0, 50}, {40, 50}, {46, 58}, {46, 82}, {0, 82}}, 36).placed(at(-260, 0, 0) * turnX(90)));
    mesh.add(servoMotor(84, 130), at(-260, 52, 0) * turnX(-90));
    return mesh;
}

Mesh noses() {
    Mesh mesh = spindleNose(58, 26, 40).placed(at(0, 0, -160));
    mesh.add(spindleNose(46, 18, 34), at(0, 170, 0) * turnX(90));
    mesh.add(spindleNose(36, 14, 32), at(-260, -110, 0) * turnX(-90));
    mesh.add(spindleNose(26, 9, 30), at(-150, 0, -150));
    mesh.add(spindleNose(26, 9, 30), at(-150, 0, 0) * turnX(45) * at(0, 0, -150));
    return mesh;
}

}  // namespace modelgen::bridge

#include "Fittings.h"
#include "HeadParts.h"
#include "Models.h"

// A travelling portal over long consoles, with a head that swivels about Y (axis B) and then about X (axis
// A). Machine frame: the floor is z = 0, the portal travels along X. Frames of X and Y: the tilting axis is
// x = 0. Frame of Z: the swivel axis B is the line x = 0, z = -100. Frames of B and A: origin on the axis.

namespace modelgen {

namespace {

constexpr double middleY = 100.0;  ///< the portal stands symmetrically about this y
constexpr double railY = 1380.0;   ///< of the two rails, from the middle
constexpr double railHeight = 200.0;
constexpr double beamFace = -420.0;
constexpr double ramFace = -140.0;  ///< back of the ram
constexpr double headY = -270.0;    ///< of the tilting axis in the frame of B

Mesh portalTrack() {
    Mesh mesh;
    for (const double side : {-1.0, 1.0}) {
        const double y = middleY + side * railY;
        mesh.add(block({-3000, y - 110, 0}, {3000, y + 110, 60}, 6));
        mesh.add(prismX(chamfered(rectangle(y - 80, 56, y + 80, railHeight), 8), -2980, 2980, 5));
        mesh.add(screwRow(30, {-2900, y + 94, 59.5}, {483, 0, 0}, 13));
        mesh.add(screwRow(30, {-2900, y - 94, 59.5}, {483, 0, 0}, 13));
    }
    return mesh;
}

Mesh portalTrackRails() {
    Mesh mesh;
    for (const double side : {-1.0, 1.0}) {
        mesh.add(linearRail(5900, 55, 420), at(-2950, middleY + side * railY, railHeight + 0.2));
        mesh.add(gearRack(145, 40, 26, 24).placed(turnX(side * 90)),
                 at(-2900, middleY + side * (railY - 79.5), 140));
    }
    return mesh;
}

/// The frame of the table is that of the work zero point: pods end at z = 0, which is 900 above the floor.
Mesh portalTable() {
    Mesh mesh;
    for (const double y : {120.0, 1000.0}) {
        mesh.add(block({-150, y, -520}, {4350, y + 140, -300}, 8));
        for (const double x : {100.0, 1433.0, 2766.0, 4100.0}) {
            mesh.add(block({x - 60, y + 10, -860}, {x + 60, y + 130, -516}, 6));
            mesh.add(levellingFoot(80, 100), at(x, y + 70, -900));
            mesh.add(block({x - 90, y - 10, -805}, {x + 90, y + 150, -790}, 3));
        }
    }
    for (const double x : {100.0, 2100.0, 4100.0}) {
        mesh.add(block({x - 50, 256, -480}, {x + 50, 1004, -340}, 6));
    }
    return mesh;
}

Mesh portalConsoles() {
    Mesh mesh;
    const Mesh bar = prismY(chamfered(Outline{{-70, -298},
                                              {70, -298},
                                              {70, -140},
                                              {30, -120},
                                              {30, -100},
                                              {12, -100},
                                              {12, -118},
                                              {-12, -118},
                                              {-12, -100},
                                              {-30, -100},
                                              {-30, -120},
                                              {-70, -140}},
                                      1.5),
                            -20, 1260, 2);
    Mesh clamp = block({-34, -30, -99.8}, {34, 30, -70}, 4);
    clamp.add(cylinder(24, -72, -24, 3, 18));
    clamp.add(prism(roundedRectangle(-62, -50, 62, 50, 12, 2), -28, -10, 3));
    for (int i = 0; i < 8; ++i) {
        const double x = 150.0 + 557.0 * i;
        mesh.add(bar, at(x, 0, 0));
        for (const double y : {150.0, 620.0, 1090.0}) {
            mesh.add(clamp, at(x, y, 0));
        }
    }
    return mesh;
}

Mesh portalPads() {
    const Mesh pad =
        prism(Area(roundedRectangle(-58, -46, 58, 46, 10, 2), {roundedRectangle(-46, -34, 46, 34, 8, 2)}),
              -10.5, 0, 1.5);
    Mesh mesh;
    for (int i = 0; i < 8; ++i) {
        for (const double y : {150.0, 620.0, 1090.0}) {
            mesh.add(pad, at(150.0 + 557.0 * i, y, 0));
            mesh.add(block({110.0 + 557.0 * i, y - 4, -10.4}, {190.0 + 557.0 * i, y + 4, -1}, 0));
        }
    }
    return mesh;
}

Mesh portalFrame() {
    Mesh mesh;
    for (const double side : {-1.0, 1.0}) {
        Area leg(chamfered(Outline{{-1050, 275},
                                   {50, 275},
                                   {50, 380},
                                   {-400, 1300},
                                   {-400, 2440},
                                   {-860, 2440},
                                   {-860, 1300},
                                   {-1050, 380}},
                           24));
        leg.holes.push_back(rounded(Outline{{-900, 420}, {-180, 420}, {-500, 1180}, {-800, 1180}}, 70, 5));
        const double y = middleY + side * railY;
        mesh.add(prismY(leg, y - 90, y + 90, 10));
        for (const double x : {-900.0, -100.0}) {
            mesh.add(runner(200, 55), at(x, y, railHeight));
            mesh.add(block({x - 110, y - 80, 266}, {x + 110, y + 80, 300}, 4));
        }
    }
    const Outline beam{{-860, 1780},          {beamFace, 1780},      {beamFace, 1930},
                       {beamFace - 30, 1950}, {beamFace - 30, 2190}, {beamFace, 2210},
                       {beamFace, 2400},      {-820, 2400},          {-860, 2360}};
    mesh.add(prismY(beam, middleY - 1490, middleY + 1490, 5));
    const Mesh rib =
        prismY(chamfered(Outline{{-920, 1900}, {-850, 1830}, {-850, 2350}, {-920, 2280}}, 8), 0, 22, 3);
    mesh.add(array(rib, 6, {0, 490, 0}), at(0, middleY - 1236, 0));
    return mesh;
}

Mesh portalTrim() {
    Mesh mesh;
    const Outline cap = rounded(
        Outline{{-930, 1720}, {-340, 1720}, {-340, 2380}, {-420, 2460}, {-860, 2460}, {-930, 2380}}, 44, 4);
    mesh.add(prismY(cap, middleY - 1550, middleY - 1482, 12));
    mesh.add(prismY(cap, middleY + 1482, middleY + 1550, 12));
    mesh.add(block({-720, middleY - 1450, 2394}, {-560, middleY + 1450, 2416}, 5));
    return mesh;
}

Mesh portalBeamRails() {
    Mesh mesh;
    const Mesh rail = linearRail(2800, 45, 300).placed(turnZ(90) * turnX(90));
    for (const double z : {1855.0, 2305.0}) {
        mesh.add(rail, at(beamFace + 0.2, middleY - 1400, z));
    }
    mesh.add(gearRack(90, 30, 36, 28).placed(turnZ(90) * turnX(90)),
             at(beamFace - 29.5, middleY - 1350, 2070));
    return mesh;
}

Mesh portalDrives() {
    Mesh mesh;
    for (const double side : {-1.0, 1.0}) {
        const double y = middleY + side * (railY - 92);
        mesh.add(gearBox(150, 120).placed(turnX(side * 90)), at(-500, y, 360));
        mesh.add(servoMotor(150, 250).placed(turnX(side * 90)), at(-500, y - side * 118, 360));
    }
    mesh.add(energyChain(38, 64, 120, 54).placed(turnZ(90)), at(-700, middleY - 1300, 2416));
    return mesh;
}

Mesh portalCarriage() {
    Mesh mesh;
    for (const double z : {1855.0, 2305.0}) {
        for (const double y : {-120.0, 180.0}) {
            mesh.add(runner(130).placed(turnZ(90) * turnX(90)), at(beamFace, y, z));
        }
    }
    const Area plate(chamfered(rectangle(-200, 1700, 260, 2460), 40),
                     {roundedRectangle(-10, 1960, 70, 2200, 24)});
    mesh.add(prismX(plate, beamFace + 58, beamFace + 98, 6));
    for (const double y : {-42.0, 138.0}) {
        const Mesh cheek = prismY(
            chamfered(
                Outline{
                    {beamFace + 94, 1720}, {ramFace - 57, 1790}, {ramFace - 57, 2400}, {beamFace + 94, 2440}},
                12),
            y, y + 84, 6);
        mesh.add(cheek);
    }
    for (const double y : {0.0, 180.0}) {
        for (const double z : {1800.0, 2100.0}) {
            // The ram's rails lie upright with their heads towards -X.
            mesh.add(runner(120).placed(turnY(-90)), at(ramFace, y, z));
        }
    }
    for (const double z : {1730.0, 2430.0}) {
        mesh.add(screwRow(24, {beamFace + 97.5, -130, z}, {0, 80, 0}, 5, turnY(90)));
    }
    return mesh;
}

Mesh portalRam() {
    Mesh mesh = prism(chamfered(rectangle(ramFace, -40, 140, 220), 28), 0, 1180, 6);
    const Mesh rail = linearRail(1120, 45, 270).placed(turnY(-90));
    for (const double y : {0.0, 180.0}) {
        mesh.add(rail, at(ramFace - 0.2, y, 30));
    }
    // Bearing of the swivel axis B, its face at y = -60.
    mesh.add(prismY(rounded(Outline{{-150, -220}, {150, -220}, {150, 40}, {-150, 40}}, 70, 6), -56, 236, 10));
    mesh.add(turned({{0, 230}, {110, 230}, {110, 300}, {96, 316}, {0, 316}}, 44)
                 .placed(at(0, 0, -100) * turnX(-90)));
    mesh.add(prismX(roundedRectangle(0, 130, 180, 1120, 22), 138, 146, 3));
    for (const double y : {18.0, 162.0}) {
        mesh.add(screwRow(12, {145.5, y, 160}, {0, 0, 186}, 6, turnY(90)));
    }
    return mesh;
}

Mesh portalRamDrive() {
    Mesh mesh = gearBox(130, 100).placed(at(0, 90, 1176));
    mesh.add(servoMotor(140, 260), at(0, 90, 1274));
    mesh.add(turned({{0, 312}, {80, 312}, {80, 420}, {70, 430}, {0, 430}}, 40)
                 .placed(at(0, 0, -100) * turnX(-90)));
    return mesh;
}

/// Part that turns with B: a disc on the bearing and the arm that carries the milling unit from the side.
Mesh portalFork() {
    Mesh mesh = turned({{0, 12}, {124, 12}, {140, 28}, {140, 48}, {128, 58}, {0, 58}}, 52).placed(turnX(90));
    mesh.add(block({-110, -76, -112}, {224, -26, 112}, 10));
    // The arm hangs from its root in a frame whose -Z is the machine's -Y.
    mesh.add(milledArm(86, -headY, 112).placed(turnX(-90)), at(136, 0, 0));
    return mesh;
}

Mesh portalForkDrive() {
    return swivelDrive().placed(at(220.5, headY, 0) * turnY(90));
}

Mesh portalHead() {
    Mesh mesh = millingUnit();
    mesh.add(block({-210, -70, -66}, {-84, 70, 60}, 12));
    mesh.add(turned({{0, -124}, {30, -124}, {36, -116}, {36, -60}, {0, -60}}, 32).placed(at(-150, 0, 0)));
    mesh.add(turned({{0, 94}, {60, 94}, {60, 128}, {52, 140}, {52, 150}, {0, 150}}, 40).placed(turnX(90)));
    return mesh;
}

Mesh portalNoses() {
    Mesh mesh = spindleNose(58, 26, 40).placed(at(0, 0, -160));
    mesh.add(spindleNose(44, 18, 34), at(0, -180, 0) * turnX(-90));
    mesh.add(spindleNose(26, 9, 30), at(-150, 0, -150));
    return mesh;
}

Mesh portalHose() {
    Mesh mesh = cylinder(54, -30, 40, 3, 28).placed(at(210, 60, 60));
    mesh.add(block({136, 20, 30}, {190, 100, 90}, 5));
    const std::vector<Vec3> way = smoothWay(
        {{210, 60, 36}, {214, 64, 300}, {210, 70, 800}, {180, 90, 1240}, {0, 130, 1560}, {-240, 150, 1600}},
        14);
    mesh.add(pipe(way, {46, 52}, 22));
    return mesh;
}

}  // namespace

std::vector<Model> portalModels() {
    const std::string folder = "TornPortal5/";
    return {
        {folder + "Track.stl", portalTrack},         {folder + "TrackRails.stl", portalTrackRails},
        {folder + "Table.stl", portalTable},         {folder + "Consoles.stl", portalConsoles},
        {folder + "Pads.stl", portalPads},           {folder + "AxisX.stl", portalFrame},
        {folder + "PortalTrim.stl", portalTrim},     {folder + "BeamRails.stl", portalBeamRails},
        {folder + "PortalDrives.stl", portalDrives}, {folder + "AxisY.stl", portalCarriage},
        {folder + "AxisZ.stl", portalRam},           {folder + "RamDrive.stl", portalRamDrive},
        {folder + "AxisB.stl", portalFork},          {folder + "ForkDrive.stl", portalForkDrive},
        {folder + "AxisA.stl", portalHead},          {folder + "SpindleNoses.stl", portalNoses},
        {folder + "ExtractionHose.stl", portalHose},
    };
}

}  // namespace modelgen

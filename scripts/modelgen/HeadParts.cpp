#include "HeadParts.h"

#include "Fittings.h"

namespace modelgen {

Mesh millingUnit() {
    Mesh mesh = tower({{-104, roundedRectangle(-70, -80, 70, 80, 24)},
                       {-92, roundedRectangle(-88, -98, 88, 98, 24)},
                       {78, roundedRectangle(-92, -102, 92, 102, 24)},
                       {96, roundedRectangle(-80, -88, 80, 88, 24)}});
    mesh.add(cylinder(96, 70, 134, 5, 48).placed(turnY(90)));
    mesh.add(turned({{0, -126}, {70, -126}, {78, -118}, {78, -88}, {0, -88}}, 44));
    mesh.add(turned({{0, 90}, {66, 90}, {66, 176}, {58, 186}, {0, 186}}, 44));
    const Mesh fin = turnedRing(chamfered(rectangle(62, 0, 74, 7), 1.2), 44);
    mesh.add(array(fin, 5, {0, 0, 15}), at(0, 0, 102));
    for (const double x : {-74.0, 74.0}) {
        mesh.add(screwRow(13, {x, -98.5, -60}, {0, 0, 60}, 3, turnX(90)));
    }
    return mesh;
}

Mesh milledArm(double thickness, double reach, double rootHalf) {
    Outline outline;
    for (int i = 0; i <= 18; ++i) {
        const double angle = radians(180.0 + 10.0 * i);
        outline.push_back({115 * std::cos(angle), -reach + 115 * std::sin(angle)});
    }
    outline.insert(outline.end(),
                   {{rootHalf, -130}, {rootHalf - 18, -68}, {18 - rootHalf, -68}, {-rootHalf, -130}});
    Mesh mesh = prismX(outline, 0, thickness, 8);
    for (int i = 0; i < 10; ++i) {
        const double angle = radians(36.0 * i);
        mesh.add(capScrew(14),
                 at(thickness - 0.5, 88 * std::cos(angle), -reach + 88 * std::sin(angle)) * turnY(90));
    }
    return mesh;
}

Mesh swivelDrive() {
    Mesh mesh = turned({{0, 0}, {74, 0}, {74, 12}, {70, 18}, {70, 74}, {62, 84}, {0, 84}}, 44);
    const Mesh fin = turnedRing(chamfered(rectangle(66, 0, 77, 6), 1.2), 44);
    for (int i = 0; i < 4; ++i) {
        mesh.add(fin, at(0, 0, 22.5 + 12 * i));
    }
    return mesh;
}

}  // namespace modelgen

#include "Fittings.h"

#include <algorithm>

namespace modelgen {

Mesh capScrew(double headDiameter) {
    constexpr int sides = 12;
    const double r = headDiameter / 2.0;
    const auto ring = [](double radius, double z) {
        std::vector<Vec3> points;
        for (const Vec2& p : circle({0, 0}, radius, sides)) {
            points.push_back({p.x, p.y, z});
        }
        return points;
    };
    // Every second point of the socket is pulled in to the middle of a side of the hexagon.
    const auto socket = [&ring, r](double z) {
        std::vector<Vec3> points = ring(r * 0.52, z);
        for (std::size_t i = 1; i < points.size(); i += 2) {
            points[i].x *= 0.87;
            points[i].y *= 0.87;
        }
        return points;
    };
    const double top = r * 1.2;
    return loft(
        {ring(r, -1.0), ring(r, top - r * 0.15), ring(r * 0.85, top), socket(top), socket(top - r * 0.7)});
}

Mesh screwRow(double headDiameter, Vec3 first, Vec3 step, int count, const Placement& stand) {
    const Mesh screw = capScrew(headDiameter).placed(stand);
    return array(screw, count, step).placed(at(first.x, first.y, first.z));
}

Outline railOutline(double width) {
    const double w = width / 2.0;
    const double h = width * 0.78;
    return {{-w, 0},
            {w, 0},
            {w, h * 0.34},
            {w * 0.68, h * 0.52},
            {w * 0.68, h * 0.66},
            {w, h * 0.84},
            {w * 0.92, h},
            {-w * 0.92, h},
            {-w, h * 0.84},
            {-w * 0.68, h * 0.66},
            {-w * 0.68, h * 0.52},
            {-w, h * 0.34}};
}

Mesh linearRail(double length, double width, double screwStep) {
    Mesh rail = prismX(railOutline(width), 0.0, length, 1.5);
    const int count = static_cast<int>((length - 60.0) / screwStep) + 1;
    const double first = (length - screwStep * (count - 1)) / 2.0;
    // Covered screw holes: flat caps that stand out by half a millimetre.
    const Mesh cap = cylinder(width * 0.2, width * 0.78 - 4.0, width * 0.78 + 0.5, 0.0, 10);
    rail.add(array(cap, count, {screwStep, 0, 0}), at(first, 0, 0));
    return rail;
}

Mesh runner(double length, double railWidth) {
    const double w = railWidth / 2.0 + 2.5;
    const double top = railWidth * 0.78;
    const double out = railWidth * 1.25;
    const Outline saddle{{-out, 9.0}, {-w, 9.0},  {-w, top + 3.5},   {w, top + 3.5},
                         {w, 9.0},    {out, 9.0}, {out, top + 24.0}, {-out, top + 24.0}};
    Mesh mesh = prismX(chamfered(saddle, 1.2), -length / 2.0 + 7.0, length / 2.0 - 7.0, 1.0);
    const Mesh wiper = prismX(chamfered(inset(saddle, 1.0), 0.8), -3.0, 3.5, 0.8);
    mesh.add(wiper, at(length / 2.0 - 3.5, 0, 0));
    mesh.add(wiper, at(-length / 2.0 + 3.0, 0, 0));
    return mesh;
}

namespace {

/// A rounded square whose four sides carry cooling fins.
Outline finnedSquare(double size, int fins, double depth) {
    const double half = size / 2.0;
    const double span = size * 0.72;
    const double step = span / fins;
    Outline side{{half * 0.86, -half}, {half, -half * 0.86}};
    for (int i = 0; i < fins; ++i) {
        const double y = -span / 2.0 + step * i;
        side.insert(side.end(), {{half, y + step * 0.18},
                                 {half - depth, y + step * 0.3},
                                 {half - depth, y + step * 0.7},
                                 {half, y + step * 0.82}});
    }
    Outline result;
    for (int quarter = 0; quarter < 4; ++quarter) {
        const Placement turn = turnZ(90.0 * quarter);
        for (const Vec2& p : side) {
            const Vec3 q = turn.map({p.x, p.y, 0});
            result.push_back({q.x, q.y});
        }
    }
    return result;
}

}  // namespace

Mesh servoMotor(double size, double length) {
    const double half = size / 2.0;
    Mesh mesh = prism(roundedRectangle(-half, -half, half, half, size * 0.12), 0.0, size * 0.14, 1.5);
    mesh.add(prism(finnedSquare(size * 0.92, 4, size * 0.045), size * 0.1, length * 0.72, 1.0));
    mesh.add(prism(chamfered(rectangle(-half * 0.84, -half * 0.84, half * 0.84, half * 0.84), size * 0.12),
                   length * 0.7, length, 3.0));
    mesh.add(cylinder(half * 0.5, length - 2.0, length + size * 0.05, 1.5, 24));
    mesh.add(
        block({-size * 0.16, half * 0.6, length * 0.76}, {size * 0.16, half * 1.12, length * 0.94}, 2.5));
    mesh.add(cylinder(size * 0.1, 0.0, size * 0.22, 2.0, 16)
                 .placed(at(0, half * 1.1, length * 0.85) * turnX(-90.0)));
    for (const double x : {-1.0, 1.0}) {
        for (const double y : {-1.0, 1.0}) {
            mesh.add(capScrew(size * 0.1), at(x * half * 0.82, y * half * 0.82, size * 0.135));
        }
    }
    return mesh;
}

Mesh gearBox(double size, double height) {
    const double half = size / 2.0;
    Mesh mesh = cylinder(half * 1.08, 0.0, height * 0.22, 2.0, 40);
    mesh.add(turned({{0, height * 0.18},
                     {half, height * 0.18},
                     {half, height * 0.55},
                     {half * 0.94, height * 0.6},
                     {half * 0.94, height * 0.99},
                     {0, height * 0.99}},
                    40));
    mesh.add(prism(roundedRectangle(-half, -half, half, half, size * 0.15), height * 0.8, height, 2.0));
    for (int i = 0; i < 8; ++i) {
        const double angle = radians(45.0 * i + 22.5);
        mesh.add(capScrew(size * 0.07),
                 at(half * 1.0 * std::cos(angle), half * 1.0 * std::sin(angle), height * 0.215));
    }
    return mesh;
}

Mesh levellingFoot(double radius, double height) {
    return turned({{0, 0},
                   {radius, 0},
                   {radius, height * 0.12},
                   {radius * 0.8, height * 0.2},
                   {radius * 0.42, height * 0.26},
                   {radius * 0.42, height * 0.62},
                   {radius * 0.66, height * 0.64},
                   {radius * 0.66, height * 0.84},
                   {radius * 0.42, height * 0.86},
                   {radius * 0.42, height},
                   {0, height}},
                  14);
}

Mesh energyChain(int links, double pitch, double width, double height) {
    Mesh link = prismY(chamfered(rectangle(2.0, 0.0, pitch + 4.0, height), height * 0.12), 0.0, width * 0.1);
    link.add(prismY(chamfered(rectangle(2.0, 0.0, pitch + 4.0, height), height * 0.12), width * 0.9, width));
    link.add(block({pitch * 0.3, 1.0, height * 0.86}, {pitch * 0.7, width - 1.0, height * 0.98}, 0.0));
    return array(link, links, {pitch + 3.0, 0, 0});
}

Mesh gearRack(int teeth, double pitch, double width, double height) {
    Outline outline{{0, 0}, {pitch * teeth, 0}};
    for (int i = teeth - 1; i >= 0; --i) {
        const double x = pitch * i;
        outline.insert(outline.end(), {{x + pitch * 0.86, height * 0.72},
                                       {x + pitch * 0.62, height},
                                       {x + pitch * 0.38, height},
                                       {x + pitch * 0.14, height * 0.72}});
    }
    return prismY(outline, -width / 2.0, width / 2.0);
}

Mesh spindleNose(double radius, double bore, double height) {
    Mesh mesh = turnedRing({{bore, 0.0},
                            {radius * 0.72, 0.0},
                            {radius * 0.76, 3.0},
                            {radius * 0.76, height * 0.3},
                            {radius * 0.94, height * 0.42},
                            {radius, height * 0.5},
                            {radius, height},
                            {bore * 0.6, height},
                            {bore * 0.6, height * 0.4}},
                           40);
    mesh.add(cylinder(bore * 0.8, height * 0.35, height * 0.9, 1.0, 24));
    return mesh;
}

Mesh ribPlate(double width, double height, double thickness, double holeDiameter, int holes) {
    Area area(roundedRectangle(0, 0, width, height, std::min(width, height) * 0.12, 3));
    const double step = width / holes;
    for (int i = 0; i < holes; ++i) {
        area.holes.push_back(circle({step * (i + 0.5), height / 2.0}, holeDiameter / 2.0, 16));
    }
    return prism(area, 0.0, thickness, std::min(2.0, thickness / 4.0));
}

}  // namespace modelgen

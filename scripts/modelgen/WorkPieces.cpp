#include <cmath>

#include "Models.h"
#include "Solids.h"

// The work pieces of the demonstration job, as they are when all its programs have run. Frame of each: its
// user coordinate system. Walls that a tool makes stand a quarter of a millimetre behind its path, so that
// the tool seems to touch them and a collision pass finds nothing.

namespace modelgen {

namespace {

constexpr double slack = 0.25;
constexpr double overlap = 0.02;  ///< of layers, which must not share an edge

/// Points of an arc about `centre` from angle `from` to `to`, both included, degrees.
void appendArc(Outline& outline, Vec2 centre, double radius, double from, double to, int steps) {
    for (int i = 0; i <= steps; ++i) {
        const double angle = radians(from + (to - from) * i / steps);
        outline.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
    }
}

Outline roundRectangle(double x0, double y0, double x1, double y1, double radius) {
    Outline outline;
    appendArc(outline, {x1 - radius, y0 + radius}, radius, -90, 0, 10);
    appendArc(outline, {x1 - radius, y1 - radius}, radius, 0, 90, 10);
    appendArc(outline, {x0 + radius, y1 - radius}, radius, 90, 180, 10);
    appendArc(outline, {x0 + radius, y0 + radius}, radius, 180, 270, 10);
    return outline;
}

/// A rectangle whose right end is a half circle.
Outline archedRectangle(double x0, double y0, double xArch, double y1, double radius) {
    const double half = (y1 - y0) / 2;
    Outline outline;
    appendArc(outline, {xArch, y0 + half}, half, -90, 90, 40);
    appendArc(outline, {x0 + radius, y1 - radius}, radius, 90, 180, 10);
    appendArc(outline, {x0 + radius, y0 + radius}, radius, 180, 270, 10);
    return outline;
}

// --- door leaf: x 0 to 1200 (height), y 0 to 600 (width), z 0 to 44; lock in the front edge ---

constexpr double doorLength = 1200.0;
constexpr double doorWidth = 600.0;
constexpr double doorThickness = 44.0;
constexpr double lockMiddle = 22.0;  ///< height of the lock in the edge
constexpr double grooveHalf = 6.0 + slack;

Outline fieldOutline(double offset) {
    return roundRectangle(120 - offset, 140 - offset, 460 + offset, 480 + offset, 40 + offset);
}

Outline archOutline(double offset) {
    return archedRectangle(540 - offset, 140 - offset, 920, 480 + offset, 40 + offset);
}

Mesh doorLeaf() {
    const double grooveFloor = doorThickness - 6;
    const double back = 92.0;  ///< behind the lock case
    Mesh mesh = prism(rectangle(0, back, doorLength, doorWidth), 0, grooveFloor);
    const Area top(rectangle(0, back, doorLength, doorWidth),
                   {fieldOutline(grooveHalf), archOutline(grooveHalf)});
    mesh.add(prism(top, grooveFloor - overlap, doorThickness));
    mesh.add(prism(fieldOutline(-grooveHalf), grooveFloor - overlap, doorThickness));
    mesh.add(prism(archOutline(-grooveHalf), grooveFloor - overlap, doorThickness));
    // The edge with the lock: recess of the face plate, lock case, seat of the bolt.
    const auto slot = [](double x0, double x1, double half) {
        return roundRectangle(x0 - slack, lockMiddle - half - slack, x1 + slack, lockMiddle + half + slack,
                              half);
    };
    const Area edge(rectangle(0, 0, doorLength, doorThickness), {slot(482.5, 717.5, 10)});
    const Area behind(rectangle(0, 0, doorLength, doorThickness), {slot(517.5, 682.5, 8)});
    mesh.add(prismY(edge, 0, 3.3));
    mesh.add(prismY(behind, 3.3 - overlap, back + overlap));
    return mesh;
}

/// Blocks between the pods and the door leaf, in its frame.
Mesh doorRisers() {
    Mesh mesh;
    for (const double y : {57.5, 470.0}) {
        for (int i = 0; i < 4; ++i) {
            const double x = 100.0 + 340.0 * i;
            mesh.add(block({x - 45, y - 45, -130}, {x + 45, y + 45, 0}, 4));
        }
    }
    return mesh;
}

// --- side of a cabinet: x 0 to 1100 (height), y 0 to 265 (depth), z 0 to 19 ---

Mesh cabinetSide() {
    constexpr double length = 1100.0;
    constexpr double depth = 265.0;
    std::vector<Outline> holes;
    for (const double y : {165.0, 228.0}) {
        for (int i = 0; i < 21; ++i) {
            holes.push_back(circle({230 + 32.0 * i, y}, 4 + slack, 16));
        }
    }
    const Outline outlet = roundRectangle(500 - slack, 70 - slack, 640 + slack, 120 + slack, 6 + slack);
    std::vector<Outline> holesAndOutlet = holes;
    holesAndOutlet.push_back(outlet);
    Mesh mesh = prism(rectangle(0, 0, length, depth), 0, 6);
    mesh.add(prism(Area(rectangle(0, 0, length, depth), holes), 6 - overlap, 9));
    mesh.add(prism(Area(rectangle(0, 0, length, depth), holesAndOutlet), 9 - overlap, 11));
    // The groove for the back leaves two strips.
    mesh.add(prism(rectangle(0, 0, length, 20 - grooveHalf), 11 - overlap, 19));
    mesh.add(prism(Area(rectangle(0, 20 + grooveHalf, length, depth), holesAndOutlet), 11 - overlap, 19));
    return mesh;
}

// --- beam: x 0 to 1200, y 0 to 140, z 0 to 120 ---

Mesh beam() {
    constexpr double length = 1200.0;
    constexpr double width = 140.0;
    const auto mortise = [](double x) { return rectangle(x - 0.6, 52 - 0.6, x + 120.6, 88.6); };
    const Outline whole = rectangle(0, 0, length, width);
    Mesh mesh = prism(whole, 0, 29);
    mesh.add(prism(Area(whole, {mortise(180), mortise(900)}), 29 - overlap, 80));
    // The housing lies between the mortises.
    mesh.add(prism(Area(rectangle(0, 0, 540 - slack, width), {mortise(180)}), 80 - overlap, 120));
    mesh.add(prism(Area(rectangle(660 + slack, 0, length, width), {mortise(900)}), 80 - overlap, 120));
    return mesh;
}

// --- chair seat: its middle is x 0, y 0; z 0 to 45; the rim leans 25 degrees, four sockets for splayed legs
// ---

constexpr double seatTop = 45.0;
constexpr double seatLean = 25.0;
constexpr int seatPoints = 180;

struct SeatPoint {
    Vec2 point;
    Vec2 outward;
};

/// A point of the upper rim, an ellipse of half axes 250 and 210.
SeatPoint rimPoint(int i) {
    const double t = 2 * std::numbers::pi * i / seatPoints;
    const Vec2 point{250 * std::cos(t), 210 * std::sin(t)};
    return {point, unit(Vec2{point.x / (250 * 250), point.y / (210 * 210)})};
}

Outline rim(double z) {
    const double inward = (seatTop - z) * std::tan(radians(seatLean)) + slack;
    Outline outline;
    for (int i = 0; i < seatPoints; ++i) {
        const SeatPoint p = rimPoint(i);
        outline.push_back(p.point - p.outward * inward);
    }
    return outline;
}

/// Where a leg's socket of radius 12, leaning outward by 10 degrees towards the floor, meets the height z.
Outline socket(Vec2 corner, double z) {
    const double tilt = std::tan(radians(10.0));
    const Vec2 outward = unit(corner);
    const Vec2 middle = corner + outward * ((seatTop - z) * tilt);
    Outline outline;
    for (int i = 0; i < 32; ++i) {
        const double t = 2 * std::numbers::pi * i / 32;
        const double along = (12 + slack) * std::cos(t) / std::cos(radians(10.0));
        const double across = (12 + slack) * std::sin(t);
        outline.push_back({middle.x + outward.x * along - outward.y * across,
                           middle.y + outward.y * along + outward.x * across});
    }
    return outline;
}

std::vector<Vec3> atHeight(const Outline& outline, double z) {
    std::vector<Vec3> ring;
    for (const Vec2& p : outline) {
        ring.push_back({p.x, p.y, z});
    }
    return ring;
}

/// Quads between two rings; the material lies to the left of them, seen from above.
void addWall(Mesh& mesh, const std::vector<Vec3>& low, const std::vector<Vec3>& high, bool isHole) {
    const std::size_t n = low.size();
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t k = (i + 1) % n;
        const std::uint32_t a = mesh.addPoint(low[i]);
        const std::uint32_t b = mesh.addPoint(low[k]);
        const std::uint32_t c = mesh.addPoint(high[k]);
        const std::uint32_t d = mesh.addPoint(high[i]);
        isHole ? mesh.addQuad(b, a, d, c) : mesh.addQuad(a, b, c, d);
    }
}

void addFace(Mesh& mesh, const Area& area, double z, bool upward) {
    std::vector<std::uint32_t> numbers;
    for (const Vec3& p : atHeight(area.outer, z)) {
        numbers.push_back(mesh.addPoint(p));
    }
    for (const Outline& hole : area.holes) {
        for (const Vec3& p : atHeight(hole, z)) {
            numbers.push_back(mesh.addPoint(p));
        }
    }
    for (const Triangle& t : triangulate(area)) {
        upward ? mesh.addTriangle(numbers[t[0]], numbers[t[1]], numbers[t[2]])
               : mesh.addTriangle(numbers[t[0]], numbers[t[2]], numbers[t[1]]);
    }
}

/// Height of the hollow at a share of its half axes 165 and 128; the programs use the same curve.
double hollowHeight(double share) {
    const double rest = 1 - share * share;
    return seatTop - 9 * rest * rest;
}

std::vector<Vec3> hollowRing(double share) {
    std::vector<Vec3> ring;
    for (int i = 0; i < 90; ++i) {
        const double t = 2 * std::numbers::pi * i / 90;
        ring.push_back({165 * share * std::cos(t), 128 * share * std::sin(t),
                        hollowHeight(share) - (share < 1 ? slack : 0)});
    }
    return ring;
}

void addHollow(Mesh& mesh) {
    constexpr int rings = 14;
    for (int k = rings; k > 1; --k) {
        addWall(mesh, hollowRing((k - 1.0) / rings), hollowRing(double(k) / rings), true);
    }
    const std::vector<Vec3> inner = hollowRing(1.0 / rings);
    const std::uint32_t middle = mesh.addPoint({0, 0, hollowHeight(0) - slack});
    for (std::size_t i = 0; i < inner.size(); ++i) {
        const std::uint32_t a = mesh.addPoint(inner[i]);
        const std::uint32_t b = mesh.addPoint(inner[(i + 1) % inner.size()]);
        mesh.addTriangle(middle, a, b);
    }
}

Mesh chairSeat() {
    Area top(rim(seatTop));
    Area bottom(rim(0));
    Mesh mesh;
    for (const Vec2 corner : {Vec2{138, -109}, Vec2{138, 109}, Vec2{-138, 109}, Vec2{-138, -109}}) {
        top.holes.push_back(socket(corner, seatTop));
        bottom.holes.push_back(socket(corner, 0));
        addWall(mesh, atHeight(bottom.holes.back(), 0), atHeight(top.holes.back(), seatTop), true);
    }
    Outline hollow;
    for (const Vec3& p : hollowRing(1)) {
        hollow.push_back({p.x, p.y});
    }
    top.holes.push_back(hollow);
    addHollow(mesh);
    addWall(mesh, atHeight(bottom.outer, 0), atHeight(top.outer, seatTop), false);
    addFace(mesh, top, seatTop, true);
    addFace(mesh, bottom, 0, false);
    return mesh;
}

Mesh seatRisers() {
    Mesh mesh;
    for (const double x : {-170.0, 170.0}) {
        mesh.add(cylinder(40, -80, 0, 3, 32), at(x, 0, 0));
    }
    return mesh;
}

}  // namespace

std::vector<Model> workPieceModels() {
    return {{"WorkPieces/DoorLeaf.stl", &doorLeaf},       {"WorkPieces/DoorRisers.stl", &doorRisers},
            {"WorkPieces/CabinetSide.stl", &cabinetSide}, {"WorkPieces/Beam.stl", &beam},
            {"WorkPieces/ChairSeat.stl", &chairSeat},     {"WorkPieces/SeatRisers.stl", &seatRisers}};
}

}  // namespace modelgen

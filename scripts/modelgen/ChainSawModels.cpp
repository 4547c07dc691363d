#include <algorithm>

#include "Fittings.h"
#include "Models.h"

namespace modelgen {

namespace {

/// Measures of a mortise chain saw: the tip stands at (x, 0, -length) in the spindle's frame.
struct Chain {
    double x = 0.0;
    double length = 0.0;
    double width = 0.0;      ///< over the cutting edges
    double thickness = 0.0;  ///< of the chain
    int links = 0;
};

/// A point and its direction at a share of the way round the guide: up one side, round the top, down the
/// other side, round the tip. The guide's arcs have their centres at (0, low) and (0, high).
struct Place {
    Vec2 point;
    double angle = 0.0;  ///< of the direction of travel, degrees
};

Place onGuide(double share, double radius, double low, double high) {
    const double side = high - low;
    const double arc = std::numbers::pi * radius;
    double s = share * 2.0 * (side + arc);
    if (s < side) {
        return {{radius, low + s}, 90.0};
    }
    s -= side;
    if (s < arc) {
        const double a = s / radius;
        return {{radius * std::cos(a), high + radius * std::sin(a)}, 90.0 + a * 180.0 / std::numbers::pi};
    }
    s -= arc;
    if (s < side) {
        return {{-radius, high - s}, 270.0};
    }
    s -= side;
    const double a = std::numbers::pi + s / radius;
    return {{radius * std::cos(a), low + radius * std::sin(a)}, 90.0 + a * 180.0 / std::numbers::pi};
}

Mesh chainLinks(const Chain& chain) {
    const double half = chain.width / 2.0;
    const double radius = half - 5.0;  // middle of the links; their teeth reach 5 further out
    const double low = -chain.length + half;
    const double high = -64.0;
    const double pitch = 2.0 * ((high - low) + std::numbers::pi * radius) / chain.links;
    // Outline of a link: travel along +x, the outside of the loop at negative y.
    const double h = pitch * 0.46;
    const Outline plate = chamfered(Outline{{-h, -2.2}, {h, -2.2}, {h, 3.4}, {-h, 3.4}}, 0.9);
    const Outline tooth{{-h * 0.9, -2.0}, {-h * 0.5, -5.0}, {h * 0.1, -5.0}, {h * 0.75, -2.0}};
    const double y = chain.thickness / 2.0;
    Mesh mesh;
    for (int i = 0; i < chain.links; ++i) {
        const Place place = onGuide((i + 0.5) / chain.links, radius, low, high);
        const Placement stand = at(chain.x + place.point.x, 0, place.point.y) * turnY(-place.angle);
        mesh.add(prismY(plate, -y * 0.92, -y * 0.4, 0.4), stand);
        mesh.add(prismY(plate, y * 0.4, y * 0.92, 0.4), stand);
        mesh.add(i % 2 == 0 ? prismY(tooth, -y, y * 0.3) : prismY(tooth, -y * 0.3, y), stand);
    }
    return mesh;
}

Mesh guideBar(const Chain& chain) {
    const double half = chain.width / 2.0;
    const double radius = half - 8.6;
    const double low = -chain.length + half;
    Outline outline;
    for (int i = 0; i <= 12; ++i) {
        const double a = std::numbers::pi * (1.0 + i / 12.0);
        outline.push_back({chain.x + radius * std::cos(a), low + radius * std::sin(a)});
    }
    outline.push_back({chain.x + radius, -58.0});
    outline.push_back({chain.x - radius, -58.0});
    const std::vector<Outline> holes{
        circle({chain.x, low}, radius * 0.45, 20),
        roundedRectangle(chain.x - radius * 0.4, low + 30, chain.x + radius * 0.4, -90, radius * 0.3, 3)};
    return prismY(Area(outline, holes), -chain.thickness * 0.28, chain.thickness * 0.28, 0.6);
}

Mesh driveHousing(const Chain& chain) {
    const double half = chain.width / 2.0;
    Mesh mesh = turned({{0, -26}, {30, -26}, {33, -23}, {33, -10}, {28, -6}, {28, -0.5}, {0, -0.5}}, 36);
    const double left = std::min(-30.0, chain.x - half - 8.0);
    const double right = std::max(30.0, chain.x + half + 8.0);
    const double y = chain.thickness / 2.0 + 9.0;
    mesh.add(prismY(rounded(rectangle(left, -78, right, -22), 12, 4), -y, y, 3));
    for (const double x : {left + 12, right - 12}) {
        mesh.add(capScrew(10), at(x, -y + 0.4, -36) * turnX(90));
        mesh.add(capScrew(10), at(x, -y + 0.4, -66) * turnX(90));
    }
    mesh.add(cylinder(13, 0, 26, 2, 24), at(chain.x, y - 1, -50) * turnX(-90));
    return mesh;
}

std::vector<ColouredPart> chainSaw(const Chain& chain) {
    return {{driveHousing(chain), "0.24 0.27 0.30"},
            {guideBar(chain), "0.72 0.74 0.77"},
            {chainLinks(chain), "0.78 0.62 0.24"}};
}

std::vector<ColouredPart> wideChain() {
    return chainSaw({0.0, 220.0, 40.0, 12.0, 40});
}
std::vector<ColouredPart> narrowChain() {
    return chainSaw({-15.0, 180.0, 28.0, 8.0, 34});
}

}  // namespace

std::vector<ChainSaw> chainSaws() {
    return {{"MortiseChain40", wideChain}, {"MortiseChain28", narrowChain}};
}

}  // namespace modelgen

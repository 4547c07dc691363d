#include "Solids.h"

#include <algorithm>

namespace modelgen {

namespace {

/// The outlines of an area at one height: the outer one, then the holes clockwise, so that material lies
/// to the left of all of them.
std::vector<Outline> walls(const Area& area, double shrink) {
    std::vector<Outline> result;
    result.push_back(shrink > 0.0 ? inset(area.outer, shrink) : area.outer);
    for (const Outline& hole : area.holes) {
        const Outline clockwise = reversed(hole);
        result.push_back(shrink > 0.0 ? inset(clockwise, shrink) : clockwise);
    }
    return result;
}

Area areaOf(const std::vector<Outline>& outlines) {
    Area area(outlines.front());
    for (std::size_t i = 1; i < outlines.size(); ++i) {
        area.holes.push_back(reversed(outlines[i]));
    }
    return area;
}

struct Layer {
    double z = 0.0;
    double shrink = 0.0;
};

/// Numbers of the points of one layer, outline after outline.
std::vector<std::vector<std::uint32_t>> addLayer(Mesh& mesh, const Area& area, const Layer& layer) {
    std::vector<std::vector<std::uint32_t>> numbers;
    for (const Outline& outline : walls(area, layer.shrink)) {
        numbers.emplace_back();
        for (const Vec2& p : outline) {
            numbers.back().push_back(mesh.addPoint({p.x, p.y, layer.z}));
        }
    }
    return numbers;
}

void addCap(Mesh& mesh, const Area& area, const Layer& layer, std::vector<std::vector<std::uint32_t>> numbers,
            bool upward) {
    // The triangulation numbers hole points counter-clockwise; the layer keeps them clockwise.
    std::vector<std::uint32_t> flat;
    for (std::size_t k = 0; k < numbers.size(); ++k) {
        if (k > 0) {
            std::ranges::reverse(numbers[k]);
        }
        flat.insert(flat.end(), numbers[k].begin(), numbers[k].end());
    }
    for (const Triangle& t : triangulate(areaOf(walls(area, layer.shrink)))) {
        if (upward) {
            mesh.addTriangle(flat[t[0]], flat[t[1]], flat[t[2]]);
        } else {
            mesh.addTriangle(flat[t[0]], flat[t[2]], flat[t[1]]);
        }
    }
}

void addWalls(Mesh& mesh, const std::vector<std::vector<std::uint32_t>>& low,
              const std::vector<std::vector<std::uint32_t>>& high) {
    for (std::size_t k = 0; k < low.size(); ++k) {
        const std::size_t n = low[k].size();
        for (std::size_t i = 0; i < n; ++i) {
            const std::size_t j = (i + 1) % n;
            mesh.addQuad(low[k][i], low[k][j], high[k][j], high[k][i]);
        }
    }
}

}  // namespace

Mesh prism(const Area& area, double z0, double z1, double chamfer) {
    std::vector<Layer> layers;
    if (chamfer > 0.0) {
        layers = {{z0, chamfer}, {z0 + chamfer, 0.0}, {z1 - chamfer, 0.0}, {z1, chamfer}};
    } else {
        layers = {{z0, 0.0}, {z1, 0.0}};
    }
    Mesh mesh;
    std::vector<std::vector<std::vector<std::uint32_t>>> numbers;
    for (const Layer& layer : layers) {
        numbers.push_back(addLayer(mesh, area, layer));
    }
    for (std::size_t i = 0; i + 1 < layers.size(); ++i) {
        addWalls(mesh, numbers[i], numbers[i + 1]);
    }
    addCap(mesh, area, layers.front(), numbers.front(), false);
    addCap(mesh, area, layers.back(), numbers.back(), true);
    return mesh;
}

Mesh prismX(const Area& area, double x0, double x1, double chamfer) {
    return prism(area, x0, x1, chamfer).placed(alongX());
}

Mesh prismY(const Area& area, double y0, double y1, double chamfer) {
    return prism(area, -y1, -y0, chamfer).placed(alongMinusY());
}

Mesh block(Vec3 low, Vec3 high, double chamfer) {
    if (chamfer <= 0.0) {
        return prism(rectangle(low.x, low.y, high.x, high.y), low.z, high.z);
    }
    return prism(chamfered(rectangle(low.x, low.y, high.x, high.y), chamfer), low.z, high.z, chamfer);
}

namespace {

void addFan(Mesh& mesh, const std::vector<Vec3>& ring, std::uint32_t first, bool upward) {
    Vec3 centre;
    for (const Vec3& p : ring) {
        centre = centre + p * (1.0 / static_cast<double>(ring.size()));
    }
    const std::uint32_t middle = mesh.addPoint(centre);
    const auto n = static_cast<std::uint32_t>(ring.size());
    for (std::uint32_t i = 0; i < n; ++i) {
        const std::uint32_t a = first + i;
        const std::uint32_t b = first + (i + 1) % n;
        if (upward) {
            mesh.addTriangle(a, b, middle);
        } else {
            mesh.addTriangle(b, a, middle);
        }
    }
}

void joinRings(Mesh& mesh, std::uint32_t low, std::uint32_t high, std::uint32_t n) {
    for (std::uint32_t i = 0; i < n; ++i) {
        const std::uint32_t j = (i + 1) % n;
        mesh.addQuad(low + i, low + j, high + j, high + i);
    }
}

}  // namespace

Mesh loft(const std::vector<std::vector<Vec3>>& rings) {
    Mesh mesh;
    const auto n = static_cast<std::uint32_t>(rings.front().size());
    for (const auto& ring : rings) {
        for (const Vec3& p : ring) {
            mesh.addPoint(p);
        }
    }
    const auto count = static_cast<std::uint32_t>(rings.size());
    for (std::uint32_t r = 0; r + 1 < count; ++r) {
        joinRings(mesh, r * n, (r + 1) * n, n);
    }
    addFan(mesh, rings.front(), 0, false);
    addFan(mesh, rings.back(), (count - 1) * n, true);
    return mesh;
}

Mesh tower(const std::vector<std::pair<double, Outline>>& floors) {
    std::vector<std::vector<Vec3>> rings;
    for (const auto& [z, outline] : floors) {
        rings.emplace_back();
        for (const Vec2& p : outline) {
            rings.back().push_back({p.x, p.y, z});
        }
    }
    return loft(rings);
}

Mesh turned(const std::vector<Vec2>& profile, int segments) {
    std::vector<std::vector<Vec3>> rings;
    for (std::size_t i = 1; i + 1 < profile.size(); ++i) {
        rings.emplace_back();
        for (const Vec2& p : circle({0, 0}, profile[i].x, segments)) {
            rings.back().push_back({p.x, p.y, profile[i].y});
        }
    }
    Mesh mesh = loft(rings);
    // The fans' centres take the heights of the profile's own ends, which makes tips and hollows.
    mesh.points[mesh.points.size() - 2].z = profile.front().y;
    mesh.points[mesh.points.size() - 1].z = profile.back().y;
    return mesh;
}

Mesh turnedRing(const Outline& profile, int segments) {
    Mesh mesh;
    const auto n = static_cast<std::uint32_t>(segments);
    for (const Vec2& corner : profile) {
        for (const Vec2& p : circle({0, 0}, corner.x, segments)) {
            mesh.addPoint({p.x, p.y, corner.y});
        }
    }
    const auto count = static_cast<std::uint32_t>(profile.size());
    for (std::uint32_t r = 0; r < count; ++r) {
        joinRings(mesh, r * n, (r + 1) % count * n, n);
    }
    return mesh;
}

Mesh cylinder(double radius, double z0, double z1, double chamfer, int segments) {
    if (chamfer <= 0.0) {
        return turned({{0, z0}, {radius, z0}, {radius, z1}, {0, z1}}, segments);
    }
    return turned({{0, z0},
                   {radius - chamfer, z0},
                   {radius, z0 + chamfer},
                   {radius, z1 - chamfer},
                   {radius - chamfer, z1},
                   {0, z1}},
                  segments);
}

Mesh pipe(const std::vector<Vec3>& way, const std::vector<double>& radii, int segments) {
    std::vector<std::vector<Vec3>> rings;
    Vec3 side;
    for (std::size_t i = 0; i < way.size(); ++i) {
        const Vec3 ahead = unit(way[std::min(i + 1, way.size() - 1)] - way[i == 0 ? 0 : i - 1]);
        if (i == 0) {
            side = std::abs(ahead.z) < 0.9 ? Vec3{0, 0, 1} : Vec3{1, 0, 0};
        }
        // Parallel transport: the part of the last side vector that stands square to the new direction.
        side = unit(side - ahead * dot(side, ahead));
        const Vec3 other = cross(ahead, side);
        const double radius = radii[i % radii.size()];
        rings.emplace_back();
        for (const Vec2& p : circle({0, 0}, radius, segments)) {
            rings.back().push_back(way[i] + side * p.x + other * p.y);
        }
    }
    return loft(rings);
}

std::vector<Vec3> smoothWay(const std::vector<Vec3>& knots, int pointsPerSpan) {
    std::vector<Vec3> way;
    const std::size_t last = knots.size() - 1;
    for (std::size_t i = 0; i < last; ++i) {
        const Vec3 p0 = knots[i == 0 ? 0 : i - 1];
        const Vec3 p1 = knots[i];
        const Vec3 p2 = knots[i + 1];
        const Vec3 p3 = knots[std::min(i + 2, last)];
        for (int k = 0; k < pointsPerSpan; ++k) {
            const double t = static_cast<double>(k) / pointsPerSpan;
            way.push_back((p1 * 2.0 + (p2 - p0) * t + (p0 * 2.0 - p1 * 5.0 + p2 * 4.0 - p3) * (t * t) +
                           (p1 * 3.0 - p0 - p2 * 3.0 + p3) * (t * t * t)) *
                          0.5);
        }
    }
    way.push_back(knots.back());
    return way;
}

}  // namespace modelgen

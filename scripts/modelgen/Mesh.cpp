#include "Mesh.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

namespace modelgen {

std::uint32_t Mesh::addPoint(Vec3 p) {
    points.push_back(p);
    return static_cast<std::uint32_t>(points.size() - 1);
}

void Mesh::addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    triangles.push_back({a, b, c});
}

void Mesh::addQuad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    addTriangle(a, b, c);
    addTriangle(a, c, d);
}

void Mesh::add(const Mesh& part) {
    add(part, Placement{});
}

void Mesh::add(const Mesh& part, const Placement& place) {
    const auto base = static_cast<std::uint32_t>(points.size());
    for (const Vec3& p : part.points) {
        points.push_back(place.map(p));
    }
    for (const Triangle& t : part.triangles) {
        triangles.push_back({t[0] + base, t[1] + base, t[2] + base});
    }
}

Mesh Mesh::placed(const Placement& place) const {
    Mesh result;
    result.add(*this, place);
    return result;
}

namespace {

Mesh scaled(const Mesh& mesh, Vec3 factors) {
    Mesh result = mesh;
    for (Vec3& p : result.points) {
        p = {p.x * factors.x, p.y * factors.y, p.z * factors.z};
    }
    for (Triangle& t : result.triangles) {
        std::swap(t[1], t[2]);
    }
    return result;
}

}  // namespace

Mesh Mesh::mirroredX() const {
    return scaled(*this, {-1, 1, 1});
}
Mesh Mesh::mirroredY() const {
    return scaled(*this, {1, -1, 1});
}

double Mesh::volume() const {
    double sixfold = 0.0;
    for (const Triangle& t : triangles) {
        sixfold += dot(points[t[0]], cross(points[t[1]], points[t[2]]));
    }
    return sixfold / 6.0;
}

Mesh array(const Mesh& part, int count, Vec3 step) {
    Mesh result;
    for (int i = 0; i < count; ++i) {
        result.add(part, at(step.x * i, step.y * i, step.z * i));
    }
    return result;
}

namespace {

using Corner = std::array<float, 3>;

Corner rounded(Vec3 p) {
    // Adding 0 turns -0 into 0, so that both compare as the same corner.
    return {static_cast<float>(p.x) + 0.0F, static_cast<float>(p.y) + 0.0F, static_cast<float>(p.z) + 0.0F};
}

Vec3 wide(const Corner& c) {
    return {static_cast<double>(c[0]), static_cast<double>(c[1]), static_cast<double>(c[2])};
}

/// Sets of corners that hang together, by the union-find scheme with path halving.
class Bodies {
  public:
    explicit Bodies(std::size_t count) : m_parent(count) {
        std::iota(m_parent.begin(), m_parent.end(), std::size_t{0});
    }
    std::size_t root(std::size_t i) {
        while (m_parent[i] != i) {
            m_parent[i] = m_parent[m_parent[i]];
            i = m_parent[i];
        }
        return i;
    }
    void join(std::size_t a, std::size_t b) { m_parent[root(a)] = root(b); }

  private:
    std::vector<std::size_t> m_parent;
};

struct Welded {
    std::vector<Vec3> corners;
    std::vector<std::array<std::size_t, 3>> triangles;
};

Welded weld(const Mesh& mesh, MeshReport& report) {
    Welded welded;
    std::map<Corner, std::size_t> known;
    for (const Triangle& t : mesh.triangles) {
        std::array<std::size_t, 3> ids{};
        bool finite = true;
        for (std::size_t k = 0; k < 3; ++k) {
            const Corner c = rounded(mesh.points[t[k]]);
            finite = finite && std::isfinite(c[0]) && std::isfinite(c[1]) && std::isfinite(c[2]);
            if (!finite) {
                break;
            }
            const auto [place, added] = known.try_emplace(c, welded.corners.size());
            if (added) {
                welded.corners.push_back(wide(c));
            }
            ids[k] = place->second;
        }
        if (!finite) {
            ++report.notFinite;
            continue;
        }
        welded.triangles.push_back(ids);
    }
    return welded;
}

bool hasNoArea(const Welded& welded, const std::array<std::size_t, 3>& t) {
    const Vec3 a = welded.corners[t[0]];
    return length(cross(welded.corners[t[1]] - a, welded.corners[t[2]] - a)) < 1e-6;
}

std::size_t countOpenEdges(const Welded& welded) {
    std::map<std::pair<std::size_t, std::size_t>, int> edges;
    for (const auto& t : welded.triangles) {
        for (std::size_t k = 0; k < 3; ++k) {
            ++edges[{t[k], t[(k + 1) % 3]}];
        }
    }
    return static_cast<std::size_t>(std::ranges::count_if(edges, [&edges](const auto& edge) {
        const auto back = edges.find({edge.first.second, edge.first.first});
        return edge.second != 1 || back == edges.end() || back->second != 1;
    }));
}

void measureBodies(const Welded& welded, MeshReport& report) {
    Bodies bodies(welded.corners.size());
    for (const auto& t : welded.triangles) {
        bodies.join(t[0], t[1]);
        bodies.join(t[1], t[2]);
    }
    std::map<std::size_t, double> volumes;
    for (const auto& t : welded.triangles) {
        const Vec3 a = welded.corners[t[0]];
        const double volume = dot(a, cross(welded.corners[t[1]], welded.corners[t[2]])) / 6.0;
        volumes[bodies.root(t[0])] += volume;
        report.volume += volume;
    }
    report.bodies = volumes.size();
    report.inverted = static_cast<std::size_t>(
        std::ranges::count_if(volumes, [](const auto& body) { return !(body.second > 0.0); }));
}

}  // namespace

MeshReport examine(const Mesh& mesh) {
    MeshReport report;
    report.triangles = mesh.triangles.size();
    const Welded welded = weld(mesh, report);
    report.degenerate = static_cast<std::size_t>(
        std::ranges::count_if(welded.triangles, [&welded](const auto& t) { return hasNoArea(welded, t); }));
    report.openEdges = countOpenEdges(welded);
    measureBodies(welded, report);
    return report;
}

std::string MeshReport::text() const {
    return std::to_string(triangles) + " triangles, " + std::to_string(bodies) + " bodies, not finite " +
           std::to_string(notFinite) + ", degenerate " + std::to_string(degenerate) + ", open edges " +
           std::to_string(openEdges) + ", inverted " + std::to_string(inverted);
}

}  // namespace modelgen

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "Vectors.h"

namespace modelgen {

using Triangle = std::array<std::uint32_t, 3>;

/// A set of closed triangle surfaces. Triangles run counter-clockwise seen from outside.
struct Mesh {
    std::vector<Vec3> points;
    std::vector<Triangle> triangles;

    std::uint32_t addPoint(Vec3 p);
    void addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    /// The surface between the edges a-b and d-c of a four-sided face a, b, c, d.
    void addQuad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d);

    void add(const Mesh& part);
    void add(const Mesh& part, const Placement& place);

    Mesh placed(const Placement& place) const;
    /// Reflected in the plane x = 0; the orientation stays outward.
    Mesh mirroredX() const;
    /// Reflected in the plane y = 0; the orientation stays outward.
    Mesh mirroredY() const;
    double volume() const;
};

/// `count` copies of a part, `step` apart, the first where the part stands.
Mesh array(const Mesh& part, int count, Vec3 step);

/// What an examination of a mesh found. Points are compared after rounding to single precision,
/// since that is what a file keeps.
struct MeshReport {
    std::size_t triangles = 0;
    std::size_t notFinite = 0;   ///< triangles with a coordinate that is no number
    std::size_t degenerate = 0;  ///< triangles with two equal corners or no area
    std::size_t openEdges = 0;   ///< directed edges that do not occur exactly once with exactly one opposite
    std::size_t bodies = 0;      ///< surfaces that hang together
    std::size_t inverted = 0;    ///< bodies whose volume is not positive
    double volume = 0.0;         ///< mm^3

    bool good() const { return triangles > 0 && notFinite + degenerate + openEdges + inverted == 0; }
    std::string text() const;
};

MeshReport examine(const Mesh& mesh);

}  // namespace modelgen

#pragma once

#include <vector>

#include "Mesh.h"
#include "Vectors.h"

// Plane outlines and the areas between them.

namespace modelgen {

/// A closed outline without its first point repeated. Counter-clockwise: material inside.
using Outline = std::vector<Vec2>;

/// An area: one counter-clockwise outline less holes, each given counter-clockwise as well.
struct Area {
    Outline outer;
    std::vector<Outline> holes;

    Area() = default;
    Area(Outline outline) : outer(std::move(outline)) {}  // NOLINT: an outline alone is an area
    Area(Outline outline, std::vector<Outline> cutouts)
        : outer(std::move(outline)), holes(std::move(cutouts)) {}
};

double signedArea(const Outline& outline);
Outline reversed(const Outline& outline);
Outline moved(const Outline& outline, double x, double y);
/// Reflected in the line x = 0, still counter-clockwise.
Outline mirroredX(const Outline& outline);

Outline circle(Vec2 centre, double radius, int segments);
Outline rectangle(double x0, double y0, double x1, double y1);
/// Every corner cut off by `size` along both edges.
Outline chamfered(const Outline& outline, double size);
/// Every corner replaced by an arc that leaves the edges `size` before the corner.
Outline rounded(const Outline& outline, double size, int segments);
Outline roundedRectangle(double x0, double y0, double x1, double y1, double radius, int segments = 3);

/// The outline moved by `distance` to its left side (inward for a counter-clockwise outline), with
/// mitred corners. The count of points stays.
Outline inset(const Outline& outline, double distance);

/// Triangles of corner numbers over the points of the outer outline followed by those of the holes, each
/// counter-clockwise, by ear clipping (Meisters 1975) after joining every hole to the outside by a bridge.
std::vector<Triangle> triangulate(const Area& area);

}  // namespace modelgen

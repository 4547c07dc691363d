#pragma once

#include <utility>
#include <vector>

#include "Mesh.h"
#include "Profile.h"

// Closed solids made of plane areas: prisms, turned bodies, lofts and pipes. Every function returns a closed
// surface with outward orientation; `chamfer` bevels the edges of both ends by that width at 45 degrees.

namespace modelgen {

/// The area in the XY plane drawn out from z0 to z1.
Mesh prism(const Area& area, double z0, double z1, double chamfer = 0.0);
/// The area in the YZ plane drawn out from x0 to x1.
Mesh prismX(const Area& area, double x0, double x1, double chamfer = 0.0);
/// The area in the XZ plane drawn out from y0 to y1.
Mesh prismY(const Area& area, double y0, double y1, double chamfer = 0.0);

/// A block between two corners; all twelve edges bevelled.
Mesh block(Vec3 low, Vec3 high, double chamfer = 3.0);

/// Rings of equally many points joined by quads, the ends closed by flat fans about their centres. The
/// rings run counter-clockwise seen against the direction from the first ring to the last.
Mesh loft(const std::vector<std::vector<Vec3>>& rings);

/// A housing through outlines of equally many points at rising heights.
Mesh tower(const std::vector<std::pair<double, Outline>>& floors);

/// A turned body about the Z axis. The profile's points are (radius, z); it starts and ends on the axis
/// and rises from the first end to the last.
Mesh turned(const std::vector<Vec2>& profile, int segments = 32);
/// A turned ring about the Z axis from a closed counter-clockwise profile of points (radius, z).
Mesh turnedRing(const Outline& profile, int segments = 32);

/// A cylinder about Z with bevelled ends.
Mesh cylinder(double radius, double z0, double z1, double chamfer = 1.5, int segments = 32);

/// A round pipe along a way, closed at both ends; `radii` repeats along the way (two values make a
/// corrugated hose).
Mesh pipe(const std::vector<Vec3>& way, const std::vector<double>& radii, int segments = 16);
/// A smooth way through the given points (centripetal corners rounded by a Catmull-Rom spline).
std::vector<Vec3> smoothWay(const std::vector<Vec3>& knots, int pointsPerSpan);

}  // namespace modelgen

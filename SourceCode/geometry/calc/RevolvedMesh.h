#pragma once

#include "geometry/calc/MeshArrays.h"

/// The surface that `contour` (mm, in the tool's XZ plane) makes when it turns about Z, drawn in by 0.99
/// toward the mean of its vertices, so that a tool stays just inside its drawn shape.
///
///     ring i: vertices 19 i ... 19 i + 18, at 0, 20 ... 360 degrees (both ends of the seam have their own)
///     ring i-1:  A --- B       triangles A C B and B C D between neighbouring rings and angles
///     ring i:    C --- D
///
/// Open at both ends. An empty contour, and one of more than a million points, gives empty arrays; a single
/// point gives a ring without triangles.
[[nodiscard]] MeshArrays revolvedMesh(const QVector<SbVec3f>& contour);

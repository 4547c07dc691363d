#pragma once

#include "geometry/calc/MeshArrays.h"

/// Sizes in mm. The radius is held within 0 and half the shorter side.
struct RoundedRectangle {
    float length = 0;  ///< along X
    float width = 0;   ///< along Z
    float cornerRadius = 0;
    int samplesPerCorner = 10;  ///< points on each quarter circle, both ends included; at least 2
};

/// The closed outline in the plane y = 0 about the origin, 4 * samplesPerCorner points from the corner at +X
/// +Z on, turning from X to Z; the last point is not the first one again.
[[nodiscard]] QVector<SbVec3f> roundedRectangleOutline(const RoundedRectangle& rectangle);

/// The body that the outline makes when it moves by `depth` along `direction`, with top, bottom and sides.
/// Vertices: centre and ring at y = 0, then centre and ring displaced. All faces look outward when
/// `direction` is along Y.
[[nodiscard]] MeshArrays extrudedRoundedRectangle(const RoundedRectangle& rectangle, const SbVec3f& direction,
                                                  float depth);

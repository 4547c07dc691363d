#pragma once

#include <Inventor/SbColor.h>
#include <Inventor/SbMatrix.h>

#include <vector>

#include "geometry/calc/RoundedRectangle.h"

// What a program item says about the body that stands for it in the scene, and the parts that this body is
// made of. Lengths in mm, matrices for row vectors. Items stand with their surface at z = 0 of their own
// frame and work downward, along -Z; bodies are built along Y, as the scene's cylinders are, and then turned
// by kUprightTurn_rad about X.

/// A quarter turn in single precision: +Y goes to +Z, and the ring of a plate from X, Z to X, -Y.
inline constexpr float kUprightTurn_rad = 1.5707964F;

/// Nothing in the scene reaches further: values beyond stand at this border, so that the squares and sums of
/// the scene library stay finite in single precision.
inline constexpr float kSceneReach_mm = 1e9F;

struct HoleShape {
    int drillType = 0;  ///< 0 hole, 1 milled hole, 2 sinking hole; others have no body
    double diameter = 0;
    double depth = 0;                           ///< of the hole, positive downward
    double sinkDiameter = 0;                    ///< of the head of a sinking hole
    double sinkDepth = 0;                       ///< of that head, positive downward
    double safetyLength = 0;                    ///< clearance height above the surface
    SbMatrix placement = SbMatrix::identity();  ///< the item's frame in its user coordinate system
};

struct RectangleShape {
    double length = 0;  ///< along the item's X
    double width = 0;   ///< along the item's Y
    double depth = 0;
    double cornerRadius = 0;
    SbMatrix placement = SbMatrix::identity();  ///< the item's frame in its user coordinate system
};

/// A cylinder along Y about the origin, moved by `centreY`.
struct HolePart {
    const char* name;  ///< of its node in the scene
    SbColor color;
    float radius;
    float height;
    float centreY;
};

/// A plate that reaches `depth` from y = 0.
struct RectanglePlate {
    RoundedRectangle outline;
    float depth = 0;
};

/// The cylinders of a hole, from the top down. A negative length turns its cylinder to the other side of its
/// plane, as it turns the path. Cylinders without radius or height, or with one that is not finite, are left
/// out; a placement that is not finite, or out of reach, leaves none.
[[nodiscard]] std::vector<HolePart> holeParts(const HoleShape& hole);

/// False, and `plate` as it was, when one of length, width and depth is zero, or a value is not finite.
[[nodiscard]] bool plateOf(const RectangleShape& rectangle, RectanglePlate& plate);

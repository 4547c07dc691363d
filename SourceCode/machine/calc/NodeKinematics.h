#pragma once

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>

#include <QString>
#include <optional>

// The matrices of the machine's nodes, as pure functions. Row vectors, as the scene library has them:
//
//     place in the parent = p * M * O     M: motion matrix, O: offset matrix of the node
//
// Lengths in mm, angles in degrees; degrees become radians in single precision, divided first (radiansOf).

/// The number stands in files and windows.
enum class MotionType { Linear = 0, Rotation = 1, Fixed = 2, Other = 3 };

/// "LINEAR", "ROTATION", "FIXED", blanks around them ignored; anything else is Other.
[[nodiscard]] MotionType motionTypeFromText(const QString& text);

/// Rotation about `direction`, which need not have unit length. A zero direction has no rotation: identity.
[[nodiscard]] SbMatrix turnMatrix(const SbVec3f& direction, float angle_deg);
[[nodiscard]] SbMatrix translationMatrix(const SbVec3f& translation);

/// M of a node at `value`; nothing for kinds that do not move.
///
///     linear   M = T(direction * value)      the direction need not be a unit vector
///     rotary   M = R(direction, value) * T(offset)
///
/// The offset of a rotary axis thus counts twice, here and in O. It must stay so: the values in machine
/// files are tuned to it.
[[nodiscard]] std::optional<SbMatrix> motionMatrix(MotionType type, const SbVec3f& direction,
                                                   const SbVec3f& offset, float value);

/// The value that a motion matrix stands for. Linear: translation . direction. Rotary: the angle in degrees,
/// 0 to 360, about whichever of direction and reversed direction makes it so: -30 reads back as 30. Other
/// kinds: 0.
[[nodiscard]] double motionValue(MotionType type, const SbVec3f& direction, const SbMatrix& motion);

/// A mounted tool in its carrier's frame: mount * T(offset) * R(carrier's direction, angle).
[[nodiscard]] SbMatrix spindleMatrix(const SbMatrix& toolMount, const SbVec3f& offset,
                                     const SbVec3f& carrierDirection, float angle_deg);

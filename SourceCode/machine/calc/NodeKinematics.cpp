#include "machine/calc/NodeKinematics.h"

#include <Inventor/SbRotation.h>

#include "machine/calc/Kinematics.h"

MotionType motionTypeFromText(const QString& text) {
    const QString kind = text.trimmed();
    if (kind == QLatin1String("LINEAR"))
        return MotionType::Linear;
    if (kind == QLatin1String("ROTATION"))
        return MotionType::Rotation;
    return kind == QLatin1String("FIXED") ? MotionType::Fixed : MotionType::Other;
}

SbMatrix turnMatrix(const SbVec3f& direction, float angle_deg) {
    SbMatrix turn = SbMatrix::identity();
    if (direction.sqrLength() > 0)
        turn.setRotate(SbRotation(direction, radiansOf(angle_deg)));
    return turn;
}

SbMatrix translationMatrix(const SbVec3f& translation) {
    SbMatrix matrix;
    matrix.setTranslate(translation);
    return matrix;
}

std::optional<SbMatrix> motionMatrix(MotionType type, const SbVec3f& direction, const SbVec3f& offset,
                                     float value) {
    if (type == MotionType::Linear)
        return translationMatrix(direction * value);
    if (type != MotionType::Rotation)
        return std::nullopt;
    SbMatrix motion = turnMatrix(direction, value);
    motion.multRight(translationMatrix(offset));
    return motion;
}

double motionValue(MotionType type, const SbVec3f& direction, const SbMatrix& motion) {
    constexpr double kDegreesPerRadian = 180.0 / 3.141592653589793;
    if (type != MotionType::Linear && type != MotionType::Rotation)
        return 0;
    SbVec3f translation;
    SbVec3f scale;
    SbRotation rotation;
    SbRotation scaleOrientation;
    motion.getTransform(translation, rotation, scale, scaleOrientation);
    if (type == MotionType::Linear)
        return static_cast<double>(translation.dot(direction));
    SbVec3f axis;
    float angle_rad = 0;
    rotation.getValue(axis, angle_rad);
    return static_cast<double>(angle_rad) * kDegreesPerRadian;
}

SbMatrix spindleMatrix(const SbMatrix& toolMount, const SbVec3f& offset, const SbVec3f& carrierDirection,
                       float angle_deg) {
    SbMatrix matrix = toolMount;
    matrix.multRight(translationMatrix(offset));
    matrix.multRight(turnMatrix(carrierDirection, angle_deg));
    return matrix;
}

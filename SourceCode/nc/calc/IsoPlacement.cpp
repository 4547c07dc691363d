#include "nc/calc/IsoPlacement.h"

#include <Inventor/SbRotation.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kFourth = 3;
constexpr int kFifth = 4;

const numericalAxisStruct* axisOfId(const MachineDescription& machine, const AxisMap& letters, int id) {
    const auto found = letters.find(id);
    return found == letters.end() ? nullptr : machine.findAxis(found.value());
}

/// Every point has the rotary values of the first one.
bool hasFixedAttitude(const WayPoints& points) {
    constexpr double kSameAngle = 0.001;  // degrees
    const WayPoint& first = points.front();
    return std::all_of(points.begin(), points.end(), [&](const WayPoint& point) {
        return std::abs(point[kFourth] - first[kFourth]) <= kSameAngle &&
               std::abs(point[kFifth] - first[kFifth]) <= kSameAngle;
    });
}

SbRotation rotationAbout(const SbVec3f& direction, double angle_deg) {
    if (direction.length() == 0.0F)
        return SbRotation::identity();
    return {direction, static_cast<float>(angle_deg * (3.141592653589793 / 180.0))};
}

SbVec3f turnedOffset(const RotaryDirections& axes, const WayPoint& attitude, const SbVec3f& offset_mm) {
    // In this order of the product the rotation of axis 4 acts first.
    const SbRotation rotation =
        rotationAbout(axes.fourth, attitude[kFourth]) * rotationAbout(axes.fifth, attitude[kFifth]);
    SbVec3f turned;
    rotation.multVec(offset_mm, turned);
    return turned;
}

}  // namespace

std::optional<RotaryDirections> rotaryDirections(const MachineDescription& machine, const QString& chain,
                                                 Diagnostics& diagnostics) {
    const AxisMap letters = machine.axisMap(chain, false);
    const numericalAxisStruct* const fourth = axisOfId(machine, letters, 4);
    const numericalAxisStruct* const fifth = axisOfId(machine, letters, 5);
    if (fourth == nullptr || fifth == nullptr) {
        diagnostics.add(Severity::Fatal, QStringLiteral("axis 4 or 5 is not found"));
        return std::nullopt;
    }
    const std::optional<SbVec3f> fourthDirection = threeNumbers(fourth->direction);
    const std::optional<SbVec3f> fifthDirection = threeNumbers(fifth->direction);
    if (!fourthDirection || !fifthDirection) {
        diagnostics.add(Severity::Fatal, QStringLiteral("axis 4 or 5 direction is not found"));
        return std::nullopt;
    }
    return RotaryDirections{*fourthDirection, *fifthDirection};
}

PlacementOutcome placeByUser(const MachineDescription& machine, const QString& chain,
                             const SbVec3f& translation_mm, const SbVec3f& offset_mm, WayPoints& points,
                             Diagnostics& diagnostics) {
    constexpr float kNoLength = 1e-6F;           // mm
    constexpr float kOffsetWorthAWord = 0.001F;  // mm
    if (points.empty() || (offset_mm.length() < kNoLength && translation_mm.length() < kNoLength))
        return PlacementOutcome::Done;
    const std::optional<RotaryDirections> axes = rotaryDirections(machine, chain, diagnostics);
    if (!axes)
        return PlacementOutcome::Failed;

    PlacementOutcome outcome = PlacementOutcome::Done;
    SbVec3f shift = translation_mm;
    if (hasFixedAttitude(points))
        shift += turnedOffset(*axes, points.front(), offset_mm);
    else if (offset_mm.length() > kOffsetWorthAWord)
        outcome = PlacementOutcome::OffsetIgnored;
    for (WayPoint& point : points) {
        for (int i = 0; i < 3; ++i)
            point[i] += shift[i];
    }
    return outcome;
}

bool mirrorByUser(const MachineDescription& machine, const QString& chain, int angle_deg, WayPoints& points,
                  Diagnostics& diagnostics) {
    if (angle_deg == 0)
        return true;
    const std::optional<RotaryDirections> axes = rotaryDirections(machine, chain, diagnostics);
    if (!axes)
        return false;
    if (axes->fourth != SbVec3f(0, 0, 1) || axes->fifth != SbVec3f(1, 0, 0))
        return true;
    for (WayPoint& point : points) {
        point[kFourth] += angle_deg;
        point[kFifth] *= -1.0;
    }
    return true;
}

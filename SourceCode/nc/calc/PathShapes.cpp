#include "nc/calc/PathShapes.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace {

const SbColor kGreen(0, 1, 0);
const SbColor kYellow(1, 1, 0);
const SbColor kRed(1, 0, 0);

bool allFinite(std::initializer_list<double> values) {
    return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

float withinReach(double value) {
    constexpr double kReach = double{kSceneReach_mm};
    return static_cast<float>(std::clamp(value, -kReach, kReach));
}

bool isUsable(const SbMatrix& placement) {
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            // Written so that a NaN fails.
            if (!(std::abs(placement[row][column]) <= kSceneReach_mm))
                return false;
        }
    }
    return true;
}

/// A cylinder from `top` by `height` downward; both may be negative.
void appendPart(const char* name, const SbColor& color, double diameter, double top, double height,
                std::vector<HolePart>& parts) {
    if (!allFinite({diameter, top, height}))
        return;
    constexpr double kRadiusOfDiameter = 0.5;
    const float radius = withinReach(std::abs(diameter) * kRadiusOfDiameter);
    const float length = withinReach(std::abs(height));
    if (radius > 0 && length > 0)
        parts.push_back({name, color, radius, length, withinReach(top - height / 2)});
}

}  // namespace

std::vector<HolePart> holeParts(const HoleShape& hole) {
    constexpr int kPlainHole = 0;
    constexpr int kMilledHole = 1;
    constexpr int kSinkingHole = 2;
    std::vector<HolePart> parts;
    if (!isUsable(hole.placement))
        return parts;
    if (hole.drillType == kPlainHole || hole.drillType == kMilledHole) {
        appendPart("saftySep", kGreen, hole.diameter, 0, -hole.safetyLength, parts);
        appendPart("drillSep", kRed, hole.diameter, 0, hole.depth, parts);
    } else if (hole.drillType == kSinkingHole) {
        appendPart("saftySep", kGreen, hole.sinkDiameter, 0, -hole.safetyLength, parts);
        appendPart("sinkingSep", kYellow, hole.sinkDiameter, 0, hole.sinkDepth, parts);
        // The hole hangs below its head with its full depth, although its path starts at the surface: the
        // two bodies would otherwise stand in each other.
        appendPart("drillSep", kRed, hole.diameter, -hole.sinkDepth, hole.depth, parts);
    }
    return parts;
}

bool plateOf(const RectangleShape& rectangle, RectanglePlate& plate) {
    if (!allFinite({rectangle.length, rectangle.width, rectangle.depth, rectangle.cornerRadius}) ||
        !isUsable(rectangle.placement))
        return false;
    const float length = withinReach(std::abs(rectangle.length));
    const float width = withinReach(std::abs(rectangle.width));
    const float depth = withinReach(std::abs(rectangle.depth));
    if (!(length > 0 && width > 0 && depth > 0))
        return false;
    plate.outline.length = length;
    plate.outline.width = width;
    plate.outline.cornerRadius = withinReach(rectangle.cornerRadius);
    plate.depth = depth;
    return true;
}

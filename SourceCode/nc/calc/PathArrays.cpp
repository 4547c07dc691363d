#include "nc/calc/PathArrays.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "nc/calc/PathShapes.h"
#include "nc/calc/WayPointText.h"

namespace {

constexpr int kPathAxes = 5;

/// Which entry of a way point holds each axis id from 1 to 5; -1: none.
std::array<int, kPathAxes> entriesOf(const AxisMap& axes) {
    std::array<int, kPathAxes> entries{};
    entries.fill(-1);
    int entry = 0;
    for (auto it = axes.cbegin(); it != axes.cend(); ++it, ++entry) {
        if (it.key() >= 1 && it.key() <= kPathAxes)
            entries[static_cast<std::size_t>(it.key() - 1)] = entry;
    }
    return entries;
}

float sceneValue(const WayPoint& point, int entry) {
    constexpr double kReach = double{kSceneReach_mm};
    if (entry < 0 || entry >= point.size() || std::isnan(point[entry]))
        return 0;
    return static_cast<float>(std::clamp(point[entry], -kReach, kReach));
}

void appendIndices(std::size_t count, std::vector<std::int32_t>& indices) {
    indices.resize(count > 1 ? 3 * (count - 1) : 0);
    std::int32_t* out = indices.data();
    for (std::int32_t i = 1; i < static_cast<std::int32_t>(count); ++i) {
        *out++ = i - 1;
        *out++ = i;
        *out++ = -1;
    }
}

void appendBoxes(const std::vector<SbVec3f>& vertices, std::vector<SbBox3f>& boxes) {
    for (std::size_t first = 0; first + 1 < vertices.size(); first += PathArrays::kSegmentsPerBox) {
        const std::size_t last = std::min(first + PathArrays::kSegmentsPerBox, vertices.size() - 1);
        SbBox3f box;
        for (std::size_t i = first; i <= last; ++i)
            box.extendBy(vertices[i]);
        boxes.push_back(box);
    }
}

}  // namespace

PathArrays pathArrays(const WayPoints& points, const AxisMap& axes) {
    const std::array<int, kPathAxes> entries = entriesOf(axes);
    PathArrays path;
    path.vertices.reserve(points.size());
    path.attitudes.reserve(points.size());
    for (const WayPoint& point : points) {
        path.vertices.emplace_back(sceneValue(point, entries[0]), sceneValue(point, entries[1]),
                                   sceneValue(point, entries[2]));
        path.attitudes.emplace_back(sceneValue(point, entries[3]), sceneValue(point, entries[4]), 0.0F);
    }
    appendIndices(points.size(), path.indices);
    appendBoxes(path.vertices, path.boxes);
    return path;
}

PathArrays pathFromCode(const MachineDescription& machine, const QString& chain, const QString& code) {
    return pathArrays(WayPointsFromCode(machine, chain, code, nullptr), machine.axisMap(chain, false));
}

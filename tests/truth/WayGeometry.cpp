#include "WayGeometry.h"

#include <algorithm>
#include <cmath>

namespace {

/// Distance of a point from the way between two others, over the axes that all of them name.
double distance(const std::vector<double>& point, const std::vector<double>& from,
                const std::vector<double>& to) {
    double along = 0;
    double length = 0;
    const auto isNamed = [&](std::size_t i) { return !std::isnan(point[i] + from[i] + to[i]); };
    for (std::size_t i = 0; i < point.size(); ++i) {
        if (!isNamed(i))
            continue;
        along += (point[i] - from[i]) * (to[i] - from[i]);
        length += (to[i] - from[i]) * (to[i] - from[i]);
    }
    const double share = length > 0 ? std::clamp(along / length, 0.0, 1.0) : 0;
    double square = 0;
    for (std::size_t i = 0; i < point.size(); ++i) {
        if (isNamed(i))
            square += std::pow(point[i] - from[i] - share * (to[i] - from[i]), 2);
    }
    return std::sqrt(square);
}

}  // namespace

bool isSamePlace(const std::vector<double>& a, const std::vector<double>& b) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!std::isnan(a[i]) && !std::isnan(b[i]) && a[i] != b[i])
            return false;
    }
    return true;
}

const NcLine* firstMissed(const std::vector<std::vector<double>>& way, const std::vector<NcLine>& points,
                          double near) {
    std::size_t at = 0;
    for (const NcLine& point : points) {
        while (at + 1 < way.size() && distance(point.position, way[at], way[at + 1]) > near)
            ++at;
        if (at + 1 >= way.size())
            return &point;
    }
    return nullptr;
}

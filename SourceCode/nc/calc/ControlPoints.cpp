#include "nc/calc/ControlPoints.h"

#include <cmath>
#include <limits>

#include "nc/calc/PathShapes.h"

bool controlPointPlace(const ControlPoints& points, int index, SbVec3f& place) {
    constexpr int kCoordinates = 3;
    if (index < 0 || index >= points.size() || points[index].size() < kCoordinates)
        return false;
    const QList<double>& row = points[index];
    for (int i = 0; i < kCoordinates; ++i) {
        if (!(std::abs(row[i]) <= double{kSceneReach_mm}))  // written so that a NaN fails
            return false;
    }
    place.setValue(static_cast<float>(row[0]), static_cast<float>(row[1]), static_cast<float>(row[2]));
    return true;
}

std::vector<SbVec3f> controlPointPlaces(const ControlPoints& points) {
    std::vector<SbVec3f> places;
    places.reserve(static_cast<std::size_t>(points.size()));
    SbVec3f place;
    for (int i = 0; i < points.size(); ++i) {
        if (controlPointPlace(points, i, place))
            places.push_back(place);
    }
    return places;
}

int nearestControlPoint(const ControlPoints& points, const SbVec3f& place) {
    int nearest = -1;
    float smallest = std::numeric_limits<float>::max();
    SbVec3f point;
    for (int i = 0; i < points.size(); ++i) {
        if (!controlPointPlace(points, i, point))
            continue;
        const float distance = (point - place).length();
        if (distance < smallest) {
            smallest = distance;
            nearest = i;
        }
    }
    return nearest;
}

bool isMovableControlPoint(int index, int count) {
    return index > 0 && index < count - 1;
}

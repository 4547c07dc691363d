#pragma once

#include <Inventor/SbVec3f.h>

#include <QList>
#include <vector>

/// Control points of a curve, one value per axis: X, Y, Z (mm) come first. A row with fewer than three
/// values, or with one of them not finite or out of reach, counts as no point but keeps its index.
using ControlPoints = QList<QList<double>>;

/// Places of the points, in their order.
[[nodiscard]] std::vector<SbVec3f> controlPointPlaces(const ControlPoints& points);

/// Index of the point that is nearest to `place`, the first of equals; -1 when there is none, or none at a
/// distance that single precision can hold.
[[nodiscard]] int nearestControlPoint(const ControlPoints& points, const SbVec3f& place);

/// The ends of a curve belong to its neighbours.
[[nodiscard]] bool isMovableControlPoint(int index, int count);

/// False, and `place` as it was, when there is no point of this index.
[[nodiscard]] bool controlPointPlace(const ControlPoints& points, int index, SbVec3f& place);

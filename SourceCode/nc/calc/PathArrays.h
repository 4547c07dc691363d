#pragma once

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>

#include <QString>
#include <cstdint>
#include <vector>

#include "core/calc/WayPoint.h"
#include "machine/calc/MachineDescription.h"

/// A tool path as the arrays of a line set. Every segment is a polyline of its own, so that a part of the
/// path can be named by one index.
struct PathArrays {
    /// Segments under one box; a pick looks into the boxes that it meets.
    static constexpr int kSegmentsPerBox = 256;

    std::vector<SbVec3f> vertices;      ///< X, Y, Z of each way point, mm
    std::vector<SbVec3f> attitudes;     ///< axis 4 and axis 5 of each way point, degrees, and 0
    std::vector<std::int32_t> indices;  ///< i - 1, i, -1 for each i from 1 on
    std::vector<SbBox3f> boxes;         ///< around each run of kSegmentsPerBox segments
};

/// Entries of a way point stand in the order of `axes`; axes that the chain has not stay 0. All values of
/// the result are finite and within kSceneReach_mm.
[[nodiscard]] PathArrays pathArrays(const WayPoints& points, const AxisMap& axes);

/// The path of a code text in the emitted form, see WayPointsFromCode; empty for an empty text.
[[nodiscard]] PathArrays pathFromCode(const MachineDescription& machine, const QString& chain,
                                      const QString& code);

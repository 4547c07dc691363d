#pragma once

#include <Inventor/SbVec3f.h>

#include <QString>
#include <QVector>

#include "tools/calc/ToolRecord.h"

// Outlines of tools in the XZ plane: x is the distance from the tool's axis, z runs from 0 at the spindle
// down to minus the length at the tip. All in mm.
//
//      0 +--+ H/2              0 +--+ H/2
//        |  |                    |  |
//        |  +--+ -(L-B)          |  +--+ -(L-B)
//        |     | D/2             |     | D/2
//        +-----+ -L              |    /  -(L-D/2)
//     end mill, saw blade        +--´    -L   ball end

/// Shank and blade, closed at the origin: seven points.
[[nodiscard]] QVector<SbVec3f> endMillContour(const ToolRecord& tool);

/// Shank, blade and a half ball in steps of 5 degrees, whose last point lies on the axis at -L.
[[nodiscard]] QVector<SbVec3f> ballEndContour(const ToolRecord& tool);

/// The points that a user typed, one a line as three numbers separated by blanks; other lines do not count.
/// Empty unless there are five points or more and the first and the last are both the origin.
[[nodiscard]] QVector<SbVec3f> userContour(const QString& text);

/// The outline of the tool's kind: computed from its dimensions, or read from `text` for a user tool. Empty
/// for a chain saw and for an unknown kind.
[[nodiscard]] QVector<SbVec3f> contourOfType(const ToolRecord& tool, const QString& text);

/// One point a line, "%1 %2 %3\n".
[[nodiscard]] QString contourText(const QVector<SbVec3f>& contour);

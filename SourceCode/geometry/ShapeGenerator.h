#pragma once

#include <Inventor/SbName.h>
#include <Inventor/SbVec3f.h>

#include <QString>
#include <QVector>

#include "geometry/calc/RoundedRectangle.h"

class SoIndexedFaceSet;
class SoSeparator;

/// Makes scene shapes. Carries no state; users hold one in a std::shared_ptr. The caller takes the first
/// reference to each node. All lengths in mm.
class ShapeGenerator {
  public:
    /// The mesh of an STL file; nullptr, and a log line, when it cannot be read; nullptr without one when
    /// there is no triangle in it.
    [[nodiscard]] SoIndexedFaceSet* createStlShape(const QString& path) const;

    /// The arrays as a face set named `name` (nullptr: no name). Indices that point behind the vertices give
    /// a face set without geometry and a log line.
    [[nodiscard]] SoIndexedFaceSet* createFaceSet(const QVector<SbVec3f>& vertices,
                                                  const QVector<int>& indices, const SbName* name) const;

    /// The mesh of a tool whose outline turns about Z, see revolvedMesh.
    void createToolMesh(const QVector<SbVec3f>& contour, QVector<SbVec3f>& vertices,
                        QVector<int>& indices) const;

    /// The frame marker of a coordinate system, named as the system: a red ball at the origin, arrows along
    /// X (red), Y (green) and Z (blue), and "UCS" with the first number of the name.
    [[nodiscard]] SoSeparator* createCoordinateFrame(const SbName* name) const;

    /// A plate with round corners that reaches `depth` from the plane y = 0 along `direction`.
    [[nodiscard]] SoIndexedFaceSet* createRoundedRectangle(const RoundedRectangle& rectangle,
                                                           const SbVec3f& direction, float depth,
                                                           const SbName* name) const;
};

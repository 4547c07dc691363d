#pragma once

#include <Inventor/SbName.h>

class SoMaterial;
class SoSeparator;
struct HoleShape;
struct RectangleShape;

// The bodies that stand for drill and rectangle items. The caller takes the first reference; nullptr when
// the shape has no part that could be drawn.

/// Named `name`: the placement, the upright turn, and a separator for each cylinder.
[[nodiscard]] SoSeparator* makeHoleNode(const HoleShape& hole, const SbName& name);

/// Named `name`: the placement, the upright turn, and one plate "roundedEdgeRectSep" along each direction of
/// the item's Z. Both share `material`.
[[nodiscard]] SoSeparator* makeRectangleNode(const RectangleShape& rectangle, const SbName& name,
                                             SoMaterial& material);

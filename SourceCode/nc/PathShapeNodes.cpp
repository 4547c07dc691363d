#include "nc/PathShapeNodes.h"

#include <Inventor/nodes/SoCylinder.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoRotationXYZ.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>

#include "geometry/ShapeGenerator.h"
#include "nc/calc/PathShapes.h"

namespace {

template <typename Node>
Node* add(SoGroup& group) {
    auto* node = new Node;  // owned by the group
    group.addChild(node);
    return node;
}

/// A separator in the item's frame whose Y is the item's Z. The placement stands outside of the turn, so the
/// body is where the item's path is.
SoSeparator* makePlaced(const SbMatrix& placement, const SbName& name) {
    auto* placed = new SoSeparator;  // owned by the caller
    placed->setName(name);
    add<SoMatrixTransform>(*placed)->matrix = placement;
    auto* turn = add<SoRotationXYZ>(*placed);
    turn->axis = SoRotationXYZ::X;
    turn->angle = kUprightTurn_rad;
    return placed;
}

void addCylinder(SoGroup& group, const HolePart& part) {
    auto* separator = add<SoSeparator>(group);
    separator->setName(part.name);
    add<SoMaterial>(*separator)->diffuseColor.setValue(part.color);
    add<SoTranslation>(*separator)->translation.setValue(0, part.centreY, 0);
    auto* cylinder = add<SoCylinder>(*separator);
    cylinder->radius = part.radius;
    cylinder->height = part.height;
}

void addPlate(SoGroup& group, const RectanglePlate& plate, const SbVec3f& direction, SoMaterial& material) {
    auto* separator = add<SoSeparator>(group);
    separator->setName("roundedEdgeRectSep");
    separator->addChild(&material);
    separator->addChild(
        ShapeGenerator().createRoundedRectangle(plate.outline, direction, plate.depth, nullptr));
}

}  // namespace

SoSeparator* makeHoleNode(const HoleShape& hole, const SbName& name) {
    const std::vector<HolePart> parts = holeParts(hole);
    if (parts.empty())
        return nullptr;
    SoSeparator* const node = makePlaced(hole.placement, name);
    for (const HolePart& part : parts)
        addCylinder(*node, part);
    return node;
}

SoSeparator* makeRectangleNode(const RectangleShape& rectangle, const SbName& name, SoMaterial& material) {
    RectanglePlate plate;
    if (!plateOf(rectangle, plate))
        return nullptr;
    SoSeparator* const node = makePlaced(rectangle.placement, name);
    addPlate(*node, plate, SbVec3f(0, 1, 0), material);
    addPlate(*node, plate, SbVec3f(0, -1, 0), material);
    return node;
}

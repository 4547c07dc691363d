#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSphere.h>
#include <Inventor/nodes/SoTranslation.h>

#include <iostream>

#include "geometry/modelNode.h"

namespace {
constexpr int kBeingBuilt = 4;
constexpr int kBuilt = 0;
}  // namespace

shape::~shape() = default;

pointShape::pointShape(const SbVec3f& position, const SbColor& color, float radius)
    : shape(kBeingBuilt), color_(color), position_(position), radius_(radius) {
    std::cout << "construct pointShape" << std::endl;
    pointShape::build();
    kind_ = kBuilt;
}

pointShape::~pointShape() = default;

void pointShape::build() {
    auto* marker = new SoSeparator;  // owned by this group
    addChild(marker);
    material_ = new SoMaterial;  // owned by the marker
    material_->diffuseColor.setValue(color_);
    marker->addChild(material_);
    auto* place = new SoTranslation;  // owned by the marker
    place->translation.setValue(position_);
    marker->addChild(place);
    auto* ball = new SoSphere;  // owned by the marker
    ball->radius = radius_;
    marker->addChild(ball);
}

void pointShape::setSelected(bool selected) {
    static const SbColor highlight(1, 1, 0);
    isSelected_ = selected;
    material_->diffuseColor.setValue(selected ? highlight : color_);
}

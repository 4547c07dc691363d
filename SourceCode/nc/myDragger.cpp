#include "nc/myDragger.h"

#include <Inventor/SoInteraction.h>

#include "core/getUniquelyIdentifies.h"

myDragger::myDragger() {
    constexpr float kSize_mm = 120;
    scaleFactor.setValue(kSize_mm, kSize_mm, kSize_mm);
}

myDragger* myDragger::create(int index, const SbVec3f& place) {
    SoInteraction::init();  // does nothing the second time; a process without a viewer has not done it
    auto* dragger = new myDragger;  // owned by the caller
    dragger->setName(SbName(getUniquelyIdentifies::instance().names().draggerNodeName.toUtf8().constData()));
    dragger->index_ = index;
    dragger->translation.setValue(place);
    return dragger;
}

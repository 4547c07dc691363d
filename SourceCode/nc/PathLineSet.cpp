#include "nc/PathLineSet.h"

#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/details/SoLineDetail.h>
#include <Inventor/details/SoPointDetail.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <algorithm>

#include "nc/calc/PathArrays.h"

PathLineSet::PathLineSet() {
    clearPath();  // the library's own start is one index without a vertex
}

void PathLineSet::clearPath() {
    coordIndex.setNum(0);
    vertexProperty = nullptr;
    boxes_.clear();
}

void PathLineSet::setPath(const PathArrays& path) {
    const int count = static_cast<int>(path.vertices.size());
    auto* property = new SoVertexProperty;  // owned by the field
    property->vertex.setNum(0);
    property->vertex.setValues(0, count, path.vertices.data());
    property->normal.setNum(0);
    property->normal.setValues(0, count, path.attitudes.data());
    coordIndex.setNum(0);  // no index may point behind the vertices, not even between two lines
    vertexProperty = property;
    coordIndex.setValues(0, static_cast<int>(path.indices.size()), path.indices.data());
    boxes_ = path.boxes;
}

void PathLineSet::GLRender(SoGLRenderAction* action) {
    SoState* const state = action->getState();
    state->push();
    SoLazyElement::setLightModel(state, SoLazyElement::BASE_COLOR);
    SoIndexedLineSet::GLRender(action);
    state->pop();
}

void PathLineSet::rayPick(SoRayPickAction* action) {
    const auto* property = dynamic_cast<const SoVertexProperty*>(vertexProperty.getValue());
    if (property == nullptr || !shouldRayPick(action))
        return;
    computeObjectSpaceRay(action);
    const SbVec3f* const vertices = property->vertex.getValues(0);
    const int segments = std::min(property->vertex.getNum() - 1, coordIndex.getNum() / 3);
    int first = 0;
    for (const SbBox3f& box : boxes_) {
        const int end = std::min(first + PathArrays::kSegmentsPerBox, segments);
        if (action->intersect(box, TRUE) != FALSE)
            pickRun(*action, vertices, first, end);
        first = end;
    }
}

void PathLineSet::pickRun(SoRayPickAction& action, const SbVec3f* vertices, int first, int last) {
    SbVec3f place;
    for (int i = first; i < last; ++i) {
        if (action.intersect(vertices[i], vertices[i + 1], place) == FALSE ||
            action.isBetweenPlanes(place) == FALSE)
            continue;
        SoPickedPoint* const picked = action.addIntersection(place);
        if (picked == nullptr)
            continue;
        SoPointDetail ends[2];
        ends[0].setCoordinateIndex(i);
        ends[1].setCoordinateIndex(i + 1);
        auto* detail = new SoLineDetail;  // owned by the picked point
        detail->setPoint0(&ends[0]);
        detail->setPoint1(&ends[1]);
        detail->setLineIndex(i);
        detail->setPartIndex(0);
        picked->setDetail(detail, this);
    }
}

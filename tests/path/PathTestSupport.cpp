#include "path/PathTestSupport.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoSearchAction.h>

#include <QFile>

#include "core/getUniquelyIdentifies.h"
#include "machine/readConfig.h"
#include "nc/TestMachine.h"

void PathTest::SetUp() {
    const QString names = QStringLiteral("data/UniquelyIdentifies.json");
    QFile shipped(shippedInstallation() + QLatin1Char('/') + names);
    ASSERT_TRUE(shipped.open(QIODevice::ReadOnly));
    installation_.write(names, shipped.readAll());
    getUniquelyIdentifies::instance().reload();  // starts the scene library
    ConfigReader::instance().setDescription(fiveAxisMachine());
}

namespace {

void search(SoSearchAction& action, SoNode* root, const char* name) {
    action.setName(name);
    action.setInterest(SoSearchAction::ALL);
    action.setSearchingAll(TRUE);
    action.apply(root);
}

struct Collector {
    const char* name;
    int depth = 0;  ///< separators of that name around the present node
    std::vector<SbVec3f> corners;
};

bool isNamed(const SoNode* node, const char* name) {
    return name != nullptr && node->getName() == name;
}

SoCallbackAction::Response enter(void* data, SoCallbackAction* /*action*/, const SoNode* node) {
    auto* const collector = static_cast<Collector*>(data);
    if (isNamed(node, collector->name))
        ++collector->depth;
    return SoCallbackAction::CONTINUE;
}

SoCallbackAction::Response leave(void* data, SoCallbackAction* /*action*/, const SoNode* node) {
    auto* const collector = static_cast<Collector*>(data);
    if (isNamed(node, collector->name))
        --collector->depth;
    return SoCallbackAction::CONTINUE;
}

void take(void* data, SoCallbackAction* action, const SoPrimitiveVertex* a, const SoPrimitiveVertex* b,
          const SoPrimitiveVertex* c) {
    auto* const collector = static_cast<Collector*>(data);
    if (collector->name != nullptr && collector->depth == 0)
        return;
    for (const SoPrimitiveVertex* vertex : {a, b, c}) {
        SbVec3f place;
        action->getModelMatrix().multVecMatrix(vertex->getPoint(), place);
        collector->corners.push_back(place);
    }
}

}  // namespace

SoNode* findNode(SoNode* root, const char* name) {
    SoSearchAction action;
    search(action, root, name);
    SoNode* const found = action.getPaths().getLength() == 0 ? nullptr : action.getPaths()[0]->getTail();
    action.reset();
    return found;
}

int countNodes(SoNode* root, const char* name) {
    SoSearchAction action;
    search(action, root, name);
    return action.getPaths().getLength();
}

std::vector<SbVec3f> trianglesOf(SoNode* root, const char* name) {
    Collector collector{name, 0, {}};
    SoCallbackAction action;
    action.addPreCallback(SoNode::getClassTypeId(), enter, &collector);
    action.addPostCallback(SoNode::getClassTypeId(), leave, &collector);
    action.addTriangleCallback(SoNode::getClassTypeId(), take, &collector);
    action.apply(root);
    return collector.corners;
}

SbBox3f boxOf(const std::vector<SbVec3f>& points) {
    SbBox3f box;
    for (const SbVec3f& point : points)
        box.extendBy(point);
    return box;
}

double volumeOf(const std::vector<SbVec3f>& triangles) {
    // Sum of the signed tetrahedra between the origin and each triangle.
    double volume = 0;
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        volume += double{triangles[i].dot(triangles[i + 1].cross(triangles[i + 2]))} / 6;
    return volume;
}

SbMatrix placed(const SbVec3f& axis, float angle_deg, const SbVec3f& shift) {
    constexpr float kDegree = 3.14159265F / 180;
    SbMatrix matrix;
    matrix.setTransform(shift, SbRotation(axis, angle_deg * kDegree), SbVec3f(1, 1, 1));
    return matrix;
}

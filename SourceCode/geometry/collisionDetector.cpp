#include "geometry/collisionDetector.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <QDebug>

#include "core/LanguageReader.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("CollisionObjectBuilder"),
                                                     QString::fromLatin1(key));
}

QString nameText(const SbName* name) {
    return QString::fromUtf8(name != nullptr ? name->getString() : "");
}

void logEmpty(const SbName* name) {
    qDebug().noquote() << textOf("Title") << nameText(name) << textOf("VerticeIsEmptyErrorMsg");
}

std::vector<Eigen::Vector3f> verticesOf(const SbVec3f* vertices, int count) {
    std::vector<Eigen::Vector3f> points;
    points.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        points.emplace_back(vertices[i][0], vertices[i][1], vertices[i][2]);
    return points;
}

/// A separator among the three is an index that no mesh has; building refuses it.
std::vector<fcl::Triangle> trianglesOf(const int* indices, int count) {
    constexpr int kStride = 4;
    std::vector<fcl::Triangle> triangles;
    triangles.reserve(static_cast<std::size_t>(count / kStride) + 1);
    for (int i = 0; i + 2 < count; i += kStride) {
        triangles.emplace_back(static_cast<std::size_t>(indices[i]), static_cast<std::size_t>(indices[i + 1]),
                               static_cast<std::size_t>(indices[i + 2]));
    }
    return triangles;
}

fcl::CollisionObject<float>* objectOf(const CollisionObjectBuilder& builder,
                                      const std::vector<Eigen::Vector3f>& vertices,
                                      const std::vector<fcl::Triangle>& triangles, SbName* name,
                                      const CollisionTransform& transform) {
    const std::shared_ptr<CollisionModel> model = builder.createCollisionModel(vertices, triangles, name);
    if (model == nullptr)
        return nullptr;
    std::unique_ptr<fcl::CollisionObject<float>> object = CollisionEngine::makeObject(model, transform);
    object->setUserData(name);
    return object.release();
}

}  // namespace

std::shared_ptr<CollisionModel> CollisionObjectBuilder::createCollisionModel(
    const std::vector<Eigen::Vector3f>& vertices, const std::vector<fcl::Triangle>& triangles,
    SbName* name) const {
    if (vertices.empty() || triangles.empty())
        logEmpty(name);
    std::shared_ptr<CollisionModel> model = CollisionEngine::makeModel(vertices, triangles, name);
    if (model == nullptr)
        qDebug().noquote() << nameText(name) << textOf("BuildErrorMsg");
    return model;
}

fcl::CollisionObject<float>* CollisionObjectBuilder::createCollisionObject(
    SoIndexedFaceSet* faceSet, SbName* name, const CollisionTransform& transform) const {
    const auto* property =
        faceSet == nullptr ? nullptr : dynamic_cast<SoVertexProperty*>(faceSet->vertexProperty.getValue());
    if (property == nullptr) {
        logEmpty(name);
        return nullptr;
    }
    const std::vector<Eigen::Vector3f> vertices =
        verticesOf(property->vertex.getValues(0), property->vertex.getNum());
    const std::vector<fcl::Triangle> triangles =
        trianglesOf(faceSet->coordIndex.getValues(0), faceSet->coordIndex.getNum());
    if (vertices.empty() || triangles.empty()) {
        logEmpty(name);
        return nullptr;
    }
    return objectOf(*this, vertices, triangles, name, transform);
}

fcl::CollisionObject<float>* CollisionObjectBuilder::createCollisionObject(
    const QVector<SbVec3f>& vertices, const QVector<int>& indices, SbName* name,
    const CollisionTransform& transform) const {
    const std::vector<Eigen::Vector3f> points = verticesOf(vertices.constData(), vertices.size());
    const std::vector<fcl::Triangle> triangles = trianglesOf(indices.constData(), indices.size());
    if (points.empty() || triangles.empty()) {
        qDebug().noquote() << "Vertices or Traiangles is empty.";
        return nullptr;
    }
    return objectOf(*this, points, triangles, name, transform);
}

bool collisionDetector::collide(const fcl::CollisionObject<float>* one,
                                const fcl::CollisionObject<float>* other) {
    return one != nullptr && other != nullptr && CollisionEngine::collide(*one, *other);
}

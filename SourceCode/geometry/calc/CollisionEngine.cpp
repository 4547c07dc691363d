#include "geometry/calc/CollisionEngine.h"

#include <Inventor/SbMatrix.h>
#include <fcl/geometry/bvh/BVH_model.h>
#include <fcl/math/bv/OBBRSS.h>
#include <fcl/narrowphase/collision.h>

#include <algorithm>
#include <cmath>

template class fcl::CollisionObject<float>;

namespace {

bool isUsable(const Eigen::Vector3f& vertex) {
    // False for what is not a number, too.
    return std::abs(vertex.x()) <= CollisionEngine::kLargestCoordinate_mm &&
           std::abs(vertex.y()) <= CollisionEngine::kLargestCoordinate_mm &&
           std::abs(vertex.z()) <= CollisionEngine::kLargestCoordinate_mm;
}

bool fits(const fcl::Triangle& triangle, std::size_t vertexCount) {
    return triangle[0] < vertexCount && triangle[1] < vertexCount && triangle[2] < vertexCount;
}

/// The library's default request, written out: whether there is a contact is all that is asked.
fcl::CollisionRequest<float> plainRequest() {
    fcl::CollisionRequest<float> request(1, false, 1, false, true, fcl::GST_LIBCCD, 1e-6F);
    request.enable_cached_gjk_guess = false;
    request.cached_gjk_guess = fcl::Vector3<float>(1, 0, 0);
    return request;
}

}  // namespace

CollisionTransform toCollisionTransform(const SbMatrix& matrix) {
    CollisionTransform transform;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column)
            transform.matrix()(row, column) = matrix[column][row];
    }
    return transform;
}

namespace CollisionEngine {

std::shared_ptr<CollisionModel> makeModel(const std::vector<Eigen::Vector3f>& vertices,
                                          const std::vector<fcl::Triangle>& triangles, void* userData) {
    const bool usable = std::all_of(vertices.begin(), vertices.end(), isUsable) &&
                        std::all_of(triangles.begin(), triangles.end(),
                                    [&](const fcl::Triangle& one) { return fits(one, vertices.size()); });
    if (!usable || vertices.empty())
        return nullptr;
    auto model = std::make_shared<CollisionModel>();
    model->beginModel();
    if (model->addSubModel(vertices, triangles) != fcl::BVH_OK || model->endModel() != fcl::BVH_OK)
        return nullptr;
    model->setUserData(userData);
    return model;
}

std::unique_ptr<fcl::CollisionObject<float>> makeObject(const std::shared_ptr<CollisionModel>& model,
                                                        const CollisionTransform& transform) {
    auto object = std::make_unique<fcl::CollisionObject<float>>(model, transform);
    model->computeLocalAABB();
    object->computeAABB();
    return object;
}

int triangleCount(const CollisionModel& model) {
    return model.num_tris;
}

int triangleCountOf(const fcl::CollisionObject<float>& object) {
    const auto* model = dynamic_cast<const CollisionModel*>(object.collisionGeometry().get());
    return model == nullptr ? 0 : triangleCount(*model);
}

void* userData(const CollisionModel& model) {
    return model.getUserData();
}

bool collide(const fcl::CollisionObject<float>& one, const fcl::CollisionObject<float>& other) {
    if (!one.getTransform().matrix().allFinite() || !other.getTransform().matrix().allFinite())
        return false;
    const fcl::CollisionRequest<float> request = plainRequest();
    fcl::CollisionResult<float> result;
    fcl::collide(&one, &other, request, result);
    return result.isCollision();
}

}  // namespace CollisionEngine

#pragma once

#include <fcl/math/triangle.h>
#include <fcl/narrowphase/collision_object.h>

#include <Eigen/Core>
#include <Eigen/Geometry>
#include <memory>
#include <vector>

class SbMatrix;

// The only door to the collision library. Its algorithms are templates that take half a minute to compile,
// so they are compiled once, behind these functions.

namespace fcl {
template <typename S>
class OBBRSS;
template <typename BV>
class BVHModel;
extern template class CollisionObject<float>;
}  // namespace fcl

/// A pose in the machine, mm. Column vectors.
using CollisionTransform = Eigen::Transform<float, 3, 1, 0>;
/// The one kind of geometry in use: triangles in a tree of oriented boxes.
using CollisionModel = fcl::BVHModel<fcl::OBBRSS<float>>;

/// The scene's matrix (row vectors) as a pose: transposed.
[[nodiscard]] CollisionTransform toCollisionTransform(const SbMatrix& matrix);

namespace CollisionEngine {

/// Coordinates beyond this, mm, cannot be told apart in single precision and are refused.
inline constexpr float kLargestCoordinate_mm = 1e7F;

/// nullptr when a triangle names a vertex that is not there, a coordinate is not finite or beyond the limit,
/// or the library refuses.
[[nodiscard]] std::shared_ptr<CollisionModel> makeModel(const std::vector<Eigen::Vector3f>& vertices,
                                                        const std::vector<fcl::Triangle>& triangles,
                                                        void* userData);

/// With its local box and its own box computed for this pose; the box is not refreshed when the object moves.
[[nodiscard]] std::unique_ptr<fcl::CollisionObject<float>> makeObject(
    const std::shared_ptr<CollisionModel>& model, const CollisionTransform& transform);

[[nodiscard]] int triangleCount(const CollisionModel& model);
/// Of the object's mesh.
[[nodiscard]] int triangleCountOf(const fcl::CollisionObject<float>& object);
[[nodiscard]] void* userData(const CollisionModel& model);

/// True when the two touch. A pose that is not finite touches nothing.
[[nodiscard]] bool collide(const fcl::CollisionObject<float>& one, const fcl::CollisionObject<float>& other);

}  // namespace CollisionEngine

#pragma once

#include <Inventor/SbName.h>
#include <Inventor/SbVec3f.h>

#include <QVector>
#include <memory>
#include <vector>

#include "geometry/calc/CollisionEngine.h"

class SoIndexedFaceSet;

/// Makes collision objects from meshes (mm). Carries no state; users hold one in a std::shared_ptr. What
/// cannot be built is nullptr, and the log says why. `name` becomes user data and must outlive what is made.
class CollisionObjectBuilder {
  public:
    /// Its user data is `name`.
    [[nodiscard]] std::shared_ptr<CollisionModel> createCollisionModel(
        const std::vector<Eigen::Vector3f>& vertices, const std::vector<fcl::Triangle>& triangles,
        SbName* name) const;

    /// The caller owns the object. Its box is that of `transform` for good; its user data is `name` until
    /// the owner replaces it.
    [[nodiscard]] fcl::CollisionObject<float>* createCollisionObject(
        SoIndexedFaceSet* faceSet, SbName* name, const CollisionTransform& transform) const;
    /// Indices in face-set form, read with stride 4 whatever they hold.
    [[nodiscard]] fcl::CollisionObject<float>* createCollisionObject(
        const QVector<SbVec3f>& vertices, const QVector<int>& indices, SbName* name,
        const CollisionTransform& transform) const;
};

/// The plain test of two objects, as placement and the collision pass use it.
class collisionDetector {
  public:
    /// True when both are there and touch.
    [[nodiscard]] static bool collide(const fcl::CollisionObject<float>* one,
                                      const fcl::CollisionObject<float>* other);
};

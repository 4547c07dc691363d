#pragma once

#include <Inventor/SbName.h>

#include <QStringList>
#include <memory>

#include "geometry/calc/CollisionEngine.h"

/// A node's collision object together with what the object's user data points to. Empty until an object is
/// taken.
class CollisionHolder {
  public:
    CollisionHolder();
    ~CollisionHolder();
    CollisionHolder(const CollisionHolder&) = delete;
    CollisionHolder& operator=(const CollisionHolder&) = delete;

    /// Where a builder's name argument finds the node's name; stays in place for the holder's life.
    [[nodiscard]] SbName* name(const SbName& value);
    /// Takes ownership of `object`, which may be nullptr, and frees the one before.
    void take(fcl::CollisionObject<float>* object);
    /// From now on the object's user data is a list of its own with this name path, top first.
    void setNameChain(const QStringList& chain);
    void setTransform(const CollisionTransform& transform);

    /// nullptr while empty.
    [[nodiscard]] fcl::CollisionObject<float>* get() const { return object_.get(); }

  private:
    SbName name_;
    std::unique_ptr<QStringList> chain_;
    std::unique_ptr<fcl::CollisionObject<float>> object_;
};

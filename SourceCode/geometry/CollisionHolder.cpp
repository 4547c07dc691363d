#include "geometry/CollisionHolder.h"

CollisionHolder::CollisionHolder() = default;

CollisionHolder::~CollisionHolder() = default;

SbName* CollisionHolder::name(const SbName& value) {
    name_ = value;
    return &name_;
}

void CollisionHolder::take(fcl::CollisionObject<float>* object) {
    object_.reset(object);
    chain_.reset();
}

void CollisionHolder::setNameChain(const QStringList& chain) {
    if (object_ == nullptr)
        return;
    auto next = std::make_unique<QStringList>(chain);
    object_->setUserData(next.get());
    chain_ = std::move(next);
}

void CollisionHolder::setTransform(const CollisionTransform& transform) {
    if (object_ != nullptr)
        object_->setTransform(transform);
}

#include "app/calc/ViewFit.h"

#include <algorithm>
#include <cmath>

ViewOpening::ViewOpening(float heightAngle_rad, float aspect) {
    constexpr float kHalf = 0.5F;
    const float smaller = std::tan(kHalf * heightAngle_rad);
    across = smaller * std::max(1.0F, aspect);
    up = smaller * std::max(1.0F, 1.0F / aspect);
}

ViewFit::ViewFit(const SbRotation& orientation, const ViewOpening& opening, float fill)
    : toWorld_(orientation), toCamera_(orientation.inverse()), opening_(opening) {
    opening_.across *= fill;
    opening_.up *= fill;
}

void ViewFit::add(const SbVec3f& point) {
    SbVec3f p;
    toCamera_.multVec(point, p);
    if (!std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2]))
        return;
    const auto widen = [this](float& most, float value) { most = isEmpty_ ? value : std::max(most, value); };
    widen(right_, p[0] + opening_.across * p[2]);
    widen(left_, -p[0] + opening_.across * p[2]);
    widen(top_, p[1] + opening_.up * p[2]);
    widen(bottom_, -p[1] + opening_.up * p[2]);
    widen(nearest_, p[2]);
    farthest_ = isEmpty_ ? p[2] : std::min(farthest_, p[2]);
    isEmpty_ = false;
}

std::optional<ViewFit::Place> ViewFit::place() const {
    constexpr float kHalf = 0.5F;
    constexpr float kClosest_mm = 1;  // to a single point
    if (isEmpty_)
        return std::nullopt;
    const float forWidth = kHalf * (right_ + left_) / opening_.across;
    const float forHeight = kHalf * (top_ + bottom_) / opening_.up;
    const float z = std::max({forWidth, forHeight, nearest_ + kClosest_mm});
    // What is left over of the other direction is shared by both of its edges.
    const SbVec3f inCamera(kHalf * (right_ - left_), kHalf * (top_ - bottom_), z);
    Place place;
    toWorld_.multVec(inCamera, place.position);
    place.focalDistance = z - kHalf * (nearest_ + farthest_);
    return place;
}

bool ViewFit::isAllSeenFrom(const SbVec3f& position) const {
    SbVec3f p;
    toCamera_.multVec(position, p);
    return isEmpty_ || (opening_.across * p[2] + p[0] >= right_ && opening_.across * p[2] - p[0] >= left_ &&
                        opening_.up * p[2] + p[1] >= top_ && opening_.up * p[2] - p[1] >= bottom_);
}

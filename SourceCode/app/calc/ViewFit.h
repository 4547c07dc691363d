#pragma once

#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>

#include <optional>

/// The opening of a perspective camera, as half widths at the distance 1. The angle is the height's in wide
/// pictures and the width's in tall ones, which is how the scene's camera takes it.
struct ViewOpening {
    ViewOpening(float heightAngle_rad, float aspect);
    float across;
    float up;
};

/// Where a camera of a given direction must stand to see all points as large as may be.
///
/// In the camera's frame (x right, y up, looking along -z) a point (x, z) is inside the right edge of a
/// camera at (px, pz) when
///
///     x - px <= t (pz - z)      that is      px + t pz >= x + t z
///
/// with t the opening, and likewise for the other three edges. So only the largest x + t z and -x + t z of
/// all points count, and of the y.
class ViewFit {
  public:
    /// `orientation` turns the camera's frame into the world's. The points take up at most the share `fill`
    /// of the picture's width and height, 0 < fill <= 1.
    ViewFit(const SbRotation& orientation, const ViewOpening& opening, float fill = 1);

    /// A point of the world, mm. One that is not finite is passed over.
    void add(const SbVec3f& point);

    struct Place {
        SbVec3f position;
        float focalDistance;  ///< to the middle of the depth of all points
    };
    /// Nothing without points.
    [[nodiscard]] std::optional<Place> place() const;
    /// True when a camera there has all points inside the edges.
    [[nodiscard]] bool isAllSeenFrom(const SbVec3f& position) const;

  private:
    SbRotation toWorld_;
    SbRotation toCamera_;
    ViewOpening opening_;
    bool isEmpty_ = true;
    float right_ = 0;  ///< largest x + t z
    float left_ = 0;   ///< largest -x + t z
    float top_ = 0;
    float bottom_ = 0;
    float nearest_ = 0;  ///< largest z
    float farthest_ = 0;
};

#pragma once

#include <Inventor/SbVec3f.h>

#include <functional>

/// Brings a body near to another along a direction.
///
///     start --5d--> ... --5d--> first contact      at most `maxRounds` - 1 steps
///                       <-0.2d- ... until free, then 0.2d more
///
/// `movesInto(place)` puts the body there and says whether it touches.
struct PlacementResult {
    bool found = false;
    SbVec3f place{0, 0, 0};  ///< where the body stands now
};

inline constexpr float kCoarseStep = 5.0F;
inline constexpr float kFineStep = 0.2F;

/// A body that comes free no more on the way back (coordinates so large that a fine step is lost in rounding)
/// counts as not found.
[[nodiscard]] PlacementResult searchPlacement(const SbVec3f& start, const SbVec3f& direction, int maxRounds,
                                              const std::function<bool(const SbVec3f&)>& movesInto);

#include "setup/calc/PlacementSearch.h"

PlacementResult searchPlacement(const SbVec3f& start, const SbVec3f& direction, int maxRounds,
                                const std::function<bool(const SbVec3f&)>& movesInto) {
    // 25 fine steps undo a coarse one, which started free; twice as many leave room for rounding.
    constexpr int kMostFineSteps = 50;
    SbVec3f place = start;
    bool touches = false;
    for (int round = 1; round < maxRounds && !touches; ++round) {
        place += direction * kCoarseStep;
        touches = movesInto(place);
    }
    if (!touches)
        return {false, place};
    for (int step = 0; touches && step < kMostFineSteps; ++step) {
        place -= direction * kFineStep;
        touches = movesInto(place);
    }
    if (touches)
        return {false, place};
    place -= direction * kFineStep;
    movesInto(place);
    return {true, place};
}

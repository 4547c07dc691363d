#include "BlendGrid.h"

#include <algorithm>
#include <cmath>

namespace TA {
namespace {

/// Place i of n on half a blend is (i/n)^grading/2: 1 would be even.
constexpr double grading = 1.5;

/// A path gets at least about this many intervals.
constexpr std::size_t fewIntervals = 256;
constexpr unsigned mostRefinement = 8;

}  // namespace

const double* BlendGrid::places(unsigned intervals) {
    std::vector<double>& places = m_places[intervals];
    if (places.empty()) {
        places.resize(intervals + 1);
        const double half = 0.5 * intervals;
        for (unsigned i = 0; i <= intervals; ++i) {
            const double fromEnd = std::min(i, intervals - i) / half;
            const double place = 0.5 * std::pow(fromEnd, grading);
            places[i] = 2 * i <= intervals ? place : 1.0 - place;
        }
    }
    return places.data();
}

unsigned refinement(std::size_t blends) {
    unsigned factor = 1;
    while (factor < mostRefinement && 2 * factor * blends < fewIntervals)
        factor *= 2;
    return factor;
}

}  // namespace TA

#include "SpeedCaps.h"

#include <algorithm>

namespace TA {
namespace {

/// Ratio of the ends of g from which on the first form is the better one.
constexpr double moderateRatio = 0.4;

}  // namespace

EndCaps intervalCaps(double g0, double g1, double sag) {
    const double large = std::max(g0, g1);
    const double small = std::min(g0, g1);
    if (small >= moderateRatio * large) {
        const double change = g1 - g0;
        const double product = 1.0 / (g0 * g1);
        const double excess = std::max(0.0, change * change * product - sag / large);
        const double scale = product / (1.0 + 0.25 * excess);
        return {scale * g1, scale * g0};
    }
    const double upper = 1.0 / large;
    const double lower = (2.0 - small * upper) * upper;
    return g0 > g1 ? EndCaps{upper, lower} : EndCaps{lower, upper};
}

}  // namespace TA

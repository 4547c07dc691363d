#pragma once

namespace TA {

/// Caps of x = (ds/dt)^2 at both ends of an interval, in units of the squared speed limit.
struct EndCaps {
    double first;
    double second;
};

/// Caps that hold a limit g(s) x(s) <= 1 on a whole interval on which x is linear and g quadratic,
/// convex and monotone, with g(ends) = g0, g1 and g = chord - sag w(1 - w), w in [0, 1].
///
/// With x = 1/(f g) at both ends the product is at most
///   (1 + w(1 - w) ((g1 - g0)^2/(g0 g1) - sag/max(g0, g1)))/f,
/// which gives f. Where g falls to a small part of itself that f would be a brake at the upper end:
/// there x is 1/g at the end with the larger g, and at the other so much that the product falls from it.
EndCaps intervalCaps(double g0, double g1, double sag);

}  // namespace TA

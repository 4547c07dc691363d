#pragma once

#include "Polyline.h"

namespace TA {

/// Drops points that are collinear within `sag`, a distance, where that makes no corner sharper.
///
/// Many points on a straight stretch leave a corner at its end only half of the last short segment for
/// its blend; dropping them gives it room. On a curve the same would replace many gentle corners by few
/// sharp ones, so a stretch is only straightened when no corner at its ends becomes sharper than the
/// sharpest was before. What remains of `tolerance` is what the blends may use (see Polyline::sag).
void dropCollinear(Polyline& line, double sag, double tolerance);

}  // namespace TA

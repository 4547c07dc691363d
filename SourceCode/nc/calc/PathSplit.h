#pragma once

#include "core/calc/WayPoint.h"

// Lead-in, body and lead-out of a converted path. Feeds are the last entries, mm per minute; one within 0.1
// of the rapid feed is rapid. Only the number of collected points decides whether the path is split, also
// when the last one collected is a feed move.

/// Takes the lead-in off the front of the path: the rapid points and the first one that is not rapid, with
/// the rapid feed. That last one stays in the path too, with its own feed. When all of the path would go,
/// the lead-in is the first point alone and the path stays whole.
[[nodiscard]] WayPoints splitHead(WayPoints& path, double rapidFeed);

/// The same at the end of the path, in path order; the last point alone when all of the path would go.
[[nodiscard]] WayPoints splitTail(WayPoints& path, double rapidFeed);

/// Axis 5 (entry 4) takes the shorter way from where the previous program left it: when the first point is
/// nearer to `previousFifth_deg` after a turn of 360 degrees, every point gets the turn by its own sign, -360
/// when positive, otherwise +360.
void takeShorterFifth(WayPoints& path, double previousFifth_deg);

/// Every entry of every point is a finite number.
[[nodiscard]] bool allFinite(const WayPoints& path);

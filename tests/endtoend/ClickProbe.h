#pragma once

class QString;

/// Reads the machine that the installation in `folder` uses; false when it is none.
[[nodiscard]] bool readMachine(const QString& folder);

/// Shows the small machine of the installation in `folder` from above with two paths, one of them a curve.
/// Writes a line to standard output for each state that differs from the one before, as "key value" pairs:
/// curve_x, curve_y, other_x, other_y, free_x, free_y  where on the screen the curve's middle control point,
///                                    the other path and nothing are
/// shown, handle     of the curve: 1 or 0
/// otherShown        1 or 0
/// moves             how often the handle has moved its control point
/// camera            its place, as one word
/// Ends when its window is closed.
int showPaths(const QString& folder);

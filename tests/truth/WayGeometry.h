#pragma once

#include <vector>

#include "NcText.h"

/// The same in all axes that both places name.
[[nodiscard]] bool isSamePlace(const std::vector<double>& a, const std::vector<double>& b);

/// The first of `points` that a way of straight pieces does not lead over, in their order, within `near` mm
/// or degrees; nullptr when it leads over all. Axes that one of the places does not name do not count.
[[nodiscard]] const NcLine* firstMissed(const std::vector<std::vector<double>>& way,
                                        const std::vector<NcLine>& points, double near);

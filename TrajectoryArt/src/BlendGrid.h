#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace TA {

/// Where the nodes of a blend lie: w in [0, 1], symmetric, closer together at the ends.
///
/// Both what a blend allows and what is done with it change fastest where it leaves the straight lines.
class BlendGrid {
  public:
    static constexpr unsigned mostIntervals = 64;

    /// m + 1 places; m is 1 or even.
    const double* places(unsigned intervals);

  private:
    std::array<std::vector<double>, mostIntervals + 1> m_places;
};

/// How much finer the grids of a path with few blends are made. On a long path what one interval loses
/// is a small part of the whole; on a short one it may be most of it, and nodes cost nothing there.
/// A power of two, at most 8.
unsigned refinement(std::size_t blends);

}  // namespace TA

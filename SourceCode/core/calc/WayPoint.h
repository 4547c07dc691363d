#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// One point of a tool path. Entries stand in the order of the axis ids: X, Y, Z (mm), axis 4 and axis 5
/// (degrees), the auxiliary axis of id 6 when there is one, and, in a converted program, the feed
/// (mm per minute) as the last entry. A point read back from code has no feed.
///
/// A path holds a million of these, so a point is one flat block without heap memory.
struct WayPoint {
    static constexpr int kMaxEntries = 7;

    std::array<double, kMaxEntries> values{};
    std::uint8_t count = 0;  ///< how many of `values` are in use

    [[nodiscard]] int size() const { return count; }
    [[nodiscard]] double& operator[](int index) { return values[static_cast<std::size_t>(index)]; }
    [[nodiscard]] double operator[](int index) const { return values[static_cast<std::size_t>(index)]; }
    [[nodiscard]] double& back() { return values[count - std::size_t{1}]; }
    [[nodiscard]] double back() const { return values[count - std::size_t{1}]; }
    void append(double value) { values[count++] = value; }

    /// Equal when both have the same number of entries and every entry is the same number.
    friend bool operator==(const WayPoint& a, const WayPoint& b) {
        if (a.count != b.count)
            return false;
        for (std::size_t i = 0; i < a.count; ++i) {
            if (a.values[i] != b.values[i])
                return false;
        }
        return true;
    }
};

using WayPoints = std::vector<WayPoint>;

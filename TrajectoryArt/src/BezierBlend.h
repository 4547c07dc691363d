#pragma once

#include "BlendGrid.h"
#include "Path.h"
#include "PlanOptions.h"

#include <array>
#include <cstddef>
#include <type_traits>
#include <vector>

namespace TA {

/// The limits of one Bezier blend after the other, on a grid of m intervals.
///
/// Of an interval from w_j to w_(j+1), s = 2d w, the state is x = (ds/dt)^2 at its first and y at its last
/// node, with constant u = d2s/dt2 = (y - x)/(2L) between. Axis k needs |q'_k u + q''_k x| <= a_k. On a
/// Bezier piece q' and x are linear in s and q'' is constant, so this holds in between when it holds at
/// both nodes. Divided by a_k and with x, y in units of 2L that is, with t = t1_k/a_k,
/// D = (t2_k - t1_k)/a_k, z = y - x and b = 2 (w_(j+1) - w_j), a load of each node:
///
///   |t z + D (w_j z + b x)| <= 1,     |t z + D (w_(j+1) z + b y)| <= 1
///
/// The states (x, y) that keep all of these form a convex set that holds (0, 0). So the squared speeds
/// from which a node can still be left are an interval [0, K], the backward pass finds K, and the
/// forward pass finds a successor of every x in it.
///
/// Lanes is the stride of the polyline, or 0 when only known at run time.
template <std::size_t Lanes>
class BezierBlend {
  public:
    BezierBlend(const Path& path, const PlanOptions& options);

    /// Turns to the blend at an inner point of kind Blend.
    void load(std::size_t corner);

    /// How many intervals the loaded blend needs.
    unsigned neededIntervals() const;
    void setIntervals(unsigned intervals);

    double place(unsigned j) const { return 2.0 * m_blend->cut * m_places[j]; }

    /// Bounds of x at each of the m + 1 nodes that hold the speed limits.
    void speedCaps(double* caps) const;

    /// The largest x <= cap at node j with a successor y <= next.
    double entry(unsigned j, double cap, double next);

    /// The largest y <= next that follows on x at node j; x <= entry(j, x, next).
    double exit(unsigned j, double x, double next);

  private:
    /// One side of a load: x nx + y ny <= 1.
    struct Side {
        double nx = 0.0;
        double ny = 0.0;
    };

    /// Names a side from interval to interval: loads at the first node, then those at the second.
    struct SideName {
        std::size_t load = 0;
        bool negative = false;
    };

    using Row = std::conditional_t<Lanes != 0, std::array<double, Lanes>, std::vector<double>>;
    using TwoRows = std::conditional_t<Lanes != 0, std::array<double, 2 * Lanes>, std::vector<double>>;

    bool steadyIsFastest() const;
    std::size_t lanes() const { return Lanes != 0 ? Lanes : m_stride; }
    void setInterval(unsigned j);
    bool keepsLimits(double x, double y);
    SideName worst() const;
    Side side(SideName name) const;
    bool repeatLastEntry(double cap, double next, double& x);
    double findEntry(double cap, double next);
    double safeEntry(double cap, double next);
    void pathSpeedCaps(double* caps) const;
    void axisSpeedCaps(double* caps) const;

    const Path& m_path;
    std::size_t m_stride;
    double m_squaredSpeed;
    Row m_inverseLimits{};      ///< 1/a
    Row m_squaredAxisSpeeds{};  ///< of the axes that can be faster than their limit; otherwise 0
    bool m_axisSpeedsLimit = false;
    unsigned m_refinement;
    BlendGrid m_grid;

    std::size_t m_corner = 0;
    const Corner* m_blend = nullptr;
    Row m_first{};            ///< t
    Row m_change{};           ///< D
    double m_rounding = 0.0;  ///< of a load, for x + y = 1
    double m_largestChange = 0.0;
    bool m_steadyIsFastest = false;
    unsigned m_intervals = 1;
    const double* m_places = nullptr;

    double m_from = 0.0;  ///< w_j
    double m_to = 1.0;    ///< w_(j+1)
    double m_span = 2.0;  ///< b
    double m_unit = 1.0;  ///< 2L
    TwoRows m_loads{};    ///< of the state that was asked last
    double m_largest = 0.0;
    SideName m_lastBound;  ///< what limited the entry that was asked last
};

extern template class BezierBlend<0>;
extern template class BezierBlend<2>;
extern template class BezierBlend<4>;
extern template class BezierBlend<6>;
extern template class BezierBlend<8>;

}  // namespace TA

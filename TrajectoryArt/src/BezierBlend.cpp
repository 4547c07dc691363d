#include "BezierBlend.h"

#include "Pair.h"
#include "SpeedCaps.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TA {
namespace {

/// How far a load may exceed 1 and count as kept: far below what any measurement of a motion can show,
/// far above rounding. The second part is the rounding of x and y themselves on very short blends.
constexpr double loadSlack = 1e-9;
constexpr double stateRounding = 8.0 * std::numeric_limits<double>::epsilon();

/// Changes of direction of two axes that differ by less are the same: they limit x to 1e-6 alike.
constexpr double sameChange = 1.0 - 1e-6;

/// More pivots than random limits ever took by far; beyond them rounding turns in circles.
constexpr int mostPivots = 40;

/// x nx + y ny <= limit, with its weight in the sum that proves the maximum of x.
struct Bound {
    double nx;
    double ny;
    double limit;
    double weight;
};

/// Largest x under bounds that arrive one by one, by the dual simplex method in the plane.
///
/// Two bounds are active and meet in the state. The direction (1, 0) in which x grows is a sum of their
/// normals with weights >= 0: so no state that keeps these two has a larger x. A violated bound enters;
/// the one leaves whose weight reaches zero first as the weight of the new one grows.
class LargestX {
  public:
    LargestX(double cap, double next) : x(cap), y(next), m_a{1.0, 0.0, cap, 1.0}, m_b{0.0, 1.0, next, 0.0} {}

    /// Returns false when no state keeps all three bounds, which only rounding can cause.
    bool enter(Bound bound) {
        const double determinant = m_a.nx * m_b.ny - m_a.ny * m_b.nx;
        const double alongA = (bound.nx * m_b.ny - bound.ny * m_b.nx) / determinant;
        const double alongB = (m_a.nx * bound.ny - m_a.ny * bound.nx) / determinant;
        const double never = std::numeric_limits<double>::infinity();
        const double stepA = alongA > 0.0 ? m_a.weight / alongA : never;
        const double stepB = alongB > 0.0 ? m_b.weight / alongB : never;
        bound.weight = std::min(stepA, stepB);
        if (!(bound.weight < never))
            return false;
        m_a.weight -= bound.weight * alongA;
        m_b.weight -= bound.weight * alongB;
        (stepA <= stepB ? m_a : m_b) = bound;
        meet();
        return true;
    }

    double x;
    double y;

  private:
    void meet() {
        const double determinant = m_a.nx * m_b.ny - m_a.ny * m_b.nx;
        x = (m_a.limit * m_b.ny - m_a.ny * m_b.limit) / determinant;
        y = (m_a.nx * m_b.limit - m_a.limit * m_b.nx) / determinant;
    }

    Bound m_a;
    Bound m_b;
};

}  // namespace

template <std::size_t Lanes>
BezierBlend<Lanes>::BezierBlend(const Path& path, const PlanOptions& options)
    : m_path(path),
      m_stride(path.polyline().stride),
      m_squaredSpeed(options.speed * options.speed),
      m_refinement(refinement(path.lineCount())) {
    if constexpr (Lanes == 0) {
        for (Row* row : {&m_inverseLimits, &m_squaredAxisSpeeds, &m_first, &m_change})
            row->assign(m_stride, 0.0);
        m_loads.assign(2 * m_stride, 0.0);
    }
    for (std::size_t k = 0; k < options.axisAccelerations.size(); ++k)
        m_inverseLimits[k] = 1.0 / options.axisAccelerations[k];
    for (std::size_t k = 0; k < options.axisSpeeds.size(); ++k) {
        if (options.axisSpeeds[k] >= options.speed)
            continue;  // the path speed keeps it already
        m_squaredAxisSpeeds[k] = options.axisSpeeds[k] * options.axisSpeeds[k];
        m_axisSpeedsLimit = true;
    }
}

template <std::size_t Lanes>
void BezierBlend<Lanes>::load(std::size_t corner) {
    const double* before = m_path.polyline().direction(corner - 1);
    const double* after = m_path.polyline().direction(corner);
    m_corner = corner;
    m_blend = &m_path.corners()[corner];
    Pair first(0.0);
    Pair change(0.0);
    for (std::size_t k = 0; k < lanes(); k += 2) {
        const Pair inverseLimits(&m_inverseLimits[k]);
        const Pair t = Pair(before + k) * inverseLimits;
        const Pair d = (Pair(after + k) - Pair(before + k)) * inverseLimits;
        t.store(&m_first[k]);
        d.store(&m_change[k]);
        first = larger(first, t.magnitude());
        change = larger(change, d.magnitude());
    }
    m_largestChange = change.largest();
    m_rounding = stateRounding * (first.largest() + m_largestChange);
    m_steadyIsFastest = steadyIsFastest();
}

template <std::size_t Lanes>
unsigned BezierBlend<Lanes>::neededIntervals() const {
    const double turn = m_blend->turn;
    const unsigned intervals = turn < 0.06 ? 1 : turn < 0.3 || m_steadyIsFastest ? 2 : turn < 0.9 ? 4 : 8;
    return m_refinement * intervals;
}

/// Whether the path is passed fastest at the constant x at which axis k meets its limit by curvature
/// alone, x |D_k|/(2d) = 1 with the largest |D_k|. Where t_k and D_k have the same sign braking adds to
/// the load of that axis, where they differ speeding up does. So x can never be larger when one such axis
/// changes its direction in the blend, or when one is speeding up and another one is slowing down.
template <std::size_t Lanes>
bool BezierBlend<Lanes>::steadyIsFastest() const {
    if (m_squaredSpeed * m_largestChange < 2.0 * m_blend->cut)
        return false;  // the speed limit comes first
    bool starts = false;
    bool stops = false;
    for (std::size_t k = 0; k < lanes(); ++k) {
        if (std::abs(m_change[k]) < m_largestChange * sameChange)
            continue;
        const double change = std::copysign(1.0, m_change[k]);
        stops = stops || m_first[k] * change <= 0.0;
        starts = starts || (m_first[k] + m_change[k]) * change >= 0.0;
    }
    return starts && stops;
}

template <std::size_t Lanes>
void BezierBlend<Lanes>::setIntervals(unsigned intervals) {
    m_intervals = intervals;
    m_places = m_grid.places(intervals);
}

template <std::size_t Lanes>
void BezierBlend<Lanes>::setInterval(unsigned j) {
    m_from = m_places[j];
    m_to = m_places[j + 1];
    m_span = 2.0 * (m_to - m_from);
    m_unit = 2.0 * m_blend->cut * m_span;
}

template <std::size_t Lanes>
void BezierBlend<Lanes>::speedCaps(double* caps) const {
    if (m_steadyIsFastest) {
        std::fill(caps, caps + m_intervals + 1, 2.0 * m_blend->cut / m_largestChange);
    } else {
        std::fill(caps, caps + m_intervals + 1, m_squaredSpeed);
        if (m_intervals > 1)
            pathSpeedCaps(caps);
    }
    if (m_axisSpeedsLimit)
        axisSpeedCaps(caps);
}

/// |q'|^2 = (1 - 2w)^2 + opening^2 w(1 - w): the form without cancellation. Its second derivative by w
/// is 2 turn^2, which gives the sag below the chord. The blend is symmetric: both halves at once.
template <std::size_t Lanes>
void BezierBlend<Lanes>::pathSpeedCaps(double* caps) const {
    const double turn = m_blend->turn;
    const double opening = m_blend->opening;
    double g0 = 1.0;
    for (unsigned j = 0; 2 * j < m_intervals; ++j) {
        const double w = m_places[j + 1];
        const double step = turn * (w - m_places[j]);
        const double g1 = (1.0 - 2.0 * w) * (1.0 - 2.0 * w) + opening * opening * w * (1.0 - w);
        const EndCaps ends = intervalCaps(g0, g1, step * step);
        const double atFirst = m_squaredSpeed * ends.first;
        caps[j] = j == 0 ? atFirst : std::min(caps[j], atFirst);
        caps[m_intervals - j] = caps[j];
        caps[j + 1] = caps[m_intervals - j - 1] = m_squaredSpeed * ends.second;
        g0 = g1;
    }
}

template <std::size_t Lanes>
void BezierBlend<Lanes>::axisSpeedCaps(double* caps) const {
    const double* before = m_path.polyline().direction(m_corner - 1);
    const double* after = m_path.polyline().direction(m_corner);
    for (std::size_t k = 0; k < lanes(); ++k) {
        if (m_squaredAxisSpeeds[k] <= 0.0)
            continue;
        const double change = after[k] - before[k];
        for (unsigned j = 0; j < m_intervals; ++j) {
            const double p0 = before[k] + change * m_places[j];
            const double p1 = before[k] + change * m_places[j + 1];
            const double g0 = p0 * p0 / m_squaredAxisSpeeds[k];
            const double g1 = p1 * p1 / m_squaredAxisSpeeds[k];
            if (std::max(g0, g1) * std::max(caps[j], caps[j + 1]) <= 1.0)
                continue;
            const EndCaps ends = intervalCaps(g0, g1, (p1 - p0) * (p1 - p0) / m_squaredAxisSpeeds[k]);
            caps[j] = std::min(caps[j], ends.first);
            caps[j + 1] = std::min(caps[j + 1], ends.second);
        }
    }
}

/// Fills the loads.
template <std::size_t Lanes>
bool BezierBlend<Lanes>::keepsLimits(double x, double y) {
    const double z = y - x;
    const Pair both(z);
    const Pair first(m_from * z + m_span * x);
    const Pair second(m_to * z + m_span * y);
    Pair largest(0.0);
    for (std::size_t k = 0; k < lanes(); k += 2) {
        const Pair slope = Pair(&m_first[k]) * both;
        const Pair change(&m_change[k]);
        const Pair atFirst = slope + change * first;
        const Pair atSecond = slope + change * second;
        atFirst.store(&m_loads[k]);
        atSecond.store(&m_loads[lanes() + k]);
        largest = larger(largest, larger(atFirst.magnitude(), atSecond.magnitude()));
    }
    m_largest = largest.largest();
    return m_largest <= 1.0 + loadSlack + m_rounding * (x + y);
}

template <std::size_t Lanes>
typename BezierBlend<Lanes>::SideName BezierBlend<Lanes>::worst() const {
    std::size_t load = 0;
    while (load + 1 < m_loads.size() && std::abs(m_loads[load]) < m_largest)
        ++load;
    return {load, m_loads[load] < 0.0};
}

template <std::size_t Lanes>
typename BezierBlend<Lanes>::Side BezierBlend<Lanes>::side(SideName name) const {
    const bool second = name.load >= lanes();
    const std::size_t k = second ? name.load - lanes() : name.load;
    const double sign = name.negative ? -1.0 : 1.0;
    const double slope = sign * (m_first[k] + m_change[k] * (second ? m_to : m_from));
    const double bend = sign * m_change[k] * m_span;
    return second ? Side{-slope, slope + bend} : Side{bend - slope, slope};
}

/// What limited one interval mostly limits the next. A side alone with y <= next proves its maximum
/// when nx > 0 and ny <= 0 (the weights of LargestX), so one look at the loads settles it.
template <std::size_t Lanes>
bool BezierBlend<Lanes>::repeatLastEntry(double cap, double next, double& x) {
    const Side bound = side(m_lastBound);
    if (bound.nx <= 0.0 || bound.ny > 0.0)
        return false;
    x = (1.0 - bound.ny * next) / bound.nx;
    return x <= cap && keepsLimits(x, next);
}

template <std::size_t Lanes>
double BezierBlend<Lanes>::findEntry(double cap, double next) {
    LargestX state(cap, next);
    for (int pivot = 0; pivot < mostPivots; ++pivot) {
        Bound bound{0.0, -1.0, 0.0, 0.0};
        if (state.y >= 0.0) {
            if (keepsLimits(state.x, state.y))
                return state.x;
            m_lastBound = worst();
            const Side side_ = side(m_lastBound);
            bound = {side_.nx, side_.ny, 1.0, 0.0};
        }
        if (!state.enter(bound))
            break;
    }
    return safeEntry(cap, next);
}

/// Two states that every limit allows: constant speed, and braking to rest within the interval.
template <std::size_t Lanes>
double BezierBlend<Lanes>::safeEntry(double cap, double next) {
    constexpr double never = 1e-300;
    keepsLimits(1.0, 1.0);
    const double steady = std::min(next, 1.0 / std::max(m_largest, never));
    keepsLimits(1.0, 0.0);
    const double braking = 1.0 / std::max(m_largest, never);
    return std::min(cap, std::max(steady, braking));
}

template <std::size_t Lanes>
double BezierBlend<Lanes>::entry(unsigned j, double cap, double next) {
    setInterval(j);
    const double scaledCap = cap / m_unit;
    const double scaledNext = next / m_unit;
    if (keepsLimits(scaledCap, scaledNext))
        return cap;
    double x = 0.0;
    if (!repeatLastEntry(scaledCap, scaledNext, x))
        x = findEntry(scaledCap, scaledNext);
    return std::clamp(x * m_unit, 0.0, cap);
}

template <std::size_t Lanes>
double BezierBlend<Lanes>::exit(unsigned j, double x, double next) {
    setInterval(j);
    const double from = x / m_unit;
    double to = next / m_unit;
    if (keepsLimits(from, to))
        return next;
    for (int pivot = 0; pivot < mostPivots; ++pivot) {
        const Side bound = side(worst());
        if (bound.ny <= 0.0)
            break;  // a smaller y would only load it more: what is left is rounding
        to = std::clamp((1.0 - bound.nx * from) / bound.ny, 0.0, to);
        if (keepsLimits(from, to))
            break;
    }
    return std::min(to * m_unit, next);
}

template class BezierBlend<0>;
template class BezierBlend<2>;
template class BezierBlend<4>;
template class BezierBlend<6>;
template class BezierBlend<8>;

}  // namespace TA

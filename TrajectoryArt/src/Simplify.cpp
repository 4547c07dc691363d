#include "Simplify.h"

#include "Pair.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TA {
namespace {

/// A stretch turns back when a segment leaves its first direction by more than 60 degrees: its cosine.
constexpr double forwardCosine = 0.5;

/// Two measures of sharpness that differ by less than this differ by rounding.
constexpr double sharpnessRounding = 1.0 + 1e-9;

/// Straightening one stretch changes the corners of its neighbours; this many rounds settle nearly
/// every path, and what is not settled then keeps all its points.
constexpr int settlingRounds = 8;

/// Points first..last of the polyline, to be replaced by one segment.
struct Stretch {
    std::size_t first;
    std::size_t last;
    bool straightened;
};

/// Finds how far a straight stretch reaches.
///
/// Seen from the first point a, a point p at distance t along the first direction e is w = (p - a)/t - e
/// across. A chord in direction e + c passes p within sag exactly when |c - w| <= sag/t, so the chords
/// that pass all points form an intersection of balls. It is kept as one ball inside of it:
/// of two balls (c, r), (w, q) the ball between their facing rims, with diameter r + q - |c - w|.
class StretchFinder {
  public:
    StretchFinder(const Polyline& line, double sag)
        : m_line(line), m_sag(sag), m_centre(line.stride), m_across(line.stride) {}

    std::size_t lastOf(std::size_t first) {
        std::size_t last = first + 1;
        std::fill(m_centre.begin(), m_centre.end(), 0.0);
        m_radius = m_sag / m_line.lengths[first];
        while (last + 1 < m_line.count && admit(first, last + 1))
            ++last;
        return last;
    }

  private:
    bool admit(std::size_t first, std::size_t next) {
        const std::size_t n = m_line.stride;
        const double* forward = m_line.direction(first);
        if (dot(m_line.direction(next - 1), forward, n) < forwardCosine)
            return false;
        const double* from = m_line.point(first);
        const double* to = m_line.point(next);
        Pair sum(0.0);
        for (std::size_t k = 0; k < n; k += 2)
            sum = sum + (Pair(to + k) - Pair(from + k)) * Pair(forward + k);
        const double along = sum.sum();
        const Pair scale(1.0 / along);
        Pair square(0.0);
        for (std::size_t k = 0; k < n; k += 2) {
            const Pair across = (Pair(to + k) - Pair(from + k)) * scale - Pair(forward + k);
            const Pair difference = across - Pair(&m_centre[k]);
            across.store(&m_across[k]);
            square = square + difference * difference;
        }
        const double offset = std::sqrt(square.sum());
        if (!(offset <= m_radius))
            return false;
        narrow(offset, m_sag / along);
        return true;
    }

    void narrow(double offset, double radius) {
        if (offset + m_radius <= radius)
            return;
        if (offset + radius <= m_radius) {
            m_centre = m_across;
            m_radius = radius;
            return;
        }
        const double shared = 0.5 * (m_radius + radius - offset);
        const double share = (m_radius - shared) / offset;
        for (std::size_t k = 0; k < m_centre.size(); ++k)
            m_centre[k] += share * (m_across[k] - m_centre[k]);
        m_radius = shared;
    }

    const Polyline& m_line;
    double m_sag;
    std::vector<double> m_centre;
    std::vector<double> m_across;
    double m_radius = 0.0;
};

/// The largest distance of the points between from the chord; at most the finder's, often far less.
double sagOf(const Polyline& line, std::size_t first, std::size_t last) {
    const std::size_t n = line.stride;
    const double* from = line.point(first);
    if (last == first + 1)
        return 0.0;
    std::vector<double> chord(n);
    for (std::size_t k = 0; k < n; ++k)
        chord[k] = line.point(last)[k] - from[k];
    const double square = dot(chord.data(), chord.data(), n);
    double largest = 0.0;
    for (std::size_t i = first + 1; i < last; ++i) {
        double along = 0.0;
        for (std::size_t k = 0; k < n; ++k)
            along += (line.point(i)[k] - from[k]) * chord[k];
        double distance = 0.0;
        for (std::size_t k = 0; k < n; ++k) {
            const double across = line.point(i)[k] - from[k] - along / square * chord[k];
            distance += across * across;
        }
        largest = std::max(largest, distance);
    }
    return std::sqrt(largest);
}

/// Decides which stretches are straightened, by the sharpness |q''| of the blends at their ends.
class Straightener {
  public:
    Straightener(const Polyline& line, double sag, double tolerance)
        : m_line(line), m_sag(sag), m_tolerance(tolerance) {}

    /// Returns whether any is left.
    bool settle(std::vector<Stretch>& stretches) const {
        for (int round = 0; round < settlingRounds; ++round) {
            bool changed = false;
            for (std::size_t r = 0; r < stretches.size(); ++r) {
                if (!stretches[r].straightened || harmless(stretches, r))
                    continue;
                stretches[r].straightened = false;
                changed = true;
            }
            if (!changed)
                return std::any_of(stretches.begin(), stretches.end(),
                                   [](const Stretch& stretch) { return stretch.straightened; });
        }
        return false;
    }

  private:
    bool harmless(const std::vector<Stretch>& stretches, std::size_t r) const {
        double sharpest = 0.0;
        if (r > 0)
            sharpest = sharpnessBetween(stretches[r - 1], stretches[r]);
        if (r + 1 < stretches.size())
            sharpest = std::max(sharpest, sharpnessBetween(stretches[r], stretches[r + 1]));
        const std::size_t end = std::min(stretches[r].last, m_line.count - 2);
        for (std::size_t i = std::max<std::size_t>(stretches[r].first, 1); i <= end; ++i) {
            const double turn = distance(m_line.direction(i - 1), m_line.direction(i), m_line.stride);
            if (sharpness(turn, m_line.lengths[i - 1], m_line.lengths[i], m_tolerance) * sharpnessRounding >=
                sharpest)
                return true;
        }
        return false;
    }

    double sharpnessBetween(const Stretch& left, const Stretch& right) const {
        const double* a = m_line.point(left.straightened ? left.first : left.last - 1);
        const double* b = m_line.point(left.last);
        const double* c = m_line.point(right.straightened ? right.last : right.first + 1);
        const double before = distance(a, b, m_line.stride);
        const double after = distance(b, c, m_line.stride);
        double turn = 0.0;
        for (std::size_t k = 0; k < m_line.stride; ++k) {
            const double change = (c[k] - b[k]) / after - (b[k] - a[k]) / before;
            turn += change * change;
        }
        const bool used = left.straightened || right.straightened;
        return sharpness(std::sqrt(turn), before, after, used ? m_tolerance - m_sag : m_tolerance);
    }

    /// |q''| = turn/(2d), with the cut d = min(4 tolerance/turn, half of either segment).
    static double sharpness(double turn, double before, double after, double tolerance) {
        return turn * std::max(turn / (8.0 * tolerance), 1.0 / std::min(before, after));
    }

    const Polyline& m_line;
    double m_sag;
    double m_tolerance;
};

/// The segment from `first` to `last` behind the points that `result` holds already.
void appendChord(const Polyline& line, const Stretch& stretch, Polyline& result) {
    const std::size_t n = line.stride;
    const double* from = line.point(stretch.first);
    const double* to = line.point(stretch.last);
    const double length = distance(from, to, n);
    for (std::size_t k = 0; k < n; ++k)
        result.directions.push_back((to[k] - from[k]) / length);
    result.points.insert(result.points.end(), to, to + n);
    result.lengths.push_back(length);
    result.sag.push_back(sagOf(line, stretch.first, stretch.last));
    ++result.count;
}

Polyline straightenedLine(const Polyline& line, const std::vector<Stretch>& stretches) {
    Polyline result;
    result.dimension = line.dimension;
    result.stride = line.stride;
    result.magnitude = line.magnitude;
    result.dropped = line.dropped;
    result.points.assign(line.point(0), line.point(1));
    result.count = 1;
    for (const Stretch& stretch : stretches) {
        if (stretch.straightened) {
            appendChord(line, stretch, result);
            continue;
        }
        for (std::size_t i = stretch.first; i < stretch.last; ++i)
            appendChord(line, {i, i + 1, false}, result);
    }
    return result;
}

}  // namespace

void dropCollinear(Polyline& line, double sag, double tolerance) {
    if (line.count < 3)
        return;
    // Rounding of the coordinates bends every straight line by this much, also without any tolerance.
    const double rounding = 4.0 * std::numeric_limits<double>::epsilon() * line.magnitude;
    const double used = std::max(sag, rounding);
    StretchFinder finder(line, used);
    std::vector<Stretch> stretches;
    bool any = false;
    for (std::size_t first = 0; first + 1 < line.count;) {
        const std::size_t last = finder.lastOf(first);
        stretches.push_back({first, last, last > first + 1});
        any = any || last > first + 1;
        first = last;
    }
    if (any && Straightener(line, used, std::max(tolerance, 2.0 * rounding)).settle(stretches))
        line = straightenedLine(line, stretches);
}

}  // namespace TA

#include "Polyline.h"

#include "Pair.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

namespace TA {
namespace {

/// Points nearer than this share of the largest coordinate differ by rounding only: eight units in
/// the last place. A share, so that it means the same in every unit.
constexpr double roundingShare = 8.0 * std::numeric_limits<double>::epsilon();

/// Below this a squared length leaves the range of normal doubles and a direction has no digits.
constexpr double shortestLength = 1e-150;

void check(const std::vector<std::vector<double>>& points, Polyline& line) {
    double magnitude = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (points[i].size() != line.dimension)
            throw std::invalid_argument("Point " + std::to_string(i) + " has " +
                                        std::to_string(points[i].size()) + " entries, but point 0 has " +
                                        std::to_string(line.dimension) + ".");
        for (const double value : points[i]) {
            if (!std::isfinite(value))
                throw std::invalid_argument("Point " + std::to_string(i) +
                                            " has an entry that is not finite.");
            magnitude = std::max(magnitude, std::abs(value));
        }
    }
    line.magnitude = magnitude;
}

/// Builds a polyline in arrays that are large enough from the start.
class Builder {
  public:
    Builder(Polyline& line, std::size_t most) : m_line(line) {
        line.points.assign(most * line.stride, 0.0);
        line.directions.assign(most * line.stride, 0.0);
        line.lengths.assign(most, 0.0);
    }

    void append(const std::vector<double>& point) {
        std::copy(point.begin(), point.end(), m_line.points.begin() + offset(m_line.count));
        ++m_line.count;
    }

    void removeLast() { --m_line.count; }

    /// Between the last two points.
    double gap() const {
        return distance(m_line.point(m_line.count - 2), m_line.point(m_line.count - 1), m_line.stride);
    }

    /// Fills the segment between the last two points.
    void closeSegment(double length) {
        const double* from = m_line.point(m_line.count - 2);
        const double* to = m_line.point(m_line.count - 1);
        double* direction = m_line.directions.data() + (m_line.count - 2) * m_line.stride;
        const Pair scale(1.0 / length);
        for (std::size_t k = 0; k < m_line.stride; k += 2)
            ((Pair(to + k) - Pair(from + k)) * scale).store(direction + k);
        m_line.lengths[m_line.count - 2] = length;
    }

    void finish() {
        m_line.points.resize(m_line.count * m_line.stride);
        m_line.directions.resize((m_line.count - 1) * m_line.stride);
        m_line.lengths.resize(m_line.count - 1);
    }

  private:
    std::ptrdiff_t offset(std::size_t row) const { return static_cast<std::ptrdiff_t>(row * m_line.stride); }

    Polyline& m_line;
};

/// The last point stays: the kept point that it coincides with gives way, and so does any before that
/// which it then coincides with. On the first point alone the two stay apart when they differ at all.
void keepLast(Polyline& line, Builder& builder, const std::vector<double>& last, double near) {
    builder.append(last);
    double gap = builder.gap();
    while (line.count > 2 && gap <= near) {
        line.dropped += gap;
        builder.removeLast();
        builder.removeLast();
        builder.append(last);
        gap = builder.gap();
    }
    if (gap > 0.0)
        builder.closeSegment(gap);
    else
        builder.removeLast();
}

}  // namespace

Polyline readPolyline(const std::vector<std::vector<double>>& points, double overlap) {
    Polyline line;
    if (points.empty())
        return line;
    line.dimension = points.front().size();
    line.stride = std::max<std::size_t>(2, (line.dimension + 1) / 2 * 2);
    check(points, line);
    const double near = std::max({overlap, roundingShare * line.magnitude, shortestLength});
    Builder builder(line, points.size());
    builder.append(points.front());
    bool lastKept = true;
    for (std::size_t i = 1; i < points.size(); ++i) {
        builder.append(points[i]);
        const double length = builder.gap();
        if (!std::isfinite(length))
            throw std::invalid_argument("Point " + std::to_string(i) +
                                        " is too far from the point before it.");
        lastKept = length > near;
        if (lastKept) {
            builder.closeSegment(length);
        } else {
            builder.removeLast();
            line.dropped = std::max(line.dropped, length);
        }
    }
    if (!lastKept)
        keepLast(line, builder, points.back(), near);
    builder.finish();
    return line;
}

}  // namespace TA

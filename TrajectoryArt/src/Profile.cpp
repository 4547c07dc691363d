#include "Profile.h"

#include "BezierBlend.h"
#include "CircleBlend.h"
#include "Pair.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace TA {
namespace {

/// What one straight line allows.
struct LineLimit {
    double acceleration;
    double squaredSpeed;
};

std::vector<LineLimit> lineLimits(const Path& path, const PlanOptions& options) {
    const Polyline& line = path.polyline();
    std::vector<double> inverse(line.stride, 0.0);
    for (std::size_t k = 0; k < options.axisAccelerations.size(); ++k)
        inverse[k] = 1.0 / options.axisAccelerations[k];
    std::vector<double> inverseSpeed(line.stride, 0.0);
    for (std::size_t k = 0; k < options.axisSpeeds.size(); ++k)
        inverseSpeed[k] = options.speed / options.axisSpeeds[k];
    std::vector<LineLimit> limits(path.lineCount());
    for (std::size_t i = 0; i < limits.size(); ++i) {
        const double* direction = line.direction(i);
        Pair load(0.0);
        Pair slower(1.0);
        for (std::size_t k = 0; k < line.stride; k += 2) {
            const Pair size = Pair(direction + k).magnitude();
            load = larger(load, size * Pair(&inverse[k]));
            slower = larger(slower, size * Pair(&inverseSpeed[k]));
        }
        const double speed = options.speed / slower.largest();
        limits[i].acceleration =
            path.shape() == BlendShape::Circle ? options.totalAcceleration : 1.0 / load.largest();
        limits[i].squaredSpeed = speed * speed;
    }
    return limits;
}

/// Appends phases in order of time.
class PhaseWriter {
  public:
    explicit PhaseWriter(std::size_t most) { m_profile.phases.reserve(most); }

    /// From speed v0 to v1 on `length` of a piece. Nothing is written for no length; a phase that goes on
    /// as the one before did becomes part of it.
    void add(std::size_t piece, bool blend, double s, double length, double v0, double v1) {
        if (!(length > 0.0))
            return;
        const auto number = static_cast<std::uint32_t>(piece);
        const double duration = 2.0 * length / (v0 + v1);
        if (v0 != v1 || !cruises(number, blend, v0)) {
            const double halfAcceleration = 0.5 * (v1 - v0) / duration;
            m_profile.phases.push_back({m_profile.duration_s, s, v0, halfAcceleration, number, blend});
        }
        m_profile.duration_s += duration;
    }

    Profile take() { return std::move(m_profile); }

  private:
    bool cruises(std::uint32_t piece, bool blend, double v) const {
        if (m_profile.phases.empty())
            return false;
        const Phase& last = m_profile.phases.back();
        return last.piece == piece && last.blend == blend && last.speed == v && last.halfAcceleration == 0.0;
    }

    Profile m_profile;
};

/// x = (ds/dt)^2 at every node of the path: the two ends, and the m + 1 nodes of each corner (one where
/// there is no blend).
///
///   line           x <= K_next + 2 A length                            (closed form, both passes)
///   blend          (x, K_next) keeps the limits of the interval         (Blend::entry and exit)
///
/// Invariants. Backward: from every x in [0, K] at a node the rest of the path can be passed and its end
/// reached at rest. Forward: x <= K at every node, so a successor exists; the largest is taken. Both
/// passes take constant time per node. The values K are a stack: the backward pass puts the nodes of
/// each corner on top, last corner first, and the forward pass takes them off again.
template <class Blend>
class Planner {
  public:
    Planner(const Path& path, const PlanOptions& options)
        : m_path(path),
          m_blend(path, options),
          m_limits(lineLimits(path, options)),
          m_intervals(path.lineCount()) {
        m_reach.reserve(4 * m_intervals.size());
    }

    Profile plan() {
        m_reach.push_back(0.0);
        for (std::size_t i = m_path.lineCount(); i-- > 0;)
            leaveCorner(i);
        PhaseWriter writer(m_reach.size() + 2 * m_path.lineCount());
        double x = 0.0;
        for (std::size_t i = 0; i < m_path.lineCount(); ++i) {
            x = passCorner(i, x, writer);
            x = passLine(i, x, writer);
        }
        return writer.take();
    }

  private:
    /// Backward over line i and the corner before it.
    void leaveCorner(std::size_t i) {
        const Corner& corner = m_path.corners()[i];
        if (corner.kind == CornerKind::Stop) {
            m_reach.push_back(0.0);
            return;
        }
        const double gain = 2.0 * m_limits[i].acceleration * m_path.lineLength(i);
        const double afterLine = std::min(m_limits[i].squaredSpeed, m_reach.back() + gain);
        if (corner.kind == CornerKind::Through)
            m_reach.push_back(std::min(afterLine, m_limits[i - 1].squaredSpeed));
        else
            leaveBlend(i, afterLine);
    }

    void leaveBlend(std::size_t i, double afterLine) {
        m_blend.load(i);
        const unsigned intervals = m_blend.neededIntervals();
        m_intervals[i] = static_cast<std::uint8_t>(intervals);
        m_blend.setIntervals(intervals);
        std::array<double, BlendGrid::mostIntervals + 1> reach;
        m_blend.speedCaps(reach.data());
        reach[intervals] = std::min(reach[intervals], afterLine);
        m_reach.push_back(reach[intervals]);
        for (unsigned j = intervals; j-- > 0;) {
            reach[j] = m_blend.entry(j, reach[j], reach[j + 1]);
            m_reach.push_back(reach[j]);
        }
    }

    /// Forward over the corner at point i: its first node goes, and with a blend all but its last.
    double passCorner(std::size_t i, double x, PhaseWriter& writer) {
        m_reach.pop_back();
        const unsigned intervals = m_intervals[i];
        if (intervals == 0)
            return x;
        m_blend.load(i);
        m_blend.setIntervals(intervals);
        double v = std::sqrt(x);
        for (unsigned j = 0; j < intervals; ++j) {
            x = m_blend.exit(j, x, m_reach.back());
            m_reach.pop_back();
            const double next = std::sqrt(x);
            writer.add(i, true, m_blend.place(j), m_blend.place(j + 1) - m_blend.place(j), v, next);
            v = next;
        }
        return x;
    }

    /// Forward over line i: accelerate, cruise, brake.
    double passLine(std::size_t i, double x, PhaseWriter& writer) {
        const double length = m_path.lineLength(i);
        const auto [acceleration, squaredSpeed] = m_limits[i];
        const double gain = 2.0 * acceleration * length;
        const double y = std::min(m_reach.back(), x + gain);
        const double peak = std::max({x, y, std::min(squaredSpeed, 0.5 * (x + y + gain))});
        const double rise = std::min(length, 0.5 * (peak - x) / acceleration);
        const double fall = std::min(length - rise, 0.5 * (peak - y) / acceleration);
        const double v0 = std::sqrt(x);
        const double v1 = std::sqrt(peak);
        const double start = m_path.corners()[i].cut;
        writer.add(i, false, start, rise, v0, v1);
        writer.add(i, false, start + rise, length - rise - fall, v1, v1);
        writer.add(i, false, start + length - fall, fall, v1, std::sqrt(y));
        return y;
    }

    const Path& m_path;
    Blend m_blend;
    std::vector<LineLimit> m_limits;
    std::vector<std::uint8_t> m_intervals;  ///< of the blend at each point, 0 where there is none
    std::vector<double> m_reach;            ///< K of the nodes that are still ahead, the next one on top
};

template <class Blend>
Profile planWith(const Path& path, const PlanOptions& options) {
    return Planner<Blend>(path, options).plan();
}

/// A path from rest to rest with accelerations of at most A cannot become faster than sqrt(2 A length).
/// So this bound limits nothing, and keeps a limit meant as "none" (1e300) out of the arithmetic.
double reachableSpeed(const Path& path, double totalAcceleration) {
    double length = 0.0;
    for (const double part : path.polyline().lengths)
        length += part;
    return std::sqrt(2.0 * totalAcceleration) * std::sqrt(length);
}

Profile planShape(const Path& path, const PlanOptions& options) {
    if (options.shape == BlendShape::Circle)
        return planWith<CircleBlend>(path, options);
    switch (path.polyline().stride) {
        case 2:
            return planWith<BezierBlend<2>>(path, options);
        case 4:
            return planWith<BezierBlend<4>>(path, options);
        case 6:
            return planWith<BezierBlend<6>>(path, options);
        case 8:
            return planWith<BezierBlend<8>>(path, options);
        default:
            return planWith<BezierBlend<0>>(path, options);
    }
}

}  // namespace

Profile planProfile(const Path& path, const PlanOptions& options) {
    if (path.polyline().count > std::numeric_limits<std::uint32_t>::max())
        throw std::invalid_argument("There are more points than this library can number.");
    PlanOptions reachable = options;
    reachable.speed = std::min(options.speed, reachableSpeed(path, options.totalAcceleration));
    Profile profile = planShape(path, reachable);
    if (!std::isfinite(profile.duration_s))
        throw std::invalid_argument("The points, \"speed\" and the acceleration are too far apart in size.");
    return profile;
}

}  // namespace TA

#include "CircleBlend.h"

#include <algorithm>
#include <cmath>

#include "BlendGrid.h"

namespace TA {
namespace {

/// Below this turn, in radians, one interval serves.
constexpr double gentleTurn = 0.06;

}  // namespace

CircleBlend::CircleBlend(const Path& path, const PlanOptions& options)
    : m_path(path),
      m_squaredSpeed(options.speed * options.speed),
      m_acceleration(options.totalAcceleration),
      m_refinement(refinement(path.lineCount())) {}

void CircleBlend::load(std::size_t corner) {
    m_turn = m_path.corners()[corner].turn;
    m_arc = &m_path.arcs()[corner];
    m_topSpeed = m_acceleration * (m_arc->length / m_arc->angle);
}

/// At the speed that an arc bears nothing changes along it; only speeding up and braking need a grid.
unsigned CircleBlend::neededIntervals() const {
    return m_refinement * (m_turn < gentleTurn ? 1 : 2);
}

void CircleBlend::setIntervals(unsigned intervals) {
    m_intervals = intervals;
    m_intervalAngle = m_arc->angle / intervals;
}

void CircleBlend::speedCaps(double* caps) const {
    std::fill(caps, caps + m_intervals + 1, std::min(m_squaredSpeed, m_topSpeed));
}

double CircleBlend::fasterEnd(double slower) const {
    const double x = std::min(1.0, slower / m_topSpeed);
    const double q = 2.0 * m_intervalAngle;
    const double u = (std::sqrt(1.0 + q * q - x * x) - q * x) / (1.0 + q * q);
    return slower + m_topSpeed * q * u;
}

double CircleBlend::entry(unsigned, double cap, double next) const {
    return std::min(cap, fasterEnd(next));
}

double CircleBlend::exit(unsigned, double x, double next) const {
    return std::min(next, fasterEnd(x));
}

}  // namespace TA

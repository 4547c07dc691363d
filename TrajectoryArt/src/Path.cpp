#include "Path.h"

#include "Pair.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TA {
namespace {

/// A turn within a millionth of a radian of a reversal is one: the blend of such a corner would be a
/// needle that no machine follows, and rounding of the points alone gives angles of this size.
constexpr double reversalOpening = 1e-6;

/// A turn of this size is rounding; passing it unblended changes the velocity by that share.
constexpr double straightTurn = 1e-12;

Arc arcOf(const Corner& corner) {
    Arc arc;
    arc.angle = 2.0 * std::atan2(corner.turn, corner.opening);
    arc.length = corner.cut * corner.opening / corner.turn * arc.angle;
    arc.sine = std::sin(arc.angle);
    arc.cosine = std::cos(arc.angle);
    return arc;
}

}  // namespace

Path::Path(Polyline polyline, BlendShape shape, double tolerance)
    : m_line(std::move(polyline)), m_shape(shape) {
    m_corners.resize(m_line.count);
    if (shape == BlendShape::Circle)
        m_arcs.resize(m_line.count);
    for (std::size_t i = 1; i + 1 < m_line.count; ++i) {
        m_corners[i] = round(i, tolerance);
        if (shape == BlendShape::Circle && m_corners[i].kind == CornerKind::Blend)
            m_arcs[i] = arcOf(m_corners[i]);
    }
}

Corner Path::round(std::size_t i, double tolerance) const {
    Corner corner;
    const double* before = m_line.direction(i - 1);
    const double* after = m_line.direction(i);
    Pair turn(0.0);
    Pair opening(0.0);
    for (std::size_t k = 0; k < m_line.stride; k += 2) {
        const Pair difference = Pair(after + k) - Pair(before + k);
        const Pair sum = Pair(after + k) + Pair(before + k);
        turn = turn + difference * difference;
        opening = opening + sum * sum;
    }
    corner.turn = std::sqrt(turn.sum());
    corner.opening = std::sqrt(opening.sum());
    if (corner.turn <= straightTurn) {
        corner.kind = CornerKind::Through;
        return corner;
    }
    const double room = tolerance - std::max(m_line.sagOf(i - 1), m_line.sagOf(i));
    if (corner.opening <= reversalOpening || room <= 0.0)
        return corner;
    const double half = 0.5 * std::min(m_line.lengths[i - 1], m_line.lengths[i]);
    corner.kind = CornerKind::Blend;
    if (m_shape == BlendShape::Bezier) {
        corner.cut = std::min(4.0 * room / corner.turn, half);
        corner.gain = 1.0 / (4.0 * corner.cut);
    } else {
        // tan(h/4) = sin(h/2) / (1 + cos(h/2))
        corner.cut = std::min(room * (2.0 + corner.opening) / corner.turn, half);
        corner.gain = 4.0 * corner.cut / (corner.turn * corner.turn);
    }
    return corner;
}

double Path::lineLength(std::size_t i) const {
    return std::max(0.0, m_line.lengths[i] - m_corners[i].cut - m_corners[i + 1].cut);
}

BlendShare Path::shareOnArc(const Corner& blend, const Arc& arc, double s) {
    const double half = 0.5 * arc.angle * (s / arc.length);
    const double sine = std::sin(half);
    const double cosine = std::cos(half);
    return {blend.gain * sine * (arc.sine * cosine - arc.cosine * sine) - blend.cut,
            blend.gain * sine * sine};
}

}  // namespace TA

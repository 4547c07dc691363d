#pragma once

#include "PlanOptions.h"
#include "Polyline.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TA {

/// What happens at an inner point of the polyline.
enum class CornerKind : std::uint8_t {
    Stop,     ///< a reversal, or no tolerance: the path rests on the programmed point
    Through,  ///< no turn at all
    Blend     ///< rounded
};

/// One rounded corner. With t1, t2 the unit directions before and after, and h the angle between:
///
///      P --- d ---> t2        turn = |t2 - t1| = 2 sin(h/2),  opening = |t1 + t2| = 2 cos(h/2)
///      |  .'                  a blend starts at P - d t1 and ends at P + d t2
///      d :
///      |.'   <- blend         Bezier: in its native parameter s in [0, 2d], deviation d turn/4:
///      ^                        q = P - d t1 + t1 s + (t2 - t1) s^2/(4d),   |q'| = 1 at both ends
///      t1                     circle: radius d/tan(h/2), deviation d tan(h/4), s its arc length
///
/// Either way the position is P + alpha(s) t1 + beta(s) t2, so a blend needs no vectors of its own.
struct Corner {
    CornerKind kind = CornerKind::Stop;
    double cut = 0.0;  ///< d
    double turn = 0.0;
    double opening = 0.0;
    double gain = 0.0;  ///< Bezier: 1/(4d); circle: d/sin^2(h/2)
};

/// What a circular blend has besides.
struct Arc {
    double angle = 0.0;   ///< h
    double length = 0.0;  ///< radius times h
    double sine = 0.0;    ///< sin h
    double cosine = 0.0;  ///< cos h
};

/// Where a blend is: the corner's point + before t1 + after t2.
struct BlendShare {
    double before;
    double after;
};

/// A polyline with rounded corners. Line i runs from point i to i + 1 and shares its parameter
/// s in [0, length] with the segment: blends take their cuts off both ends.
class Path {
  public:
    /// Rounds the corners of a polyline so that the path stays within `tolerance` of it.
    Path(Polyline polyline, BlendShape shape, double tolerance);

    const Polyline& polyline() const { return m_line; }
    BlendShape shape() const { return m_shape; }
    std::size_t lineCount() const { return m_line.count - 1; }
    /// One per point; first and last are stops.
    const std::vector<Corner>& corners() const { return m_corners; }
    /// One per point for circular blends, otherwise none.
    const std::vector<Arc>& arcs() const { return m_arcs; }

    /// What the blends leave of line i.
    double lineLength(std::size_t i) const;

    /// Writes `dimension` numbers.
    void positionOnLine(std::size_t i, double s, double* position) const {
        const double* from = m_line.point(i);
        const double* direction = m_line.direction(i);
        for (std::size_t k = 0; k < m_line.dimension; ++k)
            position[k] = from[k] + s * direction[k];
    }

    void positionOnBlend(std::size_t corner, double s, double* position) const {
        const Corner& blend = m_corners[corner];
        const BlendShare share =
            m_shape == BlendShape::Bezier ? shareOnBezier(blend, s) : shareOnArc(blend, m_arcs[corner], s);
        const double* point = m_line.point(corner);
        const double* before = m_line.direction(corner - 1);
        const double* after = m_line.direction(corner);
        for (std::size_t k = 0; k < m_line.dimension; ++k)
            position[k] = point[k] + share.before * before[k] + share.after * after[k];
    }

  private:
    Corner round(std::size_t i, double tolerance) const;

    static BlendShare shareOnBezier(const Corner& blend, double s) {
        const double after = s * s * blend.gain;
        return {s - blend.cut - after, after};
    }

    /// With phi = s/radius: after = gain sin^2(phi/2), before = gain sin(phi/2) sin(h - phi/2) - d.
    /// Nothing here becomes singular, for gentle turns nor near a reversal.
    static BlendShare shareOnArc(const Corner& blend, const Arc& arc, double s);

    Polyline m_line;
    BlendShape m_shape;
    std::vector<Corner> m_corners;
    std::vector<Arc> m_arcs;
};

}  // namespace TA

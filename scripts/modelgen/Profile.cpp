#include "Profile.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace modelgen {

double signedArea(const Outline& outline) {
    double twice = 0.0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        twice += cross(outline[i], outline[(i + 1) % outline.size()]);
    }
    return twice / 2.0;
}

Outline reversed(const Outline& outline) {
    return {outline.rbegin(), outline.rend()};
}

Outline moved(const Outline& outline, double x, double y) {
    Outline result = outline;
    for (Vec2& p : result) {
        p = p + Vec2{x, y};
    }
    return result;
}

Outline mirroredX(const Outline& outline) {
    Outline result = reversed(outline);
    for (Vec2& p : result) {
        p.x = -p.x;
    }
    return result;
}

Outline circle(Vec2 centre, double radius, int segments) {
    Outline result;
    for (int i = 0; i < segments; ++i) {
        const double angle = radians(360.0 * i / segments);
        result.push_back(centre + Vec2{radius * std::cos(angle), radius * std::sin(angle)});
    }
    return result;
}

Outline rectangle(double x0, double y0, double x1, double y1) {
    return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

Outline chamfered(const Outline& outline, double size) {
    return rounded(outline, size, 1);
}

Outline rounded(const Outline& outline, double size, int segments) {
    Outline result;
    const std::size_t n = outline.size();
    for (std::size_t i = 0; i < n; ++i) {
        const Vec2 corner = outline[i];
        const Vec2 a = corner + unit(outline[(i + n - 1) % n] - corner) * size;
        const Vec2 b = corner + unit(outline[(i + 1) % n] - corner) * size;
        // A quadratic Bezier between the two tangent points comes within a few percent of the arc.
        for (int k = 0; k <= segments; ++k) {
            const double t = static_cast<double>(k) / segments;
            result.push_back(a * ((1 - t) * (1 - t)) + corner * (2 * t * (1 - t)) + b * (t * t));
        }
    }
    return result;
}

Outline roundedRectangle(double x0, double y0, double x1, double y1, double radius, int segments) {
    return rounded(rectangle(x0, y0, x1, y1), radius, segments);
}

Outline inset(const Outline& outline, double distance) {
    Outline result;
    const std::size_t n = outline.size();
    for (std::size_t i = 0; i < n; ++i) {
        const Vec2 before = unit(outline[i] - outline[(i + n - 1) % n]);
        const Vec2 after = unit(outline[(i + 1) % n] - outline[i]);
        const Vec2 leftBefore{-before.y, before.x};
        const Vec2 leftAfter{-after.y, after.x};
        // Mitre: the point at `distance` from both edges, p = distance (n1 + n2) / (1 + n1.n2).
        const double scale = distance / (1.0 + dot(leftBefore, leftAfter));
        result.push_back(outline[i] + (leftBefore + leftAfter) * scale);
    }
    return result;
}

namespace {

struct Joined {
    std::vector<Vec2> points;         ///< all points of the area
    std::vector<std::uint32_t> loop;  ///< one closed walk over them, bridges walked twice
};

bool insideTriangle(Vec2 p, Vec2 a, Vec2 b, Vec2 c) {
    return cross(b - a, p - a) >= -1e-12 && cross(c - b, p - b) >= -1e-12 && cross(a - c, p - c) >= -1e-12;
}

bool samePlace(Vec2 a, Vec2 b) {
    return std::abs(a.x - b.x) < 1e-9 && std::abs(a.y - b.y) < 1e-9;
}

bool segmentsMeet(Vec2 a, Vec2 b, Vec2 c, Vec2 d) {
    const double d1 = cross(b - a, c - a);
    const double d2 = cross(b - a, d - a);
    const double d3 = cross(d - c, a - c);
    const double d4 = cross(d - c, b - c);
    return d1 * d2 <= 0.0 && d3 * d4 <= 0.0;
}

/// True when the way from point p to point q crosses no edge that does not end in one of the two.
bool seesAll(const std::vector<Vec2>& points, const std::vector<std::vector<std::uint32_t>>& loops, Vec2 p,
             Vec2 q) {
    for (const auto& loop : loops) {
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const Vec2 a = points[loop[i]];
            const Vec2 b = points[loop[(i + 1) % loop.size()]];
            const bool shared = samePlace(a, p) || samePlace(b, p) || samePlace(a, q) || samePlace(b, q);
            if (!shared && segmentsMeet(p, q, a, b)) {
                return false;
            }
        }
    }
    return true;
}

/// Cuts the loop open at the nearest visible corner and walks round the hole from there.
void bridge(Joined& joined, const std::vector<std::vector<std::uint32_t>>& open,
            const std::vector<std::uint32_t>& hole) {
    double best = std::numeric_limits<double>::max();
    std::size_t outerPlace = 0;
    std::size_t holePlace = 0;
    std::vector<std::vector<std::uint32_t>> loops = open;
    loops.push_back(joined.loop);
    for (std::size_t h = 0; h < hole.size(); ++h) {
        for (std::size_t i = 0; i < joined.loop.size(); ++i) {
            const Vec2 p = joined.points[hole[h]];
            const Vec2 q = joined.points[joined.loop[i]];
            const double distance = length(q - p);
            if (distance < best && seesAll(joined.points, loops, p, q)) {
                best = distance;
                outerPlace = i;
                holePlace = h;
            }
        }
    }
    if (best == std::numeric_limits<double>::max()) {
        throw std::logic_error("a hole of an area cannot be reached from its outline");
    }
    std::vector<std::uint32_t> walk;
    walk.insert(walk.end(), joined.loop.begin(),
                joined.loop.begin() + static_cast<std::ptrdiff_t>(outerPlace) + 1);
    for (std::size_t k = 0; k <= hole.size(); ++k) {
        walk.push_back(hole[(holePlace + k) % hole.size()]);
    }
    walk.insert(walk.end(), joined.loop.begin() + static_cast<std::ptrdiff_t>(outerPlace), joined.loop.end());
    joined.loop = walk;
}

Joined join(const Area& area) {
    Joined joined;
    const auto number = [&joined](const Outline& outline) {
        std::vector<std::uint32_t> loop;
        for (const Vec2& p : outline) {
            loop.push_back(static_cast<std::uint32_t>(joined.points.size()));
            joined.points.push_back(p);
        }
        return loop;
    };
    joined.loop = number(area.outer);
    std::vector<std::vector<std::uint32_t>> holes;
    for (const Outline& hole : area.holes) {
        std::vector<std::uint32_t> loop = number(hole);
        std::ranges::reverse(loop);
        holes.push_back(loop);
    }
    while (!holes.empty()) {
        const std::vector<std::uint32_t> hole = holes.back();
        bridge(joined, holes, hole);
        holes.pop_back();
    }
    return joined;
}

/// True when corner i of the loop can be cut off: convex, and no other corner lies in the triangle.
bool isEar(const Joined& joined, const std::vector<std::uint32_t>& loop, std::size_t i) {
    const std::size_t n = loop.size();
    const Vec2 a = joined.points[loop[(i + n - 1) % n]];
    const Vec2 b = joined.points[loop[i]];
    const Vec2 c = joined.points[loop[(i + 1) % n]];
    if (cross(b - a, c - b) <= 1e-9) {
        return false;
    }
    return std::ranges::none_of(loop, [&](std::uint32_t id) {
        const Vec2 p = joined.points[id];
        return !samePlace(p, a) && !samePlace(p, b) && !samePlace(p, c) && insideTriangle(p, a, b, c);
    });
}

}  // namespace

std::vector<Triangle> triangulate(const Area& area) {
    const Joined joined = join(area);
    std::vector<std::uint32_t> loop = joined.loop;
    std::vector<Triangle> result;
    std::size_t start = 0;
    while (loop.size() > 3) {
        const std::size_t n = loop.size();
        std::size_t k = 0;
        while (k < n && !isEar(joined, loop, (start + k) % n)) {
            ++k;
        }
        if (k == n) {
            throw std::logic_error("an outline crosses itself");
        }
        const std::size_t i = (start + k) % n;
        result.push_back({loop[(i + n - 1) % n], loop[i], loop[(i + 1) % n]});
        loop.erase(loop.begin() + static_cast<std::ptrdiff_t>(i));
        start = i;
    }
    result.push_back({loop[0], loop[1], loop[2]});
    return result;
}

}  // namespace modelgen

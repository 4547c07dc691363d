#include "Reference.h"

#include <algorithm>
#include <cmath>

namespace reference {
namespace {

Vector combine(double a, const Vector& x, double b, const Vector& y) {
    Vector result(x.size());
    for (std::size_t k = 0; k < x.size(); ++k)
        result[k] = a * x[k] + b * y[k];
    return result;
}

double dot(const Vector& x, const Vector& y) {
    double sum = 0.0;
    for (std::size_t k = 0; k < x.size(); ++k)
        sum += x[k] * y[k];
    return sum;
}

double length(const Vector& x) {
    return std::sqrt(dot(x, x));
}

/// One node: first and second derivative by the parameter, the step to the next node.
struct Node {
    Vector first;
    Vector second;
    double step;
    bool rest;
};

void addLine(std::vector<Node>& nodes, const Vector& direction, double size, int count) {
    for (int i = 0; i < count && size > 0.0; ++i)
        nodes.push_back({direction, Vector(direction.size(), 0.0), size / count, false});
}

void addBezier(std::vector<Node>& nodes, const Vector& before, const Vector& after, double cut, int count) {
    const Vector second = combine(0.5 / cut, after, -0.5 / cut, before);
    for (int i = 0; i < count; ++i) {
        const double w = static_cast<double>(i) / count;
        nodes.push_back({combine(1.0 - w, before, w, after), second, 2.0 * cut / count, false});
    }
}

void addArc(std::vector<Node>& nodes, const Vector& before, const Vector& after, double cut, double angle,
            int count) {
    const double radius = cut / std::tan(0.5 * angle);
    const Vector side = combine(1.0 / std::sin(angle), after, -std::cos(angle) / std::sin(angle), before);
    for (int i = 0; i < count; ++i) {
        const double phi = angle * i / count;
        nodes.push_back({combine(std::cos(phi), before, std::sin(phi), side),
                         combine(-std::sin(phi) / radius, before, std::cos(phi) / radius, side),
                         radius * angle / count, false});
    }
}

std::vector<Node> buildNodes(const std::vector<Vector>& points, const Limits& limits, int count) {
    std::vector<Vector> directions;
    std::vector<double> lengths;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const Vector difference = combine(1.0, points[i + 1], -1.0, points[i]);
        lengths.push_back(length(difference));
        directions.push_back(combine(1.0 / lengths[i], difference, 0.0, difference));
    }
    std::vector<Node> nodes;
    double cutBefore = 0.0;
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        double cut = 0.0;
        double angle = 0.0;
        if (i + 1 < lengths.size()) {
            angle = 2.0 * std::atan2(length(combine(1.0, directions[i + 1], -1.0, directions[i])),
                                     length(combine(1.0, directions[i + 1], 1.0, directions[i])));
            const double sine = std::sin(0.5 * angle);
            const double wanted =
                limits.circle ? limits.tolerance / std::tan(0.25 * angle) : 2.0 * limits.tolerance / sine;
            cut = std::min({wanted, 0.5 * lengths[i], 0.5 * lengths[i + 1]});
            if (angle > 3.1415926 || angle < 1e-12)
                cut = 0.0;
        }
        addLine(nodes, directions[i], lengths[i] - cutBefore - cut, count);
        if (cut > 0.0 && limits.circle)
            addArc(nodes, directions[i], directions[i + 1], cut, angle, count);
        else if (cut > 0.0)
            addBezier(nodes, directions[i], directions[i + 1], cut, count);
        else if (i + 1 < lengths.size() && angle > 3.1)
            nodes.push_back({directions[i], directions[i], 0.0, true});
        cutBefore = cut;
    }
    return nodes;
}

struct Range {
    double low;
    double high;
};

/// The accelerations of the parameter that a node allows at x = (ds/dt)^2.
Range accelerations(const Node& node, const Limits& limits, double x) {
    if (limits.circle) {
        const double rest = limits.acceleration * limits.acceleration - x * x * dot(node.second, node.second);
        return rest < 0.0 ? Range{1.0, -1.0} : Range{-std::sqrt(rest), std::sqrt(rest)};
    }
    Range range{-1e300, 1e300};
    for (std::size_t k = 0; k < node.first.size(); ++k) {
        const double p = node.first[k];
        const double bent = node.second[k] * x;
        const double a = limits.axisAccelerations[k];
        if (std::abs(p) < 1e-12) {
            if (std::abs(bent) > a * (1.0 + 1e-9))
                return {1.0, -1.0};
            continue;
        }
        range.low = std::max(range.low, std::min((-a - bent) / p, (a - bent) / p));
        range.high = std::min(range.high, std::max((-a - bent) / p, (a - bent) / p));
    }
    return range;
}

double speedCap(const Node& node, const Limits& limits) {
    double cap = limits.speed * limits.speed / dot(node.first, node.first);
    for (std::size_t k = 0; k < limits.axisSpeeds.size(); ++k)
        cap = std::min(cap, std::pow(limits.axisSpeeds[k] / std::max(1e-12, std::abs(node.first[k])), 2.0));
    return cap;
}

bool canContinue(const Node& node, const Limits& limits, double x, double next) {
    const Range range = accelerations(node, limits, x);
    return std::max(range.low, -x / (2.0 * node.step)) <=
           std::min(range.high, (next - x) / (2.0 * node.step));
}

double largestStart(const Node& node, const Limits& limits, double next) {
    double good = 0.0;
    double bad = speedCap(node, limits);
    if (canContinue(node, limits, bad, next))
        return bad;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (good + bad);
        (canContinue(node, limits, middle, next) ? good : bad) = middle;
    }
    return good;
}

}  // namespace

double optimalDuration(const std::vector<Vector>& points, const Limits& limits, int nodes) {
    const std::vector<Node> grid = buildNodes(points, limits, nodes);
    std::vector<double> reach(grid.size() + 1, 0.0);
    for (std::size_t i = grid.size(); i-- > 1;)
        reach[i] = grid[i].rest ? 0.0 : largestStart(grid[i], limits, reach[i + 1]);
    double x = 0.0;
    double duration = 0.0;
    for (std::size_t i = 0; i < grid.size(); ++i) {
        if (grid[i].rest)
            continue;
        const double high = accelerations(grid[i], limits, x).high;
        const double next = std::clamp(x + 2.0 * grid[i].step * high, 0.0, reach[i + 1]);
        duration += 2.0 * grid[i].step / (std::sqrt(x) + std::sqrt(next));
        x = next;
    }
    return duration;
}

double distanceToSegment(const Vector& point, const Vector& from, const Vector& to) {
    double square = 0.0;
    double along = 0.0;
    for (std::size_t k = 0; k < point.size(); ++k) {
        square += (to[k] - from[k]) * (to[k] - from[k]);
        along += (to[k] - from[k]) * (point[k] - from[k]);
    }
    const double share = square > 0.0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
    double distance = 0.0;
    for (std::size_t k = 0; k < point.size(); ++k) {
        const double across = point[k] - from[k] - share * (to[k] - from[k]);
        distance += across * across;
    }
    return std::sqrt(distance);
}

}  // namespace reference

#include "nc/calc/PathSplit.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

bool isRapid(const WayPoint& point, double rapidFeed) {
    constexpr double kSameFeed = 0.1;  // mm per minute
    return std::abs(point.back() - rapidFeed) <= kSameFeed;
}

WayPoint atFeed(WayPoint point, double feed) {
    point.back() = feed;
    return point;
}

/// Copies the points from `begin` on up to and including the first that is not rapid.
template <typename Iterator>
WayPoints collect(Iterator begin, Iterator end, double rapidFeed) {
    Iterator last =
        std::find_if(begin, end, [&](const WayPoint& point) { return !isRapid(point, rapidFeed); });
    const bool seam = last != end;
    WayPoints list(begin, seam ? std::next(last) : last);
    if (seam)
        list.back().back() = rapidFeed;
    return list;
}

double turned(double angle_deg) {
    return angle_deg > 0.0 ? angle_deg - 360.0 : angle_deg + 360.0;
}

}  // namespace

WayPoints splitHead(WayPoints& path, double rapidFeed) {
    if (path.empty())
        return {};
    WayPoints head = collect(path.begin(), path.end(), rapidFeed);
    if (head.size() == path.size())
        return {atFeed(path.front(), rapidFeed)};
    path.erase(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(head.size()) - 1);
    return head;
}

WayPoints splitTail(WayPoints& path, double rapidFeed) {
    if (path.empty())
        return {};
    WayPoints tail = collect(path.rbegin(), path.rend(), rapidFeed);
    if (tail.size() == path.size())
        return {atFeed(path.back(), rapidFeed)};
    path.resize(path.size() - (tail.size() - 1));
    std::reverse(tail.begin(), tail.end());
    return tail;
}

void takeShorterFifth(WayPoints& path, double previousFifth_deg) {
    constexpr int kFifth = 4;
    if (path.empty())
        return;
    const double first = path.front()[kFifth];
    if (!(std::abs(previousFifth_deg - turned(first)) < std::abs(previousFifth_deg - first)))
        return;
    for (WayPoint& point : path)
        point[kFifth] = turned(point[kFifth]);
}

bool allFinite(const WayPoints& path) {
    return std::all_of(path.begin(), path.end(), [](const WayPoint& point) {
        return std::all_of(point.values.begin(), point.values.begin() + point.count,
                           [](double value) { return std::isfinite(value); });
    });
}

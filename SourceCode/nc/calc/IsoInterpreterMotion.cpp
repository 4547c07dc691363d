#include <cmath>
#include <limits>

#include "nc/calc/IsoInterpreter.h"

// Motion of the dialect: from the words of a line to way points.

namespace {

constexpr double kLargestFloat = std::numeric_limits<float>::max();

/// False when the value is beyond single precision.
bool toFloat(double value, float& result) {
    if (!(std::abs(value) <= kLargestFloat))
        return false;
    result = static_cast<float>(value);
    return true;
}

const char* reasonOf(ArcFault fault) {
    switch (fault) {
        case ArcFault::NoChord:
            return "an arc back to its own start cannot be made from a radius";
        case ArcFault::ChordTooLong:
            return "the chord of the arc is longer than twice its radius";
        case ArcFault::RadiusTooLarge:
            return "the radius of the arc is out of range";
        default:
            return "the arc has too many points";
    }
}

/// X, Y and Z of a way point in single precision; nothing when one is beyond it.
std::optional<SbVec3f> placeOf(const WayPoint& point) {
    SbVec3f place;
    for (int i = 0; i < 3; ++i) {
        if (!toFloat(point[i], place[i]))
            return std::nullopt;
    }
    return place;
}

bool isFinite(const SbVec3f& place) {
    return std::isfinite(place[0]) && std::isfinite(place[1]) && std::isfinite(place[2]);
}

ArcPoint inDouble(const SbVec3f& point) {
    return {point[0], point[1], point[2]};
}

}  // namespace

bool IsoInterpreter::move(const IsoLine& line, Diagnostics& diagnostics) {
    constexpr int kInclined = 16;
    constexpr int kWorkFrame = 17;
    if (modes.plane != kInclined && modes.plane != kWorkFrame)
        return true;
    if (modes.motion >= 2)
        return arc(line, diagnostics);
    return modes.plane == kWorkFrame ? lineInWorkFrame(line, diagnostics) : lineInPlane(line, diagnostics);
}

bool IsoInterpreter::lineInWorkFrame(const IsoLine& line, Diagnostics& diagnostics) {
    const bool incremental = modes.distance == 91;
    for (const AxisLetter& axis : axes_) {
        const std::optional<double> word = line.word(axis.letter);
        if (!word)
            continue;
        const double target = incremental ? working_[axis.index] + *word : *word;
        if (std::isfinite(target))
            working_[axis.index] = target;
    }
    working_.back() = motionFeed();
    return appendMove(working_, diagnostics);
}

bool IsoInterpreter::lineInPlane(const IsoLine& line, Diagnostics& diagnostics) {
    readPoint(line, modes.currentPoint);
    const std::optional<WayPoint> target = pointOfPlane(modes.currentPoint, motionFeed());
    if (!target)
        return refuse(diagnostics, "the place is out of range");
    working_ = *target;
    return appendMove(working_, diagnostics);
}

bool IsoInterpreter::followTool(Diagnostics& diagnostics) {
    const std::optional<SbVec3f> last = placeOf(points.back());
    SbVec3f place(0, 0, 0);
    if (last)
        modes.inclinedPlane.inverse().multVecMatrix(*last, place);
    if (!last || !isFinite(place))
        return refuse(diagnostics, "the tool's place in the inclined plane is out of range");
    modes.currentPoint = place;
    return true;
}

bool IsoInterpreter::readPoint(const IsoLine& line, SbVec3f& point) const {
    const bool incremental = modes.distance == 91;
    bool any = false;
    for (const AxisLetter& axis : axes_) {
        if (axis.index >= 3)
            continue;
        const std::optional<double> word = line.word(axis.letter);
        float value = 0.0F;
        if (!word || !toFloat(*word, value))
            continue;
        any = true;
        const float target = incremental ? point[axis.index] + value : value;
        if (std::isfinite(target))
            point[axis.index] = target;
    }
    return any;
}

std::optional<WayPoint> IsoInterpreter::pointOfPlane(const SbVec3f& place, double feed) const {
    SbVec3f mapped;
    modes.inclinedPlane.multVecMatrix(place, mapped);
    if (!isFinite(mapped))
        return std::nullopt;
    WayPoint point;
    for (int i = 0; i < 3; ++i)
        point.append(mapped[i]);
    point.append(modes.heldFourth);
    point.append(modes.heldFifth);
    if (auxiliaryValue)
        point.append(*auxiliaryValue);
    point.append(feed);
    return point;
}

bool IsoInterpreter::arc(const IsoLine& line, Diagnostics& diagnostics) {
    const bool inWorkFrame = modes.plane == 17;
    const std::optional<SbVec3f> start = arcStart();
    SbVec3f end = start.value_or(SbVec3f(0, 0, 0));
    if (!readPoint(line, end))
        return true;
    if (points.empty())
        return refuse(diagnostics, "the first motion of a program cannot be an arc");
    if (!start)
        return refuse(diagnostics, "the start of the arc is out of range");
    modes.currentPoint = *start;
    if (inWorkFrame)
        warnOfHeldRotaries(diagnostics);
    if (!appendArc(*start, end, line.word(u'R').value_or(0.0), diagnostics))
        return false;
    if (!inWorkFrame)
        modes.currentPoint = end;
    return true;
}

std::optional<SbVec3f> IsoInterpreter::arcStart() const {
    if (modes.plane != 17)
        return modes.currentPoint;
    if (points.empty())
        return std::nullopt;
    return placeOf(points.back());
}

bool IsoInterpreter::appendArc(const SbVec3f& start, const SbVec3f& end, double radius_mm,
                               Diagnostics& diagnostics) {
    const Arc arc{inDouble(start), inDouble(end), radius_mm, modes.motion == 2};
    const ArcFault fault = arcPoints(arc, kMostPointsOfLine, arcPoints_);
    if (fault != ArcFault::None)
        return refuse(diagnostics, reasonOf(fault));
    for (const ArcPoint& place : arcPoints_) {
        if (modes.plane == 17) {
            // Six entries, also when there is an auxiliary axis.
            working_ = WayPoint{
                {place[0], place[1], place[2], modes.heldFourth, modes.heldFifth, modes.feed_mmPerMin}, 6};
        } else {
            const SbVec3f inPlane(static_cast<float>(place[0]), static_cast<float>(place[1]),
                                  static_cast<float>(place[2]));
            const std::optional<WayPoint> point = pointOfPlane(inPlane, modes.feed_mmPerMin);
            if (!point)
                return refuse(diagnostics, "the place is out of range");
            working_ = *point;
        }
        if (!appendPoint(working_, diagnostics))
            return false;
    }
    return true;
}

void IsoInterpreter::warnOfHeldRotaries(Diagnostics& diagnostics) {
    constexpr int kMostWarnings = 100;  // one cause may show on every line of a program
    const WayPoint& last = points.back();
    if (last[3] == modes.heldFourth && last[4] == modes.heldFifth)
        return;
    if (++rotaryWarnings_ > kMostWarnings)
        return;
    diagnostics.add(Severity::Warning,
                    QStringLiteral("the arc turns axes 4 and 5 from %1 %2 to the held values %3 %4")
                        .arg(last[3])
                        .arg(last[4])
                        .arg(modes.heldFourth)
                        .arg(modes.heldFifth),
                    lineNumber_);
}

bool IsoInterpreter::appendMove(const WayPoint& target, Diagnostics& diagnostics) {
    const std::optional<double> steps =
        points.empty() ? std::nullopt : subdivisionSteps(points.back(), target, rotation);
    if (!steps)
        return appendPoint(target, diagnostics);
    if (!(*steps < static_cast<double>(kMostPointsOfLine)))
        return refuse(diagnostics, "the rotary swing has too many points");
    const WayPoint from = points.back();
    const auto count = static_cast<std::size_t>(*steps);
    for (std::size_t i = 0; i <= count; ++i) {
        const WayPoint point = subdivisionPoint(from, target, i, count, motionFeed());
        if (!appendPoint(point, diagnostics))
            return false;
    }
    return true;
}

bool IsoInterpreter::appendPoint(const WayPoint& point, Diagnostics& diagnostics) {
    if (!points.empty() && points.back() == point)
        return true;
    if (points.size() >= mostPoints)
        return refuse(diagnostics, "the program has too many points");
    points.push_back(point);
    return true;
}

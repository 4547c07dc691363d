#include "nc/calc/WayPointText.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/calc/NumberText.h"
#include "nc/calc/LineWriter.h"

namespace {

/// Reads the words of one line into a point that keeps its values from line to line. All letters are found
/// in one walk over the line: the run behind a letter holds no letter, so nothing is looked at twice.
class ModalReader {
  public:
    ModalReader(const AxisMap& letters, const AuxiliaryAxis* auxiliary) {
        entryOf_.fill(kNoEntry);
        const int room = WayPoint::kMaxEntries - (auxiliary != nullptr ? 1 : 0);
        for (auto it = letters.cbegin(); it != letters.cend() && point_.size() < room; ++it) {
            entryOf_[it.value().unicode() & kLetterMask] = static_cast<std::int8_t>(point_.size());
            point_.append(0.0);
        }
        if (auxiliary != nullptr) {
            auxiliaryEntry_ = point_.size();
            auxiliaryName_ = auxiliary->name;
            point_.append(0.0);
        }
    }

    void read(QStringView line) {
        std::uint32_t seen = 0;
        const char16_t* const text = line.utf16();
        for (qsizetype i = 0; i < line.size(); ++i) {
            const char16_t c = text[i];
            if (c < u'A' || c > u'Z' || entryOf_[c & kLetterMask] == kNoEntry)
                continue;
            const std::uint32_t bit = 1U << (c & kLetterMask);
            if ((seen & bit) != 0)
                continue;
            seen |= bit;
            i += take(line, i + 1, entryOf_[c & kLetterMask]);
        }
        if (auxiliaryEntry_ >= 0) {
            const qsizetype place = line.indexOf(auxiliaryName_);
            if (place >= 0)
                take(line, place + auxiliaryName_.size(), auxiliaryEntry_);
        }
    }

    [[nodiscard]] const WayPoint& point() const { return point_; }

  private:
    static constexpr std::int8_t kNoEntry = -1;
    static constexpr unsigned kLetterMask = 31;  ///< 'A'..'Z' are 1..26 in their low five bits

    /// A bad number counts as an absent word. Returns the length of the run.
    qsizetype take(QStringView line, qsizetype place, int entry) {
        const QStringView run = numberRun(line, place);
        if (const std::optional<double> value = numberFromRun(run))
            point_[entry] = *value;
        return run.size();
    }

    std::array<std::int8_t, 32> entryOf_{};
    WayPoint point_;
    QString auxiliaryName_;
    int auxiliaryEntry_ = -1;
};

using Direction = std::array<double, 3>;

Direction linearDifference(const WayPoint& from, const WayPoint& to) {
    Direction d{};
    for (int i = 0; i < std::min({3, from.size(), to.size()}); ++i)
        d[static_cast<std::size_t>(i)] = to[i] - from[i];
    return d;
}

double lengthOf(const Direction& d) {
    return std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
}

constexpr double kCornerLimit_rad = 0.2617993878;  // 15 degrees
constexpr double kNoLength_mm = 1e-8;

/// True when the path may keep its corner at b.
bool passesCorner(const WayPoint& a, const WayPoint& b, const WayPoint& c) {
    const Direction d1 = linearDifference(a, b);
    const Direction d2 = linearDifference(b, c);
    const double length1 = lengthOf(d1);
    const double length2 = lengthOf(d2);
    if (length1 < kNoLength_mm || length2 < kNoLength_mm)
        return true;
    const double dot = d1[0] * d2[0] + d1[1] * d2[1] + d1[2] * d2[2];
    return std::acos(std::clamp(dot / (length1 * length2), -1.0, 1.0)) <= kCornerLimit_rad;
}

WayPoint between(const WayPoint& from, const WayPoint& to, double fraction) {
    WayPoint point = from;
    for (int i = 0; i < std::min(from.size(), to.size()); ++i)
        point[i] = from[i] + (to[i] - from[i]) * fraction;
    return point;
}

/// How much of a segment a corner takes: a third of a short one, 10 mm of a long one.
double cutFraction(double length_mm) {
    constexpr double kLongSegment_mm = 30.0;
    constexpr double kLongCut_mm = 10.0;
    if (length_mm < kLongSegment_mm)
        return 1.0 / 3.0;
    return std::clamp(kLongCut_mm / length_mm, 0.0, 1.0);
}

/// Replaces the corner b, the last point of `path`, by six samples of the quadratic Bezier curve over
/// q1, b, q2 (repeated linear interpolation).
void roundCorner(WayPoints& path, const WayPoint& a, const WayPoint& b, const WayPoint& c) {
    constexpr int kSamples = 6;
    const WayPoint q1 = between(b, a, cutFraction(lengthOf(linearDifference(a, b))));
    const WayPoint q2 = between(b, c, cutFraction(lengthOf(linearDifference(b, c))));
    path.pop_back();
    for (int i = 0; i < kSamples; ++i) {
        const double u = i / (kSamples - 1.0);
        path.push_back(between(between(q1, b, u), between(b, q2, u), u));
    }
}

}  // namespace

WayPoints WayPointsFromCode(const MachineDescription& machine, const QString& chain, const QString& code,
                            const AuxiliaryAxis* auxiliary) {
    ModalReader reader(machine.axisMap(chain, false), auxiliary);
    const QStringView text(code);
    WayPoints points;
    points.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), u'\n')) + 1);
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = text.indexOf(u'\n', begin);
        if (end < 0)
            end = text.size();
        if (end > begin) {
            reader.read(text.mid(begin, end - begin));
            points.push_back(reader.point());
        }
        begin = end + 1;
    }
    return points;
}

QString FormatWayPoints(const WayPoints& points, const AxisMap& letters, double auxiliaryValue) {
    constexpr int kAuxiliaryId = 6;
    QVector<QChar> words;
    std::vector<int> entries;
    for (auto it = letters.cbegin(); it != letters.cend(); ++it) {
        if (it.key() < 1 || it.key() > kAuxiliaryId)
            continue;
        words.append(it.value());
        entries.push_back(it.key() - 1);
    }
    LineWriter writer(words);
    writer.reserveLines(points.size());
    std::array<double, WayPoint::kMaxEntries> values{};
    for (const WayPoint& point : points) {
        if (point.size() == 0)
            continue;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const bool stored = entries[i] < point.size() - 1;
            values[i] = stored ? point[entries[i]] : entries[i] == kAuxiliaryId - 1 ? auxiliaryValue : 0.0;
        }
        writer.appendWords(values.data());
        writer.appendFeed(point.back());
    }
    return writer.take();
}

double lastFeed(QStringView code) {
    for (qsizetype place = code.lastIndexOf(u'F'); place >= 0;
         place = place > 0 ? code.lastIndexOf(u'F', place - 1) : -1) {
        if (const std::optional<double> feed = numberFromRun(numberRun(code, place + 1)))
            return *feed;
    }
    return 0.0;
}

WayPoints smoothCorners(const WayPoints& points) {
    if (points.size() <= 3)
        return points;
    WayPoints path(points.begin(), points.begin() + 2);
    path.reserve(points.size() * 2);
    for (std::size_t i = 2; i < points.size(); ++i) {
        const WayPoint a = path[path.size() - 2];
        const WayPoint b = path.back();
        if (!passesCorner(a, b, points[i]))
            roundCorner(path, a, b, points[i]);
        path.push_back(points[i]);
    }
    return path;
}

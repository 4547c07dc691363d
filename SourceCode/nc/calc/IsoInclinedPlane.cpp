#include "nc/calc/IsoInclinedPlane.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "machine/calc/Kinematics.h"

namespace {

/// Parts between commas, trimmed; empty parts vanish, parts of blanks do not.
class CommaParts {
  public:
    explicit CommaParts(QStringView text) : rest_(text) {}
    std::optional<QStringView> next() {
        while (!rest_.isEmpty()) {
            const qsizetype comma = rest_.indexOf(u',');
            const QStringView part = comma < 0 ? rest_ : rest_.left(comma);
            rest_ = comma < 0 ? QStringView() : rest_.mid(comma + 1);
            if (!part.isEmpty())
                return part.trimmed();
        }
        return std::nullopt;
    }

  private:
    QStringView rest_;
};

/// An optional sign and digits that fit 32 bits.
bool isInteger(QStringView text) {
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.mid(1);
    if (text.isEmpty())
        return false;
    const std::int64_t largest = std::int64_t{std::numeric_limits<std::int32_t>::max()} + (negative ? 1 : 0);
    std::int64_t value = 0;
    for (const QChar digit : text) {
        if (digit < u'0' || digit > u'9')
            return false;
        value = value * 10 + (digit.unicode() - u'0');
        if (value > largest)
            return false;
    }
    return true;
}

bool isAxisLetter(QChar letter) {
    return letter >= u'X' && letter <= u'Z';
}

SbRotation rotationAbout(QChar axisLetter, float angle_deg) {
    SbVec3f axis(0, 0, 0);
    axis[axisLetter.unicode() - u'X'] = 1;
    return {axis, radiansOf(angle_deg)};
}

/// The next three numbers; false when one is out of range.
bool readThree(CommaParts& parts, SbVec3f& numbers) {
    for (int i = 0; i < 3; ++i) {
        const std::optional<QStringView> part = parts.next();
        if (!part)
            return true;
        bool ok = false;
        const double value = QLocale::c().toDouble(*part, &ok);
        if (!std::isfinite(value) || std::abs(value) > InclinedPlane::kLargest)
            return false;
        numbers[i] = ok ? static_cast<float>(value) : 0.0F;
    }
    return true;
}

}  // namespace

InclinedPlane inclinedPlaneOf(QStringView directive) {
    InclinedPlane plane;
    CommaParts parts(directive);
    static_cast<void>(parts.next());  // "UPR"
    std::optional<QStringView> letters = parts.next();
    if (letters && isInteger(*letters))
        letters = parts.next();
    if (!letters || letters->size() != 3)
        return plane;
    if (!std::all_of(letters->begin(), letters->end(), isAxisLetter)) {
        plane.kind = InclinedPlane::Kind::BadLetters;
        return plane;
    }
    SbVec3f angles(0, 0, 0);
    SbVec3f distances(0, 0, 0);
    if (!readThree(parts, angles) || !readThree(parts, distances)) {
        plane.kind = InclinedPlane::Kind::OutOfRange;
        return plane;
    }
    SbRotation rotation = SbRotation::identity();
    for (int i = 0; i < 3; ++i)
        rotation = rotation * rotationAbout(letters->at(i), angles[i]);
    plane.matrix.setRotate(rotation);
    for (int i = 0; i < 3; ++i)
        plane.matrix[3][i] = distances[i];
    plane.kind = InclinedPlane::Kind::Plane;
    return plane;
}

#include "geometry/calc/RoundedRectangle.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kQuarterTurn = 1.5707963267948966;

void appendTriangle(int a, int b, int c, QVector<int>& indices) {
    indices << a << b << c << -1;
}

}  // namespace

QVector<SbVec3f> roundedRectangleOutline(const RoundedRectangle& rectangle) {
    const double halfLength = std::abs(static_cast<double>(rectangle.length)) / 2;
    const double halfWidth = std::abs(static_cast<double>(rectangle.width)) / 2;
    const double radius =
        std::clamp(static_cast<double>(rectangle.cornerRadius), 0.0, std::min(halfLength, halfWidth));
    const int samples = std::clamp(rectangle.samplesPerCorner, 2, 1000);
    QVector<SbVec3f> outline;
    outline.reserve(4 * samples);
    for (int corner = 0; corner < 4; ++corner) {
        const double centreX = (corner == 0 || corner == 3 ? 1 : -1) * (halfLength - radius);
        const double centreZ = (corner < 2 ? 1 : -1) * (halfWidth - radius);
        for (int i = 0; i < samples; ++i) {
            const double angle = (corner + static_cast<double>(i) / (samples - 1)) * kQuarterTurn;
            outline.append(SbVec3f(static_cast<float>(centreX + radius * std::cos(angle)), 0,
                                   static_cast<float>(centreZ + radius * std::sin(angle))));
        }
    }
    return outline;
}

MeshArrays extrudedRoundedRectangle(const RoundedRectangle& rectangle, const SbVec3f& direction,
                                    float depth) {
    const QVector<SbVec3f> outline = roundedRectangleOutline(rectangle);
    const int count = outline.size();
    MeshArrays body;
    for (const SbVec3f& shift : {SbVec3f(0, 0, 0), direction * depth}) {
        body.vertices.append(shift);
        for (const SbVec3f& point : outline)
            body.vertices.append(point + shift);
    }
    const int lower = count + 1;
    const bool isUpward = direction[1] * depth > 0;
    for (int step = 1; step <= count; ++step) {
        const int i = isUpward ? step % count + 1 : step;
        const int next = isUpward ? step : step % count + 1;
        appendTriangle(0, next, i, body.indices);
        appendTriangle(lower, lower + i, lower + next, body.indices);
        appendTriangle(i, next, lower + i, body.indices);
        appendTriangle(next, lower + next, lower + i, body.indices);
    }
    return body;
}

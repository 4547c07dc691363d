#include "geometry/calc/RevolvedMesh.h"

#include <array>
#include <cmath>

namespace {

constexpr int kAngles = 19;
constexpr double kStep_deg = 20;
constexpr double kPi = 3.141592653589793;
constexpr float kShrink = 0.99F;
constexpr int kMostPoints = 1000000;  ///< the index array of more would not fit its counter

void appendRing(const SbVec3f& point, QVector<SbVec3f>& vertices) {
    for (int step = 0; step < kAngles; ++step) {
        const double angle = step * kStep_deg * kPi / 180;
        const double x = static_cast<double>(point[0]);
        const double y = static_cast<double>(point[1]);
        vertices.append(SbVec3f(static_cast<float>(x * std::cos(angle) - y * std::sin(angle)),
                                static_cast<float>(y * std::cos(angle) + x * std::sin(angle)), point[2]));
    }
}

void appendBand(int ring, QVector<int>& indices) {
    for (int step = 1; step < kAngles; ++step) {
        const int b = (ring - 1) * kAngles + step;
        const int a = b - 1;
        const int d = b + kAngles;
        const int c = d - 1;
        for (const int index : {a, c, b, -1, b, c, d, -1})
            indices.append(index);
    }
}

void shrink(QVector<SbVec3f>& vertices) {
    if (vertices.isEmpty())
        return;
    std::array<double, 3> sum{};
    for (const SbVec3f& vertex : vertices) {
        for (int i = 0; i < 3; ++i)
            sum[static_cast<std::size_t>(i)] += static_cast<double>(vertex[i]);
    }
    const double count = vertices.size();
    const SbVec3f centroid(static_cast<float>(sum[0] / count), static_cast<float>(sum[1] / count),
                           static_cast<float>(sum[2] / count));
    for (SbVec3f& vertex : vertices)
        vertex = centroid + (vertex - centroid) * kShrink;
}

}  // namespace

MeshArrays revolvedMesh(const QVector<SbVec3f>& contour) {
    MeshArrays mesh;
    if (contour.isEmpty() || contour.size() > kMostPoints)
        return mesh;
    mesh.vertices.reserve(contour.size() * kAngles);
    mesh.indices.reserve((contour.size() - 1) * (kAngles - 1) * 8);
    for (int ring = 0; ring < contour.size(); ++ring) {
        appendRing(contour[ring], mesh.vertices);
        if (ring > 0)
            appendBand(ring, mesh.indices);
    }
    shrink(mesh.vertices);
    return mesh;
}

#include "geometry/calc/RoundedRectangle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <utility>

#include "GeometryTestSupport.h"

namespace {

/// Distance of a point of the plane from the outline: from the inner rectangle that the corners turn about.
double distanceFromOutline(const SbVec3f& point, double length, double width, double radius) {
    const double dx = std::max(std::abs(static_cast<double>(point[0])) - (length / 2 - radius), 0.0);
    const double dz = std::max(std::abs(static_cast<double>(point[2])) - (width / 2 - radius), 0.0);
    return std::hypot(dx, dz) - radius;
}

double signedVolume(const MeshArrays& mesh) {
    double sum = 0;
    for (int i = 0; i + 2 < mesh.indices.size(); i += 4) {
        const SbVec3f& a = mesh.vertices[mesh.indices[i]];
        const SbVec3f& b = mesh.vertices[mesh.indices[i + 1]];
        const SbVec3f& c = mesh.vertices[mesh.indices[i + 2]];
        sum += static_cast<double>(a.dot(b.cross(c))) / 6;
    }
    return sum;
}

/// How often each directed edge stands without its counterpart.
int openEdges(const MeshArrays& mesh) {
    std::map<std::pair<int, int>, int> count;
    for (int i = 0; i + 2 < mesh.indices.size(); i += 4) {
        for (int corner = 0; corner < 3; ++corner)
            ++count[{mesh.indices[i + corner], mesh.indices[i + (corner + 1) % 3]}];
    }
    int open = 0;
    for (const auto& [edge, times] : count) {
        const auto counterpart = count.find({edge.second, edge.first});
        open += counterpart == count.end() || counterpart->second != times ? 1 : 0;
    }
    return open;
}

}  // namespace

TEST(RoundedRectangle, EveryPoint_LiesOnTheOutline) {
    const QVector<SbVec3f> outline = roundedRectangleOutline({100, 60, 12, 9});
    ASSERT_EQ(outline.size(), 36);
    for (const SbVec3f& point : outline) {
        EXPECT_NEAR(distanceFromOutline(point, 100, 60, 12), 0, 1e-4);
        EXPECT_EQ(point[1], 0);
    }
    EXPECT_LT((outline.first() - SbVec3f(50, 0, 18)).length(), 1e-4F);
}

TEST(RoundedRectangle, RadiusBeyondTheShorterSide_GivesRoundEnds) {
    const QVector<SbVec3f> outline = roundedRectangleOutline({100, 60, 500, 9});
    for (const SbVec3f& point : outline)
        EXPECT_NEAR(distanceFromOutline(point, 100, 60, 30), 0, 1e-4);
}

TEST(RoundedRectangle, NegativeRadius_GivesSharpCorners) {
    const QVector<SbVec3f> outline = roundedRectangleOutline({100, 60, -1, 2});
    for (const SbVec3f& point : outline) {
        EXPECT_NEAR(std::abs(point[0]), 50, 1e-4);
        EXPECT_NEAR(std::abs(point[2]), 30, 1e-4);
    }
}

TEST(RoundedRectangle, ExtrudedEitherWay_IsClosedAndHasItsVolume) {
    // The disc's corners are regular polygons: 4 quarters of n - 1 chords of 90 / (n - 1) degrees each.
    const int samples = 10;
    const double chord = 1.5707963267948966 / (samples - 1);
    const double corners = 12.0 * 12.0 / 2 * std::sin(chord) * 4 * (samples - 1);
    const double flat = 100.0 * 60 - 4 * 12 * 12 + corners;
    for (const float direction : {1.0F, -1.0F}) {
        const MeshArrays body =
            extrudedRoundedRectangle({100, 60, 12, samples}, SbVec3f(0, direction, 0), 25);
        EXPECT_NEAR(signedVolume(body), flat * 25, 1.0) << "direction " << direction;
        EXPECT_EQ(openEdges(body), 0);
        ASSERT_EQ(body.vertices.size(), 2 * (4 * samples + 1));
        EXPECT_EQ(body.vertices[0], SbVec3f(0, 0, 0));
        EXPECT_EQ(body.vertices[4 * samples + 1], SbVec3f(0, direction * 25, 0));
    }
}

TEST(RoundedRectangle, Extruded_FansTheUpperRingFirst) {
    const MeshArrays body = extrudedRoundedRectangle({100, 60, 12, 2}, SbVec3f(0, -1, 0), 25);
    EXPECT_EQ(body.indices.size(), 8 * 16);
    EXPECT_EQ(body.indices.mid(0, 4), (QVector<int>{0, 2, 1, -1}));
    for (int i = 3; i < body.indices.size(); i += 4)
        EXPECT_EQ(body.indices[i], -1);
}

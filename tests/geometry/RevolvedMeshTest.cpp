#include "geometry/calc/RevolvedMesh.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <random>

#include "GeometryTestSupport.h"
#include "geometry/ShapeGenerator.h"

namespace {

constexpr double kTurn = 2 * 3.14159265358979323846;

/// Where the vertex of a ring must be, by complex numbers and a mean formed the other way round.
QVector<SbVec3f> expectedVertices(const QVector<SbVec3f>& contour) {
    QVector<SbVec3f> rings;
    double meanZ = 0;
    std::complex<double> mean;
    const double total = 19.0 * contour.size();
    for (const SbVec3f& point : contour) {
        for (int step = 0; step < 19; ++step) {
            const std::complex<double> turned =
                std::complex<double>(point[0], point[1]) * std::polar(1.0, kTurn * step / 18);
            mean += turned / total;
            meanZ += static_cast<double>(point[2]) / total;
            rings.append(
                SbVec3f(static_cast<float>(turned.real()), static_cast<float>(turned.imag()), point[2]));
        }
    }
    for (SbVec3f& vertex : rings) {
        vertex[0] = static_cast<float>(mean.real() * 0.01) + vertex[0] * 0.99F;
        vertex[1] = static_cast<float>(mean.imag() * 0.01) + vertex[1] * 0.99F;
        vertex[2] = static_cast<float>(meanZ * 0.01) + vertex[2] * 0.99F;
    }
    return rings;
}

double area(const MeshArrays& mesh) {
    double sum = 0;
    for (int i = 0; i + 2 < mesh.indices.size(); i += 4) {
        const SbVec3f& a = mesh.vertices[mesh.indices[i]];
        const SbVec3f& b = mesh.vertices[mesh.indices[i + 1]];
        const SbVec3f& c = mesh.vertices[mesh.indices[i + 2]];
        sum += static_cast<double>((b - a).cross(c - a).length()) / 2;
    }
    return sum;
}

}  // namespace

TEST(RevolvedMesh, RandomContours_GiveRingsDrawnInTowardTheMean) {
    std::mt19937 random(7);  // NOLINT(cert-msc51-cpp): the same contours each time
    std::uniform_real_distribution<float> coordinate(-200, 200);
    for (int round = 0; round < 50; ++round) {
        QVector<SbVec3f> contour;
        for (int i = 0; i <= round % 7; ++i)
            contour.append(SbVec3f(coordinate(random), coordinate(random), coordinate(random)));
        const MeshArrays mesh = revolvedMesh(contour);
        const QVector<SbVec3f> expected = expectedVertices(contour);
        ASSERT_EQ(mesh.vertices.size(), 19 * contour.size()) << "round " << round;
        for (int i = 0; i < expected.size(); ++i)
            ASSERT_LT((mesh.vertices[i] - expected[i]).length(), 1e-3F) << "round " << round << " at " << i;
    }
}

TEST(RevolvedMesh, TwoPoints_GiveTheTrianglesACBAndBCDOfEachStep) {
    const MeshArrays mesh = revolvedMesh({SbVec3f(10, 0, 0), SbVec3f(10, 0, -50)});
    ASSERT_EQ(mesh.indices.size(), 18 * 8);
    for (int step = 0; step < 18; ++step) {
        const int a = step;
        const QVector<int> expected{a, a + 19, a + 1, -1, a + 1, a + 19, a + 20, -1};
        EXPECT_EQ(mesh.indices.mid(step * 8, 8), expected) << "step " << step;
    }
}

TEST(RevolvedMesh, Cylinder_HasTheAreaOfAnEighteenSidedPrismWithoutCaps) {
    const MeshArrays mesh = revolvedMesh({SbVec3f(10, 0, 0), SbVec3f(10, 0, -50)});
    const double side = 2 * 10 * std::sin(kTurn / 36);
    EXPECT_NEAR(area(mesh), 18 * side * 50 * 0.99 * 0.99, 0.01);
}

TEST(RevolvedMesh, Seam_HasVerticesOfItsOwnAtBothEnds) {
    const MeshArrays mesh = revolvedMesh({SbVec3f(10, 0, 0), SbVec3f(10, 0, -50)});
    EXPECT_LT((mesh.vertices[0] - mesh.vertices[18]).length(), 1e-4F);
    EXPECT_EQ(mesh.indices.contains(18), true);
    EXPECT_EQ(mesh.indices.contains(37), true);
}

TEST(RevolvedMesh, OnePoint_GivesNineteenVerticesAndNoTriangle) {
    const MeshArrays mesh = revolvedMesh({SbVec3f(5, 0, -3)});
    EXPECT_EQ(mesh.vertices.size(), 19);
    EXPECT_EQ(mesh.indices.size(), 0);
}

TEST(RevolvedMesh, EmptyContour_GivesEmptyArrays) {
    const MeshArrays mesh = revolvedMesh({});
    EXPECT_EQ(mesh.vertices.size(), 0);
    EXPECT_EQ(mesh.indices.size(), 0);
}

TEST(RevolvedMesh, ContourWithoutMeasure_GivesEmptyArrays) {
    const MeshArrays mesh = revolvedMesh(QVector<SbVec3f>(1000001, SbVec3f(1, 0, 0)));
    EXPECT_EQ(mesh.vertices.size(), 0);
    EXPECT_EQ(mesh.indices.size(), 0);
}

TEST(ShapeGenerator, ToolMesh_ReplacesWhatTheArraysHeld) {
    QVector<SbVec3f> vertices{SbVec3f(1, 1, 1)};
    QVector<int> indices{0, 0, 0, -1};
    ShapeGenerator().createToolMesh({SbVec3f(10, 0, 0), SbVec3f(10, 0, -50)}, vertices, indices);
    EXPECT_EQ(vertices.size(), 38);
    EXPECT_EQ(indices.size(), 144);
    ShapeGenerator().createToolMesh({}, vertices, indices);
    EXPECT_EQ(vertices.size(), 0);
    EXPECT_EQ(indices.size(), 0);
}

#include "geometry/calc/MeshArrays.h"

#include <gtest/gtest.h>

#include <limits>

#include "GeometryTestSupport.h"

TEST(MeshArrays, ThreeIndices_BecomeFourWithTheSeparatorLast) {
    EXPECT_EQ(withSeparators({4, 7, 2}), (QVector<int>{4, 7, 2, -1}));
}

TEST(MeshArrays, SixIndices_HaveASeparatorBehindEveryThird) {
    EXPECT_EQ(withSeparators({0, 1, 2, 3, 4, 5}), (QVector<int>{0, 1, 2, -1, 3, 4, 5, -1}));
}

TEST(MeshArrays, NoIndices_StayNone) {
    EXPECT_EQ(withSeparators({}), QVector<int>());
}

TEST(MeshArrays, IndicesLeftOver_HaveNoSeparator) {
    EXPECT_EQ(withSeparators({0, 1, 2, 3}), (QVector<int>{0, 1, 2, -1, 3}));
}

TEST(MeshArrays, IndexBehindTheVertices_DoesNotFit) {
    const QVector<int> indices{0, 1, 2, -1};
    EXPECT_EQ(indicesFit(indices.constData(), indices.size(), 3), true);
    EXPECT_EQ(indicesFit(indices.constData(), indices.size(), 2), false);
    EXPECT_EQ(indicesFit(nullptr, 0, 0), true);
}

TEST(MeshArrays, ACoordinateThatIsNoNumber_IsNotFinite) {
    EXPECT_EQ(allFinite({SbVec3f(1, 2, 3)}), true);
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        EXPECT_EQ(allFinite({SbVec3f(0, 0, 0), SbVec3f(bad, 0, 0)}), false);
        EXPECT_EQ(allFinite({SbVec3f(0, bad, 0)}), false);
        EXPECT_EQ(allFinite({SbVec3f(0, 0, bad)}), false);
    }
}

TEST(MeshArrays, Scaling_IsAboutTheOrigin) {
    QVector<SbVec3f> vertices{SbVec3f(100, 0, 0), SbVec3f(0, -200, 0), SbVec3f(0, 0, 0)};
    scaleAboutOrigin(vertices, 0.9999F);
    EXPECT_NEAR(vertices[0][0], 99.99F, 1e-4F);
    EXPECT_NEAR(vertices[1][1], -199.98F, 1e-4F);
    EXPECT_EQ(vertices[2], SbVec3f(0, 0, 0));
}

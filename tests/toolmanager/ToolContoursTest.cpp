#include "tools/calc/ToolContours.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "ManagerTestSupport.h"

namespace {

ToolRecord toolOfSizes(float length, float blade, float diameter, float handle) {
    ToolRecord tool;
    tool.length = length;
    tool.bladeLength = blade;
    tool.diameter = diameter;
    tool.handleDiameter = handle;
    return tool;
}

}  // namespace

TEST(ToolContours, EndMill_HasTheSevenPoints) {
    const QVector<SbVec3f> expected{{0, 0, 0},     {22, 0, 0},   {22, 0, -80}, {10, 0, -80},
                                    {10, 0, -150}, {0, 0, -150}, {0, 0, 0}};
    EXPECT_EQ(endMillContour(toolOfSizes(150, 70, 20, 44)), expected);
}

TEST(ToolContours, BallEnd_HasShankNineteenArcPointsAndOrigin) {
    const QVector<SbVec3f> contour = ballEndContour(toolOfSizes(150, 70, 20, 12));
    ASSERT_EQ(contour.size(), 4 + 19 + 1);
    EXPECT_EQ(contour[0], SbVec3f(0, 0, 0));
    EXPECT_EQ(contour[1], SbVec3f(6, 0, 0));
    EXPECT_EQ(contour[2], SbVec3f(6, 0, -80));
    EXPECT_EQ(contour[3], SbVec3f(10, 0, -80));
    EXPECT_EQ(contour[4], SbVec3f(10, 0, -140));
    EXPECT_NEAR(contour[10][0], 8.6602540, 1e-5);
    EXPECT_NEAR(contour[10][2], -145, 1e-4);
    EXPECT_EQ(contour.last(), SbVec3f(0, 0, 0));
}

TEST(ToolContours, BallEndAtNinetyDegrees_MeetsTheLengthOnTheAxis) {
    const QVector<SbVec3f> contour = ballEndContour(toolOfSizes(123.4F, 50, 16.2F, 20));
    EXPECT_EQ(contour[contour.size() - 2], SbVec3f(0, 0, -123.4F));
}

TEST(ToolContours, BallEndsOfRandomSizes_LieOnTheirBall) {
    std::mt19937 random(20250101);
    std::uniform_real_distribution<float> size(1, 300);
    for (int round = 0; round < 300; ++round) {
        const ToolRecord tool = toolOfSizes(size(random), size(random), size(random), size(random));
        const QVector<SbVec3f> contour = ballEndContour(tool);
        const double radius = static_cast<double>(tool.diameter) / 2;
        const double centre = radius - static_cast<double>(tool.length);
        for (int i = 4; i < contour.size() - 1; ++i) {
            const double distance =
                std::hypot(static_cast<double>(contour[i][0]), static_cast<double>(contour[i][2]) - centre);
            ASSERT_NEAR(distance, radius, 1e-4) << "length " << tool.length << " diameter " << tool.diameter;
        }
        ASSERT_NEAR(contour[contour.size() - 2][2], -tool.length, 1e-4);
    }
}

TEST(ToolContours, UserText_CountsLinesOfThreeNumbersOnly) {
    const QString text =
        "0 0 0\nnot a point\n5 0\n 5\t0   0 \r\n5 0 -10 4\n5 0 -10\n\n0 0 -10\nx 0 0\n0 nan 0\n0 1e99 0\n0 0 "
        "0\n";
    const QVector<SbVec3f> expected{{0, 0, 0}, {5, 0, 0}, {5, 0, -10}, {0, 0, -10}, {0, 0, 0}};
    EXPECT_EQ(userContour(text), expected);
}

TEST(ToolContours, UserTextOfFourPoints_IsEmpty) {
    EXPECT_EQ(userContour("0 0 0\n5 0 0\n5 0 -9\n0 0 0\n"), QVector<SbVec3f>());
}

TEST(ToolContours, UserTextThatDoesNotStartOrEndAtTheOrigin_IsEmpty) {
    EXPECT_EQ(userContour("1 0 0\n5 0 0\n5 0 -9\n0 0 -9\n0 0 0\n"), QVector<SbVec3f>());
    EXPECT_EQ(userContour("0 0 0\n5 0 0\n5 0 -9\n0 0 -9\n0 0 0.001\n"), QVector<SbVec3f>());
}

TEST(ToolContours, UserTextWithoutALine_IsEmpty) {
    EXPECT_EQ(userContour(QString()), QVector<SbVec3f>());
    EXPECT_EQ(userContour("\n\n \n"), QVector<SbVec3f>());
}

TEST(ToolContours, UserTextOfRandomCharacters_IsEmptyOrClosed) {
    std::mt19937 random(20250102);
    const QString letters = "0123 .-e\n\t\rx0 0 0\n";
    for (int round = 0; round < 2000; ++round) {
        QString text = "0 0 0\n";
        for (int i = static_cast<int>(random() % 80); i > 0; --i)
            text += letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))];
        const QVector<SbVec3f> contour = userContour(text + "\n0 0 0");
        ASSERT_TRUE(contour.isEmpty() || contour.size() >= 5) << text.toStdString();
        for (const SbVec3f& point : contour)
            ASSERT_TRUE(std::isfinite(point[0] + point[1] + point[2])) << text.toStdString();
    }
}

TEST(ToolContours, Types_PickTheirContour) {
    ToolRecord tool = toolOfSizes(100, 30, 20, 20);
    const QString text = "0 0 0\n1 0 0\n1 0 -1\n0 0 -1\n0 0 0\n";
    EXPECT_EQ(contourOfType(tool, text), endMillContour(tool));
    tool.type = 1;
    EXPECT_EQ(contourOfType(tool, text), ballEndContour(tool));
    tool.type = 2;
    EXPECT_EQ(contourOfType(tool, text), userContour(text));
    tool.type = 3;
    EXPECT_EQ(contourOfType(tool, text), QVector<SbVec3f>());
    tool.type = -7;
    EXPECT_EQ(contourOfType(tool, text), QVector<SbVec3f>());
}

TEST(ToolContours, Text_HasOnePointALine) {
    EXPECT_EQ(contourText({{0, 0, 0}, {12.5F, 0, -0.25F}, {9.961947F, 0, -140.87156F}}),
              QString("0 0 0\n12.5 0 -0.25\n9.96195 0 -140.872\n"));
    EXPECT_EQ(contourText({}), QString());
}

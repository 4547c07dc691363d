#include "tools/calc/ToolRecord.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "ToolTestSupport.h"

namespace {

SbVec3f carried(const SbMatrix& matrix, const SbVec3f& point) {
    SbVec3f result;
    matrix.multVecMatrix(point, result);
    return result;
}

/// The point moved, then turned about X, about Y and about Z, by the textbook's sums.
SbVec3f movedAndTurned(const QVector<float>& transform, const SbVec3f& point) {
    double x = static_cast<double>(point[0] + transform[0]);
    double y = static_cast<double>(point[1] + transform[1]);
    double z = static_cast<double>(point[2] + transform[2]);
    const auto turn = [](double& a, double& b, float angle_deg) {
        const double angle = static_cast<double>(angle_deg) * 3.141592653589793 / 180;
        const double turned = a * std::cos(angle) - b * std::sin(angle);
        b = a * std::sin(angle) + b * std::cos(angle);
        a = turned;
    };
    turn(y, z, transform[3]);
    turn(z, x, transform[4]);
    turn(x, y, transform[5]);
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

}  // namespace

TEST(ToolRecord, NewTool_HasTheDefaultsOfTheTable) {
    const ToolRecord tool;
    EXPECT_EQ(tool.index, -1);
    EXPECT_EQ(tool.spindleNo, 1);
    EXPECT_EQ(tool.toolNo, 0);
    EXPECT_EQ(tool.length, 100);
    EXPECT_EQ(tool.bladeLength, 30);
    EXPECT_EQ(tool.diameter, 20);
    EXPECT_EQ(tool.handleDiameter, 20);
    EXPECT_EQ(tool.rpm, 10000);
    EXPECT_EQ(tool.transform, QVector<float>(6, 0));
    EXPECT_EQ(tool.annotation, QStringLiteral("it's tool"));
    EXPECT_EQ(tool.installationName, QStringLiteral("A"));
    EXPECT_EQ(tool.spName, QStringLiteral("T1"));
    EXPECT_EQ(tool.chainSaw + tool.chainSawPath, QString());
    EXPECT_EQ(tool.image.size(), 0);
    EXPECT_EQ(tool.direction, 0);
    EXPECT_EQ(tool.type, 0);
    EXPECT_EQ(tool.contour.size(), 0);
    EXPECT_EQ(tool.toolTip, SbVec3f(0, 0, 0));
    EXPECT_EQ(tool.ax4Compensation, 0);
    EXPECT_EQ(tool.ax5Compensation, 0);
}

TEST(ToolRecord, Reset_GivesTheEditorsValuesAndKeepsTheRest) {
    ToolRecord tool = unusualTool();
    resetForNewTool(tool);
    EXPECT_EQ(tool.spindleNo, -1);
    EXPECT_EQ(tool.length, 1);
    EXPECT_EQ(tool.bladeLength, 0.5F);
    EXPECT_EQ(tool.diameter, 1);
    EXPECT_EQ(tool.handleDiameter, 1);
    EXPECT_EQ(tool.rpm, 250);
    EXPECT_EQ(tool.annotation, QStringLiteral("这是一把刀具"));
    EXPECT_EQ(tool.type, 0);
    EXPECT_EQ(tool.contour.size(), 0);
    EXPECT_EQ(tool.transform, QVector<float>(6, 0));
    EXPECT_EQ(tool.index, 7);
    EXPECT_EQ(tool.toolNo, 12);
}

TEST(ToolRecord, Mounting_MovesFirstAndThenTurnsAboutXYAndZ) {
    std::mt19937 random(13);  // NOLINT(cert-msc51-cpp): the same mountings each time
    std::uniform_real_distribution<float> number(-180, 180);
    for (int round = 0; round < 200; ++round) {
        QVector<float> transform(6);
        for (float& value : transform)
            value = number(random);
        const SbVec3f point(number(random), number(random), number(random));
        const SbVec3f difference =
            carried(toolMountMatrix(transform), point) - movedAndTurned(transform, point);
        ASSERT_LT(difference.length(), 1e-3F) << "round " << round;
    }
}

TEST(ToolRecord, MountingWithoutSixNumbers_IsTheIdentity) {
    for (const QVector<float>& transform : {QVector<float>(), QVector<float>(5, 1), QVector<float>(7, 1)})
        EXPECT_EQ(carried(toolMountMatrix(transform), SbVec3f(1, 2, 3)), SbVec3f(1, 2, 3));
}

TEST(ToolRecord, KinematicTool_CarriesWhatTheTransformNeeds) {
    ToolRecord tool = unusualTool();
    tool.type = 3;
    tool.ax4Compensation = 0.5F;
    tool.ax5Compensation = -0.25F;
    const KinematicTool kinematic = kinematicTool(tool);
    EXPECT_EQ(kinematic.spindleNo, 4);
    EXPECT_EQ(kinematic.isChainSaw, true);
    EXPECT_EQ(kinematic.length, 123.5F);
    EXPECT_EQ(kinematic.toolTip, tool.toolTip);
    EXPECT_EQ(kinematic.installationName, QStringLiteral("C"));
    EXPECT_EQ(kinematic.ax4Compensation, 0.5F);
    EXPECT_EQ(kinematic.ax5Compensation, -0.25F);
    EXPECT_LT((carried(kinematic.mount, SbVec3f(1, 2, 3)) - movedAndTurned(tool.transform, SbVec3f(1, 2, 3)))
                  .length(),
              1e-4F);
    tool.type = 2;
    EXPECT_EQ(kinematicTool(tool).isChainSaw, false);
}

TEST(ToolRecord, DisplayText_NamesSpindleNumberLengthAndDiameter) {
    ToolRecord tool;
    EXPECT_EQ(toolDisplayText(tool), QStringLiteral("T1 No:0 Len:100 Dia:20"));
    tool.spName = QStringLiteral("T%2");
    tool.toolNo = 5;
    tool.length = 99.5F;
    tool.diameter = 0.125F;
    EXPECT_EQ(toolDisplayText(tool), QStringLiteral("T%2 No:5 Len:99.5 Dia:0.125"));
}

TEST(ToolRecord, FloatText_IsShortAndBringsTheNumberBack) {
    EXPECT_EQ(floatText(0), QStringLiteral("0"));
    EXPECT_EQ(floatText(-12.5F), QStringLiteral("-12.5"));
    EXPECT_EQ(floatText(0.1F), QStringLiteral("0.1"));
    EXPECT_EQ(floatText(1234567), QStringLiteral("1234567"));
    std::mt19937 random(17);  // NOLINT(cert-msc51-cpp): the same numbers each time
    std::uniform_real_distribution<float> exponent(-30, 30);
    for (int round = 0; round < 5000; ++round) {
        const float number = std::pow(10.0F, exponent(random)) * (round % 2 == 0 ? 1.0F : -1.0F);
        ASSERT_EQ(floatText(number).toFloat(), number) << floatText(number).toStdString();
    }
}

#include "tools/calc/ChainSawValues.h"

#include <gtest/gtest.h>

#include "ToolTestSupport.h"

namespace {

using Values = QMap<QString, QString>;

const Values kWhole{{QStringLiteral("ToolTip"), QStringLiteral("1.5 -2 30")},
                    {QStringLiteral("Matrix"), QStringLiteral("10 20 30 0 90 -45")},
                    {QStringLiteral("Dir"), QStringLiteral("saw.iv")},
                    {QStringLiteral("Annonation"), QStringLiteral("sharp")},
                    {QStringLiteral("SpindleNo"), QStringLiteral("3")},
                    {QStringLiteral("ToolNumber"), QStringLiteral("21")},
                    {QStringLiteral("Rpm"), QStringLiteral("2800")},
                    {QStringLiteral("Ax4Compensation"), QStringLiteral("0.25")},
                    {QStringLiteral("Ax5Compensation"), QStringLiteral("-1.5")}};

ToolRecord chainSaw(const Values& values) {
    ToolRecord tool = unusualTool();
    applyChainSaw(QStringLiteral("Saw1"), values, tool);
    return tool;
}

ToolRecord chainSawWith(const char* key, const char* text) {
    Values values = kWhole;
    values.insert(QString::fromLatin1(key), QString::fromLatin1(text));
    return chainSaw(values);
}

}  // namespace

TEST(ChainSawValues, WholeGroup_FillsTheTool) {
    const ToolRecord tool = chainSaw(kWhole);
    EXPECT_EQ(tool.chainSaw, QStringLiteral("Saw1"));
    EXPECT_EQ(tool.type, 3);
    EXPECT_EQ(tool.toolTip, SbVec3f(1.5F, -2, 30));
    EXPECT_EQ(tool.transform, (QVector<float>{10, 20, 30, 0, 90, -45}));
    EXPECT_EQ(tool.chainSawPath, QStringLiteral("saw.iv"));
    EXPECT_EQ(tool.annotation, QStringLiteral("sharp"));
    EXPECT_EQ(tool.spindleNo, 3);
    EXPECT_EQ(tool.toolNo, 21);
    EXPECT_EQ(tool.rpm, 2800);
    EXPECT_EQ(tool.ax4Compensation, 0.25F);
    EXPECT_EQ(tool.ax5Compensation, -1.5F);
}

TEST(ChainSawValues, WhatTheLibraryDoesNotHold_Stays) {
    const ToolRecord tool = chainSaw(kWhole);
    EXPECT_EQ(tool.index, unusualTool().index);
    EXPECT_EQ(tool.length, unusualTool().length);
    EXPECT_EQ(tool.diameter, unusualTool().diameter);
    EXPECT_EQ(tool.image, unusualTool().image);
    EXPECT_EQ(tool.direction, unusualTool().direction);
}

TEST(ChainSawValues, MatrixOfAnotherCount_KeepsTheEarlierTransform) {
    for (const char* text : {"", "1 2 3 4 5", "1 2 3 4 5 6 7", "1,2,3,4,5,6"})
        EXPECT_EQ(chainSawWith("Matrix", text).transform, unusualTool().transform) << text;
    EXPECT_EQ(chainSawWith("Matrix", "  1\t2  3 4 5 x ").transform, (QVector<float>{1, 2, 3, 4, 5, 0}));
}

TEST(ChainSawValues, ToolTipOfAnotherCount_KeepsTheEarlierTip) {
    for (const char* text : {"", " ", "1 2", "1 2 3 4"})
        EXPECT_EQ(chainSawWith("ToolTip", text).toolTip, unusualTool().toolTip) << text;
    EXPECT_EQ(chainSawWith("ToolTip", "a 2 b").toolTip, SbVec3f(0, 2, 0));
}

TEST(ChainSawValues, BadNumbers_AreZero) {
    for (const char* text :
         {"", "x", "1 2", "nan", "inf", "1e999", "99999999999999999999999999999999999999999"}) {
        EXPECT_EQ(chainSawWith("Rpm", text).rpm, 0) << text;
        EXPECT_EQ(chainSawWith("Ax4Compensation", text).ax4Compensation, 0) << text;
        EXPECT_EQ(chainSawWith("Ax5Compensation", text).ax5Compensation, 0) << text;
        EXPECT_EQ(chainSawWith("SpindleNo", text).spindleNo, 0) << text;
        EXPECT_EQ(chainSawWith("ToolNumber", text).toolNo, 0) << text;
    }
    EXPECT_EQ(chainSawWith("SpindleNo", "2.5").spindleNo, 0);
}

TEST(ChainSawValues, EmptyGroup_GivesAChainSawWithoutModel) {
    const ToolRecord tool = chainSaw({});
    EXPECT_EQ(tool.chainSaw, QStringLiteral("Saw1"));
    EXPECT_EQ(tool.isChainSaw(), true);
    EXPECT_EQ(tool.chainSawPath, QString());
    EXPECT_EQ(tool.annotation, QString());
    EXPECT_EQ(tool.spindleNo, 0);
    EXPECT_EQ(tool.transform, unusualTool().transform);
    EXPECT_EQ(tool.toolTip, unusualTool().toolTip);
}

TEST(ChainSawValues, Compensations_ChangeNothingElse) {
    ToolRecord tool = unusualTool();
    applyChainSawCompensations(kWhole, tool);
    EXPECT_EQ(tool.ax4Compensation, 0.25F);
    EXPECT_EQ(tool.ax5Compensation, -1.5F);
    expectSameTool(tool, unusualTool());
}

#include "tools/ToolData.h"

#include <gtest/gtest.h>

#include <QTreeWidget>
#include <cmath>

#include "ToolTestSupport.h"

TEST(ToolData, NewItem_HasItsTypeAndTheDefaults) {
    const ToolData tool;
    EXPECT_EQ(tool.type(), 1010);
    EXPECT_EQ(tool.record().length, 100);
    EXPECT_EQ(tool.iconSize(), QSize(25, 25));
    EXPECT_EQ(tool.displayText(), QStringLiteral("T1 No:0 Len:100 Dia:20"));
    EXPECT_EQ(tool.picture().isNull(), true);
}

TEST(ToolData, Row_ShowsEveryColumnCentred) {
    const ToolInstallation installation;
    ToolData tool(unusualTool());
    tool.refreshRow();
    const QStringList expected{QStringLiteral("7"),
                               QStringLiteral("4"),
                               QStringLiteral("12"),
                               QStringLiteral("16.1"),
                               QStringLiteral("123.5"),
                               QStringLiteral("18"),
                               QStringLiteral("31.25"),
                               QStringLiteral("18000"),
                               QStringLiteral("C"),
                               QStringLiteral("User tool"),
                               QStringLiteral("CCW"),
                               QStringLiteral("1 -2 3.5 90 0 -45"),
                               QString()};
    for (int column = 0; column < 13; ++column) {
        EXPECT_EQ(tool.text(column), expected[column]) << column;
        EXPECT_EQ(tool.textAlignment(column), static_cast<int>(Qt::AlignCenter)) << column;
    }
    EXPECT_EQ(tool.icon(12).isNull(), false);
    EXPECT_LE(tool.icon(12).availableSizes().value(0).width(), 25);
}

TEST(ToolData, TypesAndDirections_ShowTheirTexts) {
    const ToolInstallation installation;
    const QStringList texts{QStringLiteral("End mill"), QStringLiteral("Ball end"),
                            QStringLiteral("User tool"), QStringLiteral("Chain saw")};
    ToolData tool;
    for (int type = 0; type < 4; ++type) {
        tool.record().type = type;
        tool.refreshRow();
        EXPECT_EQ(tool.text(9), texts[type]);
    }
    for (const int type : {-1, 4, 2147483647}) {
        tool.record().type = type;
        tool.refreshRow();
        EXPECT_EQ(tool.text(9), QString());
    }
    for (const int direction : {0, 1, 2, -1}) {
        tool.record().direction = direction;
        tool.refreshRow();
        EXPECT_EQ(tool.text(10), direction == 0 ? QStringLiteral("CW") : QStringLiteral("CCW"));
    }
}

TEST(ToolData, RowWithoutPicture_HasNoIcon) {
    const ToolInstallation installation;
    ToolData tool(unusualTool());
    tool.refreshRow();
    tool.record().image = "no picture";
    const LogCapture log;
    tool.refreshRow();
    EXPECT_EQ(tool.icon(12).isNull(), true);
    EXPECT_EQ(log.lines().size(), 0U) << log.all().toStdString();
}

TEST(ToolData, Copy_CarriesRecordRowAndItemTypeButNoTree) {
    const ToolInstallation installation;
    QTreeWidget tree;
    auto* tool = new ToolData(unusualTool());  // owned by the tree
    tool->refreshRow();
    tree.addTopLevelItem(tool);
    const ToolData copy(*tool);
    EXPECT_EQ(copy.type(), 1010);
    EXPECT_EQ(copy.text(4), QStringLiteral("123.5"));
    EXPECT_EQ(copy.treeWidget(), nullptr);
    expectSameTool(copy.record(), unusualTool());
    ToolData assigned;
    assigned = *tool;
    EXPECT_EQ(assigned.record().index, 7);
    EXPECT_EQ(assigned.text(4), QStringLiteral("123.5"));
}

TEST(ToolData, Value_TravelsThroughAVariant) {
    qRegisterMetaType<ToolData>("ToolData");
    const QVariant variant = QVariant::fromValue(ToolData(unusualTool()));
    expectSameTool(variant.value<ToolData>().record(), unusualTool());
    EXPECT_EQ(variant.value<ToolData>().type(), 1010);
    EXPECT_EQ(QByteArray(variant.typeName()), QByteArray("ToolData"));
}

TEST(ToolData, CopyFrom_TakesAllButTheIndexAndRefreshesTheRow) {
    const ToolInstallation installation;
    ToolData tool;
    tool.record().index = 3;
    tool.copyFrom(ToolData(unusualTool()));
    ToolRecord expected = unusualTool();
    expected.index = 3;
    expectSameTool(tool.record(), expected);
    EXPECT_EQ(tool.text(0), QStringLiteral("3"));
    EXPECT_EQ(tool.text(2), QStringLiteral("12"));
}

TEST(ToolData, Forms_AreReadAndTheRowRefreshed) {
    const ToolInstallation installation;
    ToolData tool;
    tool.fromJson(ToolData(unusualTool()).toJson());
    expectSameTool(tool.record(), unusualTool());
    EXPECT_EQ(tool.text(4), QStringLiteral("123.5"));
    tool.fromJsonArray({5, 2, 9, 80.5, 25, 12, 9000, QString(), QString(), 14, QJsonArray()});
    EXPECT_EQ(tool.text(0), QStringLiteral("5"));
    EXPECT_EQ(tool.text(4), QStringLiteral("80.5"));
}

TEST(ToolData, Reset_GivesTheEditorsValues) {
    ToolData tool(unusualTool());
    tool.resetForNewTool();
    EXPECT_EQ(tool.record().rpm, 250);
    EXPECT_EQ(tool.record().index, 7);
}

TEST(ToolData, Picture_IsKeptAsPngAtMostSixHundredWide) {
    ToolData tool;
    QPixmap wide(1200, 300);
    wide.fill(Qt::green);
    tool.setPicture(wide);
    EXPECT_EQ(tool.picture().size(), QSize(600, 150));
    EXPECT_EQ(tool.record().image.left(4), QByteArray("\x89PNG"));
    tool.setPicture(QPixmap());
    EXPECT_EQ(tool.record().image, QByteArray());
    EXPECT_EQ(tool.picture().isNull(), true);
}

TEST(ToolData, MountMatrix_IsThatOfTheRecord) {
    ToolData tool;
    tool.record().transform = {1, 2, 3, 0, 0, 90};
    SbVec3f carried;
    tool.mountMatrix().multVecMatrix(SbVec3f(0, 0, 0), carried);
    EXPECT_LT((carried - SbVec3f(-2, 1, 3)).length(), 1e-5F);
}

TEST(ToolData, CollisionMesh_IsTheToolMeshDrawnInAboutTheOrigin) {
    ToolData tool;
    tool.record().contour = {SbVec3f(10, 0, 0), SbVec3f(10, 0, -100)};
    const MeshArrays mesh = tool.collisionMesh();
    ASSERT_EQ(mesh.vertices.size(), 38);
    EXPECT_EQ(mesh.indices.size(), 144);
    // The mean of a ring with its double seam lies 10 / 19 off the axis; heights are drawn in about -50.
    EXPECT_NEAR(mesh.vertices[0][0], (10.0 / 19 + (10 - 10.0 / 19) * 0.99) * 0.9999, 1e-4);
    EXPECT_NEAR(mesh.vertices[0][2], -0.5 * 0.9999, 1e-4);
    EXPECT_NEAR(mesh.vertices[37][2], -99.5 * 0.9999, 1e-3);
}

TEST(ToolData, CollisionMeshOfATool_WithoutContour_IsEmpty) {
    const ToolData tool;
    EXPECT_EQ(tool.collisionMesh().isEmpty(), true);
}

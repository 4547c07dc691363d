#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

#include "ToolTestSupport.h"
#include "machine/readConfig.h"
#include "tools/ToolData.h"

namespace {

ToolData revolvedTool() {
    ToolData tool;
    tool.record().index = 7;
    tool.record().transform = {0, 0, 1000, 0, 0, 0};
    tool.record().contour = {SbVec3f(0, 0, 0), SbVec3f(10, 0, 0), SbVec3f(10, 0, -100), SbVec3f(0, 0, -100)};
    return tool;
}

ToolData chainSaw(const QString& path) {
    ToolData tool;
    tool.record().index = 4;
    tool.record().type = 3;
    tool.record().chainSawPath = path;
    tool.record().transform = {100, 0, 0, 0, 0, 0};
    return tool;
}

void useSpindle(const char* color) {
    auto machine = std::make_unique<MachineDescription>();
    auto spindle = std::make_unique<spindleStruct>();
    spindle->name = QStringLiteral("T1");
    spindle->color = QString::fromLatin1(color);
    machine->spindles.push_back(std::move(spindle));
    machine->rebuildIndex();
    ConfigReader::instance().setDescription(std::move(machine));
}

SbColor colorOf(ToolData& tool) {
    const HeldGraph graph(tool.GetSeparator());
    return dynamic_cast<SoMaterial*>(graph->getChild(0))->diffuseColor[0];
}

SbBox3f boxOf(SoNode* node) {
    SoGetBoundingBoxAction action{SbViewportRegion(100, 100)};
    action.apply(node);
    return action.getBoundingBox();
}

}  // namespace

TEST(ToolGraph, RevolvedTool_IsMaterialMountingAndMeshUnderOneName) {
    const ToolInstallation installation;
    ToolData tool = revolvedTool();
    for (int type = 0; type < 3; ++type) {
        tool.record().type = type;
        const HeldGraph graph(tool.GetSeparator());
        ASSERT_NE(graph.get(), nullptr);
        EXPECT_EQ(graph->getName(), SbName("Tool7"));
        ASSERT_EQ(graph->getNumChildren(), 3);
        EXPECT_NE(dynamic_cast<SoMaterial*>(graph->getChild(0)), nullptr);
        auto* mounting = dynamic_cast<SoMatrixTransform*>(graph->getChild(1));
        ASSERT_NE(mounting, nullptr);
        EXPECT_EQ(mounting->getName(), SbName("Tool7"));
        EXPECT_EQ(mounting->matrix.getValue() == tool.mountMatrix(), TRUE);
        auto* mesh = dynamic_cast<SoIndexedFaceSet*>(graph->getChild(2));
        ASSERT_NE(mesh, nullptr);
        EXPECT_EQ(mesh->getName(), SbName("Tool7"));
        EXPECT_EQ(mesh->coordIndex.getNum(), 3 * 144);
    }
}

TEST(ToolGraph, RevolvedTool_StandsOnItsMounting) {
    const ToolInstallation installation;
    ToolData tool = revolvedTool();
    const HeldGraph graph(tool.GetSeparator());
    // The mesh is drawn in by a hundredth toward its middle.
    EXPECT_NEAR(boxOf(graph.get()).getMax()[2], 999.5F, 1e-2F);
    EXPECT_NEAR(boxOf(graph.get()).getMin()[2], 900.5F, 1e-2F);
    EXPECT_NEAR(boxOf(graph.get()).getMax()[0], 9.9F, 0.02F);
}

TEST(ToolGraph, SpindleColour_PaintsTheTool) {
    const ToolInstallation installation;
    ToolData tool = revolvedTool();
    useSpindle("0.25 0.5 1");
    EXPECT_EQ(colorOf(tool), SbColor(0.25F, 0.5F, 1));
}

TEST(ToolGraph, NoSpindleOrNoColourOfThreeNumbers_LeavesTheDefault) {
    const ToolInstallation installation;
    ToolData tool = revolvedTool();
    const SbColor grey(0.8F, 0.8F, 0.8F);
    for (const char* text : {"", "1", "1 0", "1 0 0 1"}) {
        useSpindle(text);
        EXPECT_EQ(colorOf(tool), grey) << text;
    }
    useSpindle("1 0 0");
    tool.record().spindleNo = 2;
    EXPECT_EQ(colorOf(tool), grey);
}

TEST(ToolGraph, ContourlessAndOddContours_GiveAGraphWithoutTriangles) {
    const ToolInstallation installation;
    ToolData tool = revolvedTool();
    for (const QVector<SbVec3f>& contour : {QVector<SbVec3f>(), QVector<SbVec3f>{SbVec3f(1, 0, 0)}}) {
        tool.record().contour = contour;
        const HeldGraph graph(tool.GetSeparator());
        auto* mesh = dynamic_cast<SoIndexedFaceSet*>(graph->getChild(2));
        EXPECT_EQ(mesh->coordIndex.getNum(), 0);
    }
    tool.record().contour = {SbVec3f(3e38F, 3e38F, 0), SbVec3f(-3e38F, 3e38F, -3e38F)};
    const HeldGraph graph(tool.GetSeparator());
    EXPECT_EQ(graph->getNumChildren(), 3);
}

TEST(ToolGraph, ChainSaw_IsItsModelBehindTheMounting) {
    const ToolInstallation installation;
    ToolData tool = chainSaw(QStringLiteral("saw1.iv"));
    const HeldGraph graph(tool.GetSeparator());
    ASSERT_NE(graph.get(), nullptr);
    ASSERT_EQ(graph->getNumChildren(), 2);
    EXPECT_NE(dynamic_cast<SoMatrixTransform*>(graph->getChild(0)), nullptr);
    EXPECT_NEAR(boxOf(graph.get()).getMax()[0], 250, 1e-3);
    EXPECT_NEAR(boxOf(graph.get()).getMin()[0], -50, 1e-3);
    EXPECT_EQ(tool.record().chainSawPath, installation.file(QStringLiteral("ChainSawLib/saw1.iv")));
}

TEST(ToolGraph, ChainSawWithoutPath_HasNoGraphAndNoLine) {
    const ToolInstallation installation;
    ToolData tool = chainSaw(QString());
    const LogCapture log;
    EXPECT_EQ(tool.GetSeparator(), nullptr);
    EXPECT_EQ(log.lines().size(), 0U);
    EXPECT_EQ(tool.collisionMesh().isEmpty(), true);
}

TEST(ToolGraph, ModelThatCannotBeOpened_LogsFunctionLineAndPath) {
    const ToolInstallation installation;
    for (const QString& path : {QStringLiteral("none.iv"), installation.path()}) {
        ToolData tool = chainSaw(path);
        const LogCapture log;
        EXPECT_EQ(tool.GetSeparator(), nullptr);
        ASSERT_EQ(log.lines().size(), 1U) << log.all().toStdString();
        EXPECT_EQ(log.lines()[0].text.contains(QStringLiteral(" open file failed.FilePath:") +
                                               tool.record().chainSawPath),
                  true)
            << log.all().toStdString();
    }
}

TEST(ToolGraph, ModelThatCannotBeRead_LogsFunctionLineAndPath) {
    const ToolInstallation installation;
    const QByteArray head = "#Inventor V2.1 ascii\n";
    for (const QByteArray& content : {head + "Separator { Cube { width x } }", head + "Separator {",
                                      QByteArray("\x89PNG\r\n\x1a\n") + QByteArray(500, '\x01')}) {
        installation.write(QStringLiteral("ChainSawLib/bad.iv"), content);
        ToolData tool = chainSaw(QStringLiteral("bad.iv"));
        const LogCapture log;
        EXPECT_EQ(tool.GetSeparator(), nullptr) << content.toStdString();
        EXPECT_EQ(log.count(QStringLiteral(" read model failed.FilePath:") + tool.record().chainSawPath), 1)
            << log.all().toStdString();
    }
}

TEST(ToolGraph, ModelNestedWithoutMeasure_IsRefused) {
    const ToolInstallation installation;
    installation.write(QStringLiteral("ChainSawLib/deep.iv"),
                       "#Inventor V2.1 ascii\n" + QByteArray("Separator { ").repeated(200000));
    ToolData tool = chainSaw(QStringLiteral("deep.iv"));
    const LogCapture log;
    EXPECT_EQ(tool.GetSeparator(), nullptr);
    EXPECT_EQ(log.count(QStringLiteral("FilePath:")), 1);
}

TEST(ToolGraph, ModelWithAnEndlessWord_IsRefused) {
    const ToolInstallation installation;
    for (const QByteArray& word :
         {"DEF " + QByteArray(70000, 'n') + " Cube { }", "Cube { width 1" + QByteArray(70000, '0') + " }"}) {
        installation.write(QStringLiteral("ChainSawLib/long.iv"), "#Inventor V2.1 ascii\n" + word + "\n");
        ToolData tool = chainSaw(QStringLiteral("long.iv"));
        const LogCapture log;
        EXPECT_EQ(tool.GetSeparator(), nullptr);
        EXPECT_EQ(log.count(QStringLiteral("FilePath:")), 1);
    }
}

TEST(ToolGraph, ChainSawsCollisionMesh_IsReadAsStl) {
    const ToolInstallation installation;
    installation.write(QStringLiteral("ChainSawLib/saw.stl"),
                       "solid s\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1000 0 0\n"
                       "vertex 0 1000 0\nendloop\nendfacet\nendsolid s\n");
    const MeshArrays mesh = chainSaw(QStringLiteral("saw.stl")).collisionMesh();
    ASSERT_EQ(mesh.vertices.size(), 3);
    EXPECT_NEAR(mesh.vertices[1][0], 999.9F, 1e-3F);
    EXPECT_EQ(mesh.indices, (QVector<int>{0, 1, 2, -1}));
    const LogCapture log;
    EXPECT_EQ(chainSaw(QStringLiteral("saw1.iv")).collisionMesh().isEmpty(), true);
    EXPECT_EQ(log.count(QStringLiteral("Failed to load STL file: ")), 1);
}

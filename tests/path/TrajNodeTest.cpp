#include "nc/trajNode.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoIndexedPointSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "geometry/GeometryTestSupport.h"
#include "path/PathTestSupport.h"

// Looks of the node by its fields, without OpenGL.

namespace {

const SbColor kPathColor(0, 1, 0);
const SbColor kCurveColor(0, 1, 1);
const SbColor kHighlightColor(1, 1, 0);
const QString kTwoMoves = QStringLiteral("G1 X5\nG1 Y7\n");

static_assert(std::is_base_of_v<QWidget, trajNode> && std::is_base_of_v<SoSeparator, trajNode>);

template <typename Node>
Node* childOf(SoNode* group, int index) {
    auto* const parent = dynamic_cast<SoGroup*>(group);
    if (parent == nullptr || index >= parent->getNumChildren()) {
        ADD_FAILURE() << "no child " << index;
        return nullptr;
    }
    auto* const child = dynamic_cast<Node*>(parent->getChild(index));
    EXPECT_NE(child, nullptr) << "child " << index << " is another kind of node";
    return child;
}

class TrajNodeTest : public PathTest {
  protected:
    static SoMaterial* material(trajNode* node) { return childOf<SoMaterial>(node, 0); }
    static SoSwitch* mainSwitch(trajNode* node) { return childOf<SoSwitch>(node, 1); }
    static SoDrawStyle* drawStyle(trajNode* node) { return childOf<SoDrawStyle>(mainSwitch(node), 0); }
    static SoIndexedLineSet* lines(trajNode* node) { return childOf<SoIndexedLineSet>(mainSwitch(node), 1); }
    static SoSwitch* dots(trajNode* node) { return childOf<SoSwitch>(mainSwitch(node), 2); }
    static const SoVertexProperty* vertices(trajNode* node) {
        return dynamic_cast<SoVertexProperty*>(lines(node)->vertexProperty.getValue());
    }
    static void expectColor(trajNode* node, const SbColor& color) {
        EXPECT_EQ(material(node)->diffuseColor[0], color);
    }
};

SbBox3f boundingBox(SoNode* node) {
    SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
    action.apply(node);
    return action.getBoundingBox();
}

}  // namespace

TEST_F(TrajNodeTest, Layout) {
    FakeItem item(TORNVALE::kIsoItem, kTwoMoves);
    const Held<trajNode> node(new trajNode(&item));
    ASSERT_EQ(node->getNumChildren(), 2);
    ASSERT_EQ(mainSwitch(node.get())->getNumChildren(), 3);
    EXPECT_EQ(mainSwitch(node.get())->whichChild.getValue(), -3);
    EXPECT_EQ(dots(node.get())->whichChild.getValue(), -1);
    auto* const separator = childOf<SoSeparator>(dots(node.get()), 0);
    ASSERT_NE(separator, nullptr);
    EXPECT_EQ(separator->getName(), SbName("wayPointsSep"));
    EXPECT_EQ(childOf<SoMaterial>(separator, 0)->diffuseColor[0], SbColor(1, 0, 0));
    EXPECT_FLOAT_EQ(childOf<SoDrawStyle>(separator, 1)->pointSize.getValue(), 10.0F);
    EXPECT_EQ(childOf<SoCoordinate3>(separator, 2)->point.getNum(), 0);
    auto* const points = childOf<SoIndexedPointSet>(separator, 3);
    EXPECT_EQ(points->getName(), SbName("wayPointsNode"));
    EXPECT_EQ(points->coordIndex.getNum(), 0) << "the library's own start would show a dot at the origin";
}

TEST_F(TrajNodeTest, NameAndAcquaintance) {
    FakeItem item(TORNVALE::kIsoItem, kTwoMoves);
    item.name = QStringLiteral("iso12");
    const Held<trajNode> node(new trajNode(&item));
    EXPECT_EQ(node->getName(), SbName("iso12"));
    EXPECT_EQ(node->displayName(), item.name);
    EXPECT_EQ(item.pathNode(), node.get());
    EXPECT_EQ(node->item(), &item);
    item.name = QStringLiteral("iso13");
    node->UpdateNode();
    EXPECT_EQ(node->getName(), SbName("iso13"));
}

TEST_F(TrajNodeTest, IsoItem_PathFromItsCode) {
    FakeItem item(TORNVALE::kIsoItem, QStringLiteral("G1 X5 C10\nG1 Y7 A-4\nM8\n"));
    const Held<trajNode> node(new trajNode(&item));
    expectColor(node.get(), kPathColor);
    EXPECT_FLOAT_EQ(drawStyle(node.get())->lineWidth.getValue(), 1.0F);
    const SoVertexProperty* const property = vertices(node.get());
    ASSERT_NE(property, nullptr);
    ASSERT_EQ(property->vertex.getNum(), 3);
    EXPECT_EQ(property->vertex[0], SbVec3f(5, 0, 0));
    EXPECT_EQ(property->vertex[1], SbVec3f(5, 7, 0));
    EXPECT_EQ(property->vertex[2], SbVec3f(5, 7, 0));
    ASSERT_EQ(property->normal.getNum(), 3);
    EXPECT_EQ(property->normal[0], SbVec3f(10, 0, 0));
    EXPECT_EQ(property->normal[1], SbVec3f(10, -4, 0));
    const SoMFInt32& index = lines(node.get())->coordIndex;
    ASSERT_EQ(index.getNum(), 6);
    const std::vector<int> expected{0, 1, -1, 1, 2, -1};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(index[i], expected[static_cast<std::size_t>(i)]) << i;
    const SbBox3f box = boundingBox(node.get());
    EXPECT_EQ(box.getMin(), SbVec3f(5, 0, 0));
    EXPECT_EQ(box.getMax(), SbVec3f(5, 7, 0));
}

TEST_F(TrajNodeTest, IsoItem_EmptyCodeLeavesTheOldLines) {
    FakeItem item(TORNVALE::kIsoItem, kTwoMoves);
    const Held<trajNode> node(new trajNode(&item));
    const SoVertexProperty* const before = vertices(node.get());
    for (const char* code : {"", "\n\n"}) {
        item.isoCode = QString::fromUtf8(code);
        node->UpdateNode();
        EXPECT_EQ(vertices(node.get()), before);
        EXPECT_EQ(lines(node.get())->coordIndex.getNum(), 3);
    }
}

TEST_F(TrajNodeTest, IsoItem_ShorterCodeLeavesNothingOfTheOldOne) {
    FakeItem item(TORNVALE::kIsoItem, QStringLiteral("X1\nX2\nX3\nX4\n"));
    const Held<trajNode> node(new trajNode(&item));
    item.isoCode = kTwoMoves;
    node->UpdateNode();
    EXPECT_EQ(vertices(node.get())->vertex.getNum(), 2);
    EXPECT_EQ(vertices(node.get())->normal.getNum(), 2);
    EXPECT_EQ(lines(node.get())->coordIndex.getNum(), 3);
    item.isoCode = QStringLiteral("X9\n");
    node->UpdateNode();
    EXPECT_EQ(vertices(node.get())->vertex.getNum(), 1);
    EXPECT_EQ(lines(node.get())->coordIndex.getNum(), 0);
}

TEST_F(TrajNodeTest, EmptyChain_WarnsAndShowsNothing) {
    FakeItem item(TORNVALE::kIsoItem, kTwoMoves);
    item.chain.clear();
    const LogCapture log;
    const Held<trajNode> node(new trajNode(&item));
    EXPECT_EQ(vertices(node.get()), nullptr);
    ASSERT_EQ(log.lines().size(), 1U) << log.all().toStdString();
    EXPECT_EQ(log.lines()[0].type, QtWarningMsg);
    EXPECT_EQ(log.lines()[0].text, QStringLiteral("chain is empty"));
}

TEST_F(TrajNodeTest, ExtractWayPoints_WordsAreModal) {
    FakeItem item(TORNVALE::kIsoItem);
    const Held<trajNode> node(new trajNode(&item));
    QVector<QVector<double>> points;
    node->extract_waypoints_from_string(kTwoMoves, points);
    EXPECT_EQ(points, (QVector<QVector<double>>{{5, 0, 0, 0, 0}, {5, 7, 0, 0, 0}}));
    node->extract_waypoints_from_string(QStringLiteral("G1 X1 A3\nM8\nG1 Z2 C-1 F500\n"), points);
    EXPECT_EQ(points, (QVector<QVector<double>>{{1, 0, 0, 0, 3}, {1, 0, 0, 0, 3}, {1, 0, 2, -1, 3}}));
    node->extract_waypoints_from_string(QString(), points);
    EXPECT_TRUE(points.isEmpty());
}

TEST_F(TrajNodeTest, ExtractWayPoints_AxesOfTheChainOnly) {
    FakeItem item(TORNVALE::kIsoItem);
    item.chain = QStringLiteral("XZ");
    const Held<trajNode> node(new trajNode(&item));
    QVector<QVector<double>> points;
    node->extract_waypoints_from_string(QStringLiteral("X1 Y2 Z3 C4\n"), points);
    EXPECT_EQ(points, (QVector<QVector<double>>{{1, 3}}));
}

TEST_F(TrajNodeTest, ExtractWayPoints_EmptyChainGivesNothing) {
    FakeItem item(TORNVALE::kIsoItem);
    item.chain.clear();
    const Held<trajNode> node(new trajNode(&item));
    QVector<QVector<double>> points{{1}};
    const LogCapture log;
    node->extract_waypoints_from_string(kTwoMoves, points);
    EXPECT_TRUE(points.isEmpty());
    EXPECT_EQ(log.count(QStringLiteral("chain is empty")), 1);
}

TEST_F(TrajNodeTest, CurveItem_ThickLineAndADotForEachControlPoint) {
    FakeItem item(TORNVALE::kCurveItem, kTwoMoves);
    item.points = ControlPoints{{0, 0, 0, 1, 2}, {5, 6, 7, 1, 2}, {9, 9, 9, 1, 2}};
    const Held<trajNode> node(new trajNode(&item));
    expectColor(node.get(), kCurveColor);
    EXPECT_FLOAT_EQ(drawStyle(node.get())->lineWidth.getValue(), 3.0F);
    EXPECT_EQ(vertices(node.get())->vertex.getNum(), 2);
    auto* const separator = childOf<SoSeparator>(dots(node.get()), 0);
    auto* const coordinates = childOf<SoCoordinate3>(separator, 2);
    auto* const points = childOf<SoIndexedPointSet>(separator, 3);
    ASSERT_EQ(coordinates->point.getNum(), 3);
    EXPECT_EQ(coordinates->point[1], SbVec3f(5, 6, 7));
    ASSERT_EQ(points->coordIndex.getNum(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(points->coordIndex[i], i);

    item.points = ControlPoints{{1, 1, 1}, {2, 2, 2}};
    node->UpdateNode();
    EXPECT_EQ(coordinates->point.getNum(), 2);
    EXPECT_EQ(points->coordIndex.getNum(), 2);
    item.points.reset();
    node->UpdateNode();
    EXPECT_EQ(coordinates->point.getNum(), 0);
    EXPECT_EQ(points->coordIndex.getNum(), 0);
}

TEST_F(TrajNodeTest, CurveItem_DotsThatAreNoPointsAreLeftOut) {
    FakeItem item(TORNVALE::kCurveItem);
    item.points = ControlPoints{{0, 0, 0}, {std::nan(""), 0, 0}, {1}, {9, 9, HUGE_VAL}, {3, 3, 3}};
    const Held<trajNode> node(new trajNode(&item));
    node->setHighlighted(true);
    auto* const separator = childOf<SoSeparator>(dots(node.get()), 0);
    EXPECT_EQ(childOf<SoCoordinate3>(separator, 2)->point.getNum(), 2);
    EXPECT_EQ(childOf<SoIndexedPointSet>(separator, 3)->coordIndex.getNum(), 2);
    EXPECT_EQ(boundingBox(node.get()).getMax(), SbVec3f(3, 3, 3));
}

TEST_F(TrajNodeTest, Highlight_ColorAndDots) {
    FakeItem item(TORNVALE::kCurveItem, kTwoMoves);
    const Held<trajNode> node(new trajNode(&item));
    EXPECT_FALSE(node->isHighlighted());
    node->setHighlighted(true);
    EXPECT_TRUE(node->isHighlighted());
    expectColor(node.get(), kHighlightColor);
    EXPECT_EQ(dots(node.get())->whichChild.getValue(), -3);
    node->UpdateNode();
    expectColor(node.get(), kHighlightColor);
    node->setHighlighted(false);
    expectColor(node.get(), kCurveColor);
    EXPECT_EQ(dots(node.get())->whichChild.getValue(), -1);
}

TEST_F(TrajNodeTest, ShowSwitch) {
    FakeItem item(TORNVALE::kIsoItem, kTwoMoves);
    const Held<trajNode> node(new trajNode(&item));
    EXPECT_TRUE(node->isShown());
    node->setShown(false);
    EXPECT_FALSE(node->isShown());
    EXPECT_EQ(mainSwitch(node.get())->whichChild.getValue(), -1);
    EXPECT_TRUE(boundingBox(node.get()).isEmpty());
    node->UpdateNode();
    EXPECT_FALSE(node->isShown()) << "a refresh shows nothing that the user has hidden";
    node->setShown(true);
    EXPECT_EQ(mainSwitch(node.get())->whichChild.getValue(), -3);

    FakeItem unchecked(TORNVALE::kIsoItem, kTwoMoves);
    unchecked.active = false;
    const Held<trajNode> hidden(new trajNode(&unchecked));
    EXPECT_FALSE(hidden->isShown());
}

TEST_F(TrajNodeTest, OtherRows_LeaveTheNodeEmpty) {
    QTreeWidgetItem plain;
    FakeItem group(TORNVALE::kProgramGroup, kTwoMoves);
    const LogCapture log;
    const std::array<QTreeWidgetItem*, 3> rows{nullptr, &plain, &group};
    for (QTreeWidgetItem* row : rows) {
        const Held<trajNode> node(new trajNode(row));
        node->UpdateNode();
        EXPECT_EQ(node->getNumChildren(), 2);
        EXPECT_EQ(mainSwitch(node.get())->getNumChildren(), 3);
        EXPECT_EQ(lines(node.get())->coordIndex.getNum(), 0);
        EXPECT_TRUE(boundingBox(node.get()).isEmpty());
        node->setHighlighted(true);
        node->pickPoint(SbVec3f(0, 0, 0));
        EXPECT_EQ(node->dragger(), nullptr);
        EXPECT_TRUE(boundingBox(node.get()).isEmpty());
    }
    EXPECT_EQ(log.lines().size(), 0U) << log.all().toStdString();
}

#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoRotationXYZ.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

#include <cmath>

#include "geometry/GeometryTestSupport.h"
#include "nc/trajNode.h"
#include "path/PathTestSupport.h"

// The bodies of drill and rectangle items, by the triangles that the scene would draw.

namespace {

constexpr double kPi = 3.14159265358979323846;

class ItemBodyTest : public PathTest {
  protected:
    static FakeItem& drill(FakeItem& item, int type) {
        HoleShape shape;
        shape.drillType = type;
        shape.diameter = 10;
        shape.depth = 30;
        shape.sinkDiameter = 24;
        shape.sinkDepth = 6;
        shape.safetyLength = 50;
        item.hole = shape;
        return item;
    }
    static RectangleShape plate() { return {30, 10, 25, 4, SbMatrix::identity()}; }
};

/// The corners of a part lie on a cylinder about (x, y) with this radius, or on the axis of its lids.
void expectCylinder(const std::vector<SbVec3f>& corners, float x, float y, float radius, float low,
                    float high) {
    ASSERT_GT(corners.size(), 0U);
    int onWall = 0;
    for (const SbVec3f& corner : corners) {
        const double distance = std::hypot(double{corner[0] - x}, double{corner[1] - y});
        onWall += distance > radius / 2 ? 1 : 0;
        ASSERT_LT(std::min(distance, std::abs(distance - double{radius})), 1e-3);
        ASSERT_LT(std::min(std::abs(corner[2] - low), std::abs(corner[2] - high)), 1e-3F) << corner[2];
    }
    EXPECT_GT(onWall, 6);
}

SbColor colorOf(SoNode* root, const char* part) {
    const auto* separator = dynamic_cast<SoSeparator*>(findNode(root, part));
    if (separator == nullptr)
        return SbColor(-1, -1, -1);
    const auto* material = dynamic_cast<SoMaterial*>(separator->getChild(0));
    return material == nullptr ? SbColor(-1, -1, -1) : material->diffuseColor[0];
}

int lineEntries(SoNode* node) {
    const auto* group = dynamic_cast<SoSwitch*>(dynamic_cast<SoSeparator*>(node)->getChild(1));
    return dynamic_cast<SoIndexedLineSet*>(group->getChild(1))->coordIndex.getNum();
}

SoSwitch* mainSwitch(trajNode* node) {
    return dynamic_cast<SoSwitch*>(node->getChild(1));
}

}  // namespace

TEST_F(ItemBodyTest, SimpleHole_StandsInTheItemsFrame) {
    for (const int type : {0, 1}) {
        FakeItem item(TORNVALE::kDrillItem);
        const Held<trajNode> node(new trajNode(&drill(item, type)));
        expectCylinder(trianglesOf(node.get(), "saftySep"), 0, 0, 5, 0, 50);
        expectCylinder(trianglesOf(node.get(), "drillSep"), 0, 0, 5, -30, 0);
        EXPECT_EQ(findNode(node.get(), "sinkingSep"), nullptr);
        EXPECT_EQ(colorOf(node.get(), "saftySep"), SbColor(0, 1, 0));
        EXPECT_EQ(colorOf(node.get(), "drillSep"), SbColor(1, 0, 0));
    }
}

TEST_F(ItemBodyTest, CountersunkHole_HeadAboveTheHole) {
    FakeItem item(TORNVALE::kDrillItem);
    const Held<trajNode> node(new trajNode(&drill(item, 2)));
    expectCylinder(trianglesOf(node.get(), "saftySep"), 0, 0, 12, 0, 50);
    expectCylinder(trianglesOf(node.get(), "sinkingSep"), 0, 0, 12, -6, 0);
    expectCylinder(trianglesOf(node.get(), "drillSep"), 0, 0, 5, -36, -6);
    EXPECT_EQ(colorOf(node.get(), "saftySep"), SbColor(0, 1, 0));
    EXPECT_EQ(colorOf(node.get(), "sinkingSep"), SbColor(1, 1, 0));
    EXPECT_EQ(colorOf(node.get(), "drillSep"), SbColor(1, 0, 0));
}

TEST_F(ItemBodyTest, Hole_IsNamedAfterItsItemAndTurnedUpright) {
    FakeItem item(TORNVALE::kDrillItem);
    item.name = QStringLiteral("drill7");
    const Held<trajNode> node(new trajNode(&drill(item, 0)));
    ASSERT_EQ(mainSwitch(node.get())->getNumChildren(), 4);
    auto* const body = dynamic_cast<SoSeparator*>(mainSwitch(node.get())->getChild(3));
    ASSERT_NE(body, nullptr);
    EXPECT_EQ(body->getName(), SbName("drill7"));
    const auto* turn = dynamic_cast<SoRotationXYZ*>(body->getChild(1));
    ASSERT_NE(turn, nullptr);
    EXPECT_EQ(turn->axis.getValue(), SoRotationXYZ::X);
    EXPECT_EQ(turn->angle.getValue(), 1.5707964F);
}

TEST_F(ItemBodyTest, Hole_FollowsItsPlacement) {
    FakeItem item(TORNVALE::kDrillItem);
    drill(item, 0);
    // Turned about Y the item's +Z points along the system's +X.
    item.hole->placement = placed(SbVec3f(0, 1, 0), 90, SbVec3f(100, 200, 300));
    const Held<trajNode> node(new trajNode(&item));
    const SbBox3f safety = boxOf(trianglesOf(node.get(), "saftySep"));
    EXPECT_NEAR(safety.getMin()[0], 100, 1e-3);
    EXPECT_NEAR(safety.getMax()[0], 150, 1e-3);
    const SbBox3f hole = boxOf(trianglesOf(node.get(), "drillSep"));
    EXPECT_NEAR(hole.getMin()[0], 70, 1e-3);
    EXPECT_NEAR(hole.getMax()[0], 100, 1e-3);
    EXPECT_NEAR(hole.getCenter()[1], 200, 0.2);
    EXPECT_NEAR(hole.getCenter()[2], 300, 0.2);
}

TEST_F(ItemBodyTest, OnlyTheMilledHoleShowsItsPath) {
    FakeItem item(TORNVALE::kDrillItem, QStringLiteral("G1 X5\nG1 Y7\n"));
    const Held<trajNode> node(new trajNode(&drill(item, 1)));
    EXPECT_EQ(lineEntries(node.get()), 3);
    drill(item, 0);
    node->UpdateNode();
    EXPECT_EQ(lineEntries(node.get()), 0);
    drill(item, 1);
    node->UpdateNode();
    EXPECT_EQ(lineEntries(node.get()), 3);
    drill(item, 2);
    node->UpdateNode();
    EXPECT_EQ(lineEntries(node.get()), 0);
}

TEST_F(ItemBodyTest, NewBodyReplacesTheOldOne) {
    FakeItem item(TORNVALE::kDrillItem);
    const Held<trajNode> node(new trajNode(&drill(item, 0)));
    const Held<SoNode> old(mainSwitch(node.get())->getChild(3));
    drill(item, 2);
    item.hole->depth = 11;
    node->UpdateNode();
    EXPECT_EQ(mainSwitch(node.get())->getNumChildren(), 4);
    EXPECT_EQ(old->getRefCount(), 1) << "nobody but this test holds it";
    expectCylinder(trianglesOf(node.get(), "drillSep"), 0, 0, 5, -17, -6);
    for (const int none : {3, -1}) {
        item.hole->drillType = none;
        node->UpdateNode();
        EXPECT_EQ(mainSwitch(node.get())->getNumChildren(), 3) << none;
    }
    item.hole.reset();
    node->UpdateNode();
    EXPECT_EQ(mainSwitch(node.get())->getNumChildren(), 3);
}

TEST_F(ItemBodyTest, Hole_SizesThatAreNoNumbers_DrawNothing) {
    FakeItem item(TORNVALE::kDrillItem);
    const Held<trajNode> node(new trajNode(&drill(item, 2)));
    item.hole->diameter = item.hole->sinkDiameter = std::nan("");
    node->UpdateNode();
    EXPECT_EQ(mainSwitch(node.get())->getNumChildren(), 3);
    drill(item, 2);
    item.hole->placement[0][0] = HUGE_VALF;
    node->UpdateNode();
    EXPECT_EQ(mainSwitch(node.get())->getNumChildren(), 3);
    drill(item, 2);
    item.hole->diameter = item.hole->depth = 1e300;
    node->UpdateNode();
    for (const SbVec3f& corner : trianglesOf(node.get())) {
        for (int axis = 0; axis < 3; ++axis)
            ASSERT_TRUE(std::isfinite(corner[axis]));
    }
}

TEST_F(ItemBodyTest, Rectangle_TwoPlatesOnBothSidesOfTheSurface) {
    FakeItem item(TORNVALE::kRectangleItem, QStringLiteral("G1 X5\nG1 Y7\n"));
    item.rectangle = plate();
    const Held<trajNode> node(new trajNode(&item));
    EXPECT_EQ(countNodes(node.get(), "roundedEdgeRectSep"), 2);
    EXPECT_EQ(lineEntries(node.get()), 0);
    const std::vector<SbVec3f> corners = trianglesOf(node.get());
    const SbBox3f box = boxOf(corners);
    EXPECT_NEAR(box.getMin()[0], -15, 1e-3);
    EXPECT_NEAR(box.getMax()[0], 15, 1e-3);
    EXPECT_NEAR(box.getMin()[1], -5, 1e-3);
    EXPECT_NEAR(box.getMax()[1], 5, 1e-3);
    EXPECT_NEAR(box.getMin()[2], -25, 1e-3);
    EXPECT_NEAR(box.getMax()[2], 25, 1e-3);
    // Both plates are closed and look outward: their volume is the plate's, but for the chords of the
    // corners.
    const double area = 30 * 10 - (4 - kPi) * 4 * 4;
    EXPECT_NEAR(volumeOf(corners), 2 * 25 * area, 2 * 25 * 0.4);
    // Every corner of the mesh lies on the surface, or at the full depth on either side.
    for (const SbVec3f& corner : corners) {
        const float depth = std::abs(corner[2]);
        ASSERT_LT(std::min(depth, std::abs(depth - 25)), 1e-3F);
    }
}

TEST_F(ItemBodyTest, Rectangle_CornersAreRound) {
    FakeItem item(TORNVALE::kRectangleItem);
    item.rectangle = plate();
    const Held<trajNode> node(new trajNode(&item));
    int rounded = 0;
    for (const SbVec3f& corner : trianglesOf(node.get())) {
        const double overX = std::abs(double{corner[0]}) - (15 - 4);
        const double overY = std::abs(double{corner[1]}) - (5 - 4);
        if (overX <= 1e-4 || overY <= 1e-4)
            continue;
        ++rounded;
        ASSERT_NEAR(std::hypot(overX, overY), 4, 1e-3);
    }
    EXPECT_GT(rounded, 8);
}

TEST_F(ItemBodyTest, Rectangle_FollowsItsPlacement) {
    FakeItem item(TORNVALE::kRectangleItem);
    item.rectangle = plate();
    item.rectangle->placement = placed(SbVec3f(0, 0, 1), 90, SbVec3f(100, 200, 300));
    const Held<trajNode> node(new trajNode(&item));
    const SbBox3f box = boxOf(trianglesOf(node.get()));
    EXPECT_NEAR(box.getMin()[0], 95, 1e-3);
    EXPECT_NEAR(box.getMax()[1], 215, 1e-3);
    EXPECT_NEAR(box.getMin()[2], 275, 1e-3);
}

TEST_F(ItemBodyTest, Rectangle_MaterialIsOfTheItemsColor) {
    FakeItem item(TORNVALE::kRectangleItem);
    item.rectangle = plate();
    const Held<trajNode> node(new trajNode(&item));
    const auto* separator = dynamic_cast<SoSeparator*>(findNode(node.get(), "roundedEdgeRectSep"));
    ASSERT_NE(separator, nullptr);
    const auto* material = dynamic_cast<SoMaterial*>(separator->getChild(0));
    ASSERT_NE(material, nullptr);
    const auto expectColor = [material](const SbColor& color) {
        EXPECT_EQ(material->diffuseColor[0], color);
        EXPECT_EQ(material->ambientColor[0], color);
        EXPECT_EQ(material->emissiveColor[0], color);
    };
    expectColor(SbColor(0, 1, 0));
    EXPECT_EQ(material->specularColor[0], SbColor(0.2F, 0.2F, 0.2F));
    EXPECT_FLOAT_EQ(material->transparency[0], 0.2F);
    node->setHighlighted(true);
    expectColor(SbColor(1, 1, 0));
    node->setHighlighted(false);
    expectColor(SbColor(0, 1, 0));
}

TEST_F(ItemBodyTest, Rectangle_NewOneReplacesTheOldOneOrNone) {
    FakeItem item(TORNVALE::kRectangleItem);
    item.rectangle = plate();
    const Held<trajNode> node(new trajNode(&item));
    const Held<SoNode> old(mainSwitch(node.get())->getChild(3));
    item.rectangle->length = 60;
    node->UpdateNode();
    EXPECT_EQ(old->getRefCount(), 1);
    EXPECT_EQ(mainSwitch(node.get())->getNumChildren(), 4);
    EXPECT_NEAR(boxOf(trianglesOf(node.get())).getMax()[0], 30, 1e-3);
    item.rectangle->depth = std::nan("");
    node->UpdateNode();
    EXPECT_EQ(mainSwitch(node.get())->getNumChildren(), 3);
    node->setHighlighted(true);
    item.rectangle.reset();
    node->UpdateNode();
    EXPECT_EQ(mainSwitch(node.get())->getNumChildren(), 3);
}

#include "nc/myDragger.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/sensors/SoSensorManager.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cmath>

#include "core/getUniquelyIdentifies.h"
#include "geometry/GeometryTestSupport.h"
#include "path/PathTestSupport.h"
#include "setup/userCoordinateSystem.h"

// Picking a control point of a curve and dragging it.

namespace {

class CurvePickTest : public PathTest {
  protected:
    void SetUp() override {
        PathTest::SetUp();
        item_.points = ControlPoints{{0, 0, 0, 1, 2}, {10, 0, 50, 1, 2}, {20, 0, 50, 1, 2}, {30, 0, 0, 1, 2}};
    }
    void moveTo(const trajNode& node, float x, float y, float z) const {
        node.dragger()->translation.setValue(x, y, z);
        SoDB::getSensorManager()->processDelayQueue(FALSE);
    }
    FakeItem item_{TORNVALE::kCurveItem, QStringLiteral("G1 X0\nG1 X30\n")};
};

}  // namespace

TEST_F(CurvePickTest, HandleStandsOnTheNearestPoint) {
    const Held<trajNode> node(new trajNode(&item_));
    EXPECT_EQ(node->dragger(), nullptr);
    node->pickPoint(SbVec3f(18, 2, 45));
    myDragger* const dragger = node->dragger();
    ASSERT_NE(dragger, nullptr);
    EXPECT_EQ(dragger->index(), 2);
    EXPECT_EQ(dragger->translation.getValue(), SbVec3f(20, 0, 50));
    EXPECT_EQ(dragger->scaleFactor.getValue(), SbVec3f(120, 120, 120));
    EXPECT_EQ(QString::fromUtf8(dragger->getName().getString()),
              getUniquelyIdentifies::instance().names().draggerNodeName);
    EXPECT_EQ(node->getChild(2), dragger);
}

TEST_F(CurvePickTest, EndsGetNoHandle) {
    const Held<trajNode> node(new trajNode(&item_));
    node->pickPoint(SbVec3f(1, 0, 0));
    EXPECT_EQ(node->dragger(), nullptr);
    node->pickPoint(SbVec3f(29, 0, 0));
    EXPECT_EQ(node->dragger(), nullptr);
    EXPECT_EQ(node->getNumChildren(), 2);
}

TEST_F(CurvePickTest, TwoControlPoints_NoHandleAtAll) {
    item_.points = ControlPoints{{0, 0, 0}, {10, 0, 0}};
    const Held<trajNode> node(new trajNode(&item_));
    for (const float x : {-5.0F, 0.0F, 5.0F, 10.0F, 15.0F}) {
        node->pickPoint(SbVec3f(x, 0, 0));
        EXPECT_EQ(node->dragger(), nullptr) << x;
    }
}

TEST_F(CurvePickTest, NextPickReplacesTheHandle) {
    const Held<trajNode> node(new trajNode(&item_));
    node->pickPoint(SbVec3f(10, 0, 50));
    const Held<myDragger> old(node->dragger());
    node->pickPoint(SbVec3f(20, 0, 50));
    EXPECT_EQ(node->getNumChildren(), 3);
    EXPECT_EQ(node->dragger()->index(), 2);
    EXPECT_EQ(old->getRefCount(), 1);
    old->translation.setValue(1, 1, 1);
    SoDB::getSensorManager()->processDelayQueue(FALSE);
    EXPECT_TRUE(item_.moves.empty()) << "nobody watches the old one";
    node->pickPoint(SbVec3f(0, 0, 0));
    EXPECT_EQ(node->dragger(), nullptr) << "a pick at an end takes the old handle away";
    EXPECT_EQ(node->getNumChildren(), 2);
}

TEST_F(CurvePickTest, PlaceIsTakenInTheFrameOfTheSystem) {
    const Held<userCoordinateSystem> system(new userCoordinateSystem(0, nullptr));
    system->setTranslation(SbVec3f(1000, 0, 0));
    trajNode* const node = trajNode::addProgram(*system.get(), &item_);
    node->pickPoint(SbVec3f(1011, 0, 50));
    ASSERT_NE(node->dragger(), nullptr);
    EXPECT_EQ(node->dragger()->index(), 1);
    EXPECT_EQ(node->dragger()->translation.getValue(), SbVec3f(10, 0, 50));
    node->pickPoint(SbVec3f(11, 0, 50));
    EXPECT_EQ(node->dragger(), nullptr) << "far from the curve an end is the nearest";
}

TEST_F(CurvePickTest, OtherItemsAndEmptyCurves_GetNoHandle) {
    for (const int type : {TORNVALE::kIsoItem, TORNVALE::kDrillItem, TORNVALE::kRectangleItem}) {
        FakeItem item(type, QStringLiteral("G1 X0\nG1 X30\nG1 X60\n"));
        const Held<trajNode> node(new trajNode(&item));
        node->pickPoint(SbVec3f(30, 0, 0));
        EXPECT_EQ(node->dragger(), nullptr) << type;
    }
    item_.points = ControlPoints{};
    const Held<trajNode> node(new trajNode(&item_));
    node->pickPoint(SbVec3f(0, 0, 0));
    EXPECT_EQ(node->dragger(), nullptr);
    item_.points = ControlPoints{{0, 0, 0}, {std::nan(""), 0, 0}, {9, 0, 0}};
    node->pickPoint(SbVec3f(4, 0, 0));
    EXPECT_EQ(node->dragger(), nullptr);
    node->pickPoint(SbVec3f(std::nanf(""), 0, 0));
    EXPECT_EQ(node->dragger(), nullptr);
}

TEST_F(CurvePickTest, MovingTheHandle_MovesThePointOfTheItem) {
    const Held<trajNode> node(new trajNode(&item_));
    node->pickPoint(SbVec3f(10, 0, 50));
    SoDB::getSensorManager()->processDelayQueue(FALSE);
    EXPECT_TRUE(item_.moves.empty()) << "showing the handle moves nothing";
    moveTo(*node.get(), 12, 3, 55);
    ASSERT_EQ(item_.moves.size(), 1U);
    EXPECT_EQ(item_.moves[0].index, 1);
    EXPECT_EQ(item_.moves[0].x, 12);
    EXPECT_EQ(item_.moves[0].y, 3);
    EXPECT_EQ(item_.moves[0].z, 55);
    ASSERT_NE(node->dragger(), nullptr) << "the handle outlives the regeneration";
    moveTo(*node.get(), 13, 3, 55);
    EXPECT_EQ(item_.moves.size(), 2U);
}

TEST_F(CurvePickTest, HandleOutsideOfAllNumbers_MovesNothing) {
    const Held<trajNode> node(new trajNode(&item_));
    node->pickPoint(SbVec3f(10, 0, 50));
    moveTo(*node.get(), HUGE_VALF, 0, 0);
    moveTo(*node.get(), 0, std::nanf(""), 0);
    EXPECT_TRUE(item_.moves.empty());
}

TEST_F(CurvePickTest, RemovedHandle_MovesNothing) {
    const Held<trajNode> node(new trajNode(&item_));
    node->pickPoint(SbVec3f(10, 0, 50));
    const Held<myDragger> dragger(node->dragger());
    dragger->translation.setValue(1, 2, 3);  // the sensor is on its way
    node->removeDragger();
    EXPECT_EQ(node->dragger(), nullptr);
    EXPECT_EQ(node->getNumChildren(), 2);
    SoDB::getSensorManager()->processDelayQueue(FALSE);
    EXPECT_TRUE(item_.moves.empty());
    node->removeDragger();
}

TEST_F(CurvePickTest, CurveThatLosesThePoint_TakesTheHandleAway) {
    const Held<trajNode> node(new trajNode(&item_));
    node->pickPoint(SbVec3f(20, 0, 50));
    ASSERT_NE(node->dragger(), nullptr);
    item_.points->removeAt(1);
    node->UpdateNode();
    EXPECT_EQ(node->dragger(), nullptr) << "its index is an end now";
}

TEST_F(CurvePickTest, HandleThatMakesTheItemDropItsNode_EndsCleanly) {
    const Held<userCoordinateSystem> system(new userCoordinateSystem(0, nullptr));
    trajNode* const node = trajNode::addProgram(*system.get(), &item_);
    node->pickPoint(SbVec3f(10, 0, 50));
    item_.dropNodeOnMove = true;
    moveTo(*node, 12, 3, 55);
    EXPECT_EQ(item_.moves.size(), 1U);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(item_.pathNode(), nullptr) << "the node has gone, and said so";
    EXPECT_TRUE(system->trajNodes().isEmpty());
}

TEST_F(CurvePickTest, DotsCanBePicked) {
    const Held<trajNode> node(new trajNode(&item_));
    node->setHighlighted(true);
    SoRayPickAction pick(SbViewportRegion(100, 100));
    pick.setRay(SbVec3f(10, 100, 50), SbVec3f(0, -1, 0));
    pick.apply(node.get());
    ASSERT_NE(pick.getPickedPoint(), nullptr);
    EXPECT_EQ(pick.getPickedPoint()->getPath()->getTail()->getName(), SbName("wayPointsNode"));
    node->pickPoint(pick.getPickedPoint()->getPoint());
    ASSERT_NE(node->dragger(), nullptr);
    EXPECT_EQ(node->dragger()->index(), 1);
}

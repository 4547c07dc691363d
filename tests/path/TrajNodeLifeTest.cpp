#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPointer>

#include "geometry/GeometryTestSupport.h"
#include "nc/trajNode.h"
#include "path/PathTestSupport.h"
#include "setup/userCoordinateSystem.h"

// Who goes first, and the way from one user coordinate system to another.

namespace {

class TrajNodeLifeTest : public PathTest {
  protected:
    static const QString& code() {
        static const QString text = QStringLiteral("G1 X5\nG1 Y7\n");
        return text;
    }
};

}  // namespace

TEST_F(TrajNodeLifeTest, AddProgram_MakesTheNodeOnce) {
    const Held<userCoordinateSystem> system(new userCoordinateSystem(0, nullptr));
    FakeItem item(TORNVALE::kIsoItem, code());
    trajNode* const node = trajNode::addProgram(*system.get(), &item);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->parentSystem(), system.get());
    EXPECT_EQ(system->trajNodes(), QVector<SoNode*>{node});
    EXPECT_EQ(system->switcher()->getChild(1), node);
    EXPECT_EQ(system->findChild(item.name), node);

    item.isoCode = QStringLiteral("G1 X1\nG1 X2\nG1 X3\n");
    EXPECT_EQ(trajNode::addProgram(*system.get(), &item), node);
    EXPECT_EQ(system->trajNodes().size(), 1);
    EXPECT_EQ(system->switcher()->getNumChildren(), 2);
}

TEST_F(TrajNodeLifeTest, AddProgram_RowsThatAreNoItems_GetNone) {
    const Held<userCoordinateSystem> system(new userCoordinateSystem(0, nullptr));
    QTreeWidgetItem plain;
    EXPECT_EQ(trajNode::addProgram(*system.get(), &plain), nullptr);
    EXPECT_EQ(trajNode::addProgram(*system.get(), nullptr), nullptr);
    EXPECT_TRUE(system->trajNodes().isEmpty());
}

TEST_F(TrajNodeLifeTest, MovesToAnotherSystem) {
    const Held<userCoordinateSystem> first(new userCoordinateSystem(0, nullptr));
    const Held<userCoordinateSystem> second(new userCoordinateSystem(1, nullptr));
    FakeItem item(TORNVALE::kCurveItem, code());
    item.points = ControlPoints{{0, 0, 0}, {10, 0, 0}, {20, 0, 0}};
    trajNode* const node = trajNode::addProgram(*first.get(), &item);
    node->pickPoint(SbVec3f(10, 0, 0));
    ASSERT_NE(node->dragger(), nullptr);
    node->moveTo(second.get());
    EXPECT_EQ(node->parentSystem(), second.get());
    EXPECT_EQ(node->dragger(), nullptr) << "the handle was the other system's";
    EXPECT_TRUE(first->trajNodes().isEmpty());
    EXPECT_EQ(first->switcher()->getNumChildren(), 1);
    EXPECT_EQ(second->trajNodes(), QVector<SoNode*>{node});
    EXPECT_EQ(item.pathNode(), node);
    node->moveTo(second.get());
    EXPECT_EQ(second->switcher()->getNumChildren(), 2);

    EXPECT_EQ(trajNode::addProgram(*first.get(), &item), node) << "the item has one node";
    EXPECT_EQ(node->parentSystem(), first.get());
    EXPECT_TRUE(second->trajNodes().isEmpty());
}

TEST_F(TrajNodeLifeTest, OutOfTheScene_GoesAndTellsTheItem) {
    const Held<userCoordinateSystem> system(new userCoordinateSystem(0, nullptr));
    FakeItem item(TORNVALE::kIsoItem, code());
    const QPointer<trajNode> node = trajNode::addProgram(*system.get(), &item);
    node->moveTo(nullptr);
    EXPECT_TRUE(node.isNull());
    EXPECT_EQ(item.pathNode(), nullptr);
    EXPECT_TRUE(system->trajNodes().isEmpty());
    EXPECT_NE(trajNode::addProgram(*system.get(), &item), nullptr) << "and can be mapped anew";
}

TEST_F(TrajNodeLifeTest, OutOfTheSceneButHeld_Stays) {
    const Held<userCoordinateSystem> system(new userCoordinateSystem(0, nullptr));
    FakeItem item(TORNVALE::kIsoItem, code());
    const Held<trajNode> node(trajNode::addProgram(*system.get(), &item));
    node->moveTo(nullptr);
    EXPECT_EQ(node->getRefCount(), 1);
    EXPECT_EQ(node->parentSystem(), nullptr);
    EXPECT_EQ(item.pathNode(), node.get());
    node->UpdateNode();
}

TEST_F(TrajNodeLifeTest, ItemGoesFirst_NodeGoesWithIt) {
    const Held<userCoordinateSystem> system(new userCoordinateSystem(0, nullptr));
    QPointer<trajNode> node;
    {
        FakeItem item(TORNVALE::kIsoItem, code());
        node = trajNode::addProgram(*system.get(), &item);
    }
    EXPECT_TRUE(node.isNull());
    EXPECT_TRUE(system->trajNodes().isEmpty());
    EXPECT_EQ(system->switcher()->getNumChildren(), 1);
}

TEST_F(TrajNodeLifeTest, ItemGoesFirst_HeldNodeIsEmptyButAlive) {
    auto item = std::make_unique<FakeItem>(TORNVALE::kCurveItem, code());
    item->points = ControlPoints{{0, 0, 0}, {10, 0, 0}, {20, 0, 0}};
    const Held<trajNode> node(new trajNode(item.get()));
    node->pickPoint(SbVec3f(10, 0, 0));
    item.reset();
    EXPECT_EQ(node->item(), nullptr);
    EXPECT_EQ(node->dragger(), nullptr);
    node->UpdateNode();
    node->setHighlighted(true);
    node->setHighlighted(false);
    node->pickPoint(SbVec3f(10, 0, 0));
    EXPECT_EQ(node->dragger(), nullptr);
}

TEST_F(TrajNodeLifeTest, SystemGoesFirst_NodeGoesAndTellsTheItem) {
    FakeItem item(TORNVALE::kIsoItem, code());
    {
        const Held<userCoordinateSystem> system(new userCoordinateSystem(0, nullptr));
        trajNode::addProgram(*system.get(), &item);
        EXPECT_NE(item.pathNode(), nullptr);
    }
    EXPECT_EQ(item.pathNode(), nullptr);
}

TEST_F(TrajNodeLifeTest, SystemGoesFirst_HeldNodeForgetsIt) {
    FakeItem item(TORNVALE::kCurveItem, code());
    item.points = ControlPoints{{0, 0, 0}, {10, 0, 0}, {20, 0, 0}};
    auto system = std::make_unique<Held<userCoordinateSystem>>(new userCoordinateSystem(0, nullptr));
    const Held<trajNode> node(trajNode::addProgram(*system->get(), &item));
    system.reset();
    EXPECT_EQ(node->parentSystem(), nullptr);
    node->pickPoint(SbVec3f(10, 0, 0));
    EXPECT_NE(node->dragger(), nullptr);
    const Held<userCoordinateSystem> next(new userCoordinateSystem(1, nullptr));
    node->moveTo(next.get());
    EXPECT_EQ(next->trajNodes().size(), 1);
}

TEST_F(TrajNodeLifeTest, ItemWithANewerNode_KeepsIt) {
    FakeItem item(TORNVALE::kIsoItem, code());
    auto first = std::make_unique<Held<trajNode>>(new trajNode(&item));
    const Held<trajNode> second(new trajNode(&item));
    EXPECT_EQ(item.pathNode(), second.get());
    first.reset();
    EXPECT_EQ(item.pathNode(), second.get());
}

TEST_F(TrajNodeLifeTest, QtParent_HoldsOneReference) {
    FakeItem item(TORNVALE::kIsoItem, code());
    {
        QWidget host;
        auto* const node = new trajNode(&item);  // owned by its parent
        node->setParent(&host);
        EXPECT_EQ(node->getRefCount(), 1);
    }
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(item.pathNode(), nullptr);
}

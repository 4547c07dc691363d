#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

#include "machine/SpindleClass.h"
#include "motion/MotionTestSupport.h"

namespace {

struct Machine : SmallMachine {
    explicit Machine(const QByteArray& names, const QByteArray& counts, const QByteArray& step = "0 200 0") {
        installation.write("data.ini",
                           "[MotionNode]\nIsRepeatNodesEnable=true\n"
                           "AxisNodeRepeatTransformations=" +
                               step + "\nAxisNodeRepeatCount=" + counts + "\nAxisNodeRepeatNames=" + names +
                               "\n");
    }
};

Eigen::Vector3d placeOf(MotionNodeManager& manager, AxisBase& axis) {
    return placeInScene(manager.root(), axis.shapeSwitch(), Eigen::Vector3d::Zero());
}

}  // namespace

TEST(RepeatNodes, AreOffUnlessTheSettingSaysTrue) {
    Machine machine("X", "2");
    machine.installation.write("data.ini",
                               "[MotionNode]\nIsRepeatNodesEnable=True\n"
                               "AxisNodeRepeatCount=2\nAxisNodeRepeatNames=X\n");
    EXPECT_TRUE(machine.build().findAxis("X")->repeats().isEmpty());
}

TEST(RepeatNodes, StandStepByStepAndFollowTheirSource) {
    Machine machine("X Z", "2 2");
    MotionNodeManager& manager = machine.build();
    const QVector<AxisBase*> heads = manager.findAxis("X")->repeats();
    const QVector<AxisBase*> arms = manager.findAxis("Z")->repeats();
    ASSERT_EQ(heads.size(), 2);
    ASSERT_EQ(arms.size(), 2);
    manager.executeLine("X30 Z-40");
    for (int j = 0; j < 2; ++j) {
        const Eigen::Vector3d head(30, 200 * (j + 1), 500);
        EXPECT_LT((placeOf(manager, *heads[j]) - head).norm(), 1e-3) << j;
        EXPECT_LT((placeOf(manager, *arms[j]) - (head - Eigen::Vector3d(0, 0, 140))).norm(), 1e-3) << j;
        EXPECT_EQ(arms[j]->parentAxis(), heads[j]);
    }
}

TEST(RepeatNodes, AreFoundByNobodyAndTakeNoPartInThePass) {
    Machine machine("X Z", "1 1");
    MotionNodeManager& manager = machine.build();
    EXPECT_FALSE(manager.findAxis("X")->isClone());
    EXPECT_EQ(dynamic_cast<AxisBase*>(manager.findNode("X")), manager.findAxis("X"));
    EXPECT_EQ(manager.axes().size(), 5);
    EXPECT_EQ(manager.collisionGroups().value("X").size(), 2);
    const fcl::CollisionObject<float>* object = manager.findAxis("X")->repeats()[0]->collisionObject();
    ASSERT_NE(object, nullptr);
    const Eigen::Vector3f before = object->getTranslation();
    manager.executeLine("X30");
    EXPECT_EQ((object->getTranslation() - before).norm(), 0) << "the connection moves the scene only";
}

TEST(RepeatNodes, TheLastAxisCarriesCopiesOfAllSpindles) {
    Machine machine("X Z", "1 1");
    MotionNodeManager& manager = machine.build();
    for (SpindleNode* spindle : manager.spindles()) {
        ASSERT_EQ(spindle->repeats().size(), 1);
        EXPECT_EQ(spindle->repeats()[0]->parentAxis(), manager.findAxis("Z")->repeats()[0]);
    }
    ToolData tool = cylinderTool(2, 1);
    manager.UpdateToolList({&tool});
    EXPECT_EQ(manager.findSpindle(2)->repeats()[0]->tool().record().toolNo, 1);
}

TEST(RepeatNodes, ListsOfUnequalLengthEndTheProcess) {
    Machine machine("X Z", "2");
    EXPECT_FATAL(machine.build(), "countList.size\\(\\) != nameList.size\\(\\) ");
}

TEST(RepeatNodes, AnUnknownAxisEndsTheProcess) {
    Machine machine("Q", "1");
    EXPECT_EXIT(machine.build(), ::testing::ExitedWithCode(1), "");
}

TEST(RepeatNodes, ACountOfNothingIsNoRepeat) {
    Machine machine("X Z", "0 -3", "");
    EXPECT_TRUE(machine.build().findAxis("X")->repeats().isEmpty());
    EXPECT_TRUE(machine.manager().findAxis("Z")->repeats().isEmpty());
}

TEST(RepeatNodes, ACountWithoutEndIsBounded) {
    Machine machine("X", "99999999");
    const LogCapture log;
    EXPECT_EQ(machine.build().findAxis("X")->repeats().size(), 100);
    EXPECT_TRUE(log.contains("AxisNodeRepeatCount"));
}

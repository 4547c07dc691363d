// Axes that carry axes: chains, poses, listeners, repeats, and what must not happen.

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

#include <QTreeWidgetItem>
#include <random>

#include "core/LanguageReader.h"
#include "geometry/modelNode.h"
#include "machine/SpindleClass.h"
#include "nodes/NodesTestSupport.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

namespace {

QStringList chainOf(const fcl::CollisionObject<float>* object) {
    return *static_cast<QStringList*>(object->getUserData());
}

class AxisTree : public ::testing::Test {
  protected:
    /// Base (linear along Z) carries Turn (rotary about Z, at x = -100), which carries Tip (linear along X).
    void SetUp() override {
        numericalAxisStruct turn = axisRecord(QStringLiteral("Turn"), QStringLiteral("ROTATION"));
        turn.initialization = QStringLiteral("100 0 0");
        numericalAxisStruct tip = axisRecord(QStringLiteral("Tip"), QStringLiteral("LINEAR"));
        tip.direction = QStringLiteral("1 0 0");
        base_ = makeAxis(QStringLiteral("Base"), QStringLiteral("LINEAR"));
        root_->addChild(base_);
        turn_ = makeAxis(turn);
        base_->addChild(turn_);
        tip_ = makeAxis(tip);
        turn_->addChild(tip_);
    }

    NodesInstallation installation_;
    Held<SoSeparator> root_{new SoSeparator};  // owned by its reference
    numericalAxis* base_ = nullptr;
    numericalAxis* turn_ = nullptr;
    numericalAxis* tip_ = nullptr;
    RecordingListener listener_;
};

}  // namespace

TEST_F(AxisTree, ParentsChildrenAndChains) {
    EXPECT_EQ(base_->parentAxis(), nullptr);
    EXPECT_EQ(turn_->parentAxis(), base_);
    EXPECT_EQ(base_->childNodes(), QVector<SoNode*>{turn_});
    const QStringList chain{QStringLiteral("Base"), QStringLiteral("Turn"), QStringLiteral("Tip")};
    EXPECT_EQ(tip_->nodeChain(), chain);
    EXPECT_EQ(tip_->carrierChain(), chain);
    EXPECT_EQ(chainOf(tip_->collisionObject()), chain);
    EXPECT_EQ(base_->getNumChildren(), 5);
}

TEST_F(AxisTree, ChainsOfASubtreeAreMadeAnewWhenItGetsAParent) {
    numericalAxis* top = makeAxis(QStringLiteral("Top"), QStringLiteral("FIXED"));
    root_->addChild(top);
    top->addChild(base_);
    EXPECT_EQ(chainOf(tip_->collisionObject()), (QStringList{QStringLiteral("Top"), QStringLiteral("Base"),
                                                             QStringLiteral("Turn"), QStringLiteral("Tip")}));
}

TEST_F(AxisTree, PosesAgreeWithTheSceneAndWithDoublePrecision) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> value(-300, 300);
    const Eigen::Affine3d offset = shifted(-100, 0, 0);
    for (int round = 0; round < 200; ++round) {
        const float z = value(random);
        const float c = value(random);
        const float x = value(random);
        base_->setValue(z);
        turn_->setValue(c);
        tip_->setValue(x);
        const Eigen::Affine3d expected = shifted(0, 0, double{z}) * offset * offset *
                                         turned({0, 0, 1}, double{c}) * shifted(double{x}, 0, 0);
        EXPECT_LT(deviation(tip_->collisionObject()->getTransform(), expected), 1e-3)
            << "seed 11 round " << round;
        EXPECT_LT(deviation(tip_->worldMatrix(), expected), 1e-3) << "seed 11 round " << round;
        const Eigen::Vector3d point(10, -20, 30);
        EXPECT_LT((placeInScene(root_.get(), tip_->shapeSwitch(), point) - expected * point).norm(), 1e-3)
            << "seed 11 round " << round;
    }
}

TEST_F(AxisTree, MovingTheTopMovesAllObjectsBelow) {
    base_->setValue(40);
    EXPECT_LT(deviation(turn_->collisionObject()->getTransform(), shifted(-200, 0, 40)), 1e-4);
    EXPECT_LT(deviation(tip_->collisionObject()->getTransform(), shifted(-200, 0, 40)), 1e-4);
}

TEST_F(AxisTree, OffsetMatrixMovesTheSubtree) {
    base_->applyOffsetMatrix(translationMatrix(SbVec3f(0, 7, 0)));
    EXPECT_LT(deviation(tip_->collisionObject()->getTransform(), shifted(-200, 7, 0)), 1e-4);
}

TEST_F(AxisTree, AxisWithAParentIsNotReparented) {
    numericalAxis* other = makeAxis(QStringLiteral("Other"), QStringLiteral("LINEAR"));
    root_->addChild(other);
    other->addChild(tip_);
    EXPECT_EQ(tip_->parentAxis(), turn_);
    EXPECT_TRUE(other->childNodes().isEmpty());
    EXPECT_EQ(other->getNumChildren(), 5) << "it stands in the scene there too";
}

TEST_F(AxisTree, PairNamedAgainIsAddedOnce) {
    base_->addChild(turn_);
    EXPECT_EQ(base_->getNumChildren(), 5);
    EXPECT_EQ(base_->childNodes().size(), 1);
}

TEST_F(AxisTree, CirclesAreRefused) {
    const LogCapture log;
    tip_->addChild(base_);
    tip_->addChild(turn_);
    tip_->addChild(tip_);
    tip_->addChild(nullptr);
    EXPECT_EQ(tip_->getNumChildren(), 4);
    EXPECT_EQ(base_->parentAxis(), nullptr);
    EXPECT_EQ(log.count(QStringLiteral("cannot carry what carries it")), 3);
}

TEST_F(AxisTree, CircleThroughTheSceneAloneIsRefused) {
    numericalAxis* other = makeAxis(QStringLiteral("Other"), QStringLiteral("LINEAR"));
    root_->addChild(other);
    other->addChild(tip_);  // a scene child only
    tip_->addChild(other);
    EXPECT_EQ(tip_->getNumChildren(), 4);
    EXPECT_EQ(other->parentAxis(), nullptr);
}

TEST_F(AxisTree, CollisionObjectsComeOwnFirstThenByChild) {
    nonNumericalAxisStruct empty = partRecord(QStringLiteral("Empty"), QStringLiteral("FIXED"));
    empty.modelPath = QStringLiteral("models/None.stl");
    NonNumericalAxis* part = makePart(empty);
    base_->addChild(part);
    EXPECT_EQ(part->collisionObject(), nullptr);
    EXPECT_EQ(base_->collisionObjects(), (CollisionObjects{base_->collisionObject(), turn_->collisionObject(),
                                                           tip_->collisionObject(), nullptr}));
}

TEST_F(AxisTree, ModelOnAnAxisIsRefreshedAndCounted) {
    auto* model = new UserModelNode;  // owned by the axis
    model->setName("Piece");
    ASSERT_TRUE(model->loadFromStl(installation_.cube(QStringLiteral("p.stl"), 5)));
    tip_->addChild(model);
    EXPECT_EQ(model->nodeChain(), (QStringList{QStringLiteral("Base"), QStringLiteral("Turn"),
                                               QStringLiteral("Tip"), QStringLiteral("Piece")}));
    tip_->setValue(3);
    EXPECT_LT(deviation(model->collisionObject()->getTransform(), shifted(-197, 0, 0)), 1e-4);
    model->collisionObject()->setTransform(CollisionTransform::Identity());
    EXPECT_EQ(tip_->collisionObjects(),
              (CollisionObjects{tip_->collisionObject(), model->collisionObject()}));
    EXPECT_LT(deviation(model->collisionObject()->getTransform(), shifted(-197, 0, 0)), 1e-4);
    EXPECT_EQ(tip_->treeItem()->childCount(), 0) << "models have no row under an axis";
}

TEST_F(AxisTree, ListenerHearsOfEveryMoveByItsPath) {
    base_->setChainListener(&listener_);
    tip_->setValue(1);
    base_->setValue(2);
    ASSERT_EQ(listener_.refreshed.size(), 2);
    EXPECT_EQ(listener_.refreshed[0], tip_->nodeChain());
    EXPECT_EQ(listener_.refreshed[1], QStringList{QStringLiteral("Base")});
    base_->setChainListener(nullptr);
    tip_->setValue(3);
    EXPECT_EQ(listener_.refreshed.size(), 2);
}

TEST_F(AxisTree, AddedAxisInheritsTheListener) {
    base_->setChainListener(&listener_);
    numericalAxis* late = makeAxis(QStringLiteral("Late"), QStringLiteral("LINEAR"));
    tip_->addChild(late);
    late->setValue(5);
    ASSERT_EQ(listener_.refreshed.size(), 1);
    EXPECT_EQ(listener_.refreshed[0].last(), QStringLiteral("Late"));
}

TEST_F(AxisTree, RemovedChildIsForgottenAndTold) {
    base_->setChainListener(&listener_);
    const Held<numericalAxis> kept(tip_);
    turn_->removeChild(tip_);
    EXPECT_EQ(listener_.resets, 1);
    ASSERT_EQ(listener_.refreshed.size(), 1);
    EXPECT_EQ(listener_.refreshed[0], turn_->nodeChain());
    EXPECT_TRUE(turn_->childNodes().isEmpty());
    EXPECT_EQ(turn_->getNumChildren(), 4);
    EXPECT_EQ(tip_->parentAxis(), nullptr);
    EXPECT_EQ(chainOf(tip_->collisionObject()), QStringList{QStringLiteral("Tip")});
    tip_->setValue(9);
    EXPECT_EQ(listener_.refreshed.size(), 1) << "it has no listener any more";
    turn_->removeChild(99);
    turn_->removeChild(static_cast<SoNode*>(nullptr));
    EXPECT_EQ(turn_->getNumChildren(), 4);
}

TEST_F(AxisTree, RemoveAllLeavesAnEmptyGroupThatStillAnswers) {
    turn_->removeAllChildren();
    EXPECT_EQ(turn_->getNumChildren(), 0);
    turn_->setValue(10);
    turn_->setCollided(true);
    turn_->setVisible(false);
    EXPECT_EQ(turn_->currentValue(), 0.0);
    EXPECT_TRUE(turn_->toJson().isEmpty());
}

TEST_F(AxisTree, ReplacedChildChangesPlaces) {
    numericalAxis* late = makeAxis(QStringLiteral("Late"), QStringLiteral("LINEAR"));
    const Held<numericalAxis> kept(tip_);
    turn_->replaceChild(tip_, late);
    EXPECT_EQ(tip_->parentAxis(), nullptr);
    EXPECT_EQ(late->parentAxis(), turn_);
    EXPECT_EQ(turn_->childNodes(), QVector<SoNode*>{late});
}

TEST_F(AxisTree, ParentThatGoesLeavesNoPointer) {
    const Held<numericalAxis> kept(tip_);
    root_->removeAllChildren();
    EXPECT_EQ(tip_->parentAxis(), nullptr);
    tip_->setValue(2);
    EXPECT_LT(deviation(tip_->collisionObject()->getTransform(), shifted(2, 0, 0)), 1e-5);
}

TEST_F(AxisTree, CollidedColourPassesToChildAxesAndSelectedDoesNot) {
    const auto color = [](const AxisBase* axis) { return SbColor(axis->material()->diffuseColor[0]); };
    base_->setCollided(true);
    EXPECT_EQ(color(tip_), SbColor(1, 0, 0));
    base_->setCollided(false);
    EXPECT_EQ(color(tip_), SbColor(0.25F, 0.5F, 0.75F));
    base_->setSelected(true);
    EXPECT_EQ(color(base_), SbColor(1, 1, 0));
    EXPECT_EQ(color(tip_), SbColor(0.25F, 0.5F, 0.75F));
}

TEST_F(AxisTree, CloneUnderAParentIsARepeatAndNoChild) {
    AxisBase* copy = turn_->clone();
    base_->addChild(copy);
    EXPECT_EQ(copy->parentAxis(), base_);
    EXPECT_EQ(base_->childNodes(), QVector<SoNode*>{turn_});
    EXPECT_EQ(base_->repeats(), QVector<AxisBase*>{copy});
    EXPECT_EQ(copy->nodeChain(), (QStringList{QStringLiteral("Base"), QStringLiteral("Turn")}));
    EXPECT_FALSE(base_->collisionObjects().contains(copy->collisionObject()));
    base_->setCollided(true);
    EXPECT_EQ(SbColor(copy->material()->diffuseColor[0]), SbColor(1, 0, 0));
    base_->removeChild(copy);
    EXPECT_TRUE(base_->repeats().isEmpty());
}

TEST_F(AxisTree, RepeatFollowsByItsFieldAndItsObjectDoesNot) {
    AxisBase* copy = turn_->clone();
    copy->applyOffsetMatrix(translationMatrix(SbVec3f(320, 0, 0)));
    turn_->addRepeat(*copy);
    base_->addChild(copy);
    const CollisionTransform before = copy->collisionObject()->getTransform();
    turn_->setValue(90);
    const Eigen::Affine3d expected = shifted(220, 0, 0) * shifted(-100, 0, 0) * turned({0, 0, 1}, 90);
    EXPECT_LT(
        (placeInScene(root_.get(), copy->shapeSwitch(), {5, 6, 7}) - expected * Eigen::Vector3d(5, 6, 7))
            .norm(),
        1e-4);
    EXPECT_EQ(copy->collisionObject()->getTransform().matrix(), before.matrix());
    turn_->setSelected(true);
    EXPECT_EQ(SbColor(copy->material()->diffuseColor[0]), SbColor(1, 1, 0));
    turn_->setVisible(false);
    EXPECT_FALSE(copy->isShapeVisible());
    turn_->resetColour();
    EXPECT_EQ(SbColor(copy->material()->diffuseColor[0]), SbColor(0.25F, 0.5F, 0.75F));
}

TEST_F(AxisTree, RepeatThatGoesIsForgotten) {
    AxisBase* copy = turn_->clone();
    turn_->addRepeat(*copy);
    base_->addChild(copy);
    base_->removeChild(copy);
    EXPECT_TRUE(turn_->repeats().isEmpty());
    turn_->setSelected(true);
    turn_->setValue(4);
}

TEST_F(AxisTree, InformationOfANumericalAxisEndsWithDynamicsAndRepeats) {
    numericalAxisStruct record = axisRecord(QStringLiteral("Fast"), QStringLiteral("LINEAR"));
    record.maxVelocity = QStringLiteral("60000");
    record.acceleration = QStringLiteral("3500.5");
    record.jerk = QStringLiteral("1234567");
    const Held<numericalAxis> axis(makeAxis(record));
    const Held<AxisBase> copy(axis->clone());
    axis->addRepeat(*copy.get());
    QString text;
    axis->information(text);
    const QString rule = QString(38, QLatin1Char('-')) + QLatin1Char('\n');
    const QString tail =
        QStringLiteral("MaxVelocity: 60000\nAcceleration: 3500.5\nJerk: 1.23457e+06\n") + rule;
    EXPECT_EQ(text.count(tail), 2);
    EXPECT_TRUE(text.contains(tail + QStringLiteral("RepeatNode:Axis Name: Fast\n")));
    EXPECT_TRUE(text.endsWith(rule));
    EXPECT_EQ(text.count(rule), 4);
}

TEST_F(AxisTree, TreeRowsFollowTheChildren) {
    auto* zone = new WorkCoordinateSystem;  // owned by the axis
    base_->addChild(zone);
    auto* spindle = new SpindleNode;  // owned by the axis
    spindleStruct record;
    record.name = QStringLiteral("T1");
    record.initialization = QStringLiteral("0 0 0 0");
    spindle->Setup(&record);
    turn_->addChild(spindle);
    auto* system = new userCoordinateSystem(4, nullptr);  // owned by the axis
    base_->addChild(system);
    QTreeWidgetItem* item = base_->treeItem();
    ASSERT_EQ(item->childCount(), 2) << "a coordinate system that stands on an axis itself has no row there";
    EXPECT_EQ(item->child(0), turn_->treeItem());
    EXPECT_EQ(item->child(1), zone->treeItem());
    EXPECT_EQ(turn_->treeItem()->child(0), tip_->treeItem());
    EXPECT_EQ(turn_->treeItem()->child(1), spindle->treeItem());
    numericalAxis* late = makeAxis(QStringLiteral("Late"), QStringLiteral("LINEAR"));
    base_->addChild(late);
    ASSERT_EQ(item->childCount(), 3);
    EXPECT_EQ(item->child(2), late->treeItem());
    base_->removeChild(late);
    EXPECT_EQ(item->childCount(), 2);
}

TEST_F(AxisTree, TreeThatTakesTheRowsMayDeleteThem) {
    delete base_->treeItem();
    EXPECT_EQ(base_->treeItem()->childCount(), 1);
    EXPECT_EQ(base_->treeItem()->child(0)->text(1), QStringLiteral("Turn"));
}

TEST(NumericalAxis, BadVectorsEndTheProcess) {
    const NodesInstallation installation;
    numericalAxisStruct place = axisRecord(QStringLiteral("X"), QStringLiteral("LINEAR"));
    place.initialization = QStringLiteral("1 2");
    EXPECT_FATAL(static_cast<void>(makeAxis(place)), "Initialization size is not 3");
    numericalAxisStruct direction = axisRecord(QStringLiteral("X"), QStringLiteral("LINEAR"));
    direction.direction = QStringLiteral("1 2 3 4");
    EXPECT_FATAL(static_cast<void>(makeAxis(direction)), "Initialization size is not 3");
}

TEST(NumericalAxis, MissingModelEndsTheProcess) {
    const NodesInstallation installation;
    numericalAxisStruct record = axisRecord(QStringLiteral("X"), QStringLiteral("LINEAR"));
    record.modelPath = QStringLiteral("models/None.stl");
    EXPECT_FATAL(static_cast<void>(makeAxis(record)), "The model file does not exist.\tName:X");
}

TEST(NumericalAxis, BadColourIsWhiteWithALogLine) {
    const NodesInstallation installation;
    numericalAxisStruct record = axisRecord(QStringLiteral("X"), QStringLiteral("LINEAR"));
    record.color = QStringLiteral("red");
    const LogCapture log;
    const Held<numericalAxis> axis(makeAxis(record));
    EXPECT_TRUE(log.contains(QStringLiteral("X:color.size() != 3")));
    EXPECT_EQ(SbColor(axis->material()->diffuseColor[0]), SbColor(1, 1, 1));
}

TEST(NumericalAxis, StartsAtHomeInItsUnit) {
    const NodesInstallation installation;
    numericalAxisStruct record = axisRecord(QStringLiteral("Z"), QStringLiteral("LINEAR"));
    record.homePosition = QStringLiteral("650");
    record.direction = QStringLiteral("0 0 2");
    const Held<numericalAxis> linear(makeAxis(record));
    EXPECT_LT(deviation(linear->collisionObject()->getTransform(), shifted(0, 0, 1300)), 1e-3);
    EXPECT_EQ(linear->collisionObject()->getAABB().min_.z(), 1290.0F);
    record.type = QStringLiteral("ROTATION");
    record.homePosition = QStringLiteral("90");
    const Held<numericalAxis> rotary(makeAxis(record));
    EXPECT_LT(deviation(rotary->localMatrix(), turned({0, 0, 1}, 90)), 1e-5);
    const Held<AxisBase> copy(rotary->clone());
    EXPECT_LT(deviation(copy->localMatrix(), turned({0, 0, 1}, 90)), 1e-5);
    EXPECT_EQ(copy->record().id, 3);
}

TEST(NonNumericalAxis, BadRecordLeavesAnEmptyGroupWithoutAWord) {
    const NodesInstallation installation;
    nonNumericalAxisStruct record = partRecord(QStringLiteral("Bed"), QStringLiteral("LINEAR"));
    record.color = QStringLiteral("1 1");
    const Held<NonNumericalAxis> part(new NonNumericalAxis);
    const LogCapture log;
    EXPECT_EQ(part->set(record), -1);
    EXPECT_TRUE(log.lines().empty());
    EXPECT_EQ(part->getNumChildren(), 0);
    EXPECT_EQ(part->name(), QString());
    part->setValue(5);
    part->applyOffsetMatrix(SbMatrix::identity());
    part->fromJson({});
    EXPECT_EQ(part->currentValue(), 0.0);
    EXPECT_EQ(part->collisionObjects(), CollisionObjects{nullptr});
}

TEST(NonNumericalAxis, MissingModelIsALogLine) {
    const NodesInstallation installation;
    nonNumericalAxisStruct record = partRecord(QStringLiteral("Bed"), QStringLiteral("LINEAR"));
    record.modelPath = QStringLiteral("models/None.stl");
    record.parent = QStringLiteral("Y");
    const LogCapture log;
    const Held<NonNumericalAxis> part(makePart(record));
    EXPECT_TRUE(log.contains(QStringLiteral("The model file does not exist.\tName:Bed")));
    EXPECT_EQ(part->getNumChildren(), 4);
    EXPECT_EQ(part->collisionObject(), nullptr);
    EXPECT_EQ(part->parentName(), QStringLiteral("Y"));
    const Held<AxisBase> copy(part->clone());
    EXPECT_EQ(copy->record().id, -1);
}

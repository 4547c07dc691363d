#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTreeWidgetItem>

#include "machine/SpindleClass.h"
#include "machine/SpindlePanel.h"
#include "machine/SpindleStatusWidget.h"
#include "machine/breathingLight.h"
#include "nodes/NodesTestSupport.h"
#include "tools/ToolData.h"

namespace {

ToolData cylinder(float radius, float length) {
    ToolRecord record;
    record.toolNo = 7;
    record.length = length;
    record.diameter = 2 * radius;
    record.contour = {SbVec3f(radius, 0, 0), SbVec3f(radius, 0, -length)};
    return ToolData(record);
}

QStringList chainOf(const fcl::CollisionObject<float>* object) {
    return *static_cast<QStringList*>(object->getUserData());
}

class SpindleTest : public ::testing::Test {
  protected:
    SpindleTest() {
        record_.name = QStringLiteral("T1");
        record_.initialization = QStringLiteral("10 20 30 90");
        record_.startString = QStringLiteral("M3 S#");
        record_.stopString = QStringLiteral("M5");
        record_.checkString = QStringLiteral("M93");
        record_.toolChangeString = QStringLiteral("M6 T#");
        record_.range = QStringLiteral("12");
        record_.color = QStringLiteral("0.2 0.4 0.6");
        numericalAxisStruct axis = axisRecord(QStringLiteral("A"), QStringLiteral("LINEAR"));
        axis.direction = QStringLiteral("1 0 0");
        axis_ = makeAxis(axis);
        root_->addChild(axis_);
        spindle_ = make(record_);
        axis_->addChild(spindle_);
    }
    [[nodiscard]] static SpindleNode* make(spindleStruct record) {
        auto* spindle = new SpindleNode;  // owned by the caller
        spindle->Setup(&record);
        return spindle;
    }
    [[nodiscard]] static QString rpm(SpindleNode* spindle) {
        return spindle->statusWidget()->findChild<QLineEdit*>(QStringLiteral("Rpm"))->text();
    }

    NodesInstallation installation_;
    spindleStruct record_;
    Held<SoSeparator> root_{new SoSeparator};  // owned by its reference
    numericalAxis* axis_ = nullptr;
    SpindleNode* spindle_ = nullptr;
};

}  // namespace

TEST_F(SpindleTest, SceneChildrenStandInOrder) {
    const Held<SpindleNode> lone(make(record_));
    ASSERT_EQ(lone->getNumChildren(), 3);
    EXPECT_EQ(lone->getChild(0), lone->material());
    EXPECT_EQ(lone->getChild(1), lone->transform());
    EXPECT_EQ(lone->getChild(2), lone->toolShape());
    EXPECT_EQ(lone->transform()->matrix.getValue(), SbMatrix::identity());
    EXPECT_EQ(SbColor(lone->material()->diffuseColor[0]), SbColor(0.2F, 0.4F, 0.6F));
    EXPECT_EQ(lone->collisionObject(), nullptr);
    EXPECT_STREQ(lone->getName().getString(), "T1");
    EXPECT_EQ(lone->number(), 1);
}

TEST_F(SpindleTest, CarrierGivesOffsetAndAngleAboutItsDirection) {
    EXPECT_EQ(spindle_->parentAxis(), axis_);
    EXPECT_LT(
        deviation(spindle_->transform()->matrix.getValue(), turned({1, 0, 0}, 90) * shifted(-10, -20, -30)),
        1e-4);
    EXPECT_EQ(spindle_->nodeChain(), (QStringList{QStringLiteral("A"), QStringLiteral("T1")}));
}

TEST_F(SpindleTest, SecondCarrierIsRefused) {
    const Held<numericalAxis> other(makeAxis(QStringLiteral("B"), QStringLiteral("LINEAR")));
    const LogCapture log;
    EXPECT_EQ(spindle_->setParentNode(other.get()), -1);
    EXPECT_EQ(spindle_->setParentNode(nullptr), -1);
    EXPECT_EQ(spindle_->parentAxis(), axis_);
    EXPECT_EQ(log.count(QStringLiteral("SpindleNode::setParentNode()已有父节点")), 1);
    EXPECT_EQ(log.lines()[0].type, QtInfoMsg);
}

TEST_F(SpindleTest, BadTextsAreLogged) {
    record_.initialization = QStringLiteral("1 2 3");
    record_.direction = QStringLiteral("0 1");
    const LogCapture log;
    const Held<SpindleNode> lone(make(record_));
    EXPECT_TRUE(log.contains(QStringLiteral("\tname:T1")));
    EXPECT_TRUE(log.contains(QStringLiteral("The direction of the spindle has a wrong form.")));
    EXPECT_EQ(lone->record().offset, SbVec3f(-1, -2, -3));
    EXPECT_EQ(lone->record().angle_deg, 0.0F);
}

TEST_F(SpindleTest, ToolIsMountedWithMeshPlaceAndPath) {
    ToolData tool = cylinder(10, 100);
    tool.record().transform = {1, 2, 3, 0, 0, 0};
    spindle_->setTool(tool);
    ASSERT_NE(spindle_->collisionObject(), nullptr);
    const Eigen::Affine3d place = turned({1, 0, 0}, 90) * shifted(-10, -20, -30) * shifted(1, 2, 3);
    EXPECT_LT(deviation(spindle_->transform()->matrix.getValue(), place), 1e-4);
    EXPECT_LT(deviation(spindle_->collisionObject()->getTransform(), place), 1e-4);
    EXPECT_EQ(chainOf(spindle_->collisionObject()), (QStringList{QStringLiteral("A"), QStringLiteral("T1")}));
    ASSERT_EQ(spindle_->getNumChildren(), 3);
    EXPECT_EQ(spindle_->getChild(2), spindle_->toolShape());
    EXPECT_STREQ(spindle_->toolShape()->getName().getString(), "T1");
    // Ring of radius 10: drawn in by 0.99 toward the middle, then by 0.9999 toward the origin.
    const auto* faces = dynamic_cast<SoIndexedFaceSet*>(spindle_->toolShape());
    const auto* vertices = dynamic_cast<SoVertexProperty*>(faces->vertexProperty.getValue());
    ASSERT_EQ(vertices->vertex.getNum(), 38);
    EXPECT_NEAR(vertices->vertex[19][2], (-50 - 50 * 0.99) * 0.9999, 1e-3);
}

TEST_F(SpindleTest, ToolObjectFollowsTheCarrier) {
    spindle_->setTool(cylinder(10, 100));
    axis_->setValue(500);
    EXPECT_LT(deviation(spindle_->collisionObject()->getTransform(),
                        shifted(500, 0, 0) * turned({1, 0, 0}, 90) * shifted(-10, -20, -30)),
              1e-3);
    EXPECT_EQ(axis_->collisionObjects(),
              (CollisionObjects{axis_->collisionObject(), spindle_->collisionObject()}));
}

TEST_F(SpindleTest, NextToolReplacesTheOneBefore) {
    RecordingListener listener;
    axis_->setChainListener(&listener);
    spindle_->setTool(cylinder(10, 100));
    const SoNode* first = spindle_->toolShape();
    spindle_->setTool(cylinder(5, 60));
    EXPECT_NE(spindle_->toolShape(), first);
    EXPECT_EQ(spindle_->getNumChildren(), 3);
    EXPECT_EQ(spindle_->tool().record().length, 60.0F);
    EXPECT_EQ(listener.refreshed, (QVector<QStringList>{QStringList(), QStringList()}))
        << "the old object is gone: every group must be made anew";
    spindle_->setTool(ToolData());
    EXPECT_EQ(spindle_->collisionObject(), nullptr);
    EXPECT_EQ(axis_->collisionObjects(), (CollisionObjects{axis_->collisionObject(), nullptr}));
}

TEST_F(SpindleTest, ChainSawTakesItsModelFile) {
    ToolRecord saw;
    saw.type = static_cast<int>(ToolType::ChainSaw);
    saw.chainSawPath = QStringLiteral("Saw.stl");
    installation_.write(QStringLiteral("ChainSawLib/Saw.stl"), binaryStl(boxTriangles(SbVec3f(5, 5, 50))));
    spindle_->setTool(ToolData(saw));
    ASSERT_NE(spindle_->collisionObject(), nullptr);
    const auto* faces = dynamic_cast<SoIndexedFaceSet*>(spindle_->toolShape());
    const auto* vertices = dynamic_cast<SoVertexProperty*>(faces->vertexProperty.getValue());
    ASSERT_EQ(vertices->vertex.getNum(), 36);
    EXPECT_NEAR(std::abs(vertices->vertex[0][2]), 50 * 0.9999, 1e-4);
    saw.chainSawPath = QStringLiteral("None.stl");
    spindle_->setTool(ToolData(saw));
    EXPECT_EQ(spindle_->collisionObject(), nullptr);
}

TEST_F(SpindleTest, FirstSetUpMakesNoObjectForFewerThanFiveVertices) {
    ToolRecord saw;
    saw.type = static_cast<int>(ToolType::ChainSaw);
    saw.chainSawPath = QStringLiteral("Thin.stl");
    installation_.write(QStringLiteral("ChainSawLib/Thin.stl"),
                        binaryStl({{SbVec3f(0, 0, 0), SbVec3f(1, 0, 0), SbVec3f(0, 1, 0)}}));
    spindle_->setTool(ToolData(saw));
    EXPECT_NE(spindle_->collisionObject(), nullptr);
    const Held<SpindleNode> copy(spindle_->clone());
    EXPECT_EQ(copy->collisionObject(), nullptr);
}

TEST_F(SpindleTest, CommandMapsNameThisSpindle) {
    const QMap<QString, SoNode*> commands = spindle_->commandMap();
    EXPECT_EQ(commands.keys(),
              (QStringList{QStringLiteral("M3"), QStringLiteral("M5"), QStringLiteral("M93")}));
    EXPECT_EQ(dynamic_cast<SpindleNode*>(commands.value(QStringLiteral("M3"))), spindle_);
    EXPECT_EQ(spindle_->toolChangeMap().keys(), QStringList{QStringLiteral("M6")});
    record_.checkString = QString();
    record_.startString = QStringLiteral("S#");
    record_.range = QStringLiteral("1");
    const Held<SpindleNode> plain(make(record_));
    EXPECT_EQ(plain->commandMap().keys(), QStringList{QStringLiteral("M5")});
    EXPECT_TRUE(plain->toolChangeMap().isEmpty());
    record_.range = QStringLiteral("12");
    record_.toolChangeString = QString();
    const Held<SpindleNode> bare(make(record_));
    EXPECT_TRUE(bare->toolChangeMap().isEmpty());
}

TEST_F(SpindleTest, CommandsDriveLampAndSpeed) {
    breathingLight* lamp = spindle_->statusWidget()->lamp();
    const auto panelRpm = [this] {
        return spindle_->panel()->findChild<QLineEdit*>(QStringLiteral("Rpm"))->text();
    };
    EXPECT_EQ(lamp->color(), lamp->red);
    spindle_->onCommand(QStringLiteral("M3 S12000.4"));
    EXPECT_EQ(lamp->color(), lamp->green);
    EXPECT_TRUE(lamp->isBreathing());
    EXPECT_EQ(rpm(spindle_), QStringLiteral("12000"));
    EXPECT_EQ(panelRpm(), QStringLiteral("12000.4"));
    spindle_->onCommand(QStringLiteral("M93"));
    EXPECT_EQ(lamp->color(), lamp->yellow);
    EXPECT_FALSE(lamp->isBreathing());
    EXPECT_EQ(rpm(spindle_), QStringLiteral("12000"));
    spindle_->onCommand(QStringLiteral("G1 X1"));
    EXPECT_EQ(lamp->color(), lamp->yellow);
    spindle_->onCommand(QStringLiteral("M5"));
    EXPECT_EQ(lamp->color(), lamp->red);
    EXPECT_EQ(rpm(spindle_), QStringLiteral("0"));
    EXPECT_EQ(panelRpm(), QStringLiteral("0.0"));
}

TEST_F(SpindleTest, CoaxialPartnerShowsTheSame) {
    record_.name = QStringLiteral("T5");
    record_.startString = QStringLiteral("M43 S#");
    record_.stopString = QStringLiteral("M45");
    const Held<SpindleNode> partner(make(record_));
    spindle_->setCoaxialPartner(partner.get());
    partner->setCoaxialPartner(spindle_);
    spindle_->onCommand(QStringLiteral("M3 S500"));
    EXPECT_EQ(rpm(partner.get()), QStringLiteral("500"));
    EXPECT_TRUE(partner->statusWidget()->lamp()->isBreathing());
    partner->onCommand(QStringLiteral("M45"));
    EXPECT_EQ(rpm(spindle_), QStringLiteral("0"));
}

TEST_F(SpindleTest, PartnerThatIsGoneIsForgotten) {
    {
        const Held<SpindleNode> partner(make(record_));
        spindle_->setCoaxialPartner(partner.get());
    }
    EXPECT_EQ(spindle_->coaxialPartner(), nullptr);
    spindle_->onCommand(QStringLiteral("M3 S500"));
}

TEST_F(SpindleTest, CloneHasToolPatternsAndNoCarrier) {
    spindle_->setTool(cylinder(10, 100));
    const Held<SpindleNode> copy(spindle_->clone());
    EXPECT_EQ(copy->parentAxis(), nullptr);
    EXPECT_EQ(copy->record().offset, spindle_->record().offset);
    EXPECT_EQ(copy->record().range, 12);
    EXPECT_EQ(copy->tool().record().toolNo, 7);
    ASSERT_NE(copy->collisionObject(), nullptr);
    EXPECT_NE(copy->collisionObject(), spindle_->collisionObject());
    EXPECT_EQ(copy->commandMap().keys(), spindle_->commandMap().keys());
    copy->onCommand(QStringLiteral("M3 S1"));
    EXPECT_EQ(rpm(copy.get()), QStringLiteral("1"));
    EXPECT_EQ(rpm(spindle_), QStringLiteral("0"));
}

TEST_F(SpindleTest, RepeatsTakeToolAndColour) {
    const Held<SpindleNode> copy(spindle_->clone());
    spindle_->addRepeat(*copy.get());
    spindle_->setTool(cylinder(10, 100));
    EXPECT_NE(copy->collisionObject(), nullptr);
    spindle_->setCollided(true);
    EXPECT_EQ(SbColor(copy->material()->diffuseColor[0]), SbColor(1, 0, 0));
    spindle_->setCollided(false);
    EXPECT_EQ(SbColor(spindle_->material()->diffuseColor[0]), SbColor(0.2F, 0.4F, 0.6F));
}

TEST_F(SpindleTest, RowStatusAndPanelShowTheTool) {
    QTreeWidgetItem* row = spindle_->treeItem();
    EXPECT_EQ(row->text(1), QStringLiteral("T1"));
    ASSERT_NE(spindle_->statusWidget(), nullptr);
    ASSERT_NE(spindle_->panel(), nullptr);
    spindle_->setTool(cylinder(10, 100));
    EXPECT_EQ(row->text(2), QStringLiteral("T1 No:7 Len:100 Dia:20"));
    const auto status = [this](const char* key) {
        return spindle_->statusWidget()->findChild<QLineEdit*>(QLatin1String(key))->text();
    };
    EXPECT_EQ(status("Name"), QStringLiteral("T1"));
    EXPECT_EQ(status("Id"), QStringLiteral("1"));
    EXPECT_EQ(status("ToolNo"), QStringLiteral("7"));
    EXPECT_EQ(status("ToolLen"), QStringLiteral("100"));
    EXPECT_EQ(status("ToolDia"), QStringLiteral("20"));
    const auto panel = [this](const char* key) {
        return spindle_->panel()->findChild<QLineEdit*>(QLatin1String(key))->text();
    };
    EXPECT_EQ(panel("Path"), QStringLiteral("A->T1"));
    EXPECT_EQ(panel("InitialPara"), QStringLiteral("-10 -20 -30 90"));
    EXPECT_EQ(panel("ToolNo"), QStringLiteral("7"));
    EXPECT_EQ(panel("Range"), QStringLiteral("12"));
}

TEST_F(SpindleTest, LeavingTheCarrierFreesTheSpindle) {
    const Held<SpindleNode> kept(spindle_);
    axis_->removeChild(spindle_);
    EXPECT_EQ(spindle_->parentAxis(), nullptr);
    EXPECT_EQ(spindle_->nodeChain(), QStringList{QStringLiteral("T1")});
    EXPECT_EQ(axis_->childNodes().size(), 0);
}

#include "setup/userCoordinateSystem.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTranslation.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QJsonDocument>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidgetItem>

#include "geometry/collisionDetector.h"
#include "geometry/modelNode.h"
#include "nodes/NodesTestSupport.h"
#include "setup/WorkCoordinateSystem.h"

namespace {

class SystemTest : public ::testing::Test {
  protected:
    SystemTest() {
        workCoordinateSystemStruct record;
        record.name = QStringLiteral("G54");
        zone_->set(record);
        zone_->setChainListener(&listener_);
        system_ = zone_->userCoordinateSystem(0);
    }
    /// A cube of 20 mm at the origin of the system.
    UserModelNode* addCube() {
        system_->AddWorkPiece(installation_.file(QStringLiteral("models/Box.stl")));
        return system_->userModels().last();
    }
    [[nodiscard]] CollisionHolder& obstacleAt(float x) {
        QVector<SbVec3f> vertices;
        QVector<int> indices;
        const MeshArrays mesh = boxMesh(SbVec3f(10, 10, 10));
        obstacle_.take(CollisionObjectBuilder().createCollisionObject(
            mesh.vertices, mesh.indices, obstacle_.name("wall"),
            CollisionTransform(Eigen::Translation3f(x, 0, 0))));
        return obstacle_;
    }

    NodesInstallation installation_;
    RecordingListener listener_;
    Held<WorkCoordinateSystem> zone_{new WorkCoordinateSystem};  // owned by its reference
    userCoordinateSystem* system_ = nullptr;
    CollisionHolder obstacle_;
};

}  // namespace

TEST_F(SystemTest, SceneHoldsTranslationAndSwitchWithTheMarker) {
    ASSERT_EQ(system_->getNumChildren(), 2);
    EXPECT_EQ(system_->getChild(0), system_->translationNode());
    EXPECT_EQ(system_->getChild(1), system_->switcher());
    EXPECT_EQ(system_->switcher()->whichChild.getValue(), -3);
    EXPECT_STREQ(system_->switcher()->getChild(0)->getName().getString(), "UCS0");
    EXPECT_EQ(system_->name(), QStringLiteral("UCS0"));
    EXPECT_EQ(system_->id(), 0);
}

TEST_F(SystemTest, WorkPieceIsNamedPlacedAndListed) {
    UserModelNode* cube = addCube();
    EXPECT_STREQ(cube->getName().getString(), "userModel0");
    EXPECT_EQ(cube->parentNode(), system_);
    EXPECT_EQ(cube->nodeChain(),
              (QStringList{QStringLiteral("G54"), QStringLiteral("UCS0"), QStringLiteral("userModel0")}));
    EXPECT_GE(system_->switcher()->SoGroup::findChild(cube), 0);
    EXPECT_EQ(system_->findChild(QStringLiteral("userModel0")), cube);
    EXPECT_EQ(system_->collisionObjects(), CollisionObjects{cube->collisionObject()});
    EXPECT_EQ(listener_.refreshed.last(), QStringList());
    EXPECT_STREQ(addCube()->getName().getString(), "userModel1");
}

TEST_F(SystemTest, ElevenAndMoreWorkPiecesKeepNamesOfTheirOwn) {
    QSet<QString> names;
    for (int i = 0; i < 14; ++i)
        names.insert(QString::fromUtf8(addCube()->getName().getString()));
    EXPECT_EQ(names.size(), 14);
}

TEST_F(SystemTest, EmptyPathAsksAndCancelEnds) {
    ExpectedDialogs dialogs;
    dialogs.answerFile(QString());
    system_->AddWorkPiece();
    EXPECT_TRUE(system_->userModels().isEmpty());
    dialogs.answerFile(installation_.file(QStringLiteral("models/Box.stl")));
    system_->AddWorkPiece(QString());
    EXPECT_EQ(system_->userModels().size(), 1);
}

TEST_F(SystemTest, UnreadableFileMakesAnEmptyWorkPieceThatNeverCollides) {
    const LogCapture log;
    system_->AddWorkPiece(installation_.file(QStringLiteral("none.stl")));
    ASSERT_EQ(system_->userModels().size(), 1);
    EXPECT_EQ(system_->userModels()[0]->collisionObject(), nullptr);
    EXPECT_EQ(system_->collisionObjects(), CollisionObjects{nullptr});
    EXPECT_FALSE(system_->AutoTransform(QStringLiteral("userModel0"), obstacleAt(0).get(), {1, 0, 0}));
}

TEST_F(SystemTest, RemovedWorkPieceIsGoneEverywhere) {
    addCube();
    addCube();
    QTreeWidgetItem* row = system_->treeItem();
    EXPECT_EQ(row->childCount(), 2);
    EXPECT_FALSE(system_->removeWorkPiece(QStringLiteral("other")));
    const int resets = listener_.resets;
    EXPECT_TRUE(system_->removeWorkPiece(QStringLiteral("userModel0")));
    EXPECT_EQ(listener_.resets, resets + 1);
    EXPECT_EQ(system_->userModels().size(), 1);
    EXPECT_EQ(row->childCount(), 1);
    EXPECT_EQ(system_->switcher()->getNumChildren(), 2);
    EXPECT_EQ(system_->findChild(QStringLiteral("userModel0")), nullptr);
}

TEST_F(SystemTest, TranslationReachesSceneRowObjectsAndListeners) {
    UserModelNode* cube = addCube();
    QTreeWidgetItem* row = system_->treeItem();
    EXPECT_EQ(row->text(2), QStringLiteral("X:0.000 Y:0.000 Z:0.000"));
    QSignalSpy moved(system_, &userCoordinateSystem::originMoved);
    system_->setTranslation(SbVec3f(1.5F, -2, 3.0004F));
    EXPECT_EQ(system_->translation(), SbVec3f(1.5F, -2, 3.0004F));
    EXPECT_EQ(row->text(2), QStringLiteral("X:1.500 Y:-2.000 Z:3.000"));
    EXPECT_LT(deviation(cube->collisionObject()->getTransform(), shifted(1.5, -2, 3.0004)), 1e-5);
    EXPECT_EQ(moved.count(), 1);
    system_->setTranslation(SbVec3f(std::numeric_limits<float>::infinity(), 0, 0));
    EXPECT_EQ(system_->translation()[0], 1.5F);
    EXPECT_EQ(moved.count(), 1);
}

TEST_F(SystemTest, WorldTransformByParent) {
    system_->setTranslation(SbVec3f(1, 2, 3));
    EXPECT_LT(deviation(system_->worldTransform(), shifted(1, 2, 3)), 1e-6);
    workCoordinateSystemStruct record;
    record.name = QStringLiteral("G55");
    record.initialization = QStringLiteral("100 0 0");
    const Held<WorkCoordinateSystem> fixedZone(new WorkCoordinateSystem);
    fixedZone->set(record);
    fixedZone->standAtOrigin();
    userCoordinateSystem* onFixed = fixedZone->userCoordinateSystem(0);
    onFixed->setTranslation(SbVec3f(1, 2, 3));
    EXPECT_LT(deviation(onFixed->worldTransform(), shifted(101, 2, 3)), 1e-5);

    numericalAxisStruct axisFile = axisRecord(QStringLiteral("Y"), QStringLiteral("ROTATION"));
    const Held<numericalAxis> axis(makeAxis(axisFile));
    axis->addChild(fixedZone.get());
    axis->setValue(90);
    // The axis has taken the zone's origin into its own offset; the zone's own placement counts no more.
    const Eigen::Affine3d table = shifted(100, 0, 0) * turned({0, 0, 1}, 90);
    EXPECT_LT(deviation(onFixed->worldTransform(), table * shifted(1, 2, 3)), 1e-4);

    auto* direct = new userCoordinateSystem(7, nullptr);  // owned by the axis
    EXPECT_LT(deviation(direct->worldTransform(), shifted(0, 0, 0)), 1e-6);
    axis->addChild(direct);
    direct->setTranslation(SbVec3f(1, 2, 3));
    EXPECT_LT(deviation(direct->worldTransform(), table * shifted(1, 2, 3)), 1e-4);
    EXPECT_EQ(direct->carrierChain(), (QStringList{QStringLiteral("Y"), QStringLiteral("UCS7")}));
}

TEST_F(SystemTest, WayPointNodesHangUnderTheSwitch) {
    auto* path = new SoSeparator;  // owned by the switch
    path->setName("trajectory0");
    system_->addTrajNode(path);
    system_->addTrajNode(path);
    system_->addTrajNode(nullptr);
    EXPECT_EQ(system_->trajNodes().size(), 1);
    EXPECT_EQ(system_->findChild(QStringLiteral("trajectory0")), path);
    EXPECT_FALSE(system_->AutoTransform(QStringLiteral("trajectory0"), obstacleAt(0).get(), {1, 0, 0}))
        << "it is no work piece";
    system_->removeTrajNode(path);
    EXPECT_TRUE(system_->trajNodes().isEmpty());
    EXPECT_EQ(system_->switcher()->getNumChildren(), 1);
}

TEST_F(SystemTest, AutoTransform_StopsJustShortOfTheFixture) {
    addCube();
    const LogCapture log;
    EXPECT_TRUE(system_->AutoTransform(QStringLiteral("userModel0"), obstacleAt(100).get(), {1, 0, 0}));
    // Faces meet when the centres are 20 apart: contact at 80.
    const float gap = 80 - system_->translation()[0];
    EXPECT_GE(gap, 0.19F);
    EXPECT_LE(gap, 0.41F);
    EXPECT_TRUE(log.contains(QStringLiteral("AutoTransformWorkPieceObject")));
    EXPECT_TRUE(log.contains(QStringLiteral("\t\tName:")));
    EXPECT_FALSE(collisionDetector::collide(system_->userModels()[0]->collisionObject(), obstacle_.get()));
}

TEST_F(SystemTest, AutoTransform_TouchingAtTheStartKeepsItsPlace) {
    addCube();
    const LogCapture log;
    system_->setTranslation(SbVec3f(3, 0, 0));
    EXPECT_TRUE(system_->AutoTransform(QStringLiteral("userModel0"), obstacleAt(5).get(), {1, 0, 0}));
    EXPECT_EQ(system_->translation(), SbVec3f(3, 0, 0));
    EXPECT_FALSE(log.contains(QStringLiteral("AutoTransformWorkPieceObject")));
}

TEST_F(SystemTest, AutoTransform_NothingOnTheWay) {
    addCube();
    EXPECT_FALSE(system_->AutoTransform(QStringLiteral("userModel0"), obstacleAt(-100).get(), {1, 0, 0}));
    EXPECT_EQ(system_->translation(), SbVec3f(495, 0, 0));
    EXPECT_FALSE(system_->AutoTransform(QStringLiteral("userModel0"), obstacleAt(-100).get(), {0, 0, 0}));
    EXPECT_EQ(system_->translation(), SbVec3f(495, 0, 0));
    EXPECT_FALSE(system_->AutoTransform(QStringLiteral("userModel0"), nullptr, {1, 0, 0}));
    EXPECT_FALSE(system_->AutoTransform(QStringLiteral("other"), obstacle_.get(), {1, 0, 0}));
    EXPECT_EQ(system_->translation(), SbVec3f(495, 0, 0));
}

TEST_F(SystemTest, JsonBringsEverythingBack) {
    addCube();
    system_->setTranslation(SbVec3f(1.25F, -2, 3));
    system_->switcher()->whichChild = SO_SWITCH_NONE;
    const QJsonObject saved = system_->toJson();
    EXPECT_EQ(saved.value(QStringLiteral("parentNodeName")).toString(), QStringLiteral("G54"));
    EXPECT_EQ(saved.value(QStringLiteral("modelObject")).toObject().keys(),
              QStringList{QStringLiteral("userModel0")});

    const Held<userCoordinateSystem> other(new userCoordinateSystem(8, nullptr));
    other->AddWorkPiece(installation_.file(QStringLiteral("models/Box.stl")));
    ASSERT_NE(other->treeItem(), nullptr);
    other->fromJson(saved);
    EXPECT_EQ(other->id(), 0);
    EXPECT_EQ(other->name(), QStringLiteral("UCS0"));
    EXPECT_EQ(other->treeItem()->text(1), QStringLiteral("UCS0"));
    EXPECT_EQ(other->treeItem()->childCount(), 1);
    EXPECT_STREQ(other->switcher()->getChild(0)->getName().getString(), "UCS0");
    EXPECT_EQ(other->translation(), SbVec3f(1.25F, -2, 3));
    EXPECT_EQ(other->switcher()->whichChild.getValue(), SO_SWITCH_NONE);
    ASSERT_EQ(other->userModels().size(), 1);
    ASSERT_NE(other->userModels()[0]->collisionObject(), nullptr);
    EXPECT_LT(deviation(other->userModels()[0]->collisionObject()->getTransform(), shifted(1.25, -2, 3)),
              1e-5);
    EXPECT_EQ(other->userModels()[0]->faceSet()->coordIndex.getNum(), 48);
}

TEST_F(SystemTest, HostileJsonKeepsTheSystemUsable) {
    const LogCapture log;
    system_->setTranslation(SbVec3f(1, 2, 3));
    system_->fromJson(QJsonDocument::fromJson(R"({"id": [], "name": 5, "moveTranslation": "1 2",
        "switcher": "up", "modelObject": {"a": 5, "b": {"name": ""}, "c": {"name": "same"}, "d": {"name": "same"}}})")
                          .object());
    EXPECT_EQ(system_->id(), 0);
    EXPECT_EQ(system_->translation(), SbVec3f(1, 2, 3));
    EXPECT_EQ(system_->switcher()->whichChild.getValue(), -3);
    ASSERT_EQ(system_->userModels().size(), 4);
    QSet<QString> names;
    for (const UserModelNode* model : system_->userModels())
        names.insert(QString::fromUtf8(model->getName().getString()));
    EXPECT_EQ(names.size(), 4);
    EXPECT_EQ(system_->collisionObjects(), CollisionObjects(4, nullptr));
}

TEST_F(SystemTest, PanelAppliesOffsetsAndKeepsBadOnes) {
    QWidget* panel = system_->panel();
    const auto edit = [panel](const char* name) { return panel->findChild<QLineEdit*>(QLatin1String(name)); };
    EXPECT_EQ(edit("X")->text(), QStringLiteral("0.0"));
    edit("X")->setText(QStringLiteral("12.5"));
    edit("Z")->setText(QStringLiteral("-3"));
    panel->findChild<QPushButton*>(QStringLiteral("ApplyButton"))->click();
    EXPECT_EQ(system_->translation(), SbVec3f(12.5F, 0, -3));
    edit("X")->setText(QStringLiteral("many"));
    edit("Y")->setText(QStringLiteral("1"));
    panel->findChild<QPushButton*>(QStringLiteral("ApplyButton"))->click();
    EXPECT_EQ(system_->translation(), SbVec3f(12.5F, 1, -3));
}

TEST_F(SystemTest, PanelAddsAndRemovesWorkPieces) {
    QWidget* panel = system_->panel();
    auto* list = panel->findChild<QComboBox*>(QStringLiteral("WorkPieceList"));
    ExpectedDialogs dialogs;
    dialogs.answerFile(installation_.file(QStringLiteral("models/Box.stl")));
    panel->findChild<QPushButton*>(QStringLiteral("AddWorkPiece"))->click();
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->itemText(0), QStringLiteral("userModel0"));
    panel->findChild<QPushButton*>(QStringLiteral("RemoveWorkPiece"))->click();
    EXPECT_EQ(list->count(), 0);
    EXPECT_TRUE(system_->userModels().isEmpty());
    panel->findChild<QPushButton*>(QStringLiteral("RemoveWorkPiece"))->click();
}

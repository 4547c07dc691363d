#include "setup/WorkCoordinateSystem.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QJsonDocument>
#include <QPushButton>
#include <QTreeWidgetItem>

#include "geometry/modelNode.h"
#include "nodes/NodesTestSupport.h"
#include "setup/userCoordinateSystem.h"

namespace {

class ZoneTest : public ::testing::Test {
  protected:
    ZoneTest() {
        record_.name = QStringLiteral("G54");
        record_.initialization = QStringLiteral("100 200 300");
        zone_->set(record_);
    }
    void expectAdded() {
        dialogs_.expectTell(UserDialogs::Kind::Information, QStringLiteral("Work coordinate system"),
                            QStringLiteral("The user coordinate system was added."));
    }
    void expectWarning(const char* text) {
        dialogs_.expectTell(UserDialogs::Kind::Warning, QStringLiteral("Work coordinate system"),
                            QLatin1String(text));
    }
    [[nodiscard]] QVector<int> ids() const {
        QVector<int> numbers;
        for (const userCoordinateSystem* system : zone_->ucsList())
            numbers.append(system->id());
        return numbers;
    }

    NodesInstallation installation_;
    ExpectedDialogs dialogs_;
    workCoordinateSystemStruct record_;
    Held<WorkCoordinateSystem> zone_{new WorkCoordinateSystem};  // owned by its reference
    RecordingListener listener_;
};

}  // namespace

TEST_F(ZoneTest, StartsWithOneSystemBehindItsOwnPlacement) {
    EXPECT_EQ(ids(), QVector<int>{0});
    EXPECT_EQ(zone_->getChild(0), zone_->matrix());
    EXPECT_EQ(zone_->getChild(1), zone_->userCoordinateSystem(0));
    EXPECT_EQ(zone_->matrix()->matrix.getValue(), SbMatrix::identity());
    EXPECT_EQ(zone_->userCoordinateSystem(1), nullptr);
    EXPECT_EQ(zone_->origin(), SbVec3f(100, 200, 300));
    EXPECT_STREQ(zone_->getName().getString(), "G54");
}

TEST_F(ZoneTest, BadOriginIsZero) {
    record_.initialization = QStringLiteral("1 2");
    zone_->set(record_);
    EXPECT_EQ(zone_->origin(), SbVec3f(0, 0, 0));
    record_.initialization = QStringLiteral("1 nan 3");
    zone_->set(record_);
    EXPECT_EQ(zone_->origin(), SbVec3f(1, 0, 3));
}

TEST_F(ZoneTest, AddedSystemIsToldAndNumbered) {
    expectAdded();
    userCoordinateSystem* system = zone_->addUserCoordinateSystem();
    EXPECT_EQ(system->id(), 1);
    EXPECT_EQ(system->translation(), SbVec3f(0, 0, 0));
    EXPECT_EQ(system->parentNode(), zone_.get());
    EXPECT_EQ(zone_->getNumChildren(), 3);
    system->setTranslation(SbVec3f(1, 2, 3));
    EXPECT_EQ(zone_->ucsTranslations(), (QMap<int, SbVec3f>{{0, SbVec3f(0, 0, 0)}, {1, SbVec3f(1, 2, 3)}}));
}

TEST_F(ZoneTest, FreedNumberIsTakenAgain) {
    expectAdded();
    expectAdded();
    zone_->addUserCoordinateSystem();
    zone_->addUserCoordinateSystem();
    dialogs_.answerAsk(true);
    zone_->removeUserCoordinateSystem(1);
    EXPECT_EQ(ids(), (QVector<int>{0, 2}));
    expectAdded();
    zone_->addUserCoordinateSystem();
    EXPECT_EQ(ids(), (QVector<int>{0, 2, 1}));
}

TEST_F(ZoneTest, ElevenAndMoreSystemsKeepNumbersOfTheirOwn) {
    for (int i = 0; i < 13; ++i) {
        expectAdded();
        zone_->addUserCoordinateSystem();
    }
    QSet<int> numbers;
    for (const int id : ids())
        numbers.insert(id);
    EXPECT_EQ(numbers.size(), 14);
}

TEST_F(ZoneTest, LastSystemStays) {
    dialogs_.answerAsk(true);
    expectWarning("At least one user coordinate system must stay.");
    zone_->removeUserCoordinateSystem(0);
    EXPECT_EQ(ids(), QVector<int>{0});
}

TEST_F(ZoneTest, NoKeepsTheSystemAndUnknownNumbersAreNotAskedFor) {
    expectAdded();
    zone_->addUserCoordinateSystem();
    dialogs_.answerAsk(false);
    zone_->removeUserCoordinateSystem(1);
    zone_->removeUserCoordinateSystem(77);
    EXPECT_EQ(ids(), (QVector<int>{0, 1}));
}

TEST_F(ZoneTest, SystemWithWorkPieceOrProgramIsRefused) {
    expectAdded();
    userCoordinateSystem* system = zone_->addUserCoordinateSystem();
    system->AddWorkPiece(installation_.file(QStringLiteral("models/Box.stl")));
    dialogs_.answerAsk(true);
    expectWarning("This user coordinate system still holds work pieces or programs and cannot be removed.");
    zone_->removeUserCoordinateSystem(1);
    system->removeWorkPieces();
    auto* program = new SoSeparator;  // owned by the system
    system->addTrajNode(program);
    dialogs_.answerAsk(true);
    expectWarning("This user coordinate system still holds work pieces or programs and cannot be removed.");
    zone_->removeUserCoordinateSystem(1);
    EXPECT_EQ(ids(), (QVector<int>{0, 1}));
    system->removeTrajNode(program);
    dialogs_.answerAsk(true);
    zone_->removeUserCoordinateSystem(1);
    EXPECT_EQ(ids(), QVector<int>{0});
    EXPECT_EQ(zone_->getNumChildren(), 2);
}

TEST_F(ZoneTest, ZoneOnAnAxisShiftsTheAxisByItsOrigin) {
    numericalAxisStruct axisFile = axisRecord(QStringLiteral("Y"), QStringLiteral("LINEAR"));
    axisFile.initialization = QStringLiteral("0 150 90");
    const Held<numericalAxis> axis(makeAxis(axisFile));
    axis->addChild(zone_.get());
    EXPECT_EQ(zone_->parentAxis(), axis.get());
    EXPECT_LT(deviation(axis->offsetTransform()->matrix.getValue(), shifted(100, 50, 210)), 1e-4);
    EXPECT_LT(deviation(axis->initialOffset(), shifted(100, 50, 210)), 1e-4);
    EXPECT_EQ(zone_->matrix()->matrix.getValue(), SbMatrix::identity());
    EXPECT_EQ(zone_->nodeChain(), (QStringList{QStringLiteral("Y"), QStringLiteral("G54")}));
}

TEST_F(ZoneTest, WorkPieceGoesWithTheAxis) {
    const Held<numericalAxis> axis(makeAxis(QStringLiteral("Y"), QStringLiteral("LINEAR")));
    axis->addChild(zone_.get());
    axis->setChainListener(&listener_);
    userCoordinateSystem* system = zone_->userCoordinateSystem(0);
    system->AddWorkPiece(installation_.file(QStringLiteral("models/Box.stl")));
    UserModelNode* piece = system->userModels()[0];
    system->setTranslation(SbVec3f(1, 2, 3));
    axis->setValue(40);
    EXPECT_LT(deviation(piece->collisionObject()->getTransform(), shifted(101, 202, 343)), 1e-3);
    EXPECT_LT((placeInScene(axis.get(), piece->faceSet(), {0, 0, 0}) - Eigen::Vector3d(101, 202, 343)).norm(),
              1e-3);
    EXPECT_EQ(piece->nodeChain(), (QStringList{QStringLiteral("Y"), QStringLiteral("G54"),
                                               QStringLiteral("UCS0"), QStringLiteral("userModel0")}));
    EXPECT_EQ(axis->collisionObjects(),
              (CollisionObjects{axis->collisionObject(), piece->collisionObject()}));
    EXPECT_EQ(listener_.refreshed.last(), QStringList{QStringLiteral("Y")});
}

TEST_F(ZoneTest, ZoneWithoutAnAxisStandsAtItsOrigin) {
    zone_->standAtOrigin();
    EXPECT_LT(deviation(zone_->matrix()->matrix.getValue(), shifted(100, 200, 300)), 1e-5);
    userCoordinateSystem* system = zone_->userCoordinateSystem(0);
    system->AddWorkPiece(installation_.file(QStringLiteral("models/Box.stl")));
    EXPECT_LT(deviation(system->userModels()[0]->collisionObject()->getTransform(), shifted(100, 200, 300)),
              1e-4);
    EXPECT_EQ(zone_->collisionObjects(), CollisionObjects{system->userModels()[0]->collisionObject()});
}

TEST_F(ZoneTest, AxisThatGoesLeavesTheZoneAlone) {
    {
        const Held<numericalAxis> axis(makeAxis(QStringLiteral("Y"), QStringLiteral("LINEAR")));
        axis->addChild(zone_.get());
    }
    EXPECT_EQ(zone_->parentAxis(), nullptr);
    EXPECT_EQ(zone_->nodeChain(), QStringList{QStringLiteral("G54")});
}

TEST_F(ZoneTest, ResetLeavesOneEmptySystem) {
    expectAdded();
    zone_->addUserCoordinateSystem()->AddWorkPiece(installation_.file(QStringLiteral("models/Box.stl")));
    zone_->setChainListener(&listener_);
    zone_->reset();
    EXPECT_EQ(ids(), QVector<int>{0});
    EXPECT_TRUE(zone_->collisionObjects().isEmpty());
    EXPECT_EQ(listener_.resets, 1);
    EXPECT_EQ(listener_.refreshed.last(), QStringList());
}

TEST_F(ZoneTest, JsonBringsTheSystemsBack) {
    expectAdded();
    userCoordinateSystem* second = zone_->addUserCoordinateSystem();
    second->setTranslation(SbVec3f(5, 6, 7));
    second->AddWorkPiece(installation_.file(QStringLiteral("models/Box.stl")));
    const QJsonObject saved = zone_->toJson();
    EXPECT_EQ(saved.keys(), (QStringList{QStringLiteral("UCS0"), QStringLiteral("UCS1")}));

    const Held<WorkCoordinateSystem> other(new WorkCoordinateSystem);
    other->set(record_);
    ASSERT_NE(other->treeItem(), nullptr);
    other->fromJson(saved);
    ASSERT_EQ(other->ucsList().size(), 2);
    EXPECT_EQ(other->getNumChildren(), 3);
    EXPECT_EQ(other->treeItem()->childCount(), 2);
    EXPECT_EQ(other->userCoordinateSystem(1)->translation(), SbVec3f(5, 6, 7));
    EXPECT_EQ(other->userCoordinateSystem(1)->userModels().size(), 1);
    EXPECT_EQ(other->toJson(), saved);
}

TEST_F(ZoneTest, JsonWithoutSystemsLeavesAnEmptyOne) {
    zone_->fromJson({});
    EXPECT_EQ(ids(), QVector<int>{0});
    zone_->fromJsonArray({});
    EXPECT_EQ(ids(), QVector<int>{0});
}

TEST_F(ZoneTest, HostileJsonKeepsSystemsApart) {
    zone_->fromJson(QJsonDocument::fromJson(R"({"a": 5, "b": {"id": 3, "name": "UCS3"},
        "c": {"id": 3, "name": "UCS3"}, "d": {"id": -7}, "e": {"id": 4, "name": "UCS3"}})")
                        .object());
    QSet<int> numbers;
    QSet<QString> names;
    for (const userCoordinateSystem* system : zone_->ucsList()) {
        numbers.insert(system->id());
        names.insert(system->name());
        EXPECT_GE(system->id(), 0);
    }
    EXPECT_EQ(zone_->ucsList().size(), 5);
    EXPECT_EQ(numbers.size(), 5);
    EXPECT_EQ(names.size(), 5);
    EXPECT_NE(zone_->userCoordinateSystem(3), nullptr);
}

TEST_F(ZoneTest, OlderFormReadsModelsUnderNewNames) {
    zone_->fromJsonArray(QJsonDocument::fromJson(R"([
        {"name": "UCS2", "moveTranslation": "1 2 3", "modelArray": [
            {"coordIndex": "[ 0, 1, 2, -1 ]",
             "verticesProperty": "VertexProperty { vertex [ 0 0 0, 10 0 0, 0 10 0 ] }"},
            {"coordIndex": "", "verticesProperty": ""}]},
        {"name": "system", "moveTranslation": "7"}])")
                             .array());
    ASSERT_EQ(zone_->ucsList().size(), 2);
    userCoordinateSystem* first = zone_->userCoordinateSystem(2);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->name(), QStringLiteral("UCS2"));
    EXPECT_EQ(first->translation(), SbVec3f(1, 2, 3));
    ASSERT_EQ(first->userModels().size(), 2);
    EXPECT_STREQ(first->userModels()[0]->getName().getString(), "userModel0");
    EXPECT_STREQ(first->userModels()[1]->getName().getString(), "userModel1");
    ASSERT_NE(first->userModels()[0]->collisionObject(), nullptr);
    EXPECT_LT(deviation(first->userModels()[0]->collisionObject()->getTransform(), shifted(1, 2, 3)), 1e-5);
    EXPECT_EQ(first->userModels()[1]->collisionObject(), nullptr);
    EXPECT_EQ(zone_->ucsList()[1]->id(), 3) << "the next free number after 2";
    EXPECT_EQ(zone_->ucsList()[1]->translation(), SbVec3f(0, 0, 0));
}

TEST_F(ZoneTest, RowShowsTheSystems) {
    QTreeWidgetItem* row = zone_->treeItem();
    EXPECT_EQ(row->text(1), QStringLiteral("G54"));
    EXPECT_EQ(row->data(1, Qt::UserRole + 1).toString(), QStringLiteral("workCoordinateSystemNode"));
    ASSERT_EQ(row->childCount(), 1);
    EXPECT_EQ(row->child(0)->data(1, Qt::UserRole + 1).toString(),
              QStringLiteral("userCoordinateSystemNode"));
    expectAdded();
    zone_->addUserCoordinateSystem();
    EXPECT_EQ(row->childCount(), 2);
    dialogs_.answerAsk(true);
    zone_->removeUserCoordinateSystem(1);
    EXPECT_EQ(row->childCount(), 1);
}

TEST_F(ZoneTest, PanelAddsAndRemovesSystems) {
    QWidget* panel = zone_->panel();
    auto* list = panel->findChild<QComboBox*>(QStringLiteral("UserCoordinateSystemList"));
    expectAdded();
    panel->findChild<QPushButton*>(QStringLiteral("AddUserCoordinateSystem"))->click();
    ASSERT_EQ(list->count(), 2);
    list->setCurrentIndex(1);
    dialogs_.answerAsk(true);
    panel->findChild<QPushButton*>(QStringLiteral("RemoveUserCoordinateSystem"))->click();
    EXPECT_EQ(list->count(), 1);
    EXPECT_EQ(ids(), QVector<int>{0});
}

#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSphere.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoTranslation.h>
#include <gtest/gtest.h>

#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTreeWidget>
#include <memory>

#include "GeometryTestSupport.h"
#include "geometry/modelNode.h"

namespace {

QStringList userDataOf(const UserModelNode& model) {
    return *static_cast<QStringList*>(model.collisionObject()->getUserData());
}

/// A model of a box of half size 1 2 3 named "Part1".
class UserModelNodeTest : public ::testing::Test {
  protected:
    UserModelNodeTest() : model(new UserModelNode) {
        model->setName("Part1");
        EXPECT_EQ(model->loadFromStl(installation.stl(QStringLiteral("part.stl"),
                                                      binaryStl(boxTriangles(SbVec3f(1, 2, 3))))),
                  true);
    }

    GeometryInstallation installation;
    Held<UserModelNode> model;
};

}  // namespace

TEST(UserModelNode, NewNode_HoldsMaterialTextureAndShapeInThisOrder) {
    const GeometryInstallation installation;
    const Held<UserModelNode> model(new UserModelNode);
    ASSERT_EQ(model->getNumChildren(), 1);
    auto* switcher = dynamic_cast<SoSwitch*>(model->getChild(0));
    ASSERT_NE(switcher, nullptr);
    EXPECT_EQ(switcher->whichChild.getValue(), -3);
    ASSERT_EQ(switcher->getNumChildren(), 3);
    EXPECT_EQ(switcher->getChild(0), model->material());
    EXPECT_EQ(switcher->getChild(1), model->texture());
    EXPECT_EQ(switcher->getChild(2), model->faceSet());
    EXPECT_EQ(model->material()->diffuseColor[0], SbColor(0.81F, 0.81F, 0.81F));
    EXPECT_EQ(model->texture()->wrapS.getValue(), SoTexture2::CLAMP);
    EXPECT_EQ(model->texture()->wrapT.getValue(), SoTexture2::CLAMP);
    EXPECT_EQ(model->collisionObject(), nullptr);
    EXPECT_EQ(model->parentNode(), nullptr);
}

TEST(UserModelNode, Texture_HasItsRowsFromTheBottom) {
    const GeometryInstallation installation;
    const LogCapture log;
    const Held<UserModelNode> model(new UserModelNode);
    SbVec2s size;
    int components = 0;
    const unsigned char* bytes = model->texture()->image.getValue(size, components);
    ASSERT_EQ(size, SbVec2s(4, 2));
    ASSERT_EQ(components, 3);
    // The picture's only blue pixel is its upper left one: the first of the second row.
    EXPECT_EQ(static_cast<int>(bytes[0]), 255);
    EXPECT_EQ(static_cast<int>(bytes[2]), 0);
    EXPECT_EQ(static_cast<int>(bytes[12]), 0);
    EXPECT_EQ(static_cast<int>(bytes[14]), 255);
    EXPECT_EQ(log.lines().size(), 0U) << log.all().toStdString();
}

TEST(UserModelNode, MissingOrBrokenTexture_GivesAPlainModelAndOneLine) {
    const GeometryInstallation installation;
    for (const bool isThere : {false, true}) {
        ASSERT_EQ(QFile::remove(installation.file(QStringLiteral("oak.jpg"))), true);
        if (isThere)
            installation.write(QStringLiteral("oak.jpg"), "no picture");
        const LogCapture log;
        const Held<UserModelNode> model(new UserModelNode);
        ASSERT_EQ(log.lines().size(), 1U) << log.all().toStdString();
        EXPECT_EQ(log.lines()[0].text,
                  QStringLiteral("No texture:\t") + installation.file(QStringLiteral("oak.jpg")));
        SbVec2s size;
        int components = 0;
        model->texture()->image.getValue(size, components);
        EXPECT_EQ(size, SbVec2s(0, 0));
        EXPECT_EQ(model->loadFromStl(installation.stl(QStringLiteral("part.stl"), binaryStl(twoTriangles()))),
                  true);
        if (!isThere)
            installation.write(QStringLiteral("oak.jpg"), "for the next round");
    }
}

TEST_F(UserModelNodeTest, Stl_GivesShapeAndCollisionObject) {
    EXPECT_EQ(model->faceSet()->coordIndex.getNum(), 48);
    EXPECT_EQ(model->switcher()->getChild(2), model->faceSet());
    ASSERT_NE(model->collisionObject(), nullptr);
    EXPECT_NEAR(model->collisionObject()->getAABB().max_.y(), 2, 1e-5);
    const auto* name = static_cast<SbName*>(model->collisionObject()->getUserData());
    EXPECT_EQ(*name, SbName("Part1"));
}

TEST_F(UserModelNodeTest, UnreadableStl_ChangesNothing) {
    const void* faceSet = model->faceSet();
    const void* object = model->collisionObject();
    for (const QByteArray& content : {QByteArray(), QByteArray("picture"), stlClaiming(1000000),
                                      QByteArray("solid empty\nendsolid empty\n")}) {
        const LogCapture log;
        EXPECT_EQ(model->loadFromStl(installation.stl(QStringLiteral("bad.stl"), content)), false);
        EXPECT_EQ(model->faceSet(), faceSet);
        EXPECT_EQ(model->collisionObject(), object);
    }
}

TEST_F(UserModelNodeTest, UnderACarrier_TakesItsChainAndItsPose) {
    const Held<FakeCarrier> carrier(new FakeCarrier);
    carrier.get()->transform.translation() = Eigen::Vector3f(100, 200, 300);
    model->setParentNode(carrier.get());
    const QStringList chain{QStringLiteral("Base"), QStringLiteral("Y"), QStringLiteral("Part1")};
    EXPECT_EQ(model->nodeChain(), chain);
    EXPECT_EQ(userDataOf(*model.get()), chain);
    EXPECT_EQ(model->worldTransform().translation(), Eigen::Vector3f(100, 200, 300));
    EXPECT_EQ(model->collisionObject()->getTransform().translation(), Eigen::Vector3f(100, 200, 300));
}

TEST_F(UserModelNodeTest, CarrierThatMoved_IsFollowedOnUpdate) {
    const Held<FakeCarrier> carrier(new FakeCarrier);
    model->setParentNode(carrier.get());
    carrier.get()->transform.translation() = Eigen::Vector3f(5, 0, 0);
    EXPECT_EQ(model->collisionObject()->getTransform().translation().x(), 0);
    model->updateCollisionTransform();
    EXPECT_EQ(model->collisionObject()->getTransform().translation().x(), 5);
}

TEST_F(UserModelNodeTest, StlLoadedUnderACarrier_KeepsChainAndPose) {
    const Held<FakeCarrier> carrier(new FakeCarrier);
    carrier.get()->transform.translation() = Eigen::Vector3f(5, 0, 0);
    model->setParentNode(carrier.get());
    EXPECT_EQ(model->loadFromStl(installation.stl(QStringLiteral("b.stl"), binaryStl(twoTriangles()))), true);
    EXPECT_EQ(userDataOf(*model.get()).size(), 3);
    EXPECT_EQ(model->collisionObject()->getTransform().translation().x(), 5);
}

TEST_F(UserModelNodeTest, OtherParentOrNone_GivesTheIdentityAndTheOwnName) {
    const Held<SoSeparator> other(new SoSeparator);
    SoNode* const none = nullptr;
    for (SoNode* parent : {static_cast<SoNode*>(other.get()), none}) {
        model->setParentNode(parent);
        EXPECT_EQ(model->parentNode(), parent);
        EXPECT_EQ(model->nodeChain(), QStringList{QStringLiteral("Part1")});
        EXPECT_EQ(model->worldTransform().matrix(), Eigen::Matrix4f(Eigen::Matrix4f::Identity()));
        EXPECT_EQ(userDataOf(*model.get()), QStringList{QStringLiteral("Part1")});
    }
}

TEST(UserModelNode, ParentWithoutGeometry_IsStoredAlone) {
    const GeometryInstallation installation;
    const Held<UserModelNode> model(new UserModelNode);
    const Held<FakeCarrier> carrier(new FakeCarrier);
    model->setParentNode(carrier.get());
    EXPECT_EQ(model->parentNode(), carrier.get());
    EXPECT_EQ(model->collisionObject(), nullptr);
}

TEST_F(UserModelNodeTest, SelectionAndCollision_ColourAVisibleModelOnly) {
    const auto color = [this] { return model->material()->diffuseColor[0]; };
    model->setSelected(true);
    EXPECT_EQ(color(), SbColor(1, 1, 0));
    model->setSelected(false);
    EXPECT_EQ(color(), SbColor(0.81F, 0.81F, 0.81F));
    model->setCollided(true);
    EXPECT_EQ(color(), SbColor(1, 0, 0));
    model->setCollided(false);
    EXPECT_EQ(color(), SbColor(0.81F, 0.81F, 0.81F));
    model->setVisible(false);
    EXPECT_EQ(model->switcher()->whichChild.getValue(), -1);
    model->setSelected(true);
    EXPECT_EQ(color(), SbColor(0.81F, 0.81F, 0.81F));
    model->setCollided(true);
    EXPECT_EQ(color(), SbColor(0.81F, 0.81F, 0.81F));
    EXPECT_NE(model->collisionObject(), nullptr);
    model->setVisible(true);
    EXPECT_EQ(model->switcher()->whichChild.getValue(), -3);
}

TEST_F(UserModelNodeTest, TreeItem_IsMadeOnceWithNameAndFlag) {
    QTreeWidgetItem* item = model->treeItem();
    EXPECT_EQ(model->treeItem(), item);
    EXPECT_EQ(item->text(1), QStringLiteral("Part1"));
    EXPECT_EQ(item->data(1, Qt::UserRole).toString(), QStringLiteral("Part1"));
    EXPECT_EQ(item->data(1, Qt::UserRole + 1).toString(), QStringLiteral("work piece"));
}

TEST_F(UserModelNodeTest, TreeThatGoesFirst_LeavesTheNodeWithoutItem) {
    {
        QTreeWidget tree;
        tree.addTopLevelItem(model->treeItem());
    }
    EXPECT_EQ(model->treeItem()->treeWidget(), nullptr);
}

TEST(UserModelNode, NodeThatGoesFirst_TakesItemAndPanelAlong) {
    const GeometryInstallation installation;
    QTreeWidget tree;
    QPointer<QWidget> panel;
    {
        const Held<UserModelNode> model(new UserModelNode);
        tree.addTopLevelItem(model->treeItem());
        panel = model->panel();
        EXPECT_EQ(tree.topLevelItemCount(), 1);
    }
    EXPECT_EQ(tree.topLevelItemCount(), 0);
    EXPECT_EQ(panel.isNull(), true);
}

TEST_F(UserModelNodeTest, Panel_ShowsPathBoxAndPose) {
    const Held<FakeCarrier> carrier(new FakeCarrier);
    carrier->setName("Y");
    carrier.get()->transform.translation() = Eigen::Vector3f(1.5F, -2, 300);
    model->setParentNode(carrier.get());
    QWidget* panel = model->panel();
    const auto text = [panel](const char* key) {
        return panel->findChild<QLabel*>(QString::fromLatin1(key))->text();
    };
    EXPECT_EQ(text("Name"), QStringLiteral("Part1"));
    EXPECT_EQ(text("Parent"), QStringLiteral("Y"));
    EXPECT_EQ(text("Path"), QStringLiteral("Base->Y->Part1"));
    EXPECT_EQ(text("CollisionObjectCenter"), QStringLiteral("0 0 0"));
    EXPECT_EQ(text("CollisionObjectMax"), QStringLiteral("1 2 3"));
    EXPECT_EQ(text("CollisionObjectMin"), QStringLiteral("-1 -2 -3"));
    auto* pose = panel->findChild<QPlainTextEdit*>(QStringLiteral("CollisionObjectTransform"));
    EXPECT_EQ(pose->isReadOnly(), true);
    EXPECT_EQ(pose->toPlainText(), QStringLiteral("1.000 0.000 0.000 1.500\n0.000 1.000 0.000 -2.000\n"
                                                  "0.000 0.000 1.000 300.000\n0.000 0.000 0.000 1.000"));
    auto* form = qobject_cast<QFormLayout*>(panel->layout());
    ASSERT_EQ(form->rowCount(), 7);
    EXPECT_EQ(qobject_cast<QLabel*>(form->labelForField(pose))->text(), QStringLiteral("Pose:"));
    EXPECT_EQ(model->panel(), panel);
}

TEST(UserModelNode, PanelOfANodeWithoutGeometry_HasEmptyCollisionRows) {
    const GeometryInstallation installation;
    const Held<UserModelNode> model(new UserModelNode);
    QWidget* panel = model->panel();
    EXPECT_EQ(panel->findChild<QLabel*>(QStringLiteral("CollisionObjectMax"))->text(), QString());
    EXPECT_EQ(panel->findChild<QPlainTextEdit*>()->toPlainText(), QString());
}

TEST(pointShape, Construction_PrintsALineAndBuildsTheBall) {
    ::testing::internal::CaptureStdout();
    const Held<pointShape> point(new pointShape(SbVec3f(1, 2, 3)));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "construct pointShape\n");
    EXPECT_EQ(point->kind(), 0);
    ASSERT_EQ(point->getNumChildren(), 1);
    auto* marker = dynamic_cast<SoSeparator*>(point->getChild(0));
    ASSERT_NE(marker, nullptr);
    ASSERT_EQ(marker->getNumChildren(), 3);
    EXPECT_EQ(dynamic_cast<SoMaterial*>(marker->getChild(0))->diffuseColor[0], SbColor(1, 0, 0));
    EXPECT_EQ(dynamic_cast<SoTranslation*>(marker->getChild(1))->translation.getValue(), SbVec3f(1, 2, 3));
    EXPECT_EQ(dynamic_cast<SoSphere*>(marker->getChild(2))->radius.getValue(), 5);
}

TEST(pointShape, OwnColourAndRadius_AreTaken) {
    ::testing::internal::CaptureStdout();
    const Held<pointShape> point(new pointShape(SbVec3f(0, 0, 0), SbColor(0, 1, 0), 2));
    EXPECT_NE(::testing::internal::GetCapturedStdout(), "");
    auto* marker = dynamic_cast<SoSeparator*>(point->getChild(0));
    EXPECT_EQ(dynamic_cast<SoMaterial*>(marker->getChild(0))->diffuseColor[0], SbColor(0, 1, 0));
    EXPECT_EQ(dynamic_cast<SoSphere*>(marker->getChild(2))->radius.getValue(), 2);
}

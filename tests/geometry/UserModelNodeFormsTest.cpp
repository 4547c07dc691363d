#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

#include <QJsonArray>
#include <random>

#include "GeometryTestSupport.h"
#include "geometry/modelNode.h"

namespace {

/// A saved model: a box, yellow, hidden, under a node called "UCS0".
QJsonObject savedModel(const GeometryInstallation& installation) {
    const Held<UserModelNode> model(new UserModelNode);
    const Held<FakeCarrier> carrier(new FakeCarrier);
    carrier->setName("UCS0");
    model->setName("Part1");
    EXPECT_EQ(model->loadFromStl(installation.stl(QStringLiteral("part.stl"),
                                                  binaryStl(boxTriangles(SbVec3f(1, 2.5F, 1.0F / 3))))),
              true);
    model->setParentNode(carrier.get());
    model->setSelected(true);
    model->setVisible(false);
    return model->toJson();
}

int triangleCount(SoNode* node) {
    SoGetPrimitiveCountAction action{SbViewportRegion(100, 100)};
    action.apply(node);
    return action.getTriangleCount();
}

}  // namespace

TEST(UserModelNodeForms, Json_IsFlatAndAllText) {
    const GeometryInstallation installation;
    const QJsonObject json = savedModel(installation);
    EXPECT_EQ(json.keys(), (QStringList{QStringLiteral("coordIndex"), QStringLiteral("material"),
                                        QStringLiteral("name"), QStringLiteral("parentNodeName"),
                                        QStringLiteral("switcher"), QStringLiteral("verticesProperty")}));
    for (const QString& key : json.keys())
        EXPECT_EQ(json.value(key).isString(), true) << key.toStdString();
    EXPECT_EQ(json.value(QStringLiteral("name")).toString(), QStringLiteral("Part1"));
    EXPECT_EQ(json.value(QStringLiteral("parentNodeName")).toString(), QStringLiteral("UCS0"));
    EXPECT_EQ(json.value(QStringLiteral("switcher")).toString(), QStringLiteral("-1"));
    EXPECT_EQ(json.value(QStringLiteral("material")).toString(), QStringLiteral("1 1 0"));
}

TEST(UserModelNodeForms, SavedModel_ShowsTheSameColourVisibilityAndShape) {
    const GeometryInstallation installation;
    const QJsonObject json = savedModel(installation);
    const Held<UserModelNode> model(new UserModelNode);
    model->loadFromJson(json);
    EXPECT_EQ(model->getName(), SbName("Part1"));
    EXPECT_EQ(model->isVisible(), false);
    EXPECT_EQ(model->material()->diffuseColor[0], SbColor(1, 1, 0));
    ASSERT_EQ(model->faceSet()->coordIndex.getNum(), 48);
    ASSERT_NE(model->collisionObject(), nullptr);
    EXPECT_EQ(model->collisionObject()->getTransform().matrix(),
              Eigen::Matrix4f(Eigen::Matrix4f::Identity()));
    EXPECT_NEAR(model->collisionObject()->getAABB().max_.y(), 2.5, 1e-5);
    // The parent's name is not read: the one who loads the model hangs it up.
    QJsonObject again = model->toJson();
    EXPECT_EQ(again.value(QStringLiteral("parentNodeName")).toString(), QString());
    again.insert(QStringLiteral("parentNodeName"), QStringLiteral("UCS0"));
    EXPECT_EQ(again, json);
}

TEST(UserModelNodeForms, LoadedModelUnderItsParent_HasChainAndPose) {
    const GeometryInstallation installation;
    const Held<UserModelNode> model(new UserModelNode);
    model->loadFromJson(savedModel(installation));
    const Held<FakeCarrier> carrier(new FakeCarrier);
    carrier.get()->transform.translation() = Eigen::Vector3f(7, 8, 9);
    model->setParentNode(carrier.get());
    EXPECT_EQ(static_cast<QStringList*>(model->collisionObject()->getUserData())->last(),
              QStringLiteral("Part1"));
    EXPECT_EQ(model->collisionObject()->getTransform().translation(), Eigen::Vector3f(7, 8, 9));
}

TEST(UserModelNodeForms, MembersOfTheWrongKind_CountAsAbsent) {
    const GeometryInstallation installation;
    const QJsonObject good = savedModel(installation);
    const QList<QJsonValue> wrong{1.5, true, QJsonValue(), QJsonArray{1}, QJsonObject{}};
    for (const QString& key : good.keys()) {
        for (const QJsonValue& value : wrong) {
            QJsonObject json = good;
            json.insert(key, value);
            const Held<UserModelNode> model(new UserModelNode);
            const LogCapture log;
            model->loadFromJson(json);
            const bool isMesh =
                key == QStringLiteral("coordIndex") || key == QStringLiteral("verticesProperty");
            EXPECT_EQ(model->collisionObject() == nullptr, isMesh) << key.toStdString();
            EXPECT_EQ(log.contains(QStringLiteral("No mesh in the document:\tPart1")), isMesh)
                << key.toStdString();
            EXPECT_EQ(model->isVisible(), key == QStringLiteral("switcher"));
            EXPECT_EQ(model->material()->diffuseColor[0],
                      key == QStringLiteral("material") ? SbColor(0.81F, 0.81F, 0.81F) : SbColor(1, 1, 0));
        }
    }
}

TEST(UserModelNodeForms, EmptyObject_GivesANodeWithoutGeometry) {
    const GeometryInstallation installation;
    const Held<UserModelNode> model(new UserModelNode);
    const LogCapture log;
    model->loadFromJson({});
    EXPECT_EQ(model->collisionObject(), nullptr);
    EXPECT_EQ(log.count(QStringLiteral("No mesh in the document:")), 1);
    EXPECT_EQ(triangleCount(model.get()), 0);
}

TEST(UserModelNodeForms, IndexOutOfRange_GivesNoGeometryAndNoCrash) {
    const GeometryInstallation installation;
    for (const char* indices : {"[ 0, 1, 36, -1 ]", "[ 0, 2147483647, 1, -1 ]", "[ 1000000 ]"}) {
        QJsonObject json = savedModel(installation);
        json.insert(QStringLiteral("coordIndex"), QString::fromUtf8(indices));
        const Held<UserModelNode> model(new UserModelNode);
        const LogCapture log;
        model->loadFromJson(json);
        EXPECT_EQ(model->collisionObject(), nullptr);
        EXPECT_EQ(log.count(QStringLiteral("No mesh in the document:\tPart1")), 1);
        model->setVisible(true);
        EXPECT_EQ(triangleCount(model.get()), 0);
    }
}

TEST(UserModelNodeForms, IndicesNotInFaceSetForm_AreDrawnButCollideNot) {
    const GeometryInstallation installation;
    QJsonObject json = savedModel(installation);
    // A quadrangle: the stride of four takes its separator for a vertex.
    json.insert(QStringLiteral("coordIndex"), QStringLiteral("[ 0, 1, 2, 3, -1, 4, 5, 6, -1 ]"));
    const Held<UserModelNode> model(new UserModelNode);
    const LogCapture log;
    model->loadFromJson(json);
    model->setVisible(true);
    EXPECT_EQ(model->collisionObject(), nullptr);
    EXPECT_EQ(log.contains(QStringLiteral("Part1 Not built")), true);
    EXPECT_EQ(triangleCount(model.get()), 3);
}

TEST(UserModelNodeForms, OddSwitcherAndColourTexts_LeaveAModelThatWorks) {
    const GeometryInstallation installation;
    for (const char* text : {"57", "-1000000", "99999999999999", "x", "[ ]", "0", "-2", "-3"}) {
        QJsonObject json = savedModel(installation);
        json.insert(QStringLiteral("switcher"), QString::fromUtf8(text));
        json.insert(QStringLiteral("material"), QString::fromUtf8(text));
        const Held<UserModelNode> model(new UserModelNode);
        model->loadFromJson(json);
        EXPECT_EQ(model->isVisible(), true) << text;
        EXPECT_GE(model->material()->diffuseColor.getNum(), 1) << text;
        EXPECT_EQ(triangleCount(model.get()), 12) << text;
    }
}

TEST(UserModelNodeForms, SecondDocumentWithoutMesh_DropsTheFirstOnesGeometry) {
    const GeometryInstallation installation;
    const Held<UserModelNode> model(new UserModelNode);
    model->loadFromJson(savedModel(installation));
    ASSERT_NE(model->collisionObject(), nullptr);
    model->loadOldVersionData(QStringLiteral("Part2"), QString(), QStringLiteral("[ 0, 1, 2, -1 ]"));
    EXPECT_EQ(model->collisionObject(), nullptr);
    EXPECT_EQ(model->getName(), SbName("Part2"));
    EXPECT_EQ(model->faceSet()->coordIndex.getNum() <= 1, true);
}

TEST(UserModelNodeForms, OldForm_SetsNameAndGeometry) {
    const GeometryInstallation installation;
    const Held<UserModelNode> model(new UserModelNode);
    model->loadOldVersionData(QStringLiteral("Part7"),
                              QStringLiteral("VertexProperty { vertex [ 0 0 0, 1 0 0, 0 1 0 ] }"),
                              QStringLiteral("[ 0, 1, 2, -1 ]"));
    EXPECT_EQ(model->getName(), SbName("Part7"));
    ASSERT_NE(model->collisionObject(), nullptr);
    EXPECT_EQ(triangleCount(model.get()), 1);
}

TEST(UserModelNodeForms, OldFormWithAnEmptyText_LogsAndLeavesTheNodeWithoutGeometry) {
    const GeometryInstallation installation;
    const QString vertices = QStringLiteral("VertexProperty { vertex [ 0 0 0, 1 0 0, 0 1 0 ] }");
    const QString indices = QStringLiteral("[ 0, 1, 2, -1 ]");
    for (const bool isVertexEmpty : {true, false}) {
        const Held<UserModelNode> model(new UserModelNode);
        const LogCapture log;
        model->loadOldVersionData(QStringLiteral("Part7"), isVertexEmpty ? QString() : vertices,
                                  isVertexEmpty ? indices : QString());
        EXPECT_EQ(log.count(QStringLiteral("No mesh in the document:\tPart7")), 1);
        EXPECT_EQ(model->collisionObject(), nullptr);
        EXPECT_EQ(model->getName(), SbName("Part7"));
    }
}

TEST(UserModelNodeForms, DamagedDocuments_NeverGiveHalfABuiltModel) {
    const GeometryInstallation installation;
    const QJsonObject good = savedModel(installation);
    const QStringList keys = good.keys();
    std::mt19937 random(9);  // NOLINT(cert-msc51-cpp): the same documents each time
    for (int round = 0; round < 300; ++round) {
        const QString& key = keys[static_cast<int>(random() % static_cast<unsigned>(keys.size()))];
        QString text = good.value(key).toString();
        for (int i = 0; i < 3; ++i) {
            const auto at = static_cast<int>(random() % static_cast<unsigned>(text.size()));
            text[at] = QChar(static_cast<ushort>(32 + random() % 96));
        }
        QJsonObject json = good;
        json.insert(key, text);
        const Held<UserModelNode> model(new UserModelNode);
        const LogCapture log;
        model->loadFromJson(json);
        model->setVisible(true);
        SCOPED_TRACE("round " + std::to_string(round) + " " + key.toStdString() + ": " + text.toStdString());
        const int triangles = triangleCount(model.get());
        if (model->collisionObject() != nullptr)
            ASSERT_GT(triangles, 0);
        else
            ASSERT_GT(log.lines().size(), 0U);
    }
}

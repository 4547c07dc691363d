// What holds for every kind of axis: the same contract runs over both.

#include <Inventor/SbRotation.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QTreeWidgetItem>
#include <limits>
#include <typeinfo>

#include "geometry/FieldText.h"
#include "nodes/NodesTestSupport.h"

namespace {

enum class Kind { Numerical, Part };

AxisBase* makeKind(Kind kind, const QString& type, const QString& direction, const QString& place) {
    if (kind == Kind::Numerical) {
        numericalAxisStruct record = axisRecord(QStringLiteral("Node"), type);
        record.direction = direction;
        record.initialization = place;
        return makeAxis(record);
    }
    nonNumericalAxisStruct record = partRecord(QStringLiteral("Node"), type);
    record.direction = direction;
    record.initialization = place;
    return makePart(record);
}

class AxisConformance : public ::testing::TestWithParam<Kind> {
  protected:
    [[nodiscard]] static AxisBase* make(const char* type, const char* direction = "0 0 1",
                                        const char* place = "0 0 0") {
        return makeKind(GetParam(), QLatin1String(type), QLatin1String(direction), QLatin1String(place));
    }
    /// The file's place as this kind takes it.
    [[nodiscard]] static double sign() { return GetParam() == Kind::Numerical ? -1.0 : 1.0; }

    NodesInstallation installation_;
};

}  // namespace

TEST_P(AxisConformance, SceneChildrenStandInOrder) {
    const Held<AxisBase> axis(make("LINEAR"));
    ASSERT_EQ(axis->getNumChildren(), 4);
    EXPECT_EQ(axis->getChild(0), axis->material());
    EXPECT_EQ(axis->getChild(1), axis->offsetTransform());
    EXPECT_EQ(axis->getChild(2), axis->motionTransform());
    EXPECT_EQ(axis->getChild(3), axis->shapeSwitch());
    EXPECT_EQ(axis->shapeSwitch()->getChild(0), axis->shapeNode());
    EXPECT_EQ(axis->shapeSwitch()->whichChild.getValue(), -3);
    EXPECT_EQ(axis->shapeNode()->coordIndex.getNum(), 12 * 4);
    EXPECT_STREQ(axis->shapeNode()->getName().getString(), "Node");
    EXPECT_STREQ(axis->getName().getString(), "Node");
    EXPECT_EQ(SbColor(axis->material()->diffuseColor[0]), SbColor(0.25F, 0.5F, 0.75F));
}

TEST_P(AxisConformance, OffsetTakesTheFilesPlaceWithTheKindsSign) {
    const Held<AxisBase> axis(make("LINEAR", "0 0 1", "0 0 100"));
    EXPECT_LT(deviation(axis->offsetTransform()->matrix.getValue(), shifted(0, 0, sign() * 100)), 1e-5);
}

TEST_P(AxisConformance, LinearValueMovesAlongTheDirection) {
    const Held<AxisBase> axis(make("LINEAR", "0 -1 0", "5 6 7"));
    axis->setValue(30);
    const double s = sign();
    EXPECT_LT(deviation(axis->localMatrix(), shifted(s * 5, s * 6 - 30, s * 7)), 1e-4);
    EXPECT_LT((placeInScene(axis.get(), axis->shapeSwitch(), {1, 2, 3}) -
               Eigen::Vector3d(s * 5 + 1, s * 6 - 28, s * 7 + 3))
                  .norm(),
              1e-4);
    EXPECT_NEAR(axis->currentValue(), 30.0, 1e-4);
    EXPECT_EQ(axis->record().value, 30.0);
}

TEST_P(AxisConformance, RotaryValueTakesTheOffsetInTwice) {
    const Held<AxisBase> axis(make("ROTATION", "1 0 0", "5 6 7"));
    axis->setValue(-115);
    const Eigen::Affine3d offset = shifted(sign() * 5, sign() * 6, sign() * 7);
    EXPECT_LT(deviation(axis->localMatrix(), offset * offset * turned({1, 0, 0}, -115)), 1e-4);
    EXPECT_LT(deviation(axis->motionTransform()->matrix.getValue(), offset * turned({1, 0, 0}, -115)), 1e-4);
}

TEST_P(AxisConformance, NegativeAngleReadsBackPositive) {
    const Held<AxisBase> axis(make("ROTATION"));
    axis->setValue(-30);
    EXPECT_NEAR(axis->currentValue(), 30.0, 1e-3);
    EXPECT_EQ(axis->record().value, -30.0);
}

TEST_P(AxisConformance, FixedNodeStoresTheValueAndKeepsTheMatrix) {
    for (const char* type : {"FIXED", "SOMETHING"}) {
        const Held<AxisBase> axis(make(type));
        axis->setValue(12);
        EXPECT_EQ(axis->record().value, 12.0);
        EXPECT_LT(deviation(axis->motionTransform()->matrix.getValue(), shifted(0, 0, 0)), 1e-9);
        EXPECT_EQ(axis->currentValue(), 0.0);
    }
}

TEST_P(AxisConformance, ValueThatIsNotFiniteIsIgnored) {
    const Held<AxisBase> axis(make("LINEAR"));
    axis->setValue(8);
    axis->setValue(std::numeric_limits<float>::quiet_NaN());
    axis->setValue(std::numeric_limits<float>::infinity());
    EXPECT_EQ(axis->record().value, 8.0);
    EXPECT_NEAR(axis->currentValue(), 8.0, 1e-5);
}

TEST_P(AxisConformance, WordMovesTheAxisAndALetterAloneDoesNot) {
    const Held<AxisBase> axis(make("LINEAR"));
    axis->setValueFromText(u"X12.5");
    EXPECT_NEAR(axis->currentValue(), 12.5, 1e-5);
    axis->setValueFromText(u"X");
    axis->setValueFromText(u"");
    axis->setValueFromText(u"X1-2");
    EXPECT_NEAR(axis->currentValue(), 12.5, 1e-5);
    axis->setValueFromText(u"C-90");
    EXPECT_NEAR(axis->currentValue(), -90.0, 1e-5);
}

TEST_P(AxisConformance, CollisionObjectFollowsAndItsBoxDoesNot) {
    const Held<AxisBase> axis(make("LINEAR"));
    ASSERT_NE(axis->collisionObject(), nullptr);
    const auto box = axis->collisionObject()->getAABB();
    axis->setValue(500);
    EXPECT_LT(deviation(axis->collisionObject()->getTransform(), shifted(0, 0, 500)), 1e-4);
    EXPECT_EQ(axis->collisionObject()->getAABB().min_, box.min_);
    EXPECT_EQ(axis->collisionObject()->getAABB().max_, box.max_);
}

TEST_P(AxisConformance, UserDataIsTheNamePath) {
    const Held<AxisBase> axis(make("LINEAR"));
    ASSERT_NE(axis->collisionObject()->getUserData(), nullptr);
    EXPECT_EQ(*static_cast<QStringList*>(axis->collisionObject()->getUserData()),
              QStringList{QStringLiteral("Node")});
}

TEST_P(AxisConformance, OffsetMatrixGoesInFrontAndIsKeptAsInitialOffset) {
    const Held<AxisBase> axis(make("LINEAR", "0 0 1", "1 2 3"));
    EXPECT_EQ(axis->initialOffset(), SbMatrix::identity());
    SbMatrix turn;
    turn.setRotate(SbRotation(SbVec3f(0, 0, 1), 1.5707963F));
    axis->applyOffsetMatrix(turn);
    const double s = sign();
    const Eigen::Affine3d expected = shifted(s * 1, s * 2, s * 3) * turned({0, 0, 1}, 90);
    EXPECT_LT(deviation(axis->offsetTransform()->matrix.getValue(), expected), 1e-4);
    EXPECT_LT(deviation(axis->initialOffset(), expected), 1e-4);
    EXPECT_LT(deviation(axis->collisionObject()->getTransform(), expected), 1e-4);
}

TEST_P(AxisConformance, ColoursComeAndGo) {
    const Held<AxisBase> axis(make("LINEAR"));
    const auto color = [&axis] { return SbColor(axis->material()->diffuseColor[0]); };
    axis->setCollided(true);
    EXPECT_EQ(color(), SbColor(1, 0, 0));
    axis->setSelected(true);
    EXPECT_EQ(color(), SbColor(1, 1, 0));
    axis->resetColour();
    EXPECT_EQ(color(), SbColor(0.25F, 0.5F, 0.75F));
    axis->setSelected(true);
    axis->setSelected(false);
    EXPECT_EQ(color(), SbColor(0.25F, 0.5F, 0.75F));
}

TEST_P(AxisConformance, HiddenShapeKeepsMoving) {
    const Held<AxisBase> axis(make("LINEAR"));
    axis->setVisible(false);
    EXPECT_EQ(axis->shapeSwitch()->whichChild.getValue(), -1);
    EXPECT_FALSE(axis->isShapeVisible());
    axis->setValue(4);
    EXPECT_LT(deviation(axis->worldMatrix(), shifted(0, 0, 4)), 1e-5);
    axis->setVisible(true);
    EXPECT_EQ(axis->shapeSwitch()->whichChild.getValue(), -3);
}

TEST_P(AxisConformance, JsonBringsTheMotionBack) {
    const Held<AxisBase> axis(make("ROTATION", "0 1 0", "1 2 3"));
    axis->setValue(77);
    const QJsonObject saved = axis->toJson();
    EXPECT_EQ(saved.keys(), QStringList{QStringLiteral("transform")});
    EXPECT_EQ(saved.value(QStringLiteral("transform")).toString(),
              fieldText(axis->motionTransform()->matrix));
    const SbMatrix moved = axis->motionTransform()->matrix.getValue();
    axis->setValue(0);
    axis->fromJson(saved);
    EXPECT_EQ(axis->motionTransform()->matrix.getValue(), moved);
    EXPECT_NEAR(axis->currentValue(), 77.0, 1e-3);
    EXPECT_LT(deviation(axis->collisionObject()->getTransform(),
                        axis->worldMatrix().cast<double>() * Eigen::Affine3d::Identity()),
              1e-6);
}

TEST_P(AxisConformance, BadJsonChangesNothing) {
    const Held<AxisBase> axis(make("LINEAR"));
    axis->setValue(5);
    for (const QJsonValue& value :
         {QJsonValue(QStringLiteral("1 2 3")), QJsonValue(5), QJsonValue(), QJsonValue(QJsonArray())}) {
        axis->fromJson({{QStringLiteral("transform"), value}});
        EXPECT_NEAR(axis->currentValue(), 5.0, 1e-5);
    }
}

TEST_P(AxisConformance, CloneIsANodeOfItsOwn) {
    const Held<AxisBase> axis(make("LINEAR", "0 0 1", "1 2 3"));
    axis->setValue(9);
    const Held<AxisBase> copy(axis->clone());
    ASSERT_NE(copy.get(), nullptr);
    EXPECT_EQ(typeid(*copy.get()), typeid(*axis.get()));
    EXPECT_TRUE(copy->isClone());
    EXPECT_FALSE(axis->isClone());
    EXPECT_EQ(copy->name(), axis->name());
    EXPECT_STREQ(copy->getName().getString(), "Node");
    EXPECT_EQ(copy->record().offset, axis->record().offset);
    EXPECT_EQ(copy->record().lower, -100.0);
    EXPECT_EQ(copy->record().upper, 250.0);
    EXPECT_EQ(copy->record().kind, axis->record().kind);
    EXPECT_EQ(copy->parentAxis(), nullptr);
    EXPECT_NE(copy->shapeNode(), axis->shapeNode());
    ASSERT_NE(copy->collisionObject(), nullptr);
    EXPECT_NE(copy->collisionObject(), axis->collisionObject());
    EXPECT_EQ(copy->currentValue(), 0.0) << "a clone starts at home";
}

TEST_P(AxisConformance, CloneLogsThatItGoes) {
    const Held<AxisBase> axis(make("LINEAR"));
    const LogCapture log;
    { const Held<AxisBase> copy(axis->clone()); }
    EXPECT_EQ(log.count(QStringLiteral("Node is deleted")), 1);
}

TEST_P(AxisConformance, TreeItemCarriesNameAndFlag) {
    const Held<AxisBase> axis(make("LINEAR"));
    QTreeWidgetItem* item = axis->treeItem();
    EXPECT_EQ(axis->treeItem(), item);
    EXPECT_EQ(item->type(), 0);
    EXPECT_EQ(item->text(1), QStringLiteral("Node"));
    EXPECT_EQ(item->data(1, Qt::UserRole).toString(), QStringLiteral("Node"));
    EXPECT_EQ(item->data(1, Qt::UserRole + 1).toString(), GetParam() == Kind::Numerical
                                                              ? QStringLiteral("numericalAxis")
                                                              : QStringLiteral("nonNumericalAxis"));
}

TEST_P(AxisConformance, InformationNamesEveryLine) {
    const Held<AxisBase> axis(make("ROTATION", "0 1 0"));
    QString text = QStringLiteral("before\n");
    axis->information(text);
    const QStringList lines = text.split(QLatin1Char('\n'));
    EXPECT_EQ(lines[0], QStringLiteral("before"));
    EXPECT_EQ(lines[1], QStringLiteral("Axis Name: Node"));
    EXPECT_EQ(lines[2], GetParam() == Kind::Numerical ? QStringLiteral("Axis Type: Numerical")
                                                      : QStringLiteral("Axis Type: Non-Numerical"));
    EXPECT_EQ(lines[3], QStringLiteral("Motion Type: Rotation"));
    EXPECT_EQ(lines[4], GetParam() == Kind::Numerical ? QStringLiteral("Id: 3") : QStringLiteral("Id: -1"));
    EXPECT_EQ(lines[5], QStringLiteral("Direction: 0 1 0"));
    EXPECT_EQ(lines[6], QStringLiteral("Lower: -100"));
    EXPECT_EQ(lines[7], QStringLiteral("Upper: 250"));
    EXPECT_EQ(lines[8], QStringLiteral("Home: 0"));
    EXPECT_EQ(lines[9], QStringLiteral("Current Position: 0"));
    EXPECT_EQ(lines[10], QStringLiteral("Model Path: models/Box.stl"));
    EXPECT_EQ(lines[11], QStringLiteral("Parent: None"));
    EXPECT_TRUE(lines[12].startsWith(QStringLiteral("Initial Transform: 1 0 0 0")));
}

INSTANTIATE_TEST_SUITE_P(BothKinds, AxisConformance, ::testing::Values(Kind::Numerical, Kind::Part),
                         [](const ::testing::TestParamInfo<Kind>& kind) {
                             return kind.param == Kind::Numerical ? "Numerical" : "Part";
                         });

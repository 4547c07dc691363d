#include "machine/MotionNodeManager.h"

#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QFormLayout>
#include <QSignalSpy>
#include <QToolBar>
#include <QTreeWidgetItem>

#include "geometry/modelNode.h"
#include "machine/FixtureMounter.h"
#include "machine/SpindleClass.h"
#include "machine/SpindleStatusWidget.h"
#include "motion/MotionTestSupport.h"
#include "nc/commandProcessor.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

namespace {

class RecordingMounter : public FixtureMounter {
  public:
    void addFixture(AxisBase& axis, const QString& path, float distance_mm) override {
        mounted.append(axis.name() + QLatin1Char(' ') + path + QLatin1Char(' ') +
                       QString::number(static_cast<double>(distance_mm)));
    }
    void removeFixtures(AxisBase& axis) override { removed.append(axis.name()); }
    QStringList mounted;
    QStringList removed;
};

double valueOf(MotionNodeManager& manager, const char* axis) {
    return manager.findAxis(QString::fromLatin1(axis))->currentValue();
}

UserFixtureList fixture(const QString& axis, int number, float distance) {
    UserFixtureList entry;
    entry.key = axis;
    entry.value = QStringLiteral("clamp.json");
    entry.number = number;
    entry.distance = distance;
    return entry;
}

int countIn(SoSeparator* group, const SoNode* node) {
    int count = 0;
    for (int i = 0; i < group->getNumChildren(); ++i)
        count += group->getChild(i) == node ? 1 : 0;
    return count;
}

}  // namespace

// --- building ---

TEST(MotionNodeManager, LogsItsStepsInOrder) {
    SmallMachine small;
    const LogCapture log;
    small.build();
    const QStringList steps{"Numerical axes made.",
                            "Parts that are no numerical axes made.",
                            "Spindles made.",
                            "Numerical axes joined along the chains.",
                            "Spindles mounted.",
                            "Parts that are no numerical axes mounted.",
                            "Work coordinate systems made.",
                            "Fixtures mounted.",
                            "Collision groups made."};
    QStringList seen;
    for (const LogCapture::Line& line : log.lines()) {
        if (steps.contains(line.text)) {
            EXPECT_EQ(line.type, QtInfoMsg);
            seen.append(line.text);
        }
    }
    EXPECT_EQ(seen, steps);
    EXPECT_EQ(log.count("\t\tName:"), 5);
    EXPECT_TRUE(log.contains("\t\tName:XTime:"));
}

TEST(MotionNodeManager, IsTheProcesssMachineWhileItLives) {
    EXPECT_EQ(MotionNodeManager::instance(), nullptr);
    {
        SmallMachine small;
        EXPECT_EQ(MotionNodeManager::instance(), &small.build());
        EXPECT_EQ(small.manager().objectName(), "machineNode");
    }
    EXPECT_EQ(MotionNodeManager::instance(), nullptr);
}

TEST(MotionNodeManager, JoinsTheTreeAlongTheChains) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(QString::fromUtf8(manager.root()->getName().getString()), "SmallMachine");
    EXPECT_EQ(manager.findAxis("Z")->nodeChain(), (QStringList{"X", "Z"}));
    EXPECT_EQ(manager.findAxis("Y")->nodeChain(), QStringList{"Y"});
    EXPECT_EQ(manager.findSpindle(1)->nodeChain(), (QStringList{"X", "Z", "T1"}));
    EXPECT_EQ(manager.findWorkCoordinateSystem("G54")->nodeChain(), (QStringList{"Y", "G54"}));
    EXPECT_EQ(manager.findWorkCoordinateSystem("G55")->nodeChain(), QStringList{"G55"});
    ASSERT_EQ(manager.axes().size(), 5);
    EXPECT_EQ(manager.axes()[3]->name(), "Bed");
    EXPECT_EQ(countIn(manager.root(), manager.findAxis("Bed")), 1);
}

TEST(MotionNodeManager, LookUpsGiveNothingForWhatIsNotThere) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(manager.findAxis(""), nullptr);
    EXPECT_EQ(manager.findAxis("Q"), nullptr);
    EXPECT_EQ(manager.findSpindle(9), nullptr);
    EXPECT_EQ(manager.findWorkCoordinateSystem("G59"), nullptr);
    EXPECT_EQ(manager.findNode("Q"), nullptr);
    EXPECT_EQ(manager.findNode(""), nullptr);
    EXPECT_EQ(manager.findNodeByPath({}), nullptr);
    EXPECT_EQ(manager.findNodeByPath({"X", "Q"}), nullptr);
    EXPECT_EQ(manager.findNodeByPath({"Y", "Z"}), nullptr) << "Z is not below Y";
}

TEST(MotionNodeManager, NodesAreFoundByNameAndPath) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(dynamic_cast<AxisBase*>(manager.findNode("Z")), manager.findAxis("Z"));
    EXPECT_EQ(dynamic_cast<AxisBase*>(manager.findNode("Z", "X")), manager.findAxis("Z"));
    EXPECT_EQ(manager.findNode("Z", "Y"), nullptr);
    EXPECT_EQ(manager.findNode("Z", "Q"), nullptr);
    EXPECT_EQ(dynamic_cast<SpindleNode*>(manager.findNodeByPath({"X", "Z", "T1"})), manager.findSpindle(1));
}

TEST(MotionNodeManager, AChainWithoutNamesIsLoggedAndSkipped) {
    SmallMachine small;
    small.machine.machineParameters.kinematicChain = QStringList{" ; ", "->", "X->Z;Y"};
    const LogCapture log;
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(log.count("The kinematic chain has a wrong form."), 2);
    EXPECT_EQ(manager.findAxis("Z")->nodeChain(), (QStringList{"X", "Z"}));
}

TEST(MotionNodeManager, UnknownNamesInAChainAreSkipped) {
    SmallMachine small;
    small.machine.machineParameters.kinematicChain = QStringList{"Q->X->Z;Y"};
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(manager.findAxis("Z")->parentAxis(), manager.findAxis("X"));
    EXPECT_EQ(countIn(manager.root(), manager.findAxis("X")), 0) << "its head is unknown";
}

TEST(MotionNodeManager, TwoChainsNamingTheSameAxisPutItOnTheRootTwice) {
    SmallMachine small;
    small.machine.machineParameters.kinematicChain = QStringList{"X->Z;Y", "X->Z;Y"};
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(countIn(manager.root(), manager.findAxis("X")), 2);
    EXPECT_EQ(countIn(manager.findAxis("X"), manager.findAxis("Z")), 1);
    EXPECT_EQ(manager.findAxis("Z")->nodeChain(), (QStringList{"X", "Z"}));
}

TEST(MotionNodeManager, ASpindleWithoutItsParentStandsOnTheRoot) {
    SmallMachine small;
    small.machine.spindles[0]->parent = QStringLiteral("X->Q");
    const LogCapture log;
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(log.count("The carrier of the spindle was not found."), 1);
    EXPECT_EQ(countIn(manager.root(), manager.findSpindle(1)), 1);
    EXPECT_EQ(manager.findSpindle(1)->nodeChain(), QStringList{"T1"});
}

TEST(MotionNodeManager, APartWithAnUnknownParentStaysOutsideTheScene) {
    SmallMachine small;
    small.machine.nonNumericalAxes[0]->parent = QStringLiteral("Q");
    MotionNodeManager& manager = small.build();
    ASSERT_NE(manager.findAxis("Bed"), nullptr);
    EXPECT_EQ(manager.findNode("Bed"), nullptr);
    manager.executeLine("Z-290.5");
}

TEST(MotionNodeManager, APartStandsOnItsAxis) {
    SmallMachine small;
    small.machine.nonNumericalAxes[1]->parent = QStringLiteral("Z");
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(manager.findAxis("Lamp")->nodeChain(), (QStringList{"X", "Z", "Lamp"}));
}

TEST(MotionNodeManager, APartOfAWrongFormIsLeftOut) {
    SmallMachine small;
    small.machine.nonNumericalAxes[0]->color = QStringLiteral("1 1");
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(manager.axes().size(), 4);
}

TEST(MotionNodeManager, AFixedZoneStandsAtItsOrigin) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    WorkCoordinateSystem* zone = manager.findWorkCoordinateSystem("G55");
    const Eigen::Vector3d place =
        placeInScene(manager.root(), zone->userCoordinateSystem(0)->switcher(), Eigen::Vector3d::Zero());
    EXPECT_LT((place - Eigen::Vector3d(-300, 0, 0)).norm(), 1e-4);
}

TEST(MotionNodeManager, AZoneWithAnUnknownParentStandsAtItsOrigin) {
    SmallMachine small;
    small.machine.workCoordinateSystems[1]->parent = QStringLiteral("Q");
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(countIn(manager.root(), manager.findWorkCoordinateSystem("G55")), 1);
}

TEST(MotionNodeManager, CoaxialSpindlesArePartnersAndShareARow) {
    SmallMachine small;
    small.machine.spindles[0]->coaxial = QStringLiteral("T2");
    small.machine.spindles[1]->coaxial = QStringLiteral("T1");
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(manager.findSpindle(1)->coaxialPartner(), manager.findSpindle(2));
    EXPECT_EQ(manager.findSpindle(2)->coaxialPartner(), manager.findSpindle(1));
    EXPECT_EQ(manager.spindleStatusWindow()->findChildren<SpindleStatusWidget*>().size(), 2);
    const auto* form = qobject_cast<QFormLayout*>(manager.spindleStatusWindow()->layout());
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->rowCount(), 1);
    manager.spindleStatusWindow()->resize(600, 300);
    manager.spindleStatusWindow()->show();
    for (const auto* status : manager.spindleStatusWindow()->findChildren<SpindleStatusWidget*>())
        EXPECT_GT(status->width(), 500) << "both can be read";
}

TEST(MotionNodeManager, AxesStandAtHomeAndAuxiliaryOnesAtTheirLowerLimit) {
    SmallMachine small;
    small.machine.numericalAxes[0]->homePosition = QStringLiteral("25");
    small.machine.numericalAxes[1]->id = 6;
    small.machine.numericalAxes[1]->lower = QStringLiteral("-40");
    MotionNodeManager& manager = small.build();
    EXPECT_NEAR(valueOf(manager, "X"), 25, 1e-5);
    EXPECT_NEAR(valueOf(manager, "Y"), -40, 1e-5);
    manager.executeLine("X1 Y2 Z3");
    manager.findAxis("X")->setCollided(true);
    manager.resetMachine(false, false);
    EXPECT_NEAR(valueOf(manager, "X"), 25, 1e-5);
    EXPECT_NEAR(valueOf(manager, "Y"), -40, 1e-5);
    EXPECT_NEAR(valueOf(manager, "Z"), 0, 1e-5);
}

// --- lines ---

TEST(MotionNodeManager, ALineMovesItsAxesAndIsTold) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    QSignalSpy told(&manager, &MotionNodeManager::showCommandString);
    manager.executeLine("G1 X10.5Y-3 Z. F7000 ");
    EXPECT_NEAR(valueOf(manager, "X"), 10.5, 1e-5);
    EXPECT_NEAR(valueOf(manager, "Y"), -3, 1e-5);
    EXPECT_NEAR(valueOf(manager, "Z"), 0, 1e-5);
    ASSERT_EQ(told.count(), 1);
    EXPECT_EQ(told.first().first().toString(), "G1 X10.5Y-3 Z. F7000 ");
}

TEST(MotionNodeManager, TheSameLineTwiceDoesNothingEvenAfterAMoveByHand) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    QSignalSpy told(&manager, &MotionNodeManager::showCommandString);
    manager.executeLine("X10");
    manager.findAxis("X")->setValue(55);
    manager.executeLine("  X10\t");
    EXPECT_NEAR(valueOf(manager, "X"), 55, 1e-5);
    EXPECT_EQ(told.count(), 1);
    manager.executeLine("");
    EXPECT_EQ(told.count(), 2);
    manager.executeLine("X10");
    EXPECT_NEAR(valueOf(manager, "X"), 10, 1e-5);
}

TEST(MotionNodeManager, ALineWithAnMAnywhereMovesNoAxis) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    manager.executeLine("X10");
    manager.executeLine("G1 X0 M3 S500");
    EXPECT_NEAR(valueOf(manager, "X"), 10, 1e-5);
}

TEST(MotionNodeManager, GarbageMovesNothing) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    for (const QString& line : {QStringLiteral("X"), QStringLiteral("X-"), QStringLiteral("x10"),
                                QString(100000, 'X'), QString::fromUtf8("日本語 X\xC2\xA0")})
        manager.executeLine(line);
    EXPECT_NEAR(valueOf(manager, "X"), 0, 1e-9);
    manager.executeLine("X" + QString(400, '9'));
    EXPECT_NEAR(valueOf(manager, "X"), 0, 1e-9) << "not finite";
}

// --- fixtures ---

TEST(MotionNodeManager, FixturesAreMountedByCountAndDistance) {
    SmallMachine small;
    small.machine.fixtures = {fixture("Y", 3, 100), fixture("X", 0, 50), fixture("Q", 2, 10)};
    MotionNodeManager& manager = small.build();
    RecordingMounter mounter;
    manager.setFixtureMounter(&mounter);
    const LogCapture log;
    manager.resetMachine(true, true);
    EXPECT_EQ(mounter.mounted, (QStringList{"Y clamp.json 0", "Y clamp.json 100", "Y clamp.json 200"}));
    EXPECT_EQ(mounter.removed, (QStringList{"X", "Y", "Z", "Bed", "Lamp"}));
    EXPECT_TRUE(log.contains("Name:Y Path:clamp.json Number:3 Distance:100"));
    mounter.mounted.clear();
    manager.resetMachine(true, false);
    EXPECT_TRUE(mounter.mounted.isEmpty());
}

TEST(MotionNodeManager, ClearingTakesOffWorkPiecesAndSystems) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    WorkCoordinateSystem* zone = manager.findWorkCoordinateSystem("G54");
    zone->userCoordinateSystem(0)->AddWorkPiece(small.installation.file("models/Box.stl"));
    EXPECT_EQ(manager.collisionGroups().value("Y").size(), 2);
    manager.resetMachine(false, false);
    EXPECT_EQ(manager.collisionGroups().value("Y").size(), 2);
    manager.resetMachine(true, false);
    EXPECT_EQ(manager.collisionGroups().value("Y").size(), 1);
    EXPECT_TRUE(zone->userCoordinateSystem(0)->userModels().isEmpty());
}

// --- tools ---

TEST(MotionNodeManager, InstalledToolsGoToSpindlesWithoutAChanger) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    ToolData first = cylinderTool(1, 1);
    ToolData second = cylinderTool(2, 2);
    ToolData lost = cylinderTool(7, 3);
    const LogCapture log;
    manager.UpdateToolList({&first, &second, &lost});
    EXPECT_EQ(log.count("主轴Id错误 "), 1);
    EXPECT_EQ(manager.findSpindle(1)->collisionObject(), nullptr) << "waits for its tool change";
    ASSERT_NE(manager.findSpindle(2)->collisionObject(), nullptr);
    EXPECT_TRUE(manager.collisionGroups().value("X").contains(manager.findSpindle(2)->collisionObject()));
    manager.UpdateToolList({});
    EXPECT_NE(manager.findSpindle(2)->collisionObject(), nullptr) << "what is mounted stays";
    EXPECT_TRUE(manager.collisionGroups().value("X").contains(manager.findSpindle(2)->collisionObject()));
}

TEST(MotionNodeManager, ToolThatAProgramHasMountedCannotBeRemoved) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    ToolData first = cylinderTool(1, 1);
    ToolData other = cylinderTool(1, 3);
    ToolData fixed = cylinderTool(2, 2);
    ToolData library = cylinderTool(1, 1);
    const QList<ToolData*> tools{&first, &other, &fixed};
    manager.UpdateToolList(tools);
    manager.commandProcessor().UpdateToolList(tools);
    for (ToolData* tool : {&first, &other, &fixed})
        EXPECT_TRUE(manager.canRemoveTool(tool)) << "nothing is mounted by a program yet";
    manager.executeLine("M6 T1");
    ASSERT_NE(manager.findSpindle(1)->collisionObject(), nullptr);
    EXPECT_FALSE(manager.canRemoveTool(&first));
    EXPECT_TRUE(manager.canRemoveTool(&other));
    EXPECT_TRUE(manager.canRemoveTool(&fixed)) << "another tool may take its place";
    EXPECT_TRUE(manager.canRemoveTool(&library)) << "not installed";
    manager.executeLine("M6 T3");
    EXPECT_TRUE(manager.canRemoveTool(&first));
    EXPECT_FALSE(manager.canRemoveTool(&other));
    manager.emptyToolChangers();
    EXPECT_EQ(manager.findSpindle(1)->collisionObject(), nullptr);
    EXPECT_NE(manager.findSpindle(2)->collisionObject(), nullptr);
    EXPECT_TRUE(manager.canRemoveTool(&other));
}

// --- project form ---

TEST(MotionNodeManager, TheProjectFormHoldsAxesOnChainsAndZones) {
    SmallMachine small;
    small.machine.nonNumericalAxes[1]->parent = QStringLiteral("Z");
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(manager.toJson().keys(), (QStringList{"G54", "G55", "X", "X->Z", "X->Z->Lamp", "Y"}));
}

TEST(MotionNodeManager, TheProjectFormComesBack) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    manager.executeLine("X120 Z-30 Y44");
    manager.findWorkCoordinateSystem("G54")->userCoordinateSystem(0)->AddWorkPiece(
        small.installation.file("models/Box.stl"));
    const QJsonObject form = manager.toJson();
    manager.resetMachine(true, false);
    EXPECT_NEAR(valueOf(manager, "X"), 0, 1e-5);
    manager.fromJson(form, false);
    EXPECT_NEAR(valueOf(manager, "X"), 120, 1e-4);
    EXPECT_NEAR(valueOf(manager, "Z"), -30, 1e-4);
    EXPECT_NEAR(valueOf(manager, "Y"), 44, 1e-4);
    EXPECT_EQ(manager.collisionGroups().value("Y").size(), 2);
    EXPECT_EQ(manager.toJson(), form);
}

TEST(MotionNodeManager, AUsersSystemNamedLikeAZoneHidesNone) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    const auto zone = [](const char* system, int id) {
        return QJsonObject{{system, QJsonObject{{"id", id}, {"name", system}}}};
    };
    manager.fromJson({{"G54", zone("G55", 3)}, {"G55", zone("mine", 4)}}, false);
    const auto names = [&manager](const char* key) {
        QStringList list;
        for (const userCoordinateSystem* system : manager.findWorkCoordinateSystem(key)->ucsList())
            list.append(system->name());
        return list;
    };
    EXPECT_EQ(names("G54"), QStringList("G55"));
    EXPECT_EQ(names("G55"), QStringList("mine"));
}

TEST(MotionNodeManager, AForeignProjectFormIsLeftAlone) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    QJsonObject foreign{{"Q->R", QJsonObject()}, {"", 3}, {"X", QJsonArray{1}}, {"T1", QJsonObject()}};
    manager.fromJson(foreign, false);
    manager.fromJson(foreign, true);
    EXPECT_NEAR(valueOf(manager, "X"), 0, 1e-5);
    EXPECT_EQ(manager.findWorkCoordinateSystem("G54")->ucsList().size(), 1);
}

TEST(MotionNodeManager, TheOlderFormSetsBothTables) {
    SmallMachine small;
    MotionNodeManager& manager = small.build();
    const auto table = [](double x) {
        return QJsonObject{{"coordinate", QJsonArray{QJsonObject{{"id", 4}, {"translation", x}}}}};
    };
    manager.fromJson({{"Y", table(1)}, {"V", table(2)}}, true);
    EXPECT_NE(manager.findWorkCoordinateSystem("G54")->ucsList().size(), 0);
    EXPECT_NE(manager.findWorkCoordinateSystem("G55")->ucsList().size(), 0);
}

// --- what the window takes ---

TEST(MotionNodeManager, TreeRowsAreHeadsFixedZonesAndListedParts) {
    SmallMachine small;
    small.machine.machineParameters.kinematicChain = QStringList{"X->Z;Y", "X->Z"};
    MotionNodeManager& manager = small.build();
    QStringList names;
    for (const QTreeWidgetItem* item : manager.treeItems())
        names.append(item->text(1));
    EXPECT_EQ(names, (QStringList{"X", "Y", "G55", "Bed"}));
}

TEST(MotionNodeManager, TheToolBarHidesAxesExceptTheFifth) {
    SmallMachine small;
    small.machine.numericalAxes[2]->id = 5;
    MotionNodeManager& manager = small.build();
    auto* action = manager.toolBar()->findChild<QAction*>("VisiableAxis");
    ASSERT_NE(action, nullptr);
    EXPECT_FALSE(action->isChecked());
    action->trigger();
    EXPECT_FALSE(manager.findAxis("X")->isShapeVisible());
    EXPECT_FALSE(manager.findAxis("Bed")->isShapeVisible());
    EXPECT_TRUE(manager.findAxis("Z")->isShapeVisible());
    action->trigger();
    EXPECT_TRUE(manager.findAxis("X")->isShapeVisible());
}

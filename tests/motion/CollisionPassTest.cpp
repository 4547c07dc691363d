#include <Inventor/nodes/SoMaterial.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QSignalSpy>
#include <QToolBar>

#include "geometry/modelNode.h"
#include "machine/SpindleClass.h"
#include "motion/MotionTestSupport.h"
#include "nc/commandProcessor.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

// Contacts that are known by construction: see SmallMachine for where everything stands.

namespace {

struct Machine : SmallMachine {
    Machine() {
        build();
        contacts = std::make_unique<QSignalSpy>(&manager(), &MotionNodeManager::contactFound);
    }
    /// A tool of 100 mm in T1.
    void mountTool() {
        ToolData tool = cylinderTool(1, 1);
        manager().findSpindle(1)->setTool(tool);
    }
    int contactsOf(const char* line) {
        contacts->clear();
        manager().executeLine(QString::fromLatin1(line));
        return contacts->count();
    }
    [[nodiscard]] QString paths(int contact) const {
        const QList<QVariant>& told = contacts->at(contact);
        return told[0].toStringList().join("->") + " | " + told[1].toStringList().join("->");
    }
    UserModelNode* addPiece(const char* zone) {
        userCoordinateSystem* system =
            manager().findWorkCoordinateSystem(QString::fromLatin1(zone))->userCoordinateSystem(0);
        system->AddWorkPiece(installation.file("models/Box.stl"));
        return system->userModels().last();
    }
    SbColor color(const char* axis) {
        return manager().findAxis(QString::fromLatin1(axis))->material()->diffuseColor[0];
    }
    std::unique_ptr<QSignalSpy> contacts;
};

const SbColor kRed(1, 0, 0);

}  // namespace

TEST(CollisionGroups, HoldChainsListedPartsAndFixedZones) {
    Machine machine;
    EXPECT_EQ(machine.manager().collisionGroups().keys(), (QStringList{"Bed", "G55", "X", "Y"}));
    EXPECT_EQ(machine.manager().collisionGroups().value("X").size(), 2) << "X and Z, no tool yet";
    EXPECT_TRUE(machine.manager().collisionGroups().value("G55").isEmpty());
}

TEST(CollisionGroups, AListedPartOnAChainIsInItsChainOnly) {
    SmallMachine small;
    small.machine.nonNumericalAxes[0]->parent = QStringLiteral("Y");
    MotionNodeManager& manager = small.build();
    EXPECT_EQ(manager.collisionGroups().keys(), (QStringList{"G55", "X", "Y"}));
    EXPECT_EQ(manager.collisionGroups().value("Y").size(), 2);
}

TEST(CollisionGroups, WithoutAListNoPartTakesPart) {
    SmallMachine small;
    small.machine.collisionObjectList.clear();
    EXPECT_EQ(small.build().collisionGroups().keys(), (QStringList{"G55", "X", "Y"}));
}

TEST(CollisionGroups, FollowToolsAndWorkPieces) {
    Machine machine;
    machine.mountTool();
    EXPECT_EQ(machine.manager().collisionGroups().value("X").size(), 3);
    machine.addPiece("G55");
    EXPECT_EQ(machine.manager().collisionGroups().value("G55").size(), 1);
    machine.manager().findWorkCoordinateSystem("G55")->reset();
    EXPECT_TRUE(machine.manager().collisionGroups().value("G55").isEmpty());
}

TEST(CollisionGroups, ARefreshWithAnUnknownPathChangesNothing) {
    Machine machine;
    const auto before = machine.manager().collisionGroups();
    machine.manager().refreshCollisionGroup({"Q"});
    machine.manager().refreshCollisionGroup({"Lamp"});
    machine.manager().refreshCollisionGroup({"X", "Z"});
    EXPECT_EQ(machine.manager().collisionGroups(), before);
}

TEST(CollisionPassOfTheMachine, AMillimetreDeepIsFoundAndAMillimetreApartIsNot) {
    Machine machine;
    machine.mountTool();
    EXPECT_EQ(machine.contactsOf("Z-289"), 0);
    EXPECT_EQ(machine.contactsOf("Z-291"), 1);
    EXPECT_EQ(machine.paths(0), "X->Z->T1 | Y");
    EXPECT_EQ(machine.contactsOf("Z-289 "), 0);
}

TEST(CollisionPassOfTheMachine, AContactMarksBothAndTheNextFreeLineRestoresThem) {
    Machine machine;
    machine.mountTool();
    const SbColor free = machine.color("X");
    machine.contactsOf("Z-291");
    SpindleNode* spindle = machine.manager().findSpindle(1);
    EXPECT_EQ(machine.color("Y"), kRed);
    EXPECT_EQ(machine.color("X"), kRed) << "the axes above the tool show it";
    EXPECT_EQ(machine.color("Z"), kRed);
    EXPECT_EQ(spindle->material()->diffuseColor[0], kRed);
    EXPECT_EQ(machine.manager().collidedNodes().size(), 2);
    machine.contactsOf("Z-100");
    EXPECT_EQ(machine.color("Y"), free);
    EXPECT_EQ(machine.color("X"), free);
    EXPECT_NE(spindle->material()->diffuseColor[0], kRed);
    EXPECT_TRUE(machine.manager().collidedNodes().isEmpty());
}

TEST(CollisionPassOfTheMachine, AWorkPieceOnTheTableIsHitAboveTheTable) {
    Machine machine;
    machine.mountTool();
    machine.manager().findAxis("Y")->setValue(0);
    UserModelNode* piece = machine.addPiece("G54");
    machine.manager().findWorkCoordinateSystem("G54")->userCoordinateSystem(0)->setTranslation({0, 0, 25});
    EXPECT_EQ(machine.contactsOf("Z-264"), 0) << "its top stands at 35";
    EXPECT_EQ(machine.contactsOf("Z-266"), 1);
    EXPECT_EQ(piece->material()->diffuseColor[0], kRed);
    EXPECT_EQ(machine.contactsOf("Y40"), 0) << "the table carries it away";
    EXPECT_EQ(machine.contactsOf("Z-310"), 0);
    EXPECT_EQ(machine.contactsOf("Y0"), 1);
}

TEST(CollisionPassOfTheMachine, AHiddenWorkPieceStillCollidesWithoutColour) {
    Machine machine;
    machine.mountTool();
    UserModelNode* piece = machine.addPiece("G54");
    machine.manager().findWorkCoordinateSystem("G54")->userCoordinateSystem(0)->setTranslation({0, 0, 25});
    piece->setVisible(false);
    EXPECT_EQ(machine.contactsOf("Z-266"), 1);
    EXPECT_NE(piece->material()->diffuseColor[0], kRed);
    EXPECT_EQ(machine.manager().collidedNodes().size(), 2);
}

TEST(CollisionPassOfTheMachine, AListedPartCollidesAndAnUnlistedOneDoesNot) {
    Machine machine;
    machine.mountTool();
    EXPECT_EQ(machine.contactsOf("X300 Z-291"), 1);
    EXPECT_EQ(machine.paths(0), "X->Z->T1 | Bed");
    EXPECT_EQ(machine.contactsOf("X600"), 0);
}

TEST(CollisionPassOfTheMachine, ALineWithAnMTestsNothing) {
    Machine machine;
    machine.mountTool();
    machine.manager().findAxis("Z")->setValue(-291);
    EXPECT_EQ(machine.contactsOf("M3 S100"), 0);
    EXPECT_EQ(machine.contactsOf("X0"), 1);
}

TEST(CollisionPassOfTheMachine, WithoutASpindleNothingIsTested) {
    SmallMachine small;
    small.machine.spindles.clear();
    MotionNodeManager& manager = small.build();
    QSignalSpy contacts(&manager, &MotionNodeManager::contactFound);
    manager.executeLine("Z-400");
    EXPECT_EQ(contacts.count(), 0);
}

TEST(CollisionPassOfTheMachine, TwoHeadsMeetOnlyWhenNeitherTouchesAnythingElse) {
    SmallMachine small;
    numericalAxisStruct second = *small.machine.numericalAxes[0];
    second.name = second.nickName = QStringLiteral("U");
    second.initialization = QStringLiteral("-100 0 -500");
    small.machine.numericalAxes.push_back(std::make_unique<numericalAxisStruct>(second));
    small.machine.machineParameters.kinematicChain = QStringList{"X->Z;Y;U"};
    small.machine.spindles.push_back(std::make_unique<spindleStruct>(spindleRecord("T3", "U")));
    MotionNodeManager& manager = small.build();
    QSignalSpy contacts(&manager, &MotionNodeManager::contactFound);
    manager.executeLine("U-79");
    EXPECT_EQ(contacts.count(), 0) << "21 mm between the middles of two cubes of 20";
    manager.executeLine("U-81");
    ASSERT_EQ(contacts.count(), 1);
    EXPECT_EQ(contacts.first()[0].toStringList(), QStringList{"U"});
    EXPECT_EQ(contacts.first()[1].toStringList(), QStringList{"X"});
}

TEST(CollisionPassOfTheMachine, AContactStopsThePlaybackThatWantsIt) {
    Machine machine;
    machine.mountTool();
    CountingPlayback playback;
    machine.manager().setPlayback(&playback);
    machine.contactsOf("Z-291");
    EXPECT_EQ(playback.stops, 1);
    EXPECT_EQ(machine.color("Y"), kRed) << "the marks stay";
    playback.wanted = false;
    machine.contactsOf("Z-292");
    EXPECT_EQ(playback.stops, 1);
}

TEST(CollisionSwitcher, OffClearsTheMarksAndTestsNothing) {
    Machine machine;
    machine.mountTool();
    auto* action = machine.manager().toolBar()->findChild<QAction*>("CollisionSwitcher");
    ASSERT_NE(action, nullptr);
    EXPECT_TRUE(action->isChecked());
    machine.contactsOf("Z-291");
    action->trigger();
    EXPECT_FALSE(machine.manager().isCollisionEnabled());
    EXPECT_TRUE(machine.manager().collidedNodes().isEmpty());
    EXPECT_NE(machine.color("Y"), kRed);
    EXPECT_EQ(machine.contactsOf("Z-292"), 0);
    action->trigger();
    EXPECT_EQ(machine.contactsOf("Z-293"), 1);
}

TEST(CollisionMarks, APathThatLeadsNowhereIsDropped) {
    Machine machine;
    machine.manager().markCollided({"X", "Q"});
    machine.manager().markCollided({});
    EXPECT_TRUE(machine.manager().collidedNodes().isEmpty());
}

TEST(CollisionMarks, ANodeWithoutAColourIsLogged) {
    Machine machine;
    machine.manager().markCollided({"Y", "G54"});
    const LogCapture log;
    machine.manager().ResetCollided();
    EXPECT_EQ(log.count("未知的碰撞节点类型...."), 1);
    EXPECT_TRUE(machine.manager().collidedNodes().isEmpty());
}

TEST(CollisionMarks, AToolThatIsChangedWhileItTouchesLeavesNoMarkBehind) {
    Machine machine;
    machine.mountTool();
    machine.contactsOf("Z-291");
    ToolData shorter = cylinderTool(1, 2, 50);
    machine.manager().commandProcessor().UpdateToolList({&shorter});
    machine.manager().executeLine("M6 T2");
    EXPECT_EQ(machine.contactsOf("X0 Z-291"), 0);
    EXPECT_NE(machine.color("Y"), kRed);
    EXPECT_NE(machine.manager().findSpindle(1)->material()->diffuseColor[0], kRed);
}

TEST(CollisionMarks, RemovingAMarkedWorkPieceIsSafe) {
    Machine machine;
    machine.mountTool();
    UserModelNode* piece = machine.addPiece("G54");
    machine.manager().findWorkCoordinateSystem("G54")->userCoordinateSystem(0)->setTranslation({0, 0, 25});
    machine.contactsOf("Z-266");
    const QString name = QString::fromUtf8(piece->getName().getString());
    EXPECT_TRUE(
        machine.manager().findWorkCoordinateSystem("G54")->userCoordinateSystem(0)->removeWorkPiece(name));
    EXPECT_EQ(machine.contactsOf("Z-267"), 0);
}

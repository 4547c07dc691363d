#include "app/MachineViewer.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

#include <QTest>

#include "../path/FakeItem.h"
#include "WindowTestSupport.h"
#include "app/MachineScene.h"
#include "geometry/GeometryTestSupport.h"
#include "geometry/modelNode.h"
#include "machine/AxisBase.h"
#include "machine/MotionNodeManager.h"
#include "nc/myDragger.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

// What a click does where it meets the scene. The origin of the zone G54 stands at (1, 2, 3).

namespace {

/// What the ray through the middle of the picture meets first, seen from 1500 mm above a place.
class SeenFromAbove {
  public:
    SeenFromAbove(MachineScene& scene, const SbVec3f& place) : pick_(SbViewportRegion(200, 200)) {
        SoPerspectiveCamera& camera = *scene.camera();
        camera.orientation = SbRotation::identity();
        camera.position = place + SbVec3f(0, 0, 1500);
        camera.nearDistance = 100;
        camera.farDistance = 3000;
        pick_.setPoint(SbVec2s(100, 100));
        pick_.apply(scene.root());
    }
    [[nodiscard]] const SoPickedPoint* point() const { return pick_.getPickedPoint(); }

  private:
    SoRayPickAction pick_;
};

struct PathBench {
    PathBench() {
        window.open();
        system = window.window().machine().findWorkCoordinateSystem("G54")->userCoordinateSystem(0);
        curve.chain = QStringLiteral("X->C");
        curve.points = ControlPoints{{500, 0, 0}, {1100, 0, 0}, {1700, 0, 0}};
        trajNode::addProgram(*system, &curve);
    }
    MachineScene& scene() { return window.window().viewer().scene(); }
    bool clickAt(float x) {
        const SeenFromAbove seen(scene(), SbVec3f(x, 2, 3));
        EXPECT_NE(seen.point(), nullptr) << x;
        return seen.point() != nullptr && MachineViewer::clickOn(*seen.point());
    }
    void hideAt(float x) {
        const SeenFromAbove seen(scene(), SbVec3f(x, 2, 3));
        ASSERT_NE(seen.point(), nullptr) << x;
        MachineViewer::hideAt(*seen.point());
    }

    WindowBench window;
    userCoordinateSystem* system = nullptr;
    FakeItem curve{TORNVALE::kCurveItem, QStringLiteral("G1 X500\nG1 X1700\n")};
};

}  // namespace

TEST(MachineViewer, AClickOnAPath_ShowsItAndPutsTheHandleOnTheNearestControlPoint) {
    PathBench bench;
    EXPECT_TRUE(bench.clickAt(1080));
    EXPECT_TRUE(bench.curve.node->isShown());
    ASSERT_NE(bench.curve.node->dragger(), nullptr);
    EXPECT_EQ(bench.curve.node->dragger()->index(), 1);
    EXPECT_TRUE(bench.clickAt(510)) << "an end gets no handle, and takes the click";
    EXPECT_EQ(bench.curve.node->dragger(), nullptr);
}

TEST(MachineViewer, AClickOnTheHandle_IsLeftToTheHandle) {
    PathBench bench;
    ASSERT_TRUE(bench.clickAt(1080));
    const myDragger* const handle = bench.curve.node->dragger();
    EXPECT_FALSE(bench.clickAt(1101));
    EXPECT_EQ(bench.curve.node->dragger(), handle);
}

TEST(MachineViewer, TheOtherButton_HidesThePathAndTakesItsHandleAway) {
    PathBench bench;
    ASSERT_TRUE(bench.clickAt(1080));
    bench.hideAt(520);
    EXPECT_FALSE(bench.curve.node->isShown());
    EXPECT_EQ(bench.curve.node->dragger(), nullptr);
    const SeenFromAbove seen(bench.scene(), SbVec3f(520, 2, 3));
    EXPECT_EQ(seen.point(), nullptr) << "what is hidden cannot be met";
}

TEST(MachineViewer, AClickSelectsAMarker) {
    PathBench bench;
    const Held<pointShape> marker(new pointShape(SbVec3f(-500, 0, 50)));
    bench.scene().addMarker(marker.get());
    const SeenFromAbove seen(bench.scene(), SbVec3f(-500, 0, 50));
    ASSERT_NE(seen.point(), nullptr);
    EXPECT_TRUE(MachineViewer::clickOn(*seen.point()));
    EXPECT_TRUE(marker->isSelected());
    MachineViewer::hideAt(*seen.point());
    EXPECT_TRUE(marker->isSelected()) << "only paths are hidden";
}

TEST(MachineViewer, AClickOnASystem_OpensItsPanelAndGivesItTheKeys) {
    PathBench bench;
    bench.system->AddWorkPiece(bench.window.file("models/Box.stl"));
    ASSERT_EQ(bench.system->userModels().size(), 1);
    bench.window.window().machine().executeLine("X200");  // takes the machine away
    ASSERT_TRUE(bench.clickAt(4));
    EXPECT_TRUE(bench.system->panel()->isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(bench.system->panel()));
    bench.window.window().activateWindow();
    EXPECT_TRUE(bench.clickAt(4)) << "shown already, it only comes to the front";
    EXPECT_TRUE(QTest::qWaitForWindowActive(bench.system->panel()));
}

TEST(MachineViewer, AClickBesideEverything_MeetsNothing) {
    PathBench bench;
    const SeenFromAbove seen(bench.scene(), SbVec3f(0, 900, 0));
    EXPECT_EQ(seen.point(), nullptr);
}

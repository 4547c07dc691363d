#include "app/MachineScene.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <gtest/gtest.h>

#include "core/getUniquelyIdentifies.h"
#include "geometry/GeometryTestSupport.h"

namespace {

struct Bench {
    Bench() {
        getUniquelyIdentifies::instance();
        machine = std::make_unique<Held<SoSeparator>>(new SoSeparator);
        auto* cube = new SoCube;  // owned by the machine
        cube->width = 100;
        machine->get()->addChild(cube);
        scene = std::make_unique<MachineScene>(*machine->get());
    }
    GeometryInstallation installation;
    std::unique_ptr<Held<SoSeparator>> machine;
    std::unique_ptr<MachineScene> scene;
};

}  // namespace

TEST(MachineScene, CameraTextComesBackWhole) {
    Bench bench;
    EXPECT_TRUE(bench.scene->setCameraText("position 1 2 3 heightAngle 0.4"));
    const QString text = bench.scene->cameraText();
    EXPECT_TRUE(bench.scene->setCameraText("position 9 9 9 focalDistance 77"));
    EXPECT_TRUE(bench.scene->setCameraText(text));
    EXPECT_EQ(bench.scene->cameraText(), text);
    EXPECT_FLOAT_EQ(bench.scene->camera()->focalDistance.getValue(), 5) << "left out: the default";
}

TEST(MachineScene, ATextThatIsNoCamerasChangesNothing) {
    Bench bench;
    const QString before = bench.scene->cameraText();
    for (const QString& text :
         {QString(), QString("  \n"), QString("hello"), QString("position 1 2"), QString("position a b c"),
          QString("radius 5"), QString("position nan 0 0"), QString("heightAngle -3"),
          QString("position 1 2 3 } Cube {"), QString(70000, 'p'), QString(QChar(0))}) {
        EXPECT_FALSE(bench.scene->setCameraText(text)) << text.left(40).toStdString();
        EXPECT_EQ(bench.scene->cameraText(), before) << text.left(40).toStdString();
    }
}

TEST(MachineScene, ViewAllSeesTheMachineFromAbove) {
    Bench bench;
    bench.scene->viewAll(SbViewportRegion(800, 600));
    const SbVec3f place = bench.scene->camera()->position.getValue();
    EXPECT_GT(place[2], 10);
    EXPECT_GT(place.length(), 60);
    EXPECT_LT(place.length(), 1000);
}

TEST(MachineScene, FitKeepsTheDirectionAndTheMachineInSight) {
    Bench bench;
    ASSERT_TRUE(bench.scene->setCameraText("position 5000 0 0 orientation 0.5 0.5 0.5 2.0943951"));
    const SbRotation direction = bench.scene->camera()->orientation.getValue();
    for (const auto& [width, height] : {std::pair<short, short>{800, 500}, {300, 300}, {200, 700}}) {
        const SbViewportRegion viewport(width, height);
        bench.scene->fit(viewport);
        EXPECT_EQ(bench.scene->camera()->orientation.getValue(), direction);
        EXPECT_TRUE(bench.scene->isAllInSight(viewport.getViewportAspectRatio()));
        EXPECT_LT(bench.scene->camera()->position.getValue().length(), 400);
    }
    bench.scene->camera()->position = bench.scene->camera()->position.getValue() * 0.5F;
    EXPECT_FALSE(bench.scene->isAllInSight(1));
}

TEST(MachineScene, AnEmptyMachineLeavesTheCameraWhereItIs) {
    Bench bench;
    bench.machine->get()->removeAllChildren();
    const SbVec3f before = bench.scene->camera()->position.getValue();
    bench.scene->viewAll(SbViewportRegion(800, 600));
    EXPECT_EQ(bench.scene->camera()->position.getValue(), before);
}

#include "nc/PathLineSet.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/details/SoLineDetail.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "geometry/GeometryTestSupport.h"
#include "machine/readConfig.h"
#include "nc/calc/PathArrays.h"
#include "path/PathTestSupport.h"

// The boxes may not change what a click finds: the library's own line set answers beside it.

namespace {

/// A camera, a placement and one of two line sets over the same path.
class Scene {
  public:
    Scene(const PathArrays& path, SoIndexedLineSet* lines) : root_(new SoSeparator) {  // held below
        auto* camera = new SoPerspectiveCamera;                                        // owned by the root
        root_->addChild(camera);
        auto* transform = new SoMatrixTransform;  // owned by the root
        transform->matrix = placed(SbVec3f(1, 2, 3), 40, SbVec3f(100, -50, 20));
        root_->addChild(transform);
        auto* source = new PathLineSet;  // owned by the root, or released below
        source->ref();
        source->setPath(path);
        if (lines != nullptr) {
            lines->vertexProperty = source->vertexProperty.getValue();
            lines->coordIndex = source->coordIndex;
            root_->addChild(lines);
        } else {
            root_->addChild(source);
        }
        source->unref();
        camera->viewAll(root_.get(), viewport_);
    }
    [[nodiscard]] SoNode* node() const { return root_.get(); }
    [[nodiscard]] const SbViewportRegion& viewport() const { return viewport_; }

  private:
    SbViewportRegion viewport_{SbViewportRegion(200, 200)};
    Held<SoSeparator> root_;
};

struct Pick {
    bool hit = false;
    SbVec3f place;
    int line = -1;
    int from = -1;
    int to = -1;
};

Pick pickAt(const Scene& scene, short x, short y) {
    SoRayPickAction action(scene.viewport());
    action.setPoint(SbVec2s(x, y));
    action.apply(scene.node());
    const SoPickedPoint* const point = action.getPickedPoint();
    if (point == nullptr)
        return {};
    const auto* const detail = dynamic_cast<const SoLineDetail*>(point->getDetail());
    if (detail == nullptr)
        return {true, point->getPoint(), -2, -2, -2};
    return {true, point->getPoint(), detail->getLineIndex(), detail->getPoint0()->getCoordinateIndex(),
            detail->getPoint1()->getCoordinateIndex()};
}

PathArrays randomPath(std::mt19937& random, int count) {
    std::uniform_real_distribution<double> step(-8, 8);
    WayPoints points;
    double place[3] = {0, 0, 0};
    for (int i = 0; i < count; ++i) {
        WayPoint point;
        for (double& value : place)
            point.append(value += step(random));
        points.push_back(point);
    }
    return pathArrays(points, AxisMap{{1, QLatin1Char('X')}, {2, QLatin1Char('Y')}, {3, QLatin1Char('Z')}});
}

}  // namespace

using PathLineSetTest = PathTest;

TEST_F(PathLineSetTest, Clicks_FindWhatTheLibraryFinds) {
    std::mt19937 random(33);
    int hits = 0;
    for (const int count : {2, 3, 257, 1000, 4000}) {
        const PathArrays path = randomPath(random, count);
        const Scene own(path, nullptr);
        const Scene plain(path, new SoIndexedLineSet);  // owned by the scene
        for (int i = 0; i < 800; ++i) {
            const auto x = static_cast<short>(random() % 200);
            const auto y = static_cast<short>(random() % 200);
            const Pick found = pickAt(own, x, y);
            const Pick expected = pickAt(plain, x, y);
            ASSERT_EQ(found.hit, expected.hit) << count << " points, click " << x << ' ' << y;
            if (!found.hit)
                continue;
            ++hits;
            ASSERT_LT((found.place - expected.place).length(), 1e-3F) << x << ' ' << y;
            ASSERT_EQ(found.line, expected.line) << x << ' ' << y;
            ASSERT_EQ(found.from, expected.from) << x << ' ' << y;
            ASSERT_EQ(found.to, expected.to) << x << ' ' << y;
        }
    }
    EXPECT_GT(hits, 200);
}

TEST_F(PathLineSetTest, Ray_NamesItsSegment) {
    WayPoints points;
    for (int i = 0; i < 1000; ++i) {
        WayPoint point;
        point.append(i);
        point.append(i % 2);
        point.append(0);
        points.push_back(point);
    }
    const Held<PathLineSet> lines(new PathLineSet);
    lines->setPath(pathArrays(points, AxisMap{{1, u'X'}, {2, u'Y'}, {3, u'Z'}}));
    for (const int segment : {0, 255, 256, 511, 998}) {
        SoRayPickAction action(SbViewportRegion(100, 100));
        action.setRay(SbVec3f(static_cast<float>(segment) + 0.5F, 0.5F, 10), SbVec3f(0, 0, -1));
        action.apply(lines.get());
        ASSERT_NE(action.getPickedPoint(), nullptr) << segment;
        const auto* const detail = dynamic_cast<const SoLineDetail*>(action.getPickedPoint()->getDetail());
        ASSERT_NE(detail, nullptr);
        EXPECT_EQ(detail->getLineIndex(), segment);
        EXPECT_NEAR(action.getPickedPoint()->getPoint()[2], 0, 1e-4);
    }
}

TEST_F(PathLineSetTest, WithoutAPath_NothingIsFoundOrDrawn) {
    const Held<PathLineSet> lines(new PathLineSet);
    for (int round = 0; round < 2; ++round) {
        SoRayPickAction action(SbViewportRegion(100, 100));
        action.setRay(SbVec3f(0, 0, 10), SbVec3f(0, 0, -1));
        action.apply(lines.get());
        EXPECT_EQ(action.getPickedPoint(), nullptr);
        SoGetPrimitiveCountAction count;
        count.apply(lines.get());
        EXPECT_EQ(count.getLineCount(), 0);
        std::mt19937 random(1);
        lines->setPath(randomPath(random, 300));
        lines->clearPath();
    }
}

TEST_F(PathLineSetTest, FieldsCutShortByHand_StayWithinTheArrays) {
    std::mt19937 random(2);
    const Held<PathLineSet> lines(new PathLineSet);
    lines->setPath(randomPath(random, 2000));
    lines->coordIndex.setNum(30);
    SoRayPickAction action(SbViewportRegion(100, 100));
    action.setPickAll(TRUE);
    action.setRay(SbVec3f(0, 0, 1000), SbVec3f(0, 0, -1));
    action.apply(lines.get());
    for (int i = 0; i < action.getPickedPointList().getLength(); ++i) {
        const auto* const detail =
            dynamic_cast<const SoLineDetail*>(action.getPickedPointList()[i]->getDetail());
        ASSERT_NE(detail, nullptr);
        EXPECT_LT(detail->getLineIndex(), 10);
    }
}

TEST_F(PathLineSetTest, EveryLineIsDrawn) {
    std::mt19937 random(3);
    const Held<PathLineSet> lines(new PathLineSet);
    lines->setPath(randomPath(random, 12345));
    SoGetPrimitiveCountAction count;
    count.apply(lines.get());
    EXPECT_EQ(count.getLineCount(), 12344);
}

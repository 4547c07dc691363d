#include "app/calc/ViewFit.h"

#include <Inventor/SbViewVolume.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "geometry/GeometryTestSupport.h"

namespace {

/// Where the points come to lie in the picture, 0 to 1 each way, by the scene library's own projection.
struct Extent {
    float left = 1e9F, right = -1e9F, bottom = 1e9F, top = -1e9F;

    [[nodiscard]] float across() const { return right - left; }
    [[nodiscard]] float up() const { return top - bottom; }
    [[nodiscard]] bool isInside(float slack) const {
        return left >= -slack && right <= 1 + slack && bottom >= -slack && top <= 1 + slack;
    }
};

struct View {
    SbRotation orientation;
    float heightAngle_rad = 0.785398F;
    float aspect = 1.6F;

    /// As the viewer does it: in tall pictures the angle is the width's.
    [[nodiscard]] Extent extent(const std::vector<SbVec3f>& points, const ViewFit::Place& place) const {
        const Held<SoPerspectiveCamera> camera(new SoPerspectiveCamera);
        camera->position = place.position;
        camera->orientation = orientation;
        camera->heightAngle = heightAngle_rad;
        camera->nearDistance = 0.001F * place.focalDistance;
        camera->farDistance = 10 * place.focalDistance;
        SbViewVolume volume = camera->getViewVolume(aspect);
        if (aspect < 1)
            volume.scale(1 / aspect);
        Extent extent;
        for (const SbVec3f& point : points) {
            SbVec3f screen;
            volume.projectToScreen(point, screen);
            extent.left = std::min(extent.left, screen[0]);
            extent.right = std::max(extent.right, screen[0]);
            extent.bottom = std::min(extent.bottom, screen[1]);
            extent.top = std::max(extent.top, screen[1]);
        }
        return extent;
    }
};

ViewFit fitOf(const View& view, const std::vector<SbVec3f>& points, float fill = 1) {
    ViewFit fit(view.orientation, ViewOpening(view.heightAngle_rad, view.aspect), fill);
    for (const SbVec3f& point : points)
        fit.add(point);
    return fit;
}

}  // namespace

TEST(ViewFit, ASquareAhead_StandsAtTheDistanceOfItsOpening) {
    View view;
    view.heightAngle_rad = static_cast<float>(2 * std::atan(0.5));  // 0.5 up and down at the distance 1
    view.aspect = 2;
    const std::vector<SbVec3f> square{{90, -10, 5}, {110, -10, 5}, {90, 10, 5}, {110, 10, 5}};
    const auto place = fitOf(view, square).place();
    ASSERT_TRUE(place);
    EXPECT_NEAR(place->position[0], 100, 1e-3);
    EXPECT_NEAR(place->position[1], 0, 1e-3);
    EXPECT_NEAR(place->position[2], 25, 1e-3) << "10 up at 20 away";
    EXPECT_NEAR(place->focalDistance, 20, 1e-3);
    EXPECT_NEAR(fitOf(view, square, 0.5F).place()->position[2], 45, 1e-3) << "half as large, twice as far";
}

TEST(ViewFit, AnyPointsFromAnyDirection_AreInsideAndReachTheEdges) {
    std::mt19937 random(20260);
    std::uniform_real_distribution<float> coordinate(-3000, 3000);
    std::uniform_real_distribution<float> unit(-1, 1);
    int heldOff = 0;
    for (int round = 0; round < 500; ++round) {
        View view;
        view.orientation = SbRotation(unit(random), unit(random), unit(random), unit(random));
        view.heightAngle_rad = 0.6F + 0.4F * unit(random);
        view.aspect = std::exp(1.2F * unit(random));
        const float fill = 0.75F + 0.24F * unit(random);
        std::vector<SbVec3f> points;
        for (int i = 0; i < 10 + round % 40; ++i)
            points.emplace_back(coordinate(random), coordinate(random), 0.5F * coordinate(random));
        const ViewFit fit = fitOf(view, points, fill);
        const auto place = fit.place();
        ASSERT_TRUE(place);
        const Extent extent = view.extent(points, *place);
        constexpr float kSlack = 2e-3F;
        EXPECT_TRUE(extent.isInside(kSlack)) << "round " << round;
        // A single point right before the camera can be what holds it off: then no edge is reached.
        SbVec3f ahead;
        view.orientation.multVec(SbVec3f(0, 0, -1), ahead);
        float nearest = 1e9F;
        for (const SbVec3f& point : points)
            nearest = std::min(nearest, (point - place->position).dot(ahead));
        if (nearest < 2) {
            ++heldOff;
            continue;
        }
        EXPECT_NEAR(std::max(extent.across(), extent.up()), fill, kSlack) << "round " << round;
        EXPECT_TRUE(fitOf(view, points, fill * 1.001F).isAllSeenFrom(place->position)) << "round " << round;
        EXPECT_FALSE(fitOf(view, points, fill * 0.99F).isAllSeenFrom(place->position)) << "round " << round;
    }
    EXPECT_LT(heldOff, 10);
}

TEST(ViewFit, NoPoints_IsNoPlace) {
    const View view;
    const ViewFit fit = fitOf(view, {});
    EXPECT_FALSE(fit.place());
    EXPECT_TRUE(fit.isAllSeenFrom(SbVec3f(0, 0, 0)));
}

TEST(ViewFit, OnePoint_IsLookedAtFromBeside) {
    const View view;
    const auto place = fitOf(view, {SbVec3f(7, 8, 9)}).place();
    ASSERT_TRUE(place);
    EXPECT_NEAR((place->position - SbVec3f(7, 8, 10)).length(), 0, 1e-4);
    EXPECT_GT(place->focalDistance, 0);
}

TEST(ViewFit, PointsThatAreNotFinite_ArePassedOver) {
    const View view;
    const float endless = std::numeric_limits<float>::infinity();
    const float none = std::numeric_limits<float>::quiet_NaN();
    std::vector<SbVec3f> points{{0, 0, 0}, {100, 50, 20}};
    const auto place = fitOf(view, points).place();
    points.insert(points.begin(), {SbVec3f(endless, 0, 0), SbVec3f(0, none, 0), SbVec3f(0, 0, -endless)});
    EXPECT_EQ(fitOf(view, points).place()->position, place->position);
    EXPECT_FALSE(fitOf(view, {points[0]}).place());
}

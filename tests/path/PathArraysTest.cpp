#include "nc/calc/PathArrays.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "nc/TestMachine.h"
#include "nc/calc/PathShapes.h"

namespace {

PathArrays read(const char* code, const char* chain = "XYZCA") {
    return pathFromCode(*fiveAxisMachine(), QString::fromUtf8(chain), QString::fromUtf8(code));
}

bool isInside(const SbBox3f& box, const SbVec3f& point) {
    return box.intersect(point) != FALSE;
}

}  // namespace

TEST(PathArrays, WordsAreModal) {
    const PathArrays path = read("G1 X5\nG1 Y7\n");
    ASSERT_EQ(path.vertices.size(), 2U);
    EXPECT_EQ(path.vertices[0], SbVec3f(5, 0, 0));
    EXPECT_EQ(path.vertices[1], SbVec3f(5, 7, 0));
    EXPECT_EQ(path.attitudes[0], SbVec3f(0, 0, 0));
    EXPECT_EQ(path.attitudes[1], SbVec3f(0, 0, 0));
}

TEST(PathArrays, LineWithoutWordsRepeatsThePoint) {
    const PathArrays path = read("G1 X1 Y2 Z3 C4 A5\nM8\nG1 X2\n");
    ASSERT_EQ(path.vertices.size(), 3U);
    EXPECT_EQ(path.vertices[1], SbVec3f(1, 2, 3));
    EXPECT_EQ(path.vertices[2], SbVec3f(2, 2, 3));
}

TEST(PathArrays, EachVertexKeepsItsAttitude) {
    const PathArrays path = read("G1 X1 C10 A-20.5\nG1 C30\n");
    ASSERT_EQ(path.attitudes.size(), 2U);
    EXPECT_EQ(path.attitudes[0], SbVec3f(10, -20.5F, 0));
    EXPECT_EQ(path.attitudes[1], SbVec3f(30, -20.5F, 0));
}

TEST(PathArrays, EverySegmentIsAPolylineOfItsOwn) {
    const PathArrays path = read("X0\nX1\nX2\nX3");
    EXPECT_EQ(path.indices, (std::vector<std::int32_t>{0, 1, -1, 1, 2, -1, 2, 3, -1}));
}

TEST(PathArrays, OnePointHasNoSegment) {
    const PathArrays path = read("G1 X5\n");
    EXPECT_EQ(path.vertices.size(), 1U);
    EXPECT_EQ(path.indices.size(), 0U);
    EXPECT_EQ(path.boxes.size(), 0U);
}

TEST(PathArrays, NoLinesNoPath) {
    for (const char* code : {"", "\n", "\n\n\n"}) {
        const PathArrays path = read(code);
        EXPECT_EQ(path.vertices.size(), 0U) << code;
        EXPECT_EQ(path.attitudes.size(), 0U) << code;
        EXPECT_EQ(path.indices.size(), 0U) << code;
    }
}

TEST(PathArrays, AxesThatTheChainHasNotStayZero) {
    const PathArrays path = read("X1 Y2 Z3 C4 A5", "XZA");
    ASSERT_EQ(path.vertices.size(), 1U);
    EXPECT_EQ(path.vertices[0], SbVec3f(1, 0, 3));
    EXPECT_EQ(path.attitudes[0], SbVec3f(0, 5, 0));
}

TEST(PathArrays, HugeValuesStandAtTheBorder) {
    const QString digits(200, QLatin1Char('9'));
    const PathArrays path = pathFromCode(*fiveAxisMachine(), QStringLiteral("XYZCA"),
                                         QStringLiteral("X%1 Y-%1 Z1 C%1 A-%1\nX%1%1%1 Y2\n").arg(digits));
    ASSERT_EQ(path.vertices.size(), 2U);
    EXPECT_EQ(path.vertices[0], SbVec3f(kSceneReach_mm, -kSceneReach_mm, 1));
    EXPECT_EQ(path.attitudes[0], SbVec3f(kSceneReach_mm, -kSceneReach_mm, 0));
    EXPECT_EQ(path.vertices[1], SbVec3f(kSceneReach_mm, 2, 1)) << "no double holds it: an absent word";
}

TEST(PathArrays, PointsThatAreNoNumbersBecomeZero) {
    WayPoint point;
    for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL, 4.0, std::nan("")})
        point.append(value);
    const PathArrays path = pathArrays({point}, fiveAxisMachine()->axisMap(u"XYZCA", false));
    ASSERT_EQ(path.vertices.size(), 1U);
    EXPECT_EQ(path.vertices[0], SbVec3f(0, kSceneReach_mm, -kSceneReach_mm));
    EXPECT_EQ(path.attitudes[0], SbVec3f(4, 0, 0));
}

TEST(PathArrays, AnyBytes_StayFiniteAndInStep) {
    std::mt19937 random(20);
    const QString letters = QStringLiteral("XYZCAGF0123456789.-- \n\n\r\t;e+Ж");
    for (int round = 0; round < 2000; ++round) {
        QString code;
        const int length = static_cast<int>(random() % 60);
        for (int i = 0; i < length; ++i)
            code.append(letters[static_cast<int>(random() % static_cast<unsigned>(letters.size()))]);
        const PathArrays path = pathFromCode(*fiveAxisMachine(), QStringLiteral("XYZCA"), code);
        int lines = 0;
        for (const QString& line : code.split(QLatin1Char('\n')))
            lines += line.isEmpty() ? 0 : 1;
        ASSERT_EQ(path.vertices.size(), static_cast<std::size_t>(lines)) << code.toStdString();
        ASSERT_EQ(path.attitudes.size(), path.vertices.size()) << code.toStdString();
        ASSERT_EQ(path.indices.size(), lines > 1 ? 3 * static_cast<std::size_t>(lines - 1) : 0U);
        for (const SbVec3f& vertex : path.vertices) {
            for (int axis = 0; axis < 3; ++axis)
                ASSERT_LE(std::abs(vertex[axis]), kSceneReach_mm) << code.toStdString();
        }
    }
}

TEST(PathArrays, BoxesHoldTheirRuns) {
    std::mt19937 random(21);
    std::uniform_real_distribution<double> place(-500, 500);
    for (const int count : {2, 3, 255, 256, 257, 258, 512, 513, 514, 5000}) {
        WayPoints points;
        for (int i = 0; i < count; ++i) {
            WayPoint point;
            for (int entry = 0; entry < 5; ++entry)
                point.append(place(random));
            points.push_back(point);
        }
        const PathArrays path = pathArrays(points, fiveAxisMachine()->axisMap(u"XYZCA", false));
        const int run = PathArrays::kSegmentsPerBox;
        ASSERT_EQ(path.boxes.size(), static_cast<std::size_t>((count - 2) / run + 1)) << count;
        for (int segment = 0; segment + 1 < count; ++segment) {
            const SbBox3f& box = path.boxes[static_cast<std::size_t>(segment / run)];
            ASSERT_TRUE(isInside(box, path.vertices[static_cast<std::size_t>(segment)])) << count;
            ASSERT_TRUE(isInside(box, path.vertices[static_cast<std::size_t>(segment) + 1])) << count;
        }
    }
}

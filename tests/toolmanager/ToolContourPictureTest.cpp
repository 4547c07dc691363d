#include "tools/ToolContourPicture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <cmath>
#include <limits>

#include "tools/calc/ToolContours.h"

namespace {

QImage drawn(ToolContourPicture& picture) {
    picture.resize(200, 240);
    return picture.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// Pixels of the colour that fills the tool.
int bodyPixels(const QImage& image, int firstColumn, int lastColumn) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = firstColumn; x <= lastColumn; ++x)
            count += image.pixelColor(x, y) == QColor(226, 178, 98) ? 1 : 0;
    }
    return count;
}

}  // namespace

TEST(ToolContourPicture, Outline_IsDrawnOnBothSidesOfTheAxis) {
    ToolContourPicture picture;
    ToolRecord tool;
    picture.setContour(endMillContour(tool));
    const QImage image = drawn(picture);
    const int left = bodyPixels(image, 0, 98);
    const int right = bodyPixels(image, 101, 199);
    EXPECT_GT(left, 1000);
    EXPECT_NEAR(left, right, 0.05 * left);
}

TEST(ToolContourPicture, NoContour_LeavesThePaperEmpty) {
    ToolContourPicture picture;
    EXPECT_EQ(bodyPixels(drawn(picture), 0, 199), 0);
}

TEST(ToolContourPicture, OddPoints_AreDrawnOrLeftOut) {
    ToolContourPicture picture;
    const float infinite = std::numeric_limits<float>::infinity();
    picture.setContour({{0, 0, 0}, {infinite, 0, 0}, {1, 0, std::nanf("")}, {5, 0, -3}});
    EXPECT_EQ(picture.contour().size(), 2);
    drawn(picture);
    picture.setContour({{0, 0, 0}, {0, 0, 0}});
    drawn(picture);
    picture.setContour({{3e38F, 0, 3e38F}, {-3e38F, 0, -3e38F}});
    drawn(picture);
    picture.resize(1, 1);
    picture.grab();
    EXPECT_EQ(picture.contour().size(), 2);
}

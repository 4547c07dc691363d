#include "nc/calc/IsoInclinedPlane.h"

#include <Inventor/SbVec3f.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

#include "support/TestSupport.h"

namespace {

using Vector = std::array<double, 3>;

InclinedPlane planeOf(const QString& text) {
    return inclinedPlaneOf(text);
}

Vector through(const SbMatrix& matrix, const Vector& point) {
    SbVec3f result;
    matrix.multVecMatrix(
        SbVec3f(static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2])),
        result);
    return {result[0], result[1], result[2]};
}

/// Right-handed rotation about a coordinate axis, written out.
Vector turned(const Vector& p, char axis, double angle_deg) {
    const double c = std::cos(angle_deg * M_PI / 180.0);
    const double s = std::sin(angle_deg * M_PI / 180.0);
    if (axis == 'X')
        return {p[0], c * p[1] - s * p[2], s * p[1] + c * p[2]};
    if (axis == 'Y')
        return {c * p[0] + s * p[2], p[1], -s * p[0] + c * p[2]};
    return {c * p[0] - s * p[1], s * p[0] + c * p[1], p[2]};
}

void expectNear(const Vector& value, const Vector& expected, double tolerance, const std::string& input) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(value[i], expected[i], tolerance) << input << " entry " << i;
}

}  // namespace

TEST(InclinedPlane, FullForm_TurnsAndShifts) {
    const InclinedPlane plane = planeOf("UPR,1,XYZ,0,0,90,10,20,30");
    ASSERT_EQ(plane.kind, InclinedPlane::Kind::Plane);
    expectNear(through(plane.matrix, {1, 0, 0}), {10, 21, 30}, 1e-5, "x");
    expectNear(through(plane.matrix, {0, 1, 0}), {9, 20, 30}, 1e-5, "y");
    expectNear(through(plane.matrix, {0, 0, 1}), {10, 20, 31}, 1e-5, "z");
}

TEST(InclinedPlane, WithoutIntegerAndWithBlanksAndEmptyParts_IsTheSame) {
    const InclinedPlane full = planeOf("UPR,1,XYZ,0,0,90,10,20,30");
    for (const char* text : {"UPR,XYZ,0,0,90,10,20,30", "UPR , 7 , XYZ , 0 , 0 , 90 , 10 , 20 , 30",
                             "UPR,,-3,,XYZ,0,0,90,,10,20,30,", "UPRIGHT,+1,XYZ,0,0,90,10,20,30,40,50"}) {
        const InclinedPlane plane = planeOf(text);
        ASSERT_EQ(plane.kind, InclinedPlane::Kind::Plane) << text;
        EXPECT_EQ(plane.matrix == full.matrix, true) << text;
    }
}

TEST(InclinedPlane, MissingAndBadNumbers_AreZero) {
    const InclinedPlane shift = planeOf("UPR,XYZ,0,0,0,10");
    ASSERT_EQ(shift.kind, InclinedPlane::Kind::Plane);
    expectNear(through(shift.matrix, {1, 2, 3}), {11, 2, 3}, 1e-6, "shift");
    const InclinedPlane bad = planeOf("UPR,XYZ,a,b-1,,0,0,5");
    ASSERT_EQ(bad.kind, InclinedPlane::Kind::Plane);
    expectNear(through(bad.matrix, {1, 2, 3}), {1, 7, 3}, 1e-6, "the fifth number is a distance");
    const InclinedPlane none = planeOf("UPR,ZYX");
    ASSERT_EQ(none.kind, InclinedPlane::Kind::Plane);
    EXPECT_EQ(none.matrix == SbMatrix::identity(), true);
}

TEST(InclinedPlane, LettersEntryOfAnotherLength_ChangesNothing) {
    for (const char* text : {"", "UPR", " UPR ", "UPR,", "UPR,1", "UPR,XY,0,0", "UPR,XYZX,0,0,0", "UPR, ,XYZ",
                             "UPR,1,2,XYZ,0,0,90", "UPRXYZ", "UPR,1.5,XYZ,0,0,90"})
        EXPECT_EQ(planeOf(text).kind == InclinedPlane::Kind::Plane, false) << text;
    EXPECT_EQ(planeOf("UPR,XY,0,0").kind, InclinedPlane::Kind::Unchanged);
    EXPECT_EQ(planeOf("UPR").kind, InclinedPlane::Kind::Unchanged);
}

TEST(InclinedPlane, OtherLetters_AreTold) {
    for (const char* text : {"UPR,ABC,0,0,0", "UPR,1,XYA", "UPR,xyz,0,0,0", "UPR,1.5,XYZ"})
        EXPECT_EQ(planeOf(text).kind, InclinedPlane::Kind::BadLetters) << text;
}

TEST(InclinedPlane, NumbersOutOfRange_AreTold) {
    for (const char* text : {"UPR,XYZ,nan,0,0", "UPR,XYZ,0,inf,0", "UPR,XYZ,0,0,0,1e30",
                             "UPR,XYZ,-2000000000", "UPR,XYZ,0,0,0,0,0,-inf"})
        EXPECT_EQ(planeOf(text).kind, InclinedPlane::Kind::OutOfRange) << text;
}

TEST(InclinedPlane, RandomPlanes_AreTheThreeRotationsInTheirOrderThenTheShift) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angle(-360, 360);
    std::uniform_real_distribution<double> place(-500, 500);
    std::uniform_int_distribution<int> letter(0, 2);
    for (int i = 0; i < 2000; ++i) {
        std::string letters;
        Vector angles{};
        Vector shift{};
        QString text = QStringLiteral("UPR,1,");
        for (int k = 0; k < 3; ++k)
            letters += "XYZ"[letter(random)];
        text += QString::fromStdString(letters);
        for (double& a : angles)
            text += ',' + QString::number(a = angle(random), 'f', 3);
        for (double& d : shift)
            text += ',' + QString::number(d = place(random), 'f', 3);
        const InclinedPlane plane = planeOf(text);
        ASSERT_EQ(plane.kind, InclinedPlane::Kind::Plane) << text.toStdString();
        const Vector point{place(random), place(random), place(random)};
        Vector expected = point;
        for (std::size_t k = 0; k < 3; ++k)
            expected = turned(expected, letters[k], angles[k]);
        for (std::size_t k = 0; k < 3; ++k)
            expected[k] += shift[k];
        expectNear(through(plane.matrix, point), expected, 0.02, text.toStdString());
    }
}

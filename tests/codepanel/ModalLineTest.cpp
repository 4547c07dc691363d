#include "items/calc/ModalLine.h"

#include <gtest/gtest.h>

#include "items/calc/CodeLines.h"
#include "support/TestSupport.h"

namespace {

QString lineOf(const char* text, int index, const char* letters = "XYZCA", const ModalWalk& walk = {}) {
    return modalLine(CodeLines(QString::fromUtf8(text)), index, QString::fromLatin1(letters), walk);
}

}  // namespace

TEST(ModalLine, FullLine_StaysAsItIs) {
    EXPECT_EQ(lineOf("G1 X9 Y9 Z9 C9 A9\nG1 X1.000 Y2.000 Z3.000 C4.000 A5.000 F600\n", 1),
              QString("G1 X1.000 Y2.000 Z3.000 C4.000 A5.000 F600"));
}

TEST(ModalLine, MissingAxes_TakeTheirLastWordsInTheOrderOfTheLetters) {
    EXPECT_EQ(lineOf("G0 X1 Y2 Z3 C4 A5\nG1 Y20 C40\nA50\nG1 X10 F600\n", 3),
              QString("G1 X10 F600 Y20 Z3 C40 A50"));
}

TEST(ModalLine, LaterLines_DoNotCount) {
    EXPECT_EQ(lineOf("G1 X1\nG1 Y2\nG1 Z3\n", 1), QString("G1 Y2 X1"));
}

TEST(ModalLine, TwoWordsOfOneAxisInALine_TheLastCounts) {
    EXPECT_EQ(lineOf("X1 Y1 X2\nZ3\n", 1, "XYZ"), QString("Z3 X2 Y1"));
}

TEST(ModalLine, AxisThatNobodyNames_IsLeftOut) {
    EXPECT_EQ(lineOf("G1 X1\nG1 Y2\n", 1, "XYZ"), QString("G1 Y2 X1"));
    EXPECT_EQ(lineOf("F100\n", 0, "XYZ"), QString("F100"));
}

TEST(ModalLine, Comments_AreNeitherReadNorGiven) {
    EXPECT_EQ(lineOf("X1 Y1\n(X7 Y7)\nN30 G1 (M3) Z3 ; A5\n", 2), QString("G1 Z3 X1 Y1"));
}

TEST(ModalLine, CommandLine_GivesTheAxesAlone) {
    EXPECT_EQ(lineOf("G1 X1 Y2\nM3 S12000\n", 1), QString("X1 Y2"));
    EXPECT_EQ(lineOf("G1 X1 Y2\nG1 X5 M8\n", 1), QString("X5 Y2"));
    EXPECT_EQ(lineOf("M3\n", 0), QString());
}

TEST(ModalLine, EmptyLine_GivesWhereTheMachineStands) {
    EXPECT_EQ(lineOf("G1 X1 Y2\n\nG1 X3\n", 1), QString("X1 Y2"));
}

TEST(ModalLine, OutsideOfTheText_IsEmpty) {
    EXPECT_EQ(lineOf("G1 X1\n", -1), QString());
    EXPECT_EQ(lineOf("G1 X1\n", 1), QString());
    EXPECT_EQ(lineOf("", 0), QString());
}

TEST(ModalLine, Walk_StopsAtItsBounds) {
    EXPECT_EQ(lineOf("X1\nY2\nZ3\nF4\n", 3, "XYZ", {2, 1000}), QString("F4 Y2 Z3"));
    EXPECT_EQ(lineOf("X1\nY2\nZ3\nF4\n", 3, "XYZ", {100, 4}), QString("F4 Z3"));
}

TEST(ModalLine, OddAxisLetters_DoNoHarm) {
    EXPECT_EQ(lineOf("X1 Y2\nF4\n", 1, "X-y"), QString("F4 X1"));
    EXPECT_EQ(lineOf("X1 Y2\nF4\n", 1, ""), QString("F4"));
}

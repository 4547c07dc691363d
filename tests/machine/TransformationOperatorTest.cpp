#include <gtest/gtest.h>

#include "MachineSamples.h"
#include "machine/Transform.h"
#include "machine/readConfig.h"
#include "support/TestSupport.h"
#include "tools/ToolData.h"

namespace {

class TransformationOperatorTest : public ::testing::Test {
  protected:
    TransformationOperatorTest() : tool_(record()) {
        ConfigReader::instance().setDescription(fiveAxisMachine());
    }
    ~TransformationOperatorTest() override { ConfigReader::instance().setDescription(nullptr); }

    /// The transform of a tool of 100 mm on T1 with 10 mm extra length in G54.
    TransformationOperator make(int mode) {
        return TransformationOperator(&tool_, 10, SbVec3f(0, 0, 0), QStringLiteral("X->Y->Z->C->A"),
                                      QStringLiteral("G54"), mode);
    }

    static ToolRecord record() {
        ToolRecord tool;
        tool.length = 100;
        return tool;
    }

    ToolData tool_;
};

}  // namespace

TEST_F(TransformationOperatorTest, PointsAndText_GoThroughTheProcessesMachine) {
    WayPoints points(1);
    points[0].count = 5;
    make(0).transformPoints(points);
    EXPECT_NEAR(points[0][0], 112, 1e-3);
    EXPECT_NEAR(points[0][1], 224, 1e-3);
    EXPECT_NEAR(points[0][2], 623, 1e-3);
    EXPECT_EQ(points[0][4], -5);
    EXPECT_EQ(make(0).transformText("G1 X0 Y0 Z0 C0 A0"),
              QStringLiteral("G1 X112.000 Y224.000 Z623.000 C0.000 A-5.000"));
    EXPECT_EQ(make(1).transformText("G1 X112 Y224 Z623 C0 A-5"),
              QStringLiteral("G1 X0.000 Y0.000 Z0.000 C0.000 A0.000"));
}

TEST_F(TransformationOperatorTest, ChainSaw_UsesTipAndCompensations) {
    ToolRecord& saw = tool_.record();
    saw.type = static_cast<int>(ToolType::ChainSaw);
    saw.toolTip = SbVec3f(40, 50, 60);
    saw.ax4Compensation = 2;
    EXPECT_EQ(make(0).transformText("C-2 Z0"), QStringLiteral("C0.000 Z583.000"));
}

TEST_F(TransformationOperatorTest, NoTool_CountsAsOneWithoutLength) {
    TransformationOperator operation(nullptr, 0, SbVec3f(0, 0, 0), QStringLiteral("X->Y->Z"),
                                     QStringLiteral("G54"), 0);
    EXPECT_EQ(operation.transformText("Z0"), QStringLiteral("Z363.000"));
}

TEST_F(TransformationOperatorTest, BadTextsOfTheMachine_EndTheProcess) {
    const auto machineWith = [](std::size_t axis, QString numericalAxisStruct::*field) {
        auto machine = fiveAxisMachine();
        machine.get()->numericalAxes[axis].get()->*field = QStringLiteral("1 2");
        ConfigReader::instance().setDescription(std::move(machine));
    };
    machineWith(3, &numericalAxisStruct::direction);
    EXPECT_FATAL(make(0), "Ax4 Ax5 DirectionFormatError");
    machineWith(4, &numericalAxisStruct::initialization);
    EXPECT_FATAL(make(0), "Ax4 Ax5 InitializationFormatError");
    machineWith(0, &numericalAxisStruct::initialization);
    EXPECT_FATAL(make(0), "InitializationFormatError");
}

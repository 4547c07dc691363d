#include "nc/calc/AuxiliaryAxis.h"

#include "EditorBench.h"

TEST(AuxiliaryAxis, OfAChainWithId6_HoldsTheRecordAndStandsAtItsLowerLimit) {
    const auto machine = makeTestMachine({{"X", 1}, {"W", 6, "6.5", "9000", "60", "12.5", "800"}});
    machine->numericalAxes[1]->nickName = "Q";
    machine->numericalAxes[1]->homePosition = "20";
    const std::shared_ptr<AuxiliaryAxis> axis = auxiliaryAxisOf(*machine, "X->W");
    ASSERT_NE(axis, nullptr);
    EXPECT_EQ(axis->id, 6);
    EXPECT_EQ(axis->name, QString("W"));
    EXPECT_EQ(axis->nickName, QString("Q"));
    EXPECT_EQ(axis->value, 12.5);
    EXPECT_EQ(axis->homing, 20.0);
    EXPECT_EQ(axis->acceleration, 6.5);
    EXPECT_EQ(axis->jerk, 60.0);
    EXPECT_EQ(axis->maxVelocity, 9000.0);
}

TEST(AuxiliaryAxis, OfAChainWithoutId6_IsNone) {
    const auto machine = headerTailMachine();
    EXPECT_EQ(auxiliaryAxisOf(*machine, kFive), nullptr);
    EXPECT_EQ(auxiliaryAxisOf(*machine, QString()), nullptr);
}

TEST(AuxiliaryAxis, TextsThatAreNoNumbers_CountAsZero) {
    const auto machine = makeTestMachine({{"W", 6, "fast", "", "", "low", "high"}});
    const std::shared_ptr<AuxiliaryAxis> axis = auxiliaryAxisOf(*machine, "W");
    ASSERT_NE(axis, nullptr);
    EXPECT_EQ(axis->value, 0.0);
    EXPECT_EQ(axis->acceleration, 0.0);
    EXPECT_EQ(axis->maxVelocity, 0.0);
}

TEST(AuxiliaryAxis, Text_NamesChainNamesHomingAndValue) {
    const auto machine = headerTailMachine();
    EXPECT_EQ(auxiliaryAxisText(*auxiliaryAxisOf(*machine, "X->Y->W"), "X->Y->W"),
              QString("Chain:X->Y->W Name:W NickName:Q Homing:20 Current:12.5"));
}

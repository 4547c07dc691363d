#include "core/calc/MachineChoice.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

TEST(MachineChoice, Template_IsNeverOffered) {
    EXPECT_EQ(offeredMachines({"A.xml", "machineSample.xml", "B.xml"}), (QStringList{"A.xml", "B.xml"}));
    EXPECT_EQ(offeredMachines({"machineSample.xml"}), QStringList());
    EXPECT_EQ(offeredMachines({"myMachineSample.xml"}), QStringList{"myMachineSample.xml"});
}

TEST(MachineChoice, StoredPath_IsRelative) {
    EXPECT_EQ(chosenMachinePath("TornBridge.xml"), QString("machineSample/TornBridge.xml"));
}

TEST(MachineChoice, ProjectSuffix_CountsInAnyCapitals) {
    EXPECT_TRUE(isProjectSuffix("tornvale"));
    EXPECT_TRUE(isProjectSuffix("TORNVALE"));
    EXPECT_FALSE(isProjectSuffix("tornvale2"));
    EXPECT_FALSE(isProjectSuffix(""));
}

#include "core/calc/SettingValues.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

using Colour = std::array<double, 3>;

TEST(SettingValues, Boolean_IsTrueOnlyForTheTextTrue) {
    EXPECT_TRUE(settingIsTrue("DebugFunction/IsShowAxisInfo", "true"));
    for (const char* text : {"", "True", "TRUE", " true", "true ", "1", "yes", "truely"})
        EXPECT_FALSE(settingIsTrue("DebugFunction/IsShowAxisInfo", text)) << text;
}

TEST(SettingValues, PreLaunch_IsTrimmedFirst) {
    EXPECT_TRUE(settingIsTrue("StatusPreProcessing/IsPreLaunch", " true\t"));
    EXPECT_FALSE(settingIsTrue("StatusPreProcessing/IsPreLaunch", " True "));
}

TEST(SettingValues, EmptyNumber_GivesTheFallback) {
    EXPECT_EQ(settingNumber("", 0.5), 0.5);
    EXPECT_EQ(settingInteger("", 20), 20);
    EXPECT_EQ(settingInteger("", 2), 2);
}

TEST(SettingValues, Zero_StaysZero) {
    EXPECT_EQ(settingNumber("0", 0.5), 0.0);
    EXPECT_EQ(settingInteger("0", 20), 0);
}

TEST(SettingValues, Number_IsReadWithAPoint) {
    EXPECT_EQ(settingNumber("0.25", 0.5), 0.25);
    EXPECT_EQ(settingInteger("-7", 2), -7);
}

TEST(SettingValues, TextThatIsNoNumber_Is0) {
    EXPECT_EQ(settingNumber("0,25", 0.5), 0.0);
    EXPECT_EQ(settingInteger("2.5", 20), 0);
    EXPECT_EQ(settingInteger("99999999999", 20), 0);
}

TEST(SettingValues, ThreeParts_AreTheColour) {
    EXPECT_EQ(backgroundColour("0.1 0.2 0.3"), (Colour{0.1, 0.2, 0.3}));
    EXPECT_EQ(backgroundColour("  0.1   0.2 1 "), (Colour{0.1, 0.2, 1.0}));
}

TEST(SettingValues, AnyOtherCountOfParts_IsWhite) {
    for (const char* text : {"", "0.1", "0.1 0.2", "0.1 0.2 0.3 0.4", "0.1,0.2,0.3"})
        EXPECT_EQ(backgroundColour(text), (Colour{1.0, 1.0, 1.0})) << text;
}

TEST(SettingValues, ColourPartThatIsNoNumber_Is0) {
    EXPECT_EQ(backgroundColour("a 0.2 0.3"), (Colour{0.0, 0.2, 0.3}));
    EXPECT_EQ(backgroundColour("nan inf 0.3"), (Colour{0.0, 0.0, 0.3}));
}

TEST(SettingValues, TabSide_IsWestUnlessNamed) {
    EXPECT_EQ(tabSide("East"), TabSide::East);
    EXPECT_EQ(tabSide("South"), TabSide::South);
    EXPECT_EQ(tabSide("North"), TabSide::North);
    for (const char* text : {"West", "", "east", "Up"})
        EXPECT_EQ(tabSide(text), TabSide::West) << text;
}

TEST(SettingValues, DockArea_HasItsOwnNumbers) {
    EXPECT_EQ(dockArea("2"), DockArea::Top);
    EXPECT_EQ(dockArea("4"), DockArea::Bottom);
    EXPECT_EQ(dockArea("8"), DockArea::Right);
    for (const char* text : {"1", "", "3", "left", "-2"})
        EXPECT_EQ(dockArea(text), DockArea::Left) << text;
}

#include "tools/CheckRpmReverse.h"

#include <gtest/gtest.h>

#include "ManagerTestSupport.h"

namespace {

double checked(int spindle, double rpm) {
    SharedMethods::CheckRpmReverse(spindle, rpm, nullptr);
    return rpm;
}

}  // namespace

TEST(CheckRpmReverse, ReversibleSpindle_KeepsTheSign) {
    const ManagerInstallation installation;
    const ExpectedDialogs noBox;
    EXPECT_EQ(checked(1, -12000.5), -12000.5);
    EXPECT_EQ(checked(1, 800), 800);
}

TEST(CheckRpmReverse, NegativeSpeedOfAnotherSpindle_BecomesPositiveWithABox) {
    const ManagerInstallation installation;
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Warning, english("ToolEditor", "Title"),
                       english("ToolEditor", "ReverseErrorMsg"));
    EXPECT_EQ(checked(2, -12000.5), 12000.5);
}

// The flag is "true" to the letter.
TEST(CheckRpmReverse, FlagInCapitals_DoesNotReverse) {
    const ManagerInstallation installation;
    ExpectedDialogs dialogs;
    dialogs.expectTell(UserDialogs::Kind::Warning, english("ToolEditor", "Title"),
                       english("ToolEditor", "ReverseErrorMsg"));
    EXPECT_EQ(checked(3, -1), 1);
}

TEST(CheckRpmReverse, PositiveSpeedOfAnySpindle_Stays) {
    const ManagerInstallation installation;
    const ExpectedDialogs noBox;
    EXPECT_EQ(checked(2, 600), 600);
    EXPECT_EQ(checked(2, 0), 0);
}

TEST(CheckRpmReverse, MissingSpindle_IsALogLineOnly) {
    const ManagerInstallation installation;
    const ExpectedDialogs noBox;
    const LogCapture log;
    EXPECT_EQ(checked(9, -600), -600);
    EXPECT_EQ(log.all().trimmed(), QString("Spindle is nullptr.Id:9"));
}

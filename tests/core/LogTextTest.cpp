#include "core/calc/LogText.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

namespace {
const QDateTime kNow(QDate(2026, 3, 9), QTime(7, 5, 1));
}

TEST(LogText, EveryLevel_HasItsWord) {
    EXPECT_EQ(logLevelWord(QtDebugMsg), QString("DEBUG"));
    EXPECT_EQ(logLevelWord(QtWarningMsg), QString("WARNING"));
    EXPECT_EQ(logLevelWord(QtCriticalMsg), QString("CRITICAL"));
    EXPECT_EQ(logLevelWord(QtFatalMsg), QString("FATAL"));
    EXPECT_EQ(logLevelWord(QtInfoMsg), QString("INFO"));
    EXPECT_EQ(logLevelWord(static_cast<QtMsgType>(7)), QString("UNKNOWN"));
}

TEST(LogText, Line_HasTimeLevelFunctionAndMessage) {
    EXPECT_EQ(logLine(kNow, QtInfoMsg, "void f()", "ready"),
              QString("[2026-03-09 07:05:01] [INFO] [void f()] ready"));
}

TEST(LogText, NullFunction_IsUnknown) {
    EXPECT_EQ(logLine(kNow, QtDebugMsg, nullptr, ""), QString("[2026-03-09 07:05:01] [DEBUG] [unknown] "));
}

TEST(LogText, PlaceMarkersOfAMessage_StayAsTheyAre) {
    EXPECT_EQ(logLine(kNow, QtDebugMsg, "%4", "%1 %2 %3 %4 100%"),
              QString("[2026-03-09 07:05:01] [DEBUG] [%4] %1 %2 %3 %4 100%"));
}

TEST(LogText, LargestLog_Is10MiB) {
    EXPECT_EQ(kLargestLog_bytes, 10485760);
}

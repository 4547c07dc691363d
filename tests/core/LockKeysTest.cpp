#include "core/calc/LockKeys.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

// Values from sha1sum.
TEST(LockKeys, EmptyTitle_GivesTheHashesOfTheSuffixesAlone) {
    EXPECT_EQ(lockKeys({}).memLockKey, QString("7c6ee423e0a7b4f515c040ba46857bef8116afa0"));
    EXPECT_EQ(lockKeys({}).sharedmemKey, QString("9c9f365b2b3de81ab6ff2bdb892970f5aa611388"));
}

TEST(LockKeys, Title_ComesFirstInUtf8) {
    EXPECT_EQ(lockKeys("Tornvale").memLockKey, QString("bc41823d6a939378bf108f1da4c94f850ccc4911"));
    EXPECT_EQ(lockKeys("Tornvale").sharedmemKey, QString("11d45a6055b989f0d5a1a57581473075589cfa5a"));
    EXPECT_EQ(lockKeys(QString::fromUtf8("多轴")).memLockKey,
              QString("7c465a775b5619af9cc69ff163c65f8658978866"));
}

TEST(LockKeys, DifferentTitles_DoNotMeet) {
    EXPECT_NE(lockKeys("Tornvale").sharedmemKey, lockKeys("tornvale").sharedmemKey);
    EXPECT_NE(lockKeys("Tornvale").sharedmemKey, lockKeys("Tornvale").memLockKey);
}

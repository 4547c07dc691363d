#include "core/SingleInstanceGuard.h"

#include <gtest/gtest.h>

#include <QUuid>

#include "core/calc/LockKeys.h"
#include "support/TestSupport.h"

// What happens between processes is tested with the program itself.

namespace {

/// A title that no other test has; the semaphore of the title is gone at the end.
struct Title {
    QString text = QUuid::createUuid().toString();
    ~Title() { const QSystemSemaphore removed(lockKeys(text).memLockKey, 1, QSystemSemaphore::Create); }
};

}  // namespace

TEST(SingleInstanceGuard, First_Runs) {
    const Title title;
    SingleInstanceGuard guard(title.text);
    EXPECT_FALSE(guard.isAnotherRunning());
    EXPECT_TRUE(guard.tryToRun());
    EXPECT_FALSE(guard.isAnotherRunning()) << "the owner is not another one";
}

TEST(SingleInstanceGuard, Second_SeesTheFirst) {
    const Title title;
    SingleInstanceGuard first(title.text);
    ASSERT_TRUE(first.tryToRun());
    SingleInstanceGuard second(title.text);
    EXPECT_TRUE(second.isAnotherRunning());
    EXPECT_FALSE(second.tryToRun()) << "the segment exists already";
    EXPECT_TRUE(second.isAnotherRunning()) << "a refused one leaves the first as it was";
}

TEST(SingleInstanceGuard, AnotherTitle_IsAnotherProgram) {
    const Title title;
    const Title other;
    SingleInstanceGuard first(title.text);
    ASSERT_TRUE(first.tryToRun());
    SingleInstanceGuard second(other.text);
    EXPECT_FALSE(second.isAnotherRunning());
    EXPECT_TRUE(second.tryToRun());
}

TEST(SingleInstanceGuard, Release_MakesRoomForTheNext) {
    const Title title;
    {
        SingleInstanceGuard first(title.text);
        ASSERT_TRUE(first.tryToRun());
        first.release();
        first.release();
        SingleInstanceGuard second(title.text);
        EXPECT_TRUE(second.tryToRun());
    }
    SingleInstanceGuard third(title.text);
    EXPECT_FALSE(third.isAnotherRunning());
    EXPECT_TRUE(third.tryToRun());
}

#include "core/SingleInstanceGuard.h"

#include "core/calc/LockKeys.h"

namespace {

constexpr int kSegment_bytes = 8;

/// Holds the semaphore while it lives. A process that dies with it gives it back: the system undoes what a
/// process has taken.
class Held {
  public:
    explicit Held(QSystemSemaphore& semaphore) : semaphore_(semaphore) { semaphore_.acquire(); }
    ~Held() { semaphore_.release(); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

  private:
    QSystemSemaphore& semaphore_;
};

}  // namespace

SingleInstanceGuard::SingleInstanceGuard(const QString& title)
    : memLockKey(lockKeys(title).memLockKey),
      sharedmemKey(lockKeys(title).sharedmemKey),
      sharedMem(sharedmemKey),
      memLock(memLockKey, 1, QSystemSemaphore::Open) {
    // The last one to let go of a segment removes it: a crashed owner's goes here, a living one's stays.
    QSharedMemory leftBehind(sharedmemKey);
    leftBehind.attach(QSharedMemory::ReadWrite);
}

SingleInstanceGuard::~SingleInstanceGuard() {
    release();
}

bool SingleInstanceGuard::isAnotherRunning() {
    if (sharedMem.isAttached())
        return false;
    const Held held(memLock);
    const bool found = sharedMem.attach(QSharedMemory::ReadWrite);
    if (found)
        sharedMem.detach();
    return found;
}

bool SingleInstanceGuard::tryToRun() {
    bool created = false;
    {
        const Held held(memLock);
        created = sharedMem.create(kSegment_bytes, QSharedMemory::ReadWrite);
    }
    if (!created)
        release();
    return created;
}

void SingleInstanceGuard::release() {
    const Held held(memLock);
    if (sharedMem.isAttached())
        sharedMem.detach();
}

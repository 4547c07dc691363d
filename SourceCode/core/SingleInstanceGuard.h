#pragma once

#include <QSharedMemory>
#include <QString>
#include <QSystemSemaphore>

/// Keeps a second instance of one title from running. Lives on the stack of the start for the whole run; the
/// shared segment is the sign of the running instance, and nothing is stored in it.
class SingleInstanceGuard {
  public:
    /// Clears what a crashed instance of this title has left behind.
    explicit SingleInstanceGuard(const QString& title);
    /// Releases.
    ~SingleInstanceGuard();
    SingleInstanceGuard(const SingleInstanceGuard&) = delete;
    SingleInstanceGuard& operator=(const SingleInstanceGuard&) = delete;

    /// True when another process owns the segment.
    [[nodiscard]] bool isAnotherRunning();
    /// Makes this process the owner; false when another one was quicker.
    [[nodiscard]] bool tryToRun();
    void release();

  private:
    QString memLockKey;
    QString sharedmemKey;
    QSharedMemory sharedMem;
    QSystemSemaphore memLock;
};

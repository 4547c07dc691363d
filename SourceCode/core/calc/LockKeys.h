#pragma once

#include <QString>

/// Names under which the instances of one title find each other: 40 lower-case hexadecimal digits each.
struct LockKeys {
    QString memLockKey;    ///< the system semaphore
    QString sharedmemKey;  ///< the shared memory segment
};

/// SHA-1 of the title in UTF-8 followed by "_memLockKey" or "_sharedmemKey". The title is a translated text,
/// so instances in different languages have different keys, and an empty title has keys too.
[[nodiscard]] LockKeys lockKeys(const QString& title);

#include "core/calc/LockKeys.h"

#include <QCryptographicHash>

namespace {
QString keyOf(const QString& title, const char* suffix) {
    return QString::fromLatin1(
        QCryptographicHash::hash(title.toUtf8() + suffix, QCryptographicHash::Sha1).toHex());
}
}  // namespace

LockKeys lockKeys(const QString& title) {
    return {keyOf(title, "_memLockKey"), keyOf(title, "_sharedmemKey")};
}

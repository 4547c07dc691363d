#include "core/Version.h"

QString applicationVersion() {
    return QStringLiteral(TORNVALE_VERSION);
}

#include "core/Version.h"

#include <QFile>

#include "core/InstallationFolder.h"
#include "core/calc/VersionText.h"

QString applicationVersion() {
    constexpr qint64 kLargest = 65536;
    QFile file(installationPath(QLatin1String(kVersionFile)));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return versionOfResource(QString::fromUtf8(file.read(kLargest)));
}

QString builtVersion() {
    return QStringLiteral(TORNVALE_VERSION);
}

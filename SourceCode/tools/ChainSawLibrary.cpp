#include "tools/ChainSawLibrary.h"

#include <QDir>
#include <QSettings>

#include "core/InstallationFolder.h"

namespace {

/// A comma makes QSettings take a text for a list.
QString textOf(const QVariant& value) {
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1String(", "))
                                                : value.toString();
}

}  // namespace

QString ChainSawLibrary::path() {
    return installationPath(QStringLiteral("ChainSawLib/ChainSawLibrary.ini"));
}

QString ChainSawLibrary::modelPath(const QString& path) {
    return QDir::isAbsolutePath(path) ? path : installationFolder() + QStringLiteral("/ChainSawLib/") + path;
}

QStringList ChainSawLibrary::groups() {
    QSettings settings(path(), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    return settings.childGroups();
}

std::optional<QMap<QString, QString>> ChainSawLibrary::values(const QString& group) {
    QSettings settings(path(), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    if (group.isEmpty() || !settings.childGroups().contains(group))
        return std::nullopt;
    settings.beginGroup(group);
    QMap<QString, QString> values;
    const QStringList keys = settings.childKeys();
    for (const QString& key : keys)
        values.insert(key, textOf(settings.value(key)));
    return values;
}

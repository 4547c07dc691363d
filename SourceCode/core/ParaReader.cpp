#include "core/ParaReader.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include "core/InstallationFolder.h"
#include "core/LanguageReader.h"
#include "core/calc/SettingValues.h"

namespace {

void warn(const QString& key, const QString& detail) {
    const TORNVALE::LanguageReader& language = TORNVALE::LanguageReader::instance();
    qWarning().noquote() << language.text(QStringLiteral("ParaReader"), key) << detail;
}

bool isReadable(const QString& path) {
    return QFileInfo(path).isFile() && QFile(path).open(QIODevice::ReadOnly);
}

}  // namespace

ParaReader::ParaReader()
    : path_(installationPath(QStringLiteral("data.ini"))),
      settings_(std::make_unique<QSettings>(path_, QSettings::IniFormat)) {
    if (!QFileInfo::exists(path_))
        warn(QStringLiteral("InvalidErrorMsg"), path_);
    else if (!isReadable(path_) || settings_->status() != QSettings::NoError)
        warn(QStringLiteral("ReadFailedErrorMsg"), path_);
}

ParaReader::~ParaReader() = default;

bool ParaReader::SetLanguage(const QString& name) {
    if (name != QLatin1String("Chinese") && name != QLatin1String("English") &&
        name != QLatin1String("Russia")) {
        warn(QStringLiteral("WriteFailedErrorMsg"), name);
        return false;
    }
    setValue(QStringLiteral("MainInterface/Language"), name);
    return true;
}

bool ParaReader::isNewToolDialog() const {
    return isTrue(QStringLiteral("MainInterface/IsNewToolDialog"));
}

bool ParaReader::isShowAxisInfo() const {
    return isTrue(QStringLiteral("DebugFunction/IsShowAxisInfo"));
}

QVariant ParaReader::value(const QString& key) const {
    return settings_->value(key);
}

bool ParaReader::isTrue(const QString& key) const {
    return settingIsTrue(key, value(key).toString());
}

int ParaReader::integer(const QString& key, int fallback) const {
    return settingInteger(value(key).toString(), fallback);
}

double ParaReader::number(const QString& key, double fallback) const {
    return settingNumber(value(key).toString(), fallback);
}

void ParaReader::setValue(const QString& key, const QVariant& value) {
    settings_->setValue(key, value);
}

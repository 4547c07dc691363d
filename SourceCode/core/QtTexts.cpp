#include "core/QtTexts.h"

#include <QCoreApplication>
#include <QDebug>
#include <QLibraryInfo>

#include "core/InstallationFolder.h"

namespace {

QString fileOf(const QString& language) {
    return language == QLatin1String("Russia") ? QStringLiteral("qtbase_ru") : QStringLiteral("qtbase_zh_CN");
}

}  // namespace

QtTexts::QtTexts(const QString& language) {
    if (language == QLatin1String("English"))
        return;
    const QString file = fileOf(language);
    isComplete_ = translator_.load(file, installationPath(QStringLiteral("translations"))) ||
                  translator_.load(file, QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    if (isComplete_)
        QCoreApplication::installTranslator(&translator_);
    else
        qWarning().noquote() << QStringLiteral("No translation of the Qt texts: ") + file;
}

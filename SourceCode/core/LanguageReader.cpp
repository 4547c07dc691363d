#include "core/LanguageReader.h"

#include <QDebug>
#include <QDir>
#include <QFile>

#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "core/calc/LanguageTable.h"

namespace TORNVALE {

LanguageReader::LanguageReader() : path_(QStringLiteral("Chinese")) {}

LanguageReader& LanguageReader::instance() {
    static LanguageReader* const reader =
        new LanguageReader;  // owned by nobody: lives as long as the process
    // Reading needs a ParaReader, whose warnings ask this very object for their text: it must exist, empty,
    // before it reads.
    static bool started = false;
    if (!started) {
        started = true;
        reader->reload();
    }
    return *reader;
}

void LanguageReader::reload() {
    path_ = QStringLiteral("Chinese");
    table_ = {};
    const QString language =
        std::make_unique<ParaReader>()->value(QStringLiteral("MainInterface/Language")).toString();
    const QDir folder(installationPath(QStringLiteral("language")));
    const QString name = languageFile(folder.entryList(QDir::Files), language);
    if (!name.isEmpty())
        path_ = folder.absoluteFilePath(name);
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug().noquote() << QStringLiteral("Read Translation File Failed.TranslationFilePath:") + path_;
        return;
    }
    Diagnostics diagnostics;
    table_ = parseLanguageTable(file.readAll(), diagnostics);
    for (const Diagnostic& entry : diagnostics.entries)
        qDebug().noquote() << entry.text;
}

QString LanguageReader::text(const QString& group, const QString& key) const {
    return languageGroup(table_, group).value(key).toString();
}

QJsonObject LanguageReader::group(const QString& name) const {
    return languageGroup(table_, name);
}

QJsonObject LanguageReader::tornvale() const {
    return group(QStringLiteral("Tornvale"));
}

QJsonObject LanguageReader::userFixtureBlock() const {
    return group(QStringLiteral("UserFixtureBlock"));
}

}  // namespace TORNVALE

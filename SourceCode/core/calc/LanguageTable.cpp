#include "core/calc/LanguageTable.h"

#include <QJsonDocument>

QString languageFile(const QStringList& files, const QString& language) {
    const QString wanted = language.toLower() + QStringLiteral(".json");
    for (const QString& file : files) {
        if (file.toLower() == wanted)
            return file;
    }
    return {};
}

QJsonObject parseLanguageTable(const QByteArray& json, Diagnostics& diagnostics) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (document.isNull() || error.error != QJsonParseError::NoError) {
        diagnostics.add(Severity::Debug, QStringLiteral("Parse Translation File Failed:") +
                                             error.errorString() + QStringLiteral(" offset:") +
                                             QString::number(error.offset));
        return {};
    }
    return document.object();
}

QJsonObject languageGroup(const QJsonObject& table, const QString& path) {
    QJsonObject group = table;
    for (const QString& step : path.split(QLatin1Char('/')))
        group = group.value(step).toObject();
    return group;
}

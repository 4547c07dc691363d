#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include "core/calc/Diagnostics.h"

/// The first of `files` whose name equals `language` + ".json" in lower case; empty when there is none. An
/// empty language looks for a file called ".json".
[[nodiscard]] QString languageFile(const QStringList& files, const QString& language);

/// The table of a language file: groups, in each a text per key. A file that does not parse is a debug
/// diagnostic with the place of the error and gives an empty table.
[[nodiscard]] QJsonObject parseLanguageTable(const QByteArray& json, Diagnostics& diagnostics);

/// The object at `path`, whose steps are separated by "/": "Tornvale/TabTitle". Empty when a step is missing.
[[nodiscard]] QJsonObject languageGroup(const QJsonObject& table, const QString& path);

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

// Program text between a file, an item and an editor that knows line feeds only. What the user has not
// touched comes back to the letter.

/// Text of a file's bytes. A byte order mark decides (UTF-8, UTF-16, UTF-32) and is no part of the text; then
/// UTF-8 where all bytes fit; then GB18030 where all bytes fit and most of its characters leave the ASCII
/// letters alone; else Latin-1, so that a letter of the code is never taken for half of another character.
[[nodiscard]] QString decodedSource(const QByteArray& bytes);

/// What an editor shows: each line break ("\r\n", "\r", "\n", a line or paragraph mark) as one "\n".
[[nodiscard]] QString shownSource(const QString& source);

/// Index in `source` of the character that stands at `shown` in its shown form.
[[nodiscard]] int sourceIndex(QStringView source, int shown);
/// The other way round; an index inside a line break is the break's.
[[nodiscard]] int shownIndex(QStringView source, int index);

/// `source` after its shown form was edited into `edited`: only what changed is new. New line breaks are of
/// the kind that comes first in `source`.
[[nodiscard]] QString editedSource(const QString& source, const QString& edited);

/// Index in `source` behind the first `line` - 1 line feeds: where a line of a diagnostic (1-based) begins.
/// -1 when there is no such line.
[[nodiscard]] int startOfLine(QStringView source, int line);

/// How large a text is for an editor.
struct SourceSize {
    int characters = 0;
    int lines = 1;
    int longestLine = 0;  ///< characters
};
[[nodiscard]] SourceSize sourceSize(QStringView source);

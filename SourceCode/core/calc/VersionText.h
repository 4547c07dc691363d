#pragma once

#include <QString>
#include <QStringView>

/// The four numbers of a Windows version resource, "3.3.0.5", from its first line that begins with
/// "FILEVERSION"; the numbers may be separated by commas or dots. Empty when there is no such line or it has
/// not four numbers.
[[nodiscard]] QString versionOfResource(QStringView text);

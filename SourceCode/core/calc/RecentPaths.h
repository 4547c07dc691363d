#pragma once

#include <QStringList>

/// How many project paths are remembered.
inline constexpr int kRecentPaths = 5;

/// `paths`, oldest first, with `path` put at the end: an equal entry goes first, and the oldest go while more
/// than kRecentPaths stand. An empty path changes nothing but the length.
[[nodiscard]] QStringList withRecentPath(QStringList paths, const QString& path);

/// Text of a menu entry: the number (from 1) with its shortcut and the path. An "&" of the path is shown.
[[nodiscard]] QString recentPathText(int number, const QString& path);

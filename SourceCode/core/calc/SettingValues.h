#pragma once

#include <QString>
#include <array>

// What the texts of `data.ini` mean. Settings are kept as text, and a text that says nothing gets the
// fall-back of its reader.

/// True only for the text "true", to the letter. "StatusPreProcessing/IsPreLaunch" is trimmed first.
[[nodiscard]] bool settingIsTrue(const QString& key, const QString& text);

/// `fallback` for an empty text, 0 for a text that is no number.
[[nodiscard]] int settingInteger(const QString& text, int fallback);
[[nodiscard]] double settingNumber(const QString& text, double fallback);

/// Red, green and blue, 0 to 1, of three numbers separated by blanks: white for any other count of parts. A
/// part that is no number counts as 0.
[[nodiscard]] std::array<double, 3> backgroundColour(const QString& text);

/// The side of the main tab widget on which its tabs stand; West for any text that names none.
enum class TabSide { West, East, South, North };
[[nodiscard]] TabSide tabSide(const QString& text);

/// The area of the main dock. The numbers are the settings file's own, not the toolkit's: 1 left, 2 top,
/// 4 bottom, 8 right, anything else left.
enum class DockArea { Left, Top, Bottom, Right };
[[nodiscard]] DockArea dockArea(const QString& text);

#pragma once

#include <QStringList>
#include <vector>

// Numbers behind the prefixes of names: "UCS" and 2 make "UCS2".

/// The number that the next name takes among `numbers` (in any order): 0 for none; otherwise the number
/// behind the first gap's lower end, as long as the numbers before it are unbroken; otherwise the largest
/// plus one. Numbers below the smallest are never taken again, and a duplicate hides a later gap. -1 when
/// the number would not fit an int.
[[nodiscard]] int nextUniqueNumber(std::vector<int> numbers);

/// The next number among scene names. Of each name only the last digit of its first run of word characters
/// counts ("Abc12" is 2), and names are numbered accordingly; a name without such a digit is skipped. -1
/// when a digit does not convert.
[[nodiscard]] int nextNumberOfSceneNames(const QStringList& names);

/// The next number among other names, of which the first whole run of digits counts ("Abc12" is 12). A name
/// without one, or with one that does not fit an int, is skipped.
[[nodiscard]] int nextNumberOfTexts(const QStringList& names);

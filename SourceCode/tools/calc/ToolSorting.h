#pragma once

#include <qnamespace.h>
#include <QString>
#include <QStringList>
#include <vector>

// The order of the rows of the tool trees.

/// The columns that hold numbers are the first ones; the columns behind them sort as the tree does.
inline constexpr int kNumberColumns = 8;

/// Orders two texts of a number column: as numbers, and as words of the user's language when one of them is
/// no number.
[[nodiscard]] bool toolTextLess(const QString& left, const QString& right);

/// The order of rows with these texts in a number column: the place in `texts` of the row that comes first,
/// then of the next. Rows of equal texts keep their order.
[[nodiscard]] std::vector<int> toolRowOrder(const QStringList& texts, Qt::SortOrder order);

#include "tools/calc/ToolSorting.h"

#include <algorithm>
#include <numeric>

bool toolTextLess(const QString& left, const QString& right) {
    bool leftIsNumber = false;
    bool rightIsNumber = false;
    const double leftNumber = left.toDouble(&leftIsNumber);
    const double rightNumber = right.toDouble(&rightIsNumber);
    if (leftIsNumber && rightIsNumber)
        return leftNumber < rightNumber;
    return QString::localeAwareCompare(left, right) < 0;
}

std::vector<int> toolRowOrder(const QStringList& texts, Qt::SortOrder order) {
    std::vector<int> rows(static_cast<std::size_t>(texts.size()));
    std::iota(rows.begin(), rows.end(), 0);
    // Numbers among words have no strict order; a merging sort ends well with them all the same.
    std::stable_sort(rows.begin(), rows.end(), [&texts, order](int left, int right) {
        return order == Qt::AscendingOrder ? toolTextLess(texts[left], texts[right])
                                           : toolTextLess(texts[right], texts[left]);
    });
    return rows;
}

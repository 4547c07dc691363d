#include "tools/calc/ToolTextTable.h"

bool ToolTextTable::add(const QString& toolText, const Texts& texts) {
    if (toolText.isEmpty() || toolTexts_.contains(toolText))
        return false;
    toolTexts_.append(toolText);
    for (std::size_t i = 0; i < kTextCount; ++i)
        columns_[i].append(texts[i]);
    return true;
}

ToolTextTable::Texts ToolTextTable::texts(const QString& toolText) const {
    Texts found;
    const int row = toolTexts_.indexOf(toolText);
    if (row < 0)
        return found;
    for (std::size_t i = 0; i < kTextCount; ++i)
        found[i] = columns_[i][row];
    return found;
}

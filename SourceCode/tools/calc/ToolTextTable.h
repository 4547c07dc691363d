#pragma once

#include <QString>
#include <QStringList>
#include <array>

/// Five texts for each tool that a program item names by its text, in the order in which the tools came.
class ToolTextTable {
  public:
    static constexpr std::size_t kTextCount = 5;
    using Texts = std::array<QString, kTextCount>;

    /// False, and no change, for an empty tool text and for one that is in the table already.
    bool add(const QString& toolText, const Texts& texts);
    [[nodiscard]] int size() const { return toolTexts_.size(); }
    [[nodiscard]] const QStringList& toolTexts() const { return toolTexts_; }
    /// The five texts of a tool; empty ones when the table lacks it.
    [[nodiscard]] Texts texts(const QString& toolText) const;

  private:
    QStringList toolTexts_;
    std::array<QStringList, kTextCount> columns_;
};

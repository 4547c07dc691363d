#include "tools/calc/ToolSorting.h"

#include <gtest/gtest.h>

#include <QVector>
#include <algorithm>
#include <random>

namespace {

QStringList sorted(const QStringList& texts, Qt::SortOrder order) {
    QStringList result;
    for (const int row : toolRowOrder(texts, order))
        result.append(texts[row]);
    return result;
}

}  // namespace

TEST(ToolSorting, NumbersOrderByValue) {
    EXPECT_EQ(sorted({"10", "9", "-2", "9.5", "1e3"}, Qt::AscendingOrder),
              (QStringList{"-2", "9", "9.5", "10", "1e3"}));
    EXPECT_EQ(sorted({"10", "9", "-2", "9.5", "1e3"}, Qt::DescendingOrder),
              (QStringList{"1e3", "10", "9.5", "9", "-2"}));
}

TEST(ToolSorting, TextsOrderAsWords) {
    EXPECT_EQ(sorted({"pear", "apple", "fig"}, Qt::AscendingOrder), (QStringList{"apple", "fig", "pear"}));
    EXPECT_TRUE(toolTextLess("10", "9a"));
    EXPECT_FALSE(toolTextLess("9a", "10"));
}

TEST(ToolSorting, EqualTexts_KeepTheirOrder) {
    EXPECT_EQ(toolRowOrder({"2", "1", "2.0", "1.0"}, Qt::AscendingOrder), (std::vector<int>{1, 3, 0, 2}));
    EXPECT_EQ(toolRowOrder({"2", "1", "2.0", "1.0"}, Qt::DescendingOrder), (std::vector<int>{0, 2, 1, 3}));
}

TEST(ToolSorting, NothingToSort_IsEmpty) {
    EXPECT_EQ(toolRowOrder({}, Qt::AscendingOrder), std::vector<int>());
}

TEST(ToolSorting, AnyTexts_GiveEveryRowOnce) {
    std::mt19937 random(20250103);
    const QStringList parts{"nan", "inf", "9", "10", "a", "", "-0", "9a", "1e999", "é"};
    for (int round = 0; round < 500; ++round) {
        QStringList texts;
        for (int i = static_cast<int>(random() % 60); i > 0; --i)
            texts.append(parts[static_cast<int>(random() % static_cast<unsigned>(parts.size()))]);
        std::vector<int> rows =
            toolRowOrder(texts, round % 2 == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
        std::sort(rows.begin(), rows.end());
        ASSERT_EQ(rows.size(), static_cast<std::size_t>(texts.size()));
        for (std::size_t i = 0; i < rows.size(); ++i)
            ASSERT_EQ(rows[i], static_cast<int>(i)) << texts.join(",").toStdString();
    }
}

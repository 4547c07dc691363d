#include "tools/calc/ToolTextTable.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

TEST(ToolTextTable, Tools_KeepTheirFiveTexts) {
    ToolTextTable table;
    EXPECT_TRUE(table.add("T1", {"a", "b", "c", "d", "e"}));
    EXPECT_TRUE(table.add("T2", {"f", "g", "h", "i", "j"}));
    EXPECT_EQ(table.toolTexts(), (QStringList{"T1", "T2"}));
    EXPECT_EQ(table.texts("T1"), (ToolTextTable::Texts{"a", "b", "c", "d", "e"}));
    EXPECT_EQ(table.texts("T2"), (ToolTextTable::Texts{"f", "g", "h", "i", "j"}));
}

TEST(ToolTextTable, SameText_IsRefused) {
    ToolTextTable table;
    EXPECT_TRUE(table.add("T1", {"a", "b", "c", "d", "e"}));
    EXPECT_FALSE(table.add("T1", {"v", "w", "x", "y", "z"}));
    EXPECT_EQ(table.size(), 1);
    EXPECT_EQ(table.texts("T1")[0], QString("a"));
}

TEST(ToolTextTable, EmptyText_IsRefused) {
    ToolTextTable table;
    EXPECT_FALSE(table.add("", {"a", "b", "c", "d", "e"}));
    EXPECT_EQ(table.size(), 0);
}

TEST(ToolTextTable, UnknownTool_HasEmptyTexts) {
    EXPECT_EQ(ToolTextTable().texts("T1"), ToolTextTable::Texts());
}

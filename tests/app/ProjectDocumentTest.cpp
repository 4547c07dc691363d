#include "app/calc/ProjectDocument.h"

#include <gtest/gtest.h>

#include <QJsonArray>

#include "support/TestSupport.h"

TEST(ProjectDocument, VersionsAddUpAndAreNotPlaceSeparated) {
    EXPECT_EQ(versionNumber("2.2.0.7"), 2207);
    EXPECT_EQ(versionNumber("2.2.0.8"), 2208);
    EXPECT_EQ(versionNumber("1.12.0.7"), 2207);
    EXPECT_EQ(versionNumber(""), 0);
    EXPECT_EQ(versionNumber("3"), 3000);
    EXPECT_EQ(versionNumber("a.b.c.d"), 0);
    EXPECT_EQ(versionNumber("99999999.99999999.9.9"), 1100099);
}

TEST(ProjectDocument, TheVersionDecidesTheForm) {
    EXPECT_TRUE(readProject(R"({"version":"2.2.0.7"})")->isLegacy);
    EXPECT_FALSE(readProject(R"({"version":"2.2.0.8"})")->isLegacy);
    EXPECT_TRUE(readProject("{}")->isLegacy) << "no version counts as 0";
}

TEST(ProjectDocument, TheMiddleFormNamesItsTreeDifferently) {
    const auto middle = readProject(R"({"version":"3.0.0.0","treeWidget":{"a":1}})");
    EXPECT_EQ(middle->tree, (QJsonObject{{"a", 1}}));
    const auto both =
        readProject(R"({"version":"3.0.0.0","treeWidget":{"a":1},"ProgramsTreeWidget":{"b":2}})");
    EXPECT_EQ(both->tree, (QJsonObject{{"b", 2}}));
}

TEST(ProjectDocument, WhatIsWrittenIsReadBack) {
    ProjectDocument project;
    project.head = {"a", "b", "c", "d", "e\nf", "2020-01-01 00:00:00", "1.5"};
    project.toolList = QJsonObject{{"tool0", QJsonObject{{"x", 1}}}};
    project.machine = {{"X", QJsonObject{{"transform", "1 0"}}}};
    project.tree = {{"class UserTopItemManager", QJsonObject()}};
    const auto read = readProject(writeProject(project, "3.3.0.5"));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->head, project.head);
    EXPECT_EQ(read->toolList, project.toolList);
    EXPECT_EQ(read->machine, project.machine);
    EXPECT_EQ(read->tree, project.tree);
    EXPECT_FALSE(read->isLegacy);
}

TEST(ProjectDocument, ValuesOfOtherKindsCountAsAbsent) {
    const auto read = readProject(
        R"({"version":7,"StandardCorvane_4S":{"partName":[1]},"machineNode":3,"ProgramsTreeWidget":"x"})");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->head.partName, "");
    EXPECT_TRUE(read->machine.isEmpty());
    EXPECT_TRUE(read->tree.isEmpty());
}

TEST(ProjectDocument, WhatIsNoObjectIsRefused) {
    for (const char* text : {"", "[]", "3", "null", "{", "\xff\xfe"})
        EXPECT_FALSE(readProject(text)) << text;
}

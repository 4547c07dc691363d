#include "setup/calc/SystemJson.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <limits>

#include "support/TestSupport.h"

TEST(SystemJson, WrittenSystemReadsBack) {
    SystemData system;
    system.id = 3;
    system.name = QStringLiteral("UCS3");
    system.moveTranslation = QStringLiteral("1 2 3");
    system.switcher = QStringLiteral("-3");
    system.models = {{QStringLiteral("userModel0"), QJsonObject()}};
    const QJsonObject object = writeSystem(system, QStringLiteral("G54"));
    EXPECT_EQ(object.keys(), (QStringList{QStringLiteral("id"), QStringLiteral("modelObject"),
                                          QStringLiteral("moveTranslation"), QStringLiteral("name"),
                                          QStringLiteral("parentNodeName"), QStringLiteral("switcher")}));
    EXPECT_EQ(object.value(QStringLiteral("parentNodeName")).toString(), QStringLiteral("G54"));
    const SystemData back = readSystem(object);
    EXPECT_EQ(back.id, 3);
    EXPECT_EQ(back.name, system.name);
    EXPECT_EQ(back.moveTranslation, system.moveTranslation);
    EXPECT_EQ(back.switcher, system.switcher);
    EXPECT_EQ(back.models, system.models);
}

TEST(SystemJson, MembersOfTheWrongKindAreEmpty) {
    const SystemData system = readSystem(
        QJsonDocument::fromJson(R"({"id": "3", "name": 4, "moveTranslation": [], "modelObject": [1]})")
            .object());
    EXPECT_FALSE(system.id);
    EXPECT_EQ(system.name, QString());
    EXPECT_EQ(system.moveTranslation, QString());
    EXPECT_TRUE(system.models.isEmpty());
    EXPECT_FALSE(readSystem({{QStringLiteral("id"), -1}}).id);
    EXPECT_FALSE(readSystem({{QStringLiteral("id"), 1.5}}).id);
    EXPECT_FALSE(readSystem({{QStringLiteral("id"), 1e20}}).id);
}

TEST(SystemJson, OldFormTakesTheFirstDigitOfTheName) {
    const QJsonArray array = QJsonDocument::fromJson(R"([
        {"name": "UCS 27", "moveTranslation": " 1.5  -2 3 ",
         "modelArray": [{"coordIndex": "a", "verticesProperty": "b"}, 5]},
        {"name": "none", "moveTranslation": "1 2"},
        {"moveTranslation": "nan 0 0"},
        7])")
                                 .array();
    const QVector<OldSystemData> systems = readOldSystems(array);
    ASSERT_EQ(systems.size(), 4);
    EXPECT_EQ(systems[0].id, 2);
    EXPECT_EQ(systems[0].translation, SbVec3f(1.5F, -2, 3));
    ASSERT_EQ(systems[0].models.size(), 2);
    EXPECT_EQ(systems[0].models[0].coordIndex, QStringLiteral("a"));
    EXPECT_EQ(systems[0].models[0].verticesProperty, QStringLiteral("b"));
    EXPECT_EQ(systems[0].models[1].coordIndex, QString());
    EXPECT_FALSE(systems[1].id);
    EXPECT_EQ(systems[1].translation, SbVec3f(0, 0, 0));
    EXPECT_EQ(systems[2].translation, SbVec3f(0, 0, 0));
    EXPECT_FALSE(systems[3].id);
}

TEST(SystemJson, NumberNotTakenGoesUp) {
    EXPECT_EQ(numberNotTaken(0, {}), 0);
    EXPECT_EQ(numberNotTaken(10, {9, 10, 11}), 12);
    EXPECT_EQ(numberNotTaken(-1, {0}), -1);
    EXPECT_EQ(numberNotTaken(std::numeric_limits<int>::max(), {std::numeric_limits<int>::max()}), -1);
}

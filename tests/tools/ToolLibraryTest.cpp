#include <gtest/gtest.h>

#include <QJsonDocument>
#include <random>

#include "ToolTestSupport.h"

namespace {

/// A library file that holds the current form (tools 1 and 2) and the array form (tools 10, 11 and 12).
QByteArray bothForms(const QString& version) {
    const auto current = [](int index) {
        ToolRecord tool;
        tool.index = index;
        return toolToJson(tool);
    };
    const auto old = [](int index) {
        return QJsonArray{index, 1, 0, 1, 1, 1, 1, QString(), QString(), 1, QJsonArray()};
    };
    const QJsonObject root{{QStringLiteral("version"), version},
                           {QStringLiteral("tool0"), current(1)},
                           {QStringLiteral("tool1"), current(2)},
                           {QStringLiteral("toollib"), QJsonArray{old(10), old(11), old(12)}}};
    return QJsonDocument(root).toJson();
}

QVector<int> indicesOf(const QVector<ToolRecord>& tools) {
    QVector<int> indices;
    for (const ToolRecord& tool : tools)
        indices.append(tool.index);
    return indices;
}

QVector<int> indicesRead(const QByteArray& json, const QString& applicationVersion) {
    Diagnostics diagnostics;
    const auto library = readToolLibrary(json, applicationVersion, diagnostics);
    EXPECT_EQ(diagnostics.entries.size(), 0U);
    return library ? indicesOf(library->tools) : QVector<int>{-99};
}

const QVector<int> kCurrent{1, 2};
const QVector<int> kArray{10, 11, 12};

}  // namespace

TEST(ToolLibrary, Versions_CompareFieldByFieldAsNumbers) {
    const auto greater = [](const char* one, const char* other) {
        return versionIsGreater(QString::fromLatin1(one), QString::fromLatin1(other));
    };
    EXPECT_EQ(greater("3.3.0.5", "3.3.0.4"), true);
    EXPECT_EQ(greater("3.3.0.5", "3.3.0.5"), false);
    EXPECT_EQ(greater("3.3.0.5", "3.3.0.10"), false);
    EXPECT_EQ(greater("3.10.0.0", "3.9.9.9"), true);
    EXPECT_EQ(greater("2.9.9.9", "3.0.0.0"), false);
    EXPECT_EQ(greater("3.0.0.0", "2.9.9.9"), true);
    EXPECT_EQ(greater("", "0.0.0.0"), false);
    EXPECT_EQ(greater("0.0.0.1", ""), true);
    EXPECT_EQ(greater("x.1", "0.0.9"), true);
    EXPECT_EQ(greater("1", "1.0.0.0"), false);
    EXPECT_EQ(greater("1.0.0.0.9", "1.0.0.0"), false);
}

TEST(ToolLibrary, FileOfTheSameOrAnOlderVersion_IsReadInTheCurrentForm) {
    EXPECT_EQ(indicesRead(bothForms(QStringLiteral("3.3.0.5")), QStringLiteral("3.3.0.5")), kCurrent);
    EXPECT_EQ(indicesRead(bothForms(QStringLiteral("3.2.9.9")), QStringLiteral("3.3.0.5")), kCurrent);
    EXPECT_EQ(indicesRead(bothForms(QString()), QStringLiteral("3.3.0.5")), kCurrent);
}

TEST(ToolLibrary, FileOfANewerVersion_IsReadInTheArrayForm) {
    EXPECT_EQ(indicesRead(bothForms(QStringLiteral("3.3.0.6")), QStringLiteral("3.3.0.5")), kArray);
    EXPECT_EQ(indicesRead(bothForms(QStringLiteral("4.0.0.0")), QStringLiteral("3.3.0.5")), kArray);
}

TEST(ToolLibrary, UnknownApplicationVersion_ReadsTheArrayForm) {
    EXPECT_EQ(indicesRead(bothForms(QStringLiteral("3.3.0.5")), QString()), kArray);
    EXPECT_EQ(indicesRead(bothForms(QString()), QString()), kArray);
}

// "tool10" stands before "tool2": the order is that of the object's keys, and stays so.
TEST(ToolLibrary, CurrentForm_IsReadInTheOrderOfTheKeys) {
    ToolLibrary library{QStringLiteral("1.0.0.0"), {}};
    for (int i = 0; i < 12; ++i) {
        ToolRecord tool;
        tool.index = 100 + i;
        library.tools.append(tool);
    }
    EXPECT_EQ(indicesRead(writeToolLibrary(library), QStringLiteral("1.0.0.0")),
              (QVector<int>{100, 101, 110, 111, 102, 103, 104, 105, 106, 107, 108, 109}));
}

TEST(ToolLibrary, WrittenLibrary_ComesBackWithItsVersion) {
    std::mt19937 random(29);  // NOLINT(cert-msc51-cpp): the same tools each time
    ToolLibrary library{QStringLiteral("3.3.0.5"), {}};
    for (int i = 0; i < 9; ++i)
        library.tools.append(randomTool(random));
    const QByteArray json = writeToolLibrary(library);
    EXPECT_EQ(json.contains('\n'), false);
    Diagnostics diagnostics;
    const auto back = readToolLibrary(json, QStringLiteral("3.3.0.5"), diagnostics);
    ASSERT_EQ(back.has_value(), true);
    EXPECT_EQ(back->version, QStringLiteral("3.3.0.5"));
    ASSERT_EQ(back->tools.size(), 9);
    for (int i = 0; i < 9; ++i)
        expectSameTool(back->tools[i], library.tools[i]);
}

TEST(ToolLibrary, WhatIsNoJsonObject_GivesNothingAndADiagnostic) {
    for (const char* text : {"", "x", "[]", "null", "3", "{", "{\"version\": }", "\xff\xfe"}) {
        Diagnostics diagnostics;
        EXPECT_EQ(readToolLibrary(text, QStringLiteral("1.0.0.0"), diagnostics).has_value(), false) << text;
        ASSERT_EQ(diagnostics.entries.size(), 1U) << text;
        EXPECT_EQ(diagnostics.entries[0].key, QStringLiteral("ToolsManager/ParseFailedErrorMsg"));
    }
    Diagnostics diagnostics;
    const QByteArray deep = QByteArray("[").repeated(1000000);
    EXPECT_EQ(readToolLibrary(deep, QStringLiteral("1.0.0.0"), diagnostics).has_value(), false);
}

TEST(ToolLibrary, EntriesOfTheWrongKind_AreLeftOut) {
    const QByteArray current = R"({"version": 5, "tool0": 3, "tool1": [1], "tool2": {"Index": 4}, "other": {},
                                  "toollib": [], "Tool3": {"Index": 9}})";
    EXPECT_EQ(indicesRead(current, QStringLiteral("1.0.0.0")), QVector<int>{4});
    const QByteArray old = R"({"version": "2.0.0.0", "toollib": [3, {"Index": 4}, [], [1, 2],
                              [8, 1, 0, 1, 1, 1, 1, "", "", 1, []]]})";
    EXPECT_EQ(indicesRead(old, QStringLiteral("1.0.0.0")), QVector<int>{8});
    EXPECT_EQ(indicesRead(R"({"version": "2.0.0.0", "toollib": {"tool0": {}}})", QStringLiteral("1.0.0.0")),
              QVector<int>());
    EXPECT_EQ(indicesRead("{}", QStringLiteral("1.0.0.0")), QVector<int>());
    EXPECT_EQ(indicesRead("{}", QString()), QVector<int>());
}

TEST(ToolLibrary, ToolListOfAProject_IsAnArrayOrAnObject) {
    const QJsonObject object{{QStringLiteral("Index"), 3}};
    const QJsonArray array{8, 1, 0, 1, 1, 1, 1, QString(), QString(), 1, QJsonArray()};
    EXPECT_EQ(indicesOf(toolsFromJson(QJsonArray{object, array, 5, QJsonArray{1}})), (QVector<int>{3, 8}));
    EXPECT_EQ(indicesOf(toolsFromJson(QJsonObject{{QStringLiteral("tool0"), object},
                                                  {QStringLiteral("spare"), object},
                                                  {QStringLiteral("tool1"), array}})),
              QVector<int>{3});
    for (const QJsonValue& value : {QJsonValue(), QJsonValue(3), QJsonValue(QStringLiteral("tool0"))})
        EXPECT_EQ(toolsFromJson(value).size(), 0);
}

TEST(ToolLibrary, DamagedFiles_GiveNothingOrTools) {
    ToolLibrary library{QStringLiteral("3.3.0.5"), {unusualTool(), unusualTool()}};
    const QByteArray good = writeToolLibrary(library);
    std::mt19937 random(31);  // NOLINT(cert-msc51-cpp): the same files each time
    for (int round = 0; round < 1000; ++round) {
        QByteArray bytes = good;
        for (int i = 0; i <= round % 4; ++i)
            bytes[static_cast<int>(random() % static_cast<unsigned>(bytes.size()))] =
                static_cast<char>(random() % 256);
        Diagnostics diagnostics;
        const auto read = readToolLibrary(bytes, QStringLiteral("3.3.0.5"), diagnostics);
        ASSERT_EQ(diagnostics.entries.empty(), read.has_value()) << bytes.toStdString();
        ASSERT_LE(read ? read->tools.size() : 0, 2) << bytes.toStdString();
    }
}

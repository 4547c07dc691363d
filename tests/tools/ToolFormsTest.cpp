#include <gtest/gtest.h>

#include <QJsonDocument>
#include <limits>
#include <random>

#include "ToolTestSupport.h"

namespace {

QJsonValue throughText(const QJsonValue& value) {
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QJsonDocument::fromJson(text).array().at(0);
}

/// The older form of eleven entries; what comes behind is added by the test.
QJsonArray oldTool() {
    return {5,
            2,
            9,
            80.5,
            25,
            12,
            9000,
            QStringLiteral("old"),
            QString::fromLatin1(QByteArray("PNG").toBase64()),
            14,
            QJsonArray{QJsonArray{0, 0, 0}, QJsonArray{6, 0, -80.5}}};
}

ToolRecord fromArray(const QJsonArray& array) {
    ToolRecord tool;
    toolFromJsonArray(array, tool);
    return tool;
}

ToolRecord fromObject(const QJsonObject& object) {
    ToolRecord tool;
    toolFromJson(object, tool);
    return tool;
}

const QStringList kKeys{
    QStringLiteral("Annonation"),   QStringLiteral("BladeLength"),      QStringLiteral("ChainSaw"),
    QStringLiteral("ChainSawPath"), QStringLiteral("ContourPoints"),    QStringLiteral("Diameter"),
    QStringLiteral("Direction"),    QStringLiteral("HandleDiameter"),   QStringLiteral("Image"),
    QStringLiteral("Index"),        QStringLiteral("InstallationName"), QStringLiteral("Length"),
    QStringLiteral("Rpm"),          QStringLiteral("SpName"),           QStringLiteral("SpindleNo"),
    QStringLiteral("ToolNo"),       QStringLiteral("ToolTip"),          QStringLiteral("Transform"),
    QStringLiteral("Type")};

}  // namespace

TEST(ToolForms, Object_HasEveryFieldInItsKind) {
    const QJsonObject json = toolToJson(unusualTool());
    EXPECT_EQ(json.keys(), kKeys);
    EXPECT_EQ(json.value(QStringLiteral("Index")).toInt(), 7);
    EXPECT_EQ(json.value(QStringLiteral("Length")).toDouble(), 123.5);
    EXPECT_EQ(json.value(QStringLiteral("Image")).toString(),
              QString::fromLatin1(unusualTool().image.toBase64()));
    EXPECT_EQ(json.value(QStringLiteral("Transform")).toArray(), (QJsonArray{1, -2, 3.5, 90, 0, -45}));
    EXPECT_EQ(json.value(QStringLiteral("ContourPoints")).toArray().size(), 3);
    EXPECT_EQ(json.value(QStringLiteral("ContourPoints")).toArray()[0].toArray(), (QJsonArray{0, 0, 0}));
    EXPECT_EQ(json.value(QStringLiteral("ToolTip")).isString(), true);
}

TEST(ToolForms, ToolTip_IsThreeNumbersSeparatedByBlanks) {
    ToolRecord tool;
    EXPECT_EQ(toolToJson(tool).value(QStringLiteral("ToolTip")).toString(), QStringLiteral("0 0 0"));
    tool.toolTip = SbVec3f(1.5F, -2, 0.1F);
    EXPECT_EQ(toolToJson(tool).value(QStringLiteral("ToolTip")).toString(), QStringLiteral("1.5 -2 0.1"));
}

TEST(ToolForms, UnusualTool_ComesBack) {
    expectSameTool(fromObject(throughText(toolToJson(unusualTool())).toObject()), unusualTool());
}

TEST(ToolForms, RandomTools_ComeBackThroughText) {
    std::mt19937 random(23);  // NOLINT(cert-msc51-cpp): the same tools each time
    for (int round = 0; round < 300; ++round) {
        const ToolRecord tool = randomTool(random);
        const QJsonObject json = toolToJson(tool);
        SCOPED_TRACE(QJsonDocument(json).toJson().toStdString());
        expectSameTool(fromObject(throughText(json).toObject()), tool);
        if (::testing::Test::HasFailure())
            return;
    }
}

TEST(ToolForms, EmptyObject_ZeroesAllButTheThreeThatAreReadOnlyIfPresent) {
    ToolRecord tool = unusualTool();
    toolFromJson({}, tool);
    EXPECT_EQ(tool.index, 0);
    EXPECT_EQ(tool.spindleNo, 0);
    EXPECT_EQ(tool.length, 0);
    EXPECT_EQ(tool.rpm, 0);
    EXPECT_EQ(tool.transform, QVector<float>(6, 0));
    EXPECT_EQ(tool.annotation, QString());
    EXPECT_EQ(tool.spName, QString());
    EXPECT_EQ(tool.image, QByteArray());
    EXPECT_EQ(tool.contour.size(), 0);
    EXPECT_EQ(tool.chainSaw, QStringLiteral("Saw9"));
    EXPECT_EQ(tool.chainSawPath, QStringLiteral("saw9.iv"));
    EXPECT_EQ(tool.toolTip, unusualTool().toolTip);
}

TEST(ToolForms, MembersOfTheWrongKind_CountAsAbsent) {
    const QJsonObject good = toolToJson(unusualTool());
    for (const QString& key : kKeys) {
        QJsonObject without = good;
        without.remove(key);
        const ToolRecord expected = [&without] {
            ToolRecord tool = unusualTool();
            toolFromJson(without, tool);
            return tool;
        }();
        const QJsonValue::Type kind = good.value(key).type();
        const QList<QJsonValue> values{QJsonValue(), true, 12345, QStringLiteral("text"), QJsonObject()};
        for (const QJsonValue& value : values) {
            if (value.type() == kind)
                continue;
            QJsonObject json = good;
            json.insert(key, value);
            ToolRecord tool = unusualTool();
            toolFromJson(json, tool);
            SCOPED_TRACE(key.toStdString() + " of kind " + std::to_string(value.type()));
            expectSameTool(tool, expected);
        }
    }
}

TEST(ToolForms, NumbersBeyondTheirType_CountAsZero) {
    QJsonObject json = toolToJson(unusualTool());
    json.insert(QStringLiteral("Length"), 1e300);
    json.insert(QStringLiteral("Index"), 1e300);
    json.insert(QStringLiteral("ToolNo"), 1.5);
    json.insert(QStringLiteral("Transform"), QJsonArray{1e39, 1, 1, 1, 1, -1e39});
    json.insert(QStringLiteral("ContourPoints"), QJsonArray{QJsonArray{1e300, 2, 3}});
    const ToolRecord tool = fromObject(json);
    EXPECT_EQ(tool.length, 0);
    EXPECT_EQ(tool.index, 0);
    EXPECT_EQ(tool.toolNo, 0);
    EXPECT_EQ(tool.transform, (QVector<float>{0, 1, 1, 1, 1, 0}));
    EXPECT_EQ(tool.contour, QVector<SbVec3f>{SbVec3f(0, 2, 3)});
}

TEST(ToolForms, TransformOfAnotherCount_BecomesSixZeros) {
    for (const int count : {0, 1, 5, 7, 100}) {
        QJsonArray numbers;
        for (int i = 0; i < count; ++i)
            numbers.append(3);
        QJsonObject json = toolToJson(unusualTool());
        json.insert(QStringLiteral("Transform"), numbers);
        EXPECT_EQ(fromObject(json).transform, QVector<float>(6, 0)) << count;
    }
}

TEST(ToolForms, ToolTipOfAnotherCount_IsLeft) {
    for (const char* text : {"", "1", "1 2", "1 2 3 4"}) {
        QJsonObject json = toolToJson(unusualTool());
        json.insert(QStringLiteral("ToolTip"), QString::fromLatin1(text));
        ToolRecord tool;
        tool.toolTip = SbVec3f(7, 8, 9);
        toolFromJson(json, tool);
        EXPECT_EQ(tool.toolTip, SbVec3f(7, 8, 9)) << text;
    }
}

TEST(ToolForms, ContourPointsThatAreNone_AreLeftOut) {
    QJsonObject json = toolToJson(unusualTool());
    json.insert(QStringLiteral("ContourPoints"),
                QJsonArray{QJsonArray{1, 2}, 3, QJsonArray{1, 2, 3}, QJsonArray{1, 2, 3, 4},
                           QJsonArray{QStringLiteral("x"), 5, 6}});
    EXPECT_EQ(fromObject(json).contour, (QVector<SbVec3f>{SbVec3f(1, 2, 3), SbVec3f(0, 5, 6)}));
}

TEST(ToolForms, ArrayOfEleven_IsReadByPosition) {
    const ToolRecord tool = fromArray(oldTool());
    EXPECT_EQ(tool.index, 5);
    EXPECT_EQ(tool.spindleNo, 2);
    EXPECT_EQ(tool.toolNo, 9);
    EXPECT_EQ(tool.length, 80.5F);
    EXPECT_EQ(tool.bladeLength, 25);
    EXPECT_EQ(tool.diameter, 12);
    EXPECT_EQ(tool.rpm, 9000);
    EXPECT_EQ(tool.annotation, QStringLiteral("old"));
    EXPECT_EQ(tool.image, QByteArray("PNG"));
    EXPECT_EQ(tool.handleDiameter, 14);
    EXPECT_EQ(tool.contour, (QVector<SbVec3f>{SbVec3f(0, 0, 0), SbVec3f(6, 0, -80.5F)}));
    EXPECT_EQ(tool.installationName, QStringLiteral("A"));
    EXPECT_EQ(tool.spName, QStringLiteral("T2"));
    EXPECT_EQ(tool.type, 0);
    EXPECT_EQ(tool.direction, 0);
}

// The tests of positions 12, 13 and 14 are one too low, and stay so.
TEST(ToolForms, ArrayOfTwelve_HasItsCarrierButAnEmptySpindleName) {
    QJsonArray array = oldTool();
    array.append(QStringLiteral("C"));
    ToolRecord tool = unusualTool();
    toolFromJsonArray(array, tool);
    EXPECT_EQ(tool.installationName, QStringLiteral("C"));
    EXPECT_EQ(tool.spName, QString());
    EXPECT_EQ(tool.type, unusualTool().type);
    EXPECT_EQ(tool.direction, unusualTool().direction);
    EXPECT_EQ(fromArray(array).type, 0);
    EXPECT_EQ(fromArray(array).direction, 0);
}

TEST(ToolForms, ArrayOfThirteen_ReadsItsTypeBehindTheEnd) {
    QJsonArray array = oldTool();
    array.append(QStringLiteral("C"));
    array.append(QStringLiteral("T2"));
    ToolRecord tool = unusualTool();
    toolFromJsonArray(array, tool);
    EXPECT_EQ(tool.spName, QStringLiteral("T2"));
    EXPECT_EQ(tool.type, 0);
    EXPECT_EQ(tool.direction, unusualTool().direction);
}

TEST(ToolForms, ArrayOfFourteen_ReadsItsDirectionBehindTheEnd) {
    QJsonArray array = oldTool();
    for (const QJsonValue& value :
         {QJsonValue(QStringLiteral("C")), QJsonValue(QStringLiteral("T2")), QJsonValue(2)})
        array.append(value);
    ToolRecord tool = unusualTool();
    toolFromJsonArray(array, tool);
    EXPECT_EQ(tool.type, 2);
    EXPECT_EQ(tool.direction, 0);
}

TEST(ToolForms, ArrayOfFifteen_IsWhole) {
    QJsonArray array = oldTool();
    for (const QJsonValue& value :
         {QJsonValue(QStringLiteral("C")), QJsonValue(QStringLiteral("T2")), QJsonValue(2), QJsonValue(1)})
        array.append(value);
    const ToolRecord tool = fromArray(array);
    EXPECT_EQ(tool.type, 2);
    EXPECT_EQ(tool.direction, 1);
}

TEST(ToolForms, ArrayOfFewerThanEleven_ChangesNothing) {
    QJsonArray array = oldTool();
    array.removeLast();
    while (!array.isEmpty()) {
        ToolRecord tool = unusualTool();
        toolFromJsonArray(array, tool);
        expectSameTool(tool, unusualTool());
        array.removeLast();
    }
}

TEST(ToolForms, ArrayOfTheWrongKinds_ReadsAsZeroAndEmpty) {
    QJsonArray array;
    for (int i = 0; i < 15; ++i)
        array.append(QJsonObject());
    ToolRecord tool = unusualTool();
    toolFromJsonArray(array, tool);
    EXPECT_EQ(tool.index, 0);
    EXPECT_EQ(tool.length, 0);
    EXPECT_EQ(tool.annotation + tool.installationName + tool.spName, QString());
    EXPECT_EQ(tool.image, QByteArray());
    EXPECT_EQ(tool.contour.size(), 0);
    EXPECT_EQ(tool.type, 0);
    EXPECT_EQ(tool.direction, 0);
}

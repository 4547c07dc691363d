#include "items/calc/IsoRecord.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <limits>
#include <random>

#include "support/TestSupport.h"

namespace {

struct Fields {
    ItemRecord item;
    IsoRecord iso;
};

Fields read(const QJsonObject& object) {
    Fields fields;
    isoItemFromJson(object, fields.item, fields.iso);
    return fields;
}

Fields filled() {
    Fields fields;
    fields.item.Name = "userCodeItem3";
    fields.item.UserCoordiSystemId = 2;
    fields.item.lastUserCoordinateSystemId = 2;
    fields.item.translation = SbVec3f(1.5F, -2, 0.001F);
    fields.item.offset = SbVec3f(12345.678F, -0.5F, 3);
    fields.item.Annotation = QStringLiteral("грубо");
    fields.item.ItemRpm = -18000;
    fields.item.t = 0.3;
    fields.iso.mirrorAngle = 180;
    fields.iso.axisShift = -1.25;
    fields.iso.sourceCodeName = "a.anc";
    fields.iso.sourceCodePath = "/programs/a.anc";
    fields.iso.sourceCodeString = QStringLiteral("\uFEFFG1 X1\r\n\tG1 Y2\n");
    return fields;
}

QJsonObject written(const Fields& fields, bool checked = true) {
    return isoItemToJson(fields.item, fields.iso, 1001, QJsonObject{{"ToolNo", 5}}, checked);
}

}  // namespace

TEST(IsoRecord, Written_HasEveryKeyAndNoOther) {
    Fields fields = filled();
    fields.item.offset = SbVec3f(0, -0.5F, 1e7F);
    const QJsonObject expected{
        {"itemName", "userCodeItem3"},
        {"sourceCodePath", "/programs/a.anc"},
        {"sourceCodeName", "a.anc"},
        {"sourceCodeString", fields.iso.sourceCodeString},
        {"userCoordinateSystemId", 2},
        {"mirrorAngle", 180},
        {"axisShift", -1.25},
        {"translationX", 1.5},
        {"translationY", -2},
        {"translationZ", static_cast<double>(0.001F)},
        {"markedString", QStringLiteral("грубо")},
        {"tool", QJsonObject{{"ToolNo", 5}}},
        {"itemRPM", -18000},
        {"t", 0.3},
        {"type", 1001},
        {"offsetInWorkPlane", "0 -0.5 1e+07"},
        {"checkState", false},
    };
    EXPECT_EQ(QString(QJsonDocument(written(fields, false)).toJson()),
              QString(QJsonDocument(expected).toJson()));
}

TEST(IsoRecord, RoundTrip_BringsAllBackButThePathAndTheSpeed) {
    const Fields before = filled();
    const QByteArray bytes = QJsonDocument(written(before)).toJson();
    const Fields after = read(QJsonDocument::fromJson(bytes).object());
    Fields expected = before;
    expected.iso.sourceCodePath.clear();  // written only
    expected.item.ItemRpm = 0;            // read behind the tool
    EXPECT_EQ(after.iso, expected.iso);
    EXPECT_EQ(after.item, expected.item);
}

TEST(IsoRecord, RoundTrip_KeepsEveryOffsetToTheLastBit) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> number(-1e5F, 1e5F);
    for (int i = 0; i < 2000; ++i) {
        Fields fields;
        fields.item.offset = SbVec3f(number(random), number(random) * 1e-6F, number(random) * 1e9F);
        const QString text = written(fields)["offsetInWorkPlane"].toString();
        EXPECT_EQ(read(written(fields)).item.offset, fields.item.offset) << text.toStdString();
    }
}

TEST(IsoRecord, EmptyObject_GivesZerosAndKeepsTOffsetAndPath) {
    Fields fields = filled();
    isoItemFromJson({}, fields.item, fields.iso);
    EXPECT_EQ(fields.item.Name, QString());
    EXPECT_EQ(fields.item.UserCoordiSystemId, 0);
    EXPECT_EQ(fields.item.translation, SbVec3f(0, 0, 0));
    EXPECT_EQ(fields.iso.mirrorAngle, 0);
    EXPECT_EQ(fields.iso.axisShift, 0.0);
    EXPECT_EQ(fields.iso.sourceCodeString, QString());
    EXPECT_EQ(fields.item.t, 0.3);
    EXPECT_EQ(fields.item.offset, SbVec3f(12345.678F, -0.5F, 3));
    EXPECT_EQ(fields.iso.sourceCodePath, QStringLiteral("/programs/a.anc"));
    EXPECT_EQ(fields.item.ItemRpm, -18000.0);
}

TEST(IsoRecord, T_IsTakenOnlyAboveZeroAndUpToOne) {
    const auto tOf = [](const QJsonValue& t) { return read({{"t", t}}).item.t; };
    EXPECT_EQ(tOf(0), 1.0);
    EXPECT_EQ(tOf(1.5), 1.0);
    EXPECT_EQ(tOf(-0.5), 1.0);
    EXPECT_EQ(tOf("0.5"), 1.0);
    EXPECT_EQ(tOf(0.001), 0.001);
    EXPECT_EQ(tOf(0.999), 0.999);
    EXPECT_EQ(tOf(1), 1.0);
    EXPECT_EQ(tOf(std::numeric_limits<double>::quiet_NaN()), 1.0);
}

TEST(IsoRecord, LastUserSystem_IsTheReadOne) {
    const Fields fields = read({{"userCoordinateSystemId", 6}});
    EXPECT_EQ(fields.item.UserCoordiSystemId, 6);
    EXPECT_EQ(fields.item.lastUserCoordinateSystemId, 6);
}

TEST(IsoRecord, Offset_TakesThreeNumbersAndZeroForBadOnes) {
    const auto offsetOf = [](const char* text) { return read({{"offsetInWorkPlane", text}}).item.offset; };
    EXPECT_EQ(offsetOf("1 2 3"), SbVec3f(1, 2, 3));
    EXPECT_EQ(offsetOf("-.5 1e2 0"), SbVec3f(-0.5F, 100, 0));
    EXPECT_EQ(offsetOf("1 2 3 4"), SbVec3f(1, 2, 3));
    EXPECT_EQ(offsetOf("1"), SbVec3f(1, 0, 0));
    EXPECT_EQ(offsetOf("1 x 3"), SbVec3f(1, 0, 3));
    EXPECT_EQ(offsetOf("1e99 nan inf"), SbVec3f(0, 0, 0));
    EXPECT_EQ(offsetOf("1,5 2 3"), SbVec3f(0, 2, 3));
}

TEST(IsoRecord, MembersOfTheWrongKind_CountAsAbsent) {
    const QJsonArray array{1, 2};
    const Fields fields = read({{"itemName", 5},
                                {"sourceCodeString", array},
                                {"userCoordinateSystemId", "2"},
                                {"mirrorAngle", 1e300},
                                {"axisShift", "7"},
                                {"translationX", 1e300},
                                {"translationY", QJsonObject{}},
                                {"translationZ", true},
                                {"markedString", array},
                                {"offsetInWorkPlane", 17}});
    EXPECT_EQ(fields.item, ItemRecord());
    EXPECT_EQ(fields.iso, IsoRecord());
}

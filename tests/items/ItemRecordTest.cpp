#include "items/calc/ItemRecord.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QStringList>

#include "support/TestSupport.h"

TEST(ItemRecord, VectorText_HasThreeDecimalsAndBlanks) {
    EXPECT_EQ(vectorText(SbVec3f(1, -2.5F, 0.00049F)), QStringLiteral("1.000 -2.500 0.000"));
    EXPECT_EQ(vectorText(SbVec3f(-0.0001F, 123456.7F, 1e9F)),
              QStringLiteral("-0.000 123456.703 1000000000.000"));
}

TEST(ItemRecord, FreshRecord_HasTheDefaults) {
    const ItemRecord item;
    EXPECT_EQ(item.t, 1.0);
    EXPECT_EQ(item.feedRate, 3000.0F);
    EXPECT_EQ(item.safeZ, 50.0F);
    EXPECT_EQ(item.Time, 0.0);
    EXPECT_EQ(item.Fourth, 0.0F);
    EXPECT_EQ(item.Fifth, 0.0F);
    EXPECT_EQ(item.translation, SbVec3f(0, 0, 0));
    EXPECT_EQ(item.offset, SbVec3f(0, 0, 0));
}

TEST(ItemRecord, InspectionBlock_HoldsEveryFieldUnderItsKey) {
    ItemRecord item;
    item.DisplayName = "Iso";
    item.LeadIn = "in";
    item.LeadOut = "out";
    item.IsoCode = "body";
    item.WorkCode = "work";
    item.Chain = "XYZCA";
    item.Name = "userCodeItem1";
    item.WCSName = "G54";
    item.Annotation = QStringLiteral("注释");
    item.UserCoordinate = SbVec3f(1, 2, 3);
    item.UserCoordiSystemId = 4;
    item.ItemRpm = -12000;
    item.SpindleRotation = 2;
    item.translation = SbVec3f(5, 6, 7);
    item.offset = SbVec3f(8, 9, 10.5F);
    item.Time = 12.25;
    item.t = 0.5;
    const QJsonObject expected{
        {"DisplayName", "Iso"},
        {"Type", 1001},
        {"LeadIn", "in"},
        {"LeadOut", "out"},
        {"IsoCode", "body"},
        {"WorkCode", "work"},
        {"Chain", "XYZCA"},
        {"Name", "userCodeItem1"},
        {"WCSName", "G54"},
        {"Annotation", QStringLiteral("注释")},
        {"Tool", QJsonObject{{"ToolNo", 3}}},
        {"UserCoordiSystemId", 4},
        {"UserCoordi", "1.000 2.000 3.000"},
        {"Translation", "5.000 6.000 7.000"},
        {"Offset", "8.000 9.000 10.500"},
        {"Time", 12.25},
        {"ItemRpm", -12000},
        {"SpindleRotation", 2},
        {"t", 0.5},
    };
    const QJsonObject block = inspectionBlock(item, 1001, QJsonObject{{"ToolNo", 3}});
    EXPECT_EQ(QString(QJsonDocument(block).toJson()), QString(QJsonDocument(expected).toJson()));
}

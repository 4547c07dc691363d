#include "items/calc/ItemRecord.h"

namespace {

QString fixed3(float value) {
    return QString::number(static_cast<double>(value), 'f', 3);
}

}  // namespace

QString vectorText(const SbVec3f& vector) {
    return fixed3(vector[0]) + QLatin1Char(' ') + fixed3(vector[1]) + QLatin1Char(' ') + fixed3(vector[2]);
}

QJsonObject inspectionBlock(const ItemRecord& item, int type, const QJsonObject& tool) {
    return {
        {QStringLiteral("DisplayName"), item.DisplayName},
        {QStringLiteral("Type"), type},
        {QStringLiteral("LeadIn"), item.LeadIn},
        {QStringLiteral("LeadOut"), item.LeadOut},
        {QStringLiteral("IsoCode"), item.IsoCode},
        {QStringLiteral("WorkCode"), item.WorkCode},
        {QStringLiteral("Chain"), item.Chain},
        {QStringLiteral("Name"), item.Name},
        {QStringLiteral("WCSName"), item.WCSName},
        {QStringLiteral("Annotation"), item.Annotation},
        {QStringLiteral("Tool"), tool},
        {QStringLiteral("UserCoordiSystemId"), item.UserCoordiSystemId},
        {QStringLiteral("UserCoordi"), vectorText(item.UserCoordinate)},
        {QStringLiteral("Translation"), vectorText(item.translation)},
        {QStringLiteral("Offset"), vectorText(item.offset)},
        {QStringLiteral("Time"), item.Time},
        {QStringLiteral("ItemRpm"), item.ItemRpm},
        {QStringLiteral("SpindleRotation"), item.SpindleRotation},
        {QStringLiteral("t"), item.t},
    };
}

#include "items/calc/IsoRecord.h"

#include <QStringList>
#include <cmath>
#include <limits>

#include "tools/calc/ToolRecord.h"

namespace {

/// Numbers that a float cannot hold count as bad numbers, that is as 0.
float floatOf(double number) {
    if (!(std::abs(number) <= static_cast<double>(std::numeric_limits<float>::max())))
        return 0;
    return static_cast<float>(number);
}

double finiteOf(const QJsonValue& value) {
    const double number = value.toDouble();
    return std::isfinite(number) ? number : 0;
}

/// With as many digits as bring the number back.
QString generalText(const SbVec3f& vector) {
    return floatText(vector[0]) + QLatin1Char(' ') + floatText(vector[1]) + QLatin1Char(' ') +
           floatText(vector[2]);
}

/// A number that is missing or bad is 0.
SbVec3f vectorOf(const QString& text) {
    const QStringList numbers = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    SbVec3f vector(0, 0, 0);
    for (int i = 0; i < 3 && i < numbers.size(); ++i)
        vector[i] = floatOf(numbers[i].toDouble());
    return vector;
}

}  // namespace

QJsonObject isoItemToJson(const ItemRecord& item, const IsoRecord& iso, int type, const QJsonObject& tool,
                          bool checked) {
    return {
        {QStringLiteral("itemName"), item.Name},
        {QStringLiteral("sourceCodePath"), iso.sourceCodePath},
        {QStringLiteral("sourceCodeName"), iso.sourceCodeName},
        {QStringLiteral("sourceCodeString"), iso.sourceCodeString},
        {QStringLiteral("userCoordinateSystemId"), item.UserCoordiSystemId},
        {QStringLiteral("mirrorAngle"), iso.mirrorAngle},
        {QStringLiteral("axisShift"), iso.axisShift},
        {QStringLiteral("translationX"), static_cast<double>(item.translation[0])},
        {QStringLiteral("translationY"), static_cast<double>(item.translation[1])},
        {QStringLiteral("translationZ"), static_cast<double>(item.translation[2])},
        {QStringLiteral("markedString"), item.Annotation},
        {QStringLiteral("tool"), tool},
        {QStringLiteral("itemRPM"), item.ItemRpm},
        {QStringLiteral("t"), item.t},
        {QStringLiteral("type"), type},
        {QStringLiteral("offsetInWorkPlane"), generalText(item.offset)},
        {QStringLiteral("checkState"), checked},
    };
}

void isoItemFromJson(const QJsonObject& object, ItemRecord& item, IsoRecord& iso) {
    const auto member = [&object](const char* key) { return object.value(QLatin1String(key)); };
    item.Name = member("itemName").toString();
    // The path is written for the reader of the file and never read back. It must stay so.
    iso.sourceCodeName = member("sourceCodeName").toString();
    iso.sourceCodeString = member("sourceCodeString").toString();
    item.UserCoordiSystemId = member("userCoordinateSystemId").toInt();
    item.lastUserCoordinateSystemId = item.UserCoordiSystemId;
    iso.mirrorAngle = member("mirrorAngle").toInt();
    iso.axisShift = finiteOf(member("axisShift"));
    item.translation =
        SbVec3f(floatOf(member("translationX").toDouble()), floatOf(member("translationY").toDouble()),
                floatOf(member("translationZ").toDouble()));
    item.Annotation = member("markedString").toString();
    const double t = member("t").toDouble();
    if (t > 0.0 && t <= 1.0)
        item.t = t;
    const QString offset = member("offsetInWorkPlane").toString();
    if (!offset.isEmpty())
        item.offset = vectorOf(offset);
}

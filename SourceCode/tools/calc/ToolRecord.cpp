#include "tools/calc/ToolRecord.h"

#include <Inventor/SbRotation.h>

#include <cmath>
#include <limits>

namespace {

/// Numbers outside the range of float count as bad numbers, that is as 0.
float floatOf(const QJsonValue& value) {
    const double number = value.toDouble();
    if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max()))
        return 0;
    return static_cast<float>(number);
}

QByteArray imageOf(const QJsonValue& value) {
    return QByteArray::fromBase64(value.toString().toLatin1());
}

/// A point of another length than three is left out.
QVector<SbVec3f> contourOf(const QJsonValue& value) {
    const QJsonArray points = value.toArray();
    QVector<SbVec3f> contour;
    contour.reserve(points.size());
    for (const QJsonValue& entry : points) {
        const QJsonArray point = entry.toArray();
        if (point.size() == 3)
            contour.append(SbVec3f(floatOf(point[0]), floatOf(point[1]), floatOf(point[2])));
    }
    return contour;
}

QVector<float> transformOf(const QJsonValue& value) {
    const QJsonArray numbers = value.toArray();
    QVector<float> transform(6, 0.0F);
    if (numbers.size() == transform.size()) {
        for (int i = 0; i < transform.size(); ++i)
            transform[i] = floatOf(numbers[i]);
    }
    return transform;
}

QJsonArray contourToJson(const QVector<SbVec3f>& contour) {
    QJsonArray points;
    for (const SbVec3f& point : contour) {
        points.append(QJsonArray{static_cast<double>(point[0]), static_cast<double>(point[1]),
                                 static_cast<double>(point[2])});
    }
    return points;
}

QJsonArray transformToJson(const QVector<float>& transform) {
    QJsonArray numbers;
    for (int i = 0; i < 6; ++i)
        numbers.append(static_cast<double>(transform.value(i)));
    return numbers;
}

SbMatrix rotationMatrix(const SbVec3f& axis, float angle_deg) {
    SbMatrix matrix;
    matrix.setRotate(SbRotation(axis, radiansOf(angle_deg)));
    return matrix;
}

}  // namespace

void resetForNewTool(ToolRecord& tool) {
    tool.spindleNo = -1;
    tool.length = 1;
    tool.bladeLength = 0.5F;
    tool.diameter = 1;
    tool.handleDiameter = 1;
    tool.rpm = 250;
    tool.annotation = QStringLiteral("这是一把刀具");
    tool.type = 0;
    tool.contour.clear();
    tool.transform = QVector<float>(6, 0.0F);
}

QJsonObject toolToJson(const ToolRecord& tool) {
    return {
        {QStringLiteral("Index"), tool.index},
        {QStringLiteral("SpindleNo"), tool.spindleNo},
        {QStringLiteral("ToolNo"), tool.toolNo},
        {QStringLiteral("Length"), static_cast<double>(tool.length)},
        {QStringLiteral("BladeLength"), static_cast<double>(tool.bladeLength)},
        {QStringLiteral("Diameter"), static_cast<double>(tool.diameter)},
        {QStringLiteral("HandleDiameter"), static_cast<double>(tool.handleDiameter)},
        {QStringLiteral("Rpm"), static_cast<double>(tool.rpm)},
        {QStringLiteral("Transform"), transformToJson(tool.transform)},
        {QStringLiteral("Annonation"), tool.annotation},
        {QStringLiteral("InstallationName"), tool.installationName},
        {QStringLiteral("SpName"), tool.spName},
        {QStringLiteral("ChainSaw"), tool.chainSaw},
        {QStringLiteral("ChainSawPath"), tool.chainSawPath},
        {QStringLiteral("Image"), QString::fromLatin1(tool.image.toBase64())},
        {QStringLiteral("Direction"), tool.direction},
        {QStringLiteral("Type"), tool.type},
        {QStringLiteral("ContourPoints"), contourToJson(tool.contour)},
        {QStringLiteral("ToolTip"), floatText(tool.toolTip[0]) + QLatin1Char(' ') +
                                        floatText(tool.toolTip[1]) + QLatin1Char(' ') +
                                        floatText(tool.toolTip[2])},
    };
}

void toolFromJson(const QJsonObject& object, ToolRecord& tool) {
    const auto member = [&object](const char* key) { return object.value(QLatin1String(key)); };
    tool.index = member("Index").toInt();
    tool.spindleNo = member("SpindleNo").toInt();
    tool.toolNo = member("ToolNo").toInt();
    tool.length = floatOf(member("Length"));
    tool.bladeLength = floatOf(member("BladeLength"));
    tool.diameter = floatOf(member("Diameter"));
    tool.handleDiameter = floatOf(member("HandleDiameter"));
    tool.rpm = floatOf(member("Rpm"));
    tool.transform = transformOf(member("Transform"));
    tool.annotation = member("Annonation").toString();
    tool.installationName = member("InstallationName").toString();
    tool.spName = member("SpName").toString();
    tool.chainSaw = member("ChainSaw").toString(tool.chainSaw);
    tool.chainSawPath = member("ChainSawPath").toString(tool.chainSawPath);
    tool.image = imageOf(member("Image"));
    tool.direction = member("Direction").toInt();
    tool.type = member("Type").toInt();
    tool.contour = contourOf(member("ContourPoints"));
    if (const std::optional<SbVec3f> tip = threeNumbers(member("ToolTip").toString()))
        tool.toolTip = *tip;
}

void toolFromJsonArray(const QJsonArray& array, ToolRecord& tool) {
    const int count = array.size();
    if (count < 11)
        return;
    tool.index = array.at(0).toInt();
    tool.spindleNo = array.at(1).toInt();
    tool.toolNo = array.at(2).toInt();
    tool.length = floatOf(array.at(3));
    tool.bladeLength = floatOf(array.at(4));
    tool.diameter = floatOf(array.at(5));
    tool.rpm = floatOf(array.at(6));
    tool.annotation = array.at(7).toString();
    tool.image = imageOf(array.at(8));
    tool.handleDiameter = floatOf(array.at(9));
    tool.contour = contourOf(array.at(10));
    tool.spName = QStringLiteral("T%1").arg(tool.spindleNo);
    // The tests of positions 12, 13 and 14 are one too low, and old files count on it: a position behind the
    // end reads as a null value.
    if (count >= 12) {
        tool.installationName = array.at(11).toString();
        tool.spName = array.at(12).toString();
    }
    if (count >= 13)
        tool.type = array.at(13).toInt();
    if (count >= 14)
        tool.direction = array.at(14).toInt();
}

SbMatrix toolMountMatrix(const QVector<float>& transform) {
    SbMatrix mount = SbMatrix::identity();
    if (transform.size() != 6)
        return mount;
    mount.setTranslate(SbVec3f(transform[0], transform[1], transform[2]));
    mount.multRight(rotationMatrix(SbVec3f(1, 0, 0), transform[3]));
    mount.multRight(rotationMatrix(SbVec3f(0, 1, 0), transform[4]));
    mount.multRight(rotationMatrix(SbVec3f(0, 0, 1), transform[5]));
    return mount;
}

KinematicTool kinematicTool(const ToolRecord& tool) {
    KinematicTool kinematic;
    kinematic.spindleNo = tool.spindleNo;
    kinematic.isChainSaw = tool.isChainSaw();
    kinematic.length = tool.length;
    kinematic.toolTip = tool.toolTip;
    kinematic.mount = toolMountMatrix(tool.transform);
    kinematic.installationName = tool.installationName;
    kinematic.ax4Compensation = tool.ax4Compensation;
    kinematic.ax5Compensation = tool.ax5Compensation;
    return kinematic;
}

QString toolDisplayText(const ToolRecord& tool) {
    // One call with four texts: a "%" in the spindle's name is not taken for a mark.
    return QStringLiteral("%1 No:%2 Len:%3 Dia:%4")
        .arg(tool.spName, QString::number(tool.toolNo), QString::number(static_cast<double>(tool.length)),
             QString::number(static_cast<double>(tool.diameter)));
}

QString floatText(float value) {
    constexpr int kMostDigits = 9;  // enough for every float
    for (int digits = 6; digits < kMostDigits; ++digits) {
        QString text = QString::number(static_cast<double>(value), 'g', digits);
        if (text.toFloat() == value)
            return text;
    }
    return QString::number(static_cast<double>(value), 'g', kMostDigits);
}

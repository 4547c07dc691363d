#pragma once

#include <Inventor/SbVec3f.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QVector>
#include <optional>

#include "machine/calc/Kinematics.h"

/// Tool kinds, the number "Type" of the JSON form.
enum class ToolType { EndMillingSawBlades = 0, BallEnd = 1, UserTool = 2, ChainSaw = 3 };

/// One tool as data: what the library file and a project hold. Lengths in mm, angles in degrees.
struct ToolRecord {
    int index = -1;
    int spindleNo = 1;
    int toolNo = 0;
    float length = 100;
    float bladeLength = 30;
    float diameter = 20;
    float handleDiameter = 20;
    float rpm = 10000;
    QVector<float> transform = QVector<float>(6, 0.0F);  ///< x y z, rotation about X, Y, Z
    QString annotation = QStringLiteral("it's tool");
    QString installationName = QStringLiteral("A");
    QString spName = QStringLiteral("T1");
    QString chainSaw;
    QString chainSawPath;
    QByteArray image;  ///< PNG, empty when the tool has no picture
    int direction = 0;
    int type = 0;
    QVector<SbVec3f> contour;  ///< outline in the tool's XZ plane, tip at negative z
    SbVec3f toolTip{0, 0, 0};
    float ax4Compensation = 0;  ///< from the chain saw library only
    float ax5Compensation = 0;

    [[nodiscard]] bool isChainSaw() const { return type == static_cast<int>(ToolType::ChainSaw); }
};

/// The values that a new tool shows in the editor; index, numbers and names that the editor sets anyway
/// stay.
void resetForNewTool(ToolRecord& tool);

/// Object form, one member per field.
[[nodiscard]] QJsonObject toolToJson(const ToolRecord& tool);
/// Absent members and members of the wrong kind read as 0 or empty; "ChainSaw", "ChainSawPath" and
/// "ToolTip" keep what `tool` has when they are absent; a "Transform" without exactly six numbers becomes
/// six zeros.
void toolFromJson(const QJsonObject& object, ToolRecord& tool);
/// The older form by position, at least eleven entries; a shorter array changes nothing.
void toolFromJsonArray(const QJsonArray& array, ToolRecord& tool);

/// Mounting T * (Rx * Ry * Rz) of the six numbers of `transform` (row vectors); without six numbers the
/// identity.
[[nodiscard]] SbMatrix toolMountMatrix(const QVector<float>& transform);

[[nodiscard]] KinematicTool kinematicTool(const ToolRecord& tool);

/// "%1 No:%2 Len:%3 Dia:%4" with spindle name, tool number, length and diameter.
[[nodiscard]] QString toolDisplayText(const ToolRecord& tool);

/// `value` with as few significant digits (six at least) as bring back the same number.
[[nodiscard]] QString floatText(float value);

/// What a library file holds, in either of its forms. `version` is the file's four-part version.
struct ToolLibrary {
    QString version;
    QVector<ToolRecord> tools;
};

/// Reads the bytes of a library file. The current form, an object with one member "tool%1" per tool, is read
/// in the order of the object's keys; the older form, "toollib" with an array of arrays, when the file's
/// version is greater than the application's or the application's is unknown (empty). Not JSON, or no
/// object: nothing, and the diagnostic "ToolsManager/ParseFailedErrorMsg". Entries of the wrong kind are left
/// out.
[[nodiscard]] std::optional<ToolLibrary> readToolLibrary(const QByteArray& json,
                                                         const QString& applicationVersion,
                                                         Diagnostics& diagnostics);

/// A library file in the current form, one member per tool by its place in `tools`; UTF-8, no indentation.
[[nodiscard]] QByteArray writeToolLibrary(const ToolLibrary& library);

/// Tools of a project or an import: an array of arrays or objects, or an object whose member names start
/// with "tool". Anything else gives no tool.
[[nodiscard]] QVector<ToolRecord> toolsFromJson(const QJsonValue& toolList);

/// True when `version` of four integers is greater than `other` in the first field that differs. A field
/// that is missing or no number counts as 0.
[[nodiscard]] bool versionIsGreater(const QString& version, const QString& other);

#pragma once

#include <Inventor/SbVec3f.h>

#include <QJsonObject>
#include <QString>

/// What every program item holds, whatever its kind. Lengths in mm, angles in degrees, feeds in mm per
/// minute.
struct ItemRecord {
    QString DisplayName;  ///< the kind, as the tree shows it
    QString LeadIn;       ///< machine code to the start of the item, machine axes
    QString LeadOut;      ///< machine code off the item
    QString IsoCode;      ///< body of the machine code
    QString WorkCode;     ///< the path as generated, work coordinates
    QString Chain;        ///< kinematic chain
    QString Name;         ///< unique in its group
    QString WCSName;      ///< work coordinate system
    QString Annotation;
    SbVec3f UserCoordinate{0, 0, 0};  ///< origin of the user coordinate system in the work coordinate system
    int UserCoordiSystemId = 0;
    int lastUserCoordinateSystemId = 0;  ///< the one before the last change
    double ItemRpm = 0;                  ///< negative: reverse
    int SpindleRotation = 0;
    SbVec3f translation{0, 0, 0};  ///< placement in work coordinates
    SbVec3f offset{0, 0, 0};       ///< turns with the attitude
    double Time = 0;               ///< run time, s
    double t = 1.0;
    float Fourth = 0;  ///< angle of axis 4
    float Fifth = 0;   ///< angle of axis 5
    float feedRate = 3000;
    float safeZ = 50;

    friend bool operator==(const ItemRecord&, const ItemRecord&) = default;
};

/// "%1 %2 %3" with three decimals.
[[nodiscard]] QString vectorText(const SbVec3f& vector);

/// The common block that "WriteTo" puts into a file for inspection.
[[nodiscard]] QJsonObject inspectionBlock(const ItemRecord& item, int type, const QJsonObject& tool);

#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringView>

#include "items/calc/IsoProblem.h"
#include "items/calc/ItemRecord.h"

/// What an ISO item holds beside the common fields.
struct IsoRecord {
    int mirrorAngle = 0;       ///< degrees; 0: no mirroring
    double axisShift = 0;      ///< along the tool axis, mm
    QString sourceCodeName;    ///< file name of the source
    QString sourceCodePath;    ///< full path of the source
    QString sourceCodeString;  ///< the ISO text itself
    IsoProblem problem;        ///< of the last generation; not written

    friend bool operator==(const IsoRecord&, const IsoRecord&) = default;
};

/// The item's block in a project document. `tool` is the object that the tool has written.
[[nodiscard]] QJsonObject isoItemToJson(const ItemRecord& item, const IsoRecord& iso, int type,
                                        const QJsonObject& tool, bool checked);

/// Members that are absent or of the wrong kind read as 0 or empty; "t" outside (0, 1] and an empty
/// "offsetInWorkPlane" keep what was; "sourceCodePath", "checkState", "tool" and "itemRPM" are not read
/// here.
void isoItemFromJson(const QJsonObject& object, ItemRecord& item, IsoRecord& iso);

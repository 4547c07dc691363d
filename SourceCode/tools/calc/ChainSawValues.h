#pragma once

#include <QMap>
#include <QString>

#include "tools/calc/ToolRecord.h"

/// Makes `tool` the chain saw `group` with the texts of that group of the chain saw library, by key:
/// "ToolTip" (three numbers), "Matrix" (six numbers), "Dir", "Annonation", "SpindleNo", "ToolNumber", "Rpm",
/// "Ax4Compensation", "Ax5Compensation". Another count of numbers leaves the tip or the mounting as it was;
/// anything else that is absent or no number becomes empty or 0. The picture is the caller's.
void applyChainSaw(const QString& group, const QMap<QString, QString>& values, ToolRecord& tool);

/// The two compensations alone: a project does not carry them.
void applyChainSawCompensations(const QMap<QString, QString>& values, ToolRecord& tool);

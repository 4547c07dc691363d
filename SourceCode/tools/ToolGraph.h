#pragma once

#include <Inventor/SbColor.h>

#include <QString>
#include <optional>

#include "tools/calc/ToolRecord.h"

class SoSeparator;

// The scene graphs of tools. The caller takes the first reference.

/// "Tool%1" with the index: material, mounting, and the mesh of the contour's revolution.
[[nodiscard]] SoSeparator* revolvedToolGraph(const ToolRecord& tool, const std::optional<SbColor>& color);

/// Mounting and the graph of an Inventor file; nullptr and a log line when it cannot be read.
[[nodiscard]] SoSeparator* modelToolGraph(const ToolRecord& tool, const QString& path);

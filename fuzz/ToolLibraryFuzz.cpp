#include <QByteArray>
#include <QJsonDocument>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "geometry/calc/RevolvedMesh.h"
#include "tools/calc/ToolRecord.h"

namespace {

bool isUsable(const ToolRecord& tool) {
    return tool.transform.size() == 6 && std::isfinite(tool.length) && std::isfinite(tool.diameter) &&
           allFinite(tool.contour);
}

/// What is written must read as the same tool.
bool comesBack(const ToolRecord& tool) {
    ToolRecord copy;
    toolFromJson(toolToJson(tool), copy);
    return toolToJson(copy) == toolToJson(tool);
}

}  // namespace

// Any bytes as a tool library, in both of its forms: tools that can be written, shown and mounted.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    for (const QString& version : {QString(), QStringLiteral("1.0.0.0")}) {
        Diagnostics diagnostics;
        const auto library = readToolLibrary(bytes, version, diagnostics);
        if (library.has_value() != diagnostics.entries.empty())
            __builtin_trap();
        for (const ToolRecord& tool : library ? library->tools : QVector<ToolRecord>()) {
            if (!isUsable(tool) || !comesBack(tool))
                __builtin_trap();
            (void)kinematicTool(tool);
            (void)toolDisplayText(tool);
            if (revolvedMesh(tool.contour).vertices.size() != 19 * tool.contour.size())
                __builtin_trap();
        }
    }
    (void)toolsFromJson(QJsonDocument::fromJson(bytes).object());
    (void)toolsFromJson(QJsonDocument::fromJson(bytes).array());
    return 0;
}

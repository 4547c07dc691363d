#include <QByteArray>
#include <QDomDocument>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "machine/calc/XmlGuard.h"
#include "nc/calc/PostProcessorFile.h"

// Any bytes as a post-processor's file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QDomDocument document;
    if (readXml(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)), document))
        return 0;
    const QDomElement root = document.documentElement();
    if (const std::optional<Regulation> values = readRegulation(root)) {
        for (const QList<int>& group : values->entry) {
            if (group.isEmpty())
                std::abort();
        }
        if (values->rapidMovement.isEmpty())
            std::abort();
    }
    const auto actions = readPrePostActions(root);
    if (actions && !actions->isEmpty() && actions->first().chain != actions->first().chain.trimmed())
        std::abort();
    for (const PatternRow& row : patternRows(root)) {
        const QDomElement pattern = findPattern(root, row.name);
        if (pattern.isNull() || pattern.attribute(QStringLiteral("Name")) != row.name)
            std::abort();
        if (coordinateList(pattern).contains(QStringLiteral(" ")))
            std::abort();
    }
    return 0;
}

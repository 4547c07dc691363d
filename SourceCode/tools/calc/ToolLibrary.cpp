#include <QJsonDocument>
#include <QStringList>

#include "tools/calc/ToolRecord.h"

namespace {

bool isToolName(const QString& name) {
    return name.startsWith(QLatin1String("tool"));
}

void appendTool(const QJsonValue& value, QVector<ToolRecord>& tools) {
    ToolRecord tool;
    if (value.isObject())
        toolFromJson(value.toObject(), tool);
    else if (value.isArray() && value.toArray().size() >= 11)
        toolFromJsonArray(value.toArray(), tool);
    else
        return;
    tools.append(tool);
}

QVector<ToolRecord> toolsOfObject(const QJsonObject& object) {
    QVector<ToolRecord> tools;
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (isToolName(member.key()) && member.value().isObject())
            appendTool(member.value(), tools);
    }
    return tools;
}

}  // namespace

std::optional<ToolLibrary> readToolLibrary(const QByteArray& json, const QString& applicationVersion,
                                           Diagnostics& diagnostics) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        diagnostics.addKey(Severity::Warning, QStringLiteral("ToolsManager/ParseFailedErrorMsg"),
                           error.errorString());
        return std::nullopt;
    }
    const QJsonObject root = document.object();
    ToolLibrary library;
    library.version = root.value(QLatin1String("version")).toString();
    if (applicationVersion.isEmpty() || versionIsGreater(library.version, applicationVersion)) {
        const QJsonArray entries = root.value(QLatin1String("toollib")).toArray();
        for (const QJsonValue& entry : entries) {
            if (entry.isArray())
                appendTool(entry, library.tools);
        }
    } else {
        library.tools = toolsOfObject(root);
    }
    return library;
}

QByteArray writeToolLibrary(const ToolLibrary& library) {
    QJsonObject root{{QStringLiteral("version"), library.version}};
    for (int i = 0; i < library.tools.size(); ++i)
        root.insert(QStringLiteral("tool%1").arg(i), toolToJson(library.tools[i]));
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

QVector<ToolRecord> toolsFromJson(const QJsonValue& toolList) {
    if (toolList.isObject())
        return toolsOfObject(toolList.toObject());
    QVector<ToolRecord> tools;
    const QJsonArray entries = toolList.toArray();
    for (const QJsonValue& entry : entries)
        appendTool(entry, tools);
    return tools;
}

bool versionIsGreater(const QString& version, const QString& other) {
    const QStringList fields = version.split(QLatin1Char('.'));
    const QStringList otherFields = other.split(QLatin1Char('.'));
    for (int i = 0; i < 4; ++i) {
        const int field = fields.value(i).toInt();
        const int otherField = otherFields.value(i).toInt();
        if (field != otherField)
            return field > otherField;
    }
    return false;
}

#include "app/calc/ProjectDocument.h"

#include <QJsonDocument>
#include <QStringList>

namespace {

constexpr int kLastLegacyVersion = 2207;
const QString kVersion = QStringLiteral("version");
const QString kHead = QStringLiteral("StandardCorvane_4S");
const QString kMachine = QStringLiteral("machineNode");
const QString kTree = QStringLiteral("ProgramsTreeWidget");
const QString kMiddleTree = QStringLiteral("treeWidget");
const QString kToolList = QStringLiteral("toolList");

struct HeadKey {
    const char* key;
    QString ProjectHead::*text;
};

constexpr HeadKey kHeadKeys[] = {
    {"productsName", &ProjectHead::productsName},
    {"productsNo", &ProjectHead::productsNo},
    {"partName", &ProjectHead::partName},
    {"partNo", &ProjectHead::partNo},
    {"marked", &ProjectHead::marked},
    {"dateTime", &ProjectHead::dateTime},
    {"LTime", &ProjectHead::LTime},
};

}  // namespace

int versionNumber(const QString& version) {
    const QStringList parts = version.split(QLatin1Char('.'));
    int number = 0;
    int weight = 1000;
    for (int i = 0; i < 4; ++i, weight /= 10) {
        const int part = parts.value(i).toInt();
        number += qBound(0, part, 1000) * weight;
    }
    return number;
}

std::optional<ProjectDocument> readProject(const QByteArray& bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject root = document.object();
    ProjectDocument project;
    const QJsonObject head = root.value(kHead).toObject();
    for (const HeadKey& key : kHeadKeys)
        project.head.*key.text = head.value(QLatin1String(key.key)).toString();
    project.toolList = head.value(kToolList);
    project.machine = root.value(kMachine).toObject();
    project.tree = root.value(kTree).toObject();
    if (project.tree.isEmpty())
        project.tree = root.value(kMiddleTree).toObject();
    project.isLegacy = versionNumber(root.value(kVersion).toString()) <= kLastLegacyVersion;
    return project;
}

QJsonObject projectObject(const ProjectDocument& project, const QString& version) {
    QJsonObject head;
    head.insert(kToolList, project.toolList);
    for (const HeadKey& key : kHeadKeys)
        head.insert(QLatin1String(key.key), project.head.*key.text);
    return {{kVersion, version}, {kHead, head}, {kMachine, project.machine}, {kTree, project.tree}};
}

QByteArray writeProject(const ProjectDocument& project, const QString& version) {
    return QJsonDocument(projectObject(project, version)).toJson();
}

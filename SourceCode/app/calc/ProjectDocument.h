#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <optional>

/// The job's head: what the user information form shows.
struct ProjectHead {
    QString productsName;
    QString productsNo;
    QString partName;
    QString partNo;
    QString marked;    ///< remarks, several lines
    QString dateTime;  ///< yyyy-MM-dd hh:mm:ss, of the last save
    QString LTime;     ///< machining time, seconds

    friend bool operator==(const ProjectHead&, const ProjectHead&) = default;
};

/// A whole job as its document has it.
struct ProjectDocument {
    ProjectHead head;
    QJsonValue toolList;  ///< as ToolsManager::loadFromProject takes it
    QJsonObject machine;  ///< as MotionNodeManager::fromJson takes it
    QJsonObject tree;     ///< the programs
    bool isLegacy = false;
};

/// a * 1000 + b * 100 + c * 10 + d of "a.b.c.d"; 0 for an empty text. Parts of 10 and more add up, so
/// "1.12.0.7" and "2.2.0.7" give the same number: it must stay so.
[[nodiscard]] int versionNumber(const QString& version);

/// Nothing when the bytes are no JSON object.
[[nodiscard]] std::optional<ProjectDocument> readProject(const QByteArray& bytes);
/// The current form, for this application version: as an object, and as the bytes of its file.
[[nodiscard]] QJsonObject projectObject(const ProjectDocument& project, const QString& version);
[[nodiscard]] QByteArray writeProject(const ProjectDocument& project, const QString& version);

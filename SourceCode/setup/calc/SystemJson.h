#pragma once

#include <Inventor/SbVec3f.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QVector>
#include <optional>

// Coordinate systems as a project holds them.

/// One member of a zone's object. Texts are the scene library's field texts.
struct SystemData {
    std::optional<int> id;  ///< nothing when it is no number from 0 on
    QString name;
    QString moveTranslation;
    QString switcher;
    QJsonObject models;  ///< by name
};

/// What is missing or of the wrong kind is empty.
[[nodiscard]] SystemData readSystem(const QJsonObject& object);
[[nodiscard]] QJsonObject writeSystem(const SystemData& system, const QString& parentName);

struct OldModelData {
    QString coordIndex;
    QString verticesProperty;
};

/// One entry of the older project form.
struct OldSystemData {
    std::optional<int> id;  ///< the first digit of the name
    SbVec3f translation{0, 0, 0};
    QVector<OldModelData> models;
};

/// Entries of the wrong kind read as empty.
[[nodiscard]] QVector<OldSystemData> readOldSystems(const QJsonArray& array);

/// `number`, or the next one above it that is not in `taken`: names must stay apart even where the numbering
/// rule, which looks at one digit, gives a number twice. -1 stays -1.
[[nodiscard]] int numberNotTaken(int number, const QVector<int>& taken);

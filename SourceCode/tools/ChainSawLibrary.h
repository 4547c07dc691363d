#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

/// "ChainSawLib/ChainSawLibrary.ini" of the installation: one group for each chain saw.
class ChainSawLibrary {
  public:
    [[nodiscard]] static QString path();
    /// An absolute path as it stands, otherwise below "ChainSawLib" of the installation.
    [[nodiscard]] static QString modelPath(const QString& path);

    /// The names of the chain saws.
    [[nodiscard]] static QStringList groups();
    /// The texts of a group by key; nothing when the file lacks the group.
    [[nodiscard]] static std::optional<QMap<QString, QString>> values(const QString& group);
};

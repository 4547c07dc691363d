#pragma once

#include <QJsonObject>
#include <QString>

namespace TORNVALE {

/// The language table: every text that a user sees, by group and key, from the JSON file in "language" that
/// `MainInterface/Language` names. Read once, at first use; a changed file is seen at the next start.
class LanguageReader {
  public:
    static LanguageReader& instance();

    /// Text of `group`/`key`; empty when the table lacks it. A group inside a group is named with a "/":
    /// text("Tornvale/TabTitle", "ToolManager").
    [[nodiscard]] QString text(const QString& group, const QString& key) const;
    /// A whole group, or one inside another; empty when the table lacks it.
    [[nodiscard]] QJsonObject group(const QString& name) const;
    /// The group `Tornvale`.
    [[nodiscard]] QJsonObject tornvale() const;
    /// The group "UserFixtureBlock".
    [[nodiscard]] QJsonObject userFixtureBlock() const;
    /// Absolute path of the language file; the bare text "Chinese" when none was found.
    [[nodiscard]] QString path() const { return path_; }

    /// Reads the table anew: for tests, which change the installation folder within one process.
    void reload();

  private:
    LanguageReader();
    QString path_;
    QJsonObject table_;
};

}  // namespace TORNVALE

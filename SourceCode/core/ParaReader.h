#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>
#include <memory>

/// The settings file `data.ini` of the installation. Cheap and not shared: make one, read or write, drop it;
/// what was set is on disk when it is gone.
class ParaReader {
  public:
    /// Logs a warning when the file is missing or unreadable; all values are absent then.
    ParaReader();
    ~ParaReader();
    ParaReader(const ParaReader&) = delete;
    ParaReader& operator=(const ParaReader&) = delete;

    /// "Chinese", "English" or "Russia", to the letter; anything else is refused with a warning.
    bool SetLanguage(const QString& name);
    [[nodiscard]] bool isNewToolDialog() const;
    [[nodiscard]] bool isShowAxisInfo() const;

    /// Every key, as QSettings holds it; an absent key gives an invalid value.
    [[nodiscard]] QVariant value(const QString& key) const;
    /// A boolean setting is true only when its text is exactly "true".
    [[nodiscard]] bool isTrue(const QString& key) const;
    /// The number of `key`; `fallback` when the key is absent or its text empty, 0 when it is no number.
    [[nodiscard]] int integer(const QString& key, int fallback) const;
    [[nodiscard]] double number(const QString& key, double fallback) const;
    void setValue(const QString& key, const QVariant& value);

  private:
    QString path_;
    std::unique_ptr<QSettings> settings_;
};

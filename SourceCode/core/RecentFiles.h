#pragma once

#include <QMenu>
#include <QObject>
#include <QString>
#include <QStringList>

/// The last five project paths, kept in `history.ini` of the installation, and the menu that offers them.
class RecentFiles : public QObject {
    Q_OBJECT
  public:
    explicit RecentFiles(QObject* parent = nullptr);

    /// Oldest first, as stored.
    [[nodiscard]] QStringList paths() const;
    /// Puts a path at the end and rebuilds the menu; the oldest go while more than five stand.
    void add(const QString& path);
    /// Owned by this object. One entry per path whose file exists just now; the others stay stored only.
    [[nodiscard]] QMenu* menu() { return &menu_; }
    void rebuildMenu();

  Q_SIGNALS:
    void fileChosen(const QString& path);

  private:
    void store(const QStringList& paths) const;

    QString historyPath_;
    QMenu menu_;
};

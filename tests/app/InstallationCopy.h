#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVector>
#include <memory>

/// A machine file with two axes, a spindle and a work coordinate system.
[[nodiscard]] QByteArray smallMachine();
/// "models/Box.stl", which smallMachine names: a cube.
[[nodiscard]] QByteArray smallModel();

/// A post-processor with one pattern, "Small", for the zone of smallMachine.
[[nodiscard]] QByteArray smallPostProcessor();

/// A process that ran to its end.
struct ProgramResult {
    int status = 0;  ///< as the shell sees it: -1 is 255; -1 when the process crashed or hung
    QStringList output;
    QVector<QJsonObject> record;  ///< what the probe wrote down
};

/// A folder with both the program and its probe and a small installation, whose titles no other folder has
/// and whose locks stand in a temporary folder of its own. While it lives this process uses that temporary
/// folder too, so that it can look at the locks.
class InstallationCopy {
  public:
    InstallationCopy();
    ~InstallationCopy();
    InstallationCopy(const InstallationCopy&) = delete;
    InstallationCopy& operator=(const InstallationCopy&) = delete;

    [[nodiscard]] QString path(const QString& name = {}) const;
    void write(const QString& name, const QByteArray& content) const;
    [[nodiscard]] QByteArray read(const QString& name) const;
    void remove(const QString& name) const;
    void setLanguage(const QString& language) const;
    /// A text of the copy's own language file, by the file's name without suffix.
    [[nodiscard]] QString text(const QString& language, const QString& group, const QString& key) const;
    [[nodiscard]] QString setting(const QString& key) const;

    /// Starts "Tornvale" or "probe" in the folder `workingDirectory` (empty: the installation).
    [[nodiscard]] std::unique_ptr<QProcess> start(const QString& program, const QStringList& arguments = {},
                                                  const QStringList& environment = {},
                                                  const QString& workingDirectory = {}) const;
    /// Runs the probe to its end.
    [[nodiscard]] ProgramResult probe(const QStringList& arguments = {}, const QStringList& environment = {},
                                      const QString& workingDirectory = {}) const;
    /// Waits for the end of a process; `record` is the file that it was told to write.
    [[nodiscard]] static ProgramResult finish(QProcess& process, const QString& record = {});
    /// True once an instance with this title has taken its segment; false when that does not happen.
    [[nodiscard]] static bool waitForOwner(const QString& title);

  private:
    void copyLanguages();

    QTemporaryDir folder_;
    QByteArray outerTemporary_;
    QStringList titles_;
};

#pragma once

#include <QMainWindow>
#include <QString>

class DemonstrationPage;
class QTabWidget;

/// The main window. Shows what was read of the machine, and the result of the demonstration job.
class Tornvale : public QMainWindow {
    Q_OBJECT
  public:
    /// Reads the machine file into ConfigReader. A file that fails a check is told to the user and ends the
    /// process with status 1.
    explicit Tornvale(const QString& machinePath, QWidget* parent = nullptr);

    /// Opens a project document; false when that was not possible, which the user has then been told. This
    /// version reads no project documents.
    bool openProject(const QString& path);

  private:
    void runDemonstrationJob();

    QTabWidget* pages_;
    DemonstrationPage* demonstration_;
};

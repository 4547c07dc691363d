#pragma once

#include <QAction>
#include <memory>
#include <utility>

#include "app/Tornvale.h"
#include "support/TestSupport.h"

/// A main window in English in an installation folder of its own, emptied for each bench. The tool library
/// belongs to the process, so all benches of one process share the folder. What the folder holds is the
/// derived class's.
class MainWindowBench {
  public:
    MainWindowBench(const MainWindowBench&) = delete;
    MainWindowBench& operator=(const MainWindowBench&) = delete;

    Tornvale& open();
    [[nodiscard]] Tornvale& window() const { return *window_; }
    /// The window goes without having been closed, as when the process is killed.
    void discardWindow() { window_.reset(); }

    /// The action of this language key; the test fails without it.
    QAction* action(const char* key);
    void trigger(const char* key);
    [[nodiscard]] QString file(const QString& name) const { return installation().file(name); }
    [[nodiscard]] QByteArray bytes(const QString& name) const { return installation().read(name); }
    void write(const QString& name, const QByteArray& content) const { installation().write(name, content); }

  protected:
    explicit MainWindowBench(QString machine) : machine_(std::move(machine)) { clear(); }
    ~MainWindowBench();
    /// Writes these files of the shipped installation, as they are.
    void ship(const QStringList& names) const;
    /// The files are all there: what the process knows of another folder is forgotten.
    static void readAnew();

  private:
    static TemporaryInstallation& installation();
    static void clear();
    QString machine_;  ///< its file
    std::unique_ptr<Tornvale> window_;
};

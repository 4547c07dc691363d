#pragma once

#include <QAction>
#include <memory>

#include "app/Tornvale.h"
#include "support/TestSupport.h"

/// The main window on a small installation: the machine of smallMachine (X carries C, spindle T1, zone G54)
/// in English, without programs. The tool library belongs to the process, so all tests of one process share
/// the folder.
class WindowBench {
  public:
    WindowBench();
    ~WindowBench();
    WindowBench(const WindowBench&) = delete;
    WindowBench& operator=(const WindowBench&) = delete;

    Tornvale& open();
    Tornvale& window() { return *window_; }
    void close() { window_.reset(); }

    /// The action of this language key; the test fails without it.
    QAction* action(const char* key);
    void trigger(const char* key);
    /// Writes data.ini with these lines behind the language.
    void settings(const QByteArray& lines) const;
    [[nodiscard]] QString setting(const char* key) const;
    [[nodiscard]] QString file(const QString& name) const { return installation().file(name); }
    void write(const QString& name, const QByteArray& content) const { installation().write(name, content); }

  private:
    static TemporaryInstallation& installation();
    std::unique_ptr<Tornvale> window_;
};

#pragma once

#include "MainWindowBench.h"

/// The main window on a small installation: the machine of smallMachine (X carries C, spindle T1, zone G54)
/// without programs.
class WindowBench : public MainWindowBench {
  public:
    WindowBench();

    /// Writes data.ini with these lines behind the language.
    void settings(const QByteArray& lines) const;
    [[nodiscard]] QString setting(const char* key) const;
};

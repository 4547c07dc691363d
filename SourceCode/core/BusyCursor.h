#pragma once

#include <QCursor>
#include <QGuiApplication>

/// The pointer shows that the program is at work while this lives.
class BusyCursor {
  public:
    BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

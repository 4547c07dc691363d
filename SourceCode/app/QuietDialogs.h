#pragma once

#include "core/UserDialogs.h"

/// While it lives every question gets the answer that changes nothing, without a box. What is told is still
/// told by the dialogs that were in use before.
class QuietDialogs final : public UserDialogs {
  public:
    QuietDialogs() : before_(userDialogs()) { setUserDialogs(this); }
    ~QuietDialogs() override { setUserDialogs(&before_); }
    QuietDialogs(const QuietDialogs&) = delete;
    QuietDialogs& operator=(const QuietDialogs&) = delete;

    void tell(Kind kind, const QString& title, const QString& text, QWidget* parent) override {
        before_.tell(kind, title, text, parent);
    }

  private:
    UserDialogs& before_;
};

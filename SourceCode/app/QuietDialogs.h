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
    bool ask(const QString& /*title*/, const QString& /*text*/, QWidget* /*parent*/) override {
        return false;
    }
    std::optional<QString> chooseItem(const QString& /*title*/, const QString& /*label*/,
                                      const QStringList& /*items*/) override {
        return std::nullopt;
    }
    std::optional<double> askNumber(const QString& /*title*/, const QString& /*label*/, double /*value*/,
                                    double /*low*/, double /*high*/, int /*decimals*/) override {
        return std::nullopt;
    }
    QString openFile(const QString& /*caption*/, const QString& /*folder*/,
                     const QString& /*filter*/) override {
        return {};
    }
    QString saveFile(const QString& /*caption*/, const QString& /*folder*/,
                     const QString& /*filter*/) override {
        return {};
    }

  private:
    UserDialogs& before_;
};

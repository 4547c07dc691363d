#pragma once

#include <QWidget>

/// The about box: name, version and what the program is for, in one of three fixed texts.
class AboutTornvale : public QWidget {
    Q_OBJECT
  public:
    explicit AboutTornvale(QWidget* parent = nullptr);

    /// The text for a value of `MainInterface/Language`; the Chinese one for a name that is none.
    [[nodiscard]] static QString text(const QString& language);
};

#pragma once

#include <QComboBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QWidget>

/// The small window in which the user chooses the language of the next start.
class UiLanguage : public QWidget {
    Q_OBJECT
  public:
    explicit UiLanguage(QWidget* parent = nullptr);

    /// Stores the chosen language, tells how that went and closes.
    void accept();

  protected:
    /// Escape and the number pad's Enter close; every other key does nothing.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QComboBox* languages_;
    QPushButton* accept_;
};

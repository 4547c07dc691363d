#pragma once

#include <Inventor/SbVec3f.h>

#include <QDialog>

class QLineEdit;

/// Asks for the place of a marker, mm.
class AddPointDialog : public QDialog {
    Q_OBJECT
  public:
    explicit AddPointDialog(QWidget* parent = nullptr);
    [[nodiscard]] SbVec3f place() const;

  private:
    QLineEdit* edits_[3];
};

#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QString>

#include "items/GenerationProgress.h"

class QProgressDialog;
class QWidget;

/// Shows how far a long generation is, and lets the user stop it. Nothing else can be started meanwhile, and
/// the window goes on being drawn.
class ProgressDialog : public TORNVALE::GenerationProgress {
  public:
    explicit ProgressDialog(QWidget* parent);
    ~ProgressDialog() override;
    ProgressDialog(const ProgressDialog&) = delete;
    ProgressDialog& operator=(const ProgressDialog&) = delete;

    void begin(int count) override;
    [[nodiscard]] bool step(const QString& itemName) override;
    void end() override;

  private:
    QWidget* parent_;
    QPointer<QProgressDialog> dialog_;
    QElapsedTimer sinceDrawn_;
    int done_ = 0;
};

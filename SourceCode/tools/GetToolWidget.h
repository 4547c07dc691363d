#pragma once

#include <QComboBox>
#include <QPushButton>
#include <QWidget>

namespace TORNVALE {

/// A small window in which a program item asks for one of the installed tools.
class GetToolWidget : public QWidget {
    Q_OBJECT
  public:
    explicit GetToolWidget(QWidget* parent = nullptr);

    /// Lists the installed tools anew and keeps the choice where it is still there. Happens by itself each
    /// time the window is shown.
    void refresh();

  Q_SIGNALS:
    /// The text of the accepted tool, see ToolData::displayText.
    void toolChosen(const QString& displayText);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void accept();
    QComboBox* tools_;
    QPushButton* accept_;
};

}  // namespace TORNVALE

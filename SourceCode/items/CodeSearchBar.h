#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QToolButton;

/// The search field below the list: text, direction, case, and what was found. Texts from the language group
/// "CodePanel"; the parts' object names are their keys.
class CodeSearchBar : public QWidget {
    Q_OBJECT
  public:
    explicit CodeSearchBar(QWidget* parent = nullptr);

    [[nodiscard]] QString needle() const;
    [[nodiscard]] Qt::CaseSensitivity sensitivity() const;
    /// Shows the bar with the text selected and the cursor in it.
    void open();
    /// "3 of 10", the same with a note when the search went on at the other end, or that there is no match.
    void showFound(int number, int total, bool wrapped);
    /// Nothing was searched for.
    void showNothing();

  Q_SIGNALS:
    void needleChanged();
    void nextAsked();
    void previousAsked();
    void closed();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QToolButton* addButton(const char* key);
    void setMessage(const QString& text, bool bad);

    QLineEdit* field_;
    QCheckBox* matchCase_;
    QLabel* message_;
};

#pragma once

#include <QLineEdit>
#include <QStringList>

class QAction;
class QContextMenuEvent;
class QMenu;
class QStringListModel;

/// A line edit that keeps what was confirmed in it: its context menu offers each text again, and it completes
/// from them while the user types.
class HistoryLineEdit : public QLineEdit {
    Q_OBJECT
  public:
    explicit HistoryLineEdit(QWidget* parent = nullptr);

    [[nodiscard]] const QStringList& history() const { return texts_; }
    /// Empty texts and repeats are left out.
    void setHistory(const QStringList& texts);
    /// Takes the present text into the history unless it is empty or there already. Return does the same.
    void confirm();
    void clearHistory();
    /// The texts, a separator and the clear action.
    [[nodiscard]] QMenu* menu() const { return menu_; }
    [[nodiscard]] QAction* clearAction() const { return clear_; }

  Q_SIGNALS:
    void historyChanged(const QStringList& texts);

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void rebuild();

    QMenu* menu_;
    QAction* clear_;
    QStringList texts_;
    QStringListModel* model_;  ///< what the completer offers
};

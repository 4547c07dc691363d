#pragma once

#include <QJsonObject>
#include <QString>
#include <QTreeWidget>
#include <optional>

#include "items/TreeSnapshot.h"

class MotionNodeManager;
class QTimer;
class QUndoStack;
class UserTopItem;
class UserTopItemManager;

namespace TORNVALE {
class CodeManagerItem;
}

/// The program tree: one group per work coordinate system with its items. Turns gestures into operations on
/// groups and items, and remembers every one of them for undo.
class TreeWidgetManager : public QTreeWidget {
    Q_OBJECT
  public:
    /// With a group for every work coordinate system of the machine.
    explicit TreeWidgetManager(MotionNodeManager& manager, QWidget* parent = nullptr);
    ~TreeWidgetManager() override;
    TreeWidgetManager(const TreeWidgetManager&) = delete;
    TreeWidgetManager& operator=(const TreeWidgetManager&) = delete;

    [[nodiscard]] UserTopItemManager& root() const { return *root_; }
    /// The current row when it is an item, else nullptr.
    [[nodiscard]] TORNVALE::CodeManagerItem* currentProgram() const;

    /// The document's object of the programs.
    [[nodiscard]] QJsonObject Get() const;
    /// `isValue`: the object is the value of the root's key; otherwise the value of its first key counts.
    /// False when the user has stopped it: the programs are then empty.
    bool Set(const QJsonObject& object, bool isValue);
    /// No items, nothing to undo.
    void clearAll();

    /// Writes the NC file of this document through the post-processor, and says so or why not. Gives the
    /// machining time in seconds, with three decimals; nothing when there is no file.
    [[nodiscard]] std::optional<QString> GenerateIsoCode(const QString& documentPath);

    /// Operation on the group of this work coordinate system, which there must be. 3: an ISO item.
    void OperationWizardSlot(int operation, const QString& wcsName);
    /// Destroys the selected rows after asking, by the kind of the last one selected.
    void deleteSelected();

    [[nodiscard]] QUndoStack& history() const { return *history_; }
    /// What has been done since the last call becomes one step of the history. Otherwise that happens when
    /// the event loop runs.
    void commitEdits();

  Q_SIGNALS:
    /// Another row, or none (nullptr), is current.
    void currentProgramChanged(TORNVALE::CodeManagerItem* item);
    /// Code or columns of this item are new.
    void programRefreshed(TORNVALE::CodeManagerItem* item);
    /// The programs have changed by the user's hand.
    void programsEdited();

  protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dropEvent(QDropEvent* event) override;

  private:
    friend class SnapshotCommand;
    void buildGroups(const MotionNodeManager& manager);
    void watchZones(const MotionNodeManager& manager);
    void originMoved(const QString& wcsName, int systemId);
    void edited(const QString& key);
    void showSnapshot(const TORNVALE::TreeSnapshot& snapshot);
    void highlight(QTreeWidgetItem* current, QTreeWidgetItem* previous);
    void openCell(TORNVALE::CodeManagerItem& item, int column);
    void chooseTool(TORNVALE::CodeManagerItem& item);
    void chooseSystem(TORNVALE::CodeManagerItem& item);
    void chooseRpm(TORNVALE::CodeManagerItem& item);
    void popup(const QPoint& place);
    void removeAll();
    /// The item with this id; nullptr when it has gone.
    [[nodiscard]] TORNVALE::CodeManagerItem* program(quint64 id) const;
    void fitColumns();
    [[nodiscard]] QTreeWidgetItem* lastSelected() const;
    [[nodiscard]] UserTopItem* groupOf(QTreeWidgetItem* row) const;

    UserTopItemManager* root_;  ///< owned by this tree
    TORNVALE::CodeManagerItem* dragged_ = nullptr;
    QUndoStack* history_;
    QTimer* commitTimer_;
    QString pendingKey_;
    TORNVALE::TreeSnapshot last_;
};

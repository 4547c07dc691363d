#pragma once

#include <QJsonValue>
#include <QList>
#include <QString>
#include <QVector>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "tools/ToolObserver.h"
#include "tools/calc/ToolRecord.h"

class QAction;
class QKeySequence;
class QTreeWidget;
class QTreeWidgetItem;
class ToolData;
class ToolTree;

namespace TORNVALE {

/// The tool library window and the owner of all tools: those of the library and those installed on the
/// machine, each a row below one of the two top rows.
class ToolsManager : public QWidget {
    Q_OBJECT
  public:
    /// The process-wide window, made at first use; the library is loaded then.
    static ToolsManager& instance();
    explicit ToolsManager(QWidget* parent = nullptr);
    ~ToolsManager() override;
    ToolsManager(const ToolsManager&) = delete;
    ToolsManager& operator=(const ToolsManager&) = delete;

    /// Reads the library file in place of the rows under libraryRoot. A file that cannot be opened or parsed
    /// is a log line, and the rows stay. True when the file was read.
    bool LoadingLocalTools();
    /// Writes the library file whole; the old one stays until the new one is complete. False, and a box,
    /// when it cannot be written.
    bool save();

    /// An observer is registered once, under the run-time name of its class. It is not told at once: it asks
    /// for installedTools() when it is ready for them.
    void addObserver(ToolObserver* observer, std::string typeName);
    void removeObserver(ToolObserver* observer);
    /// Hands every observer the list of installed tools.
    void notifyObservers();

    /// The first tool of this index under `root`; nullptr when there is none.
    [[nodiscard]] ToolData* findTool(int index, QTreeWidgetItem* root) const;
    /// Takes the tool as a new row and selects it. Under libraryRoot the editor opens on it; under
    /// installedRoot the observers are told.
    void addTool(ToolData* tool, QTreeWidgetItem* root);
    /// Removes the selected tools, but for those of which an observer says that they are in use.
    void removeSelected();
    /// Copies the selected tools to the other root each: over the tool of the same index, or as a new row.
    void copySelectedTo();
    /// Takes the "toolList" of a project for the installed tools, after asking whether tools that the
    /// library knows by index take the library's values. An absent list changes nothing.
    void loadFromProject(const QJsonValue& toolList);
    /// Takes all tools off the machine: they end with their project.
    void removeInstalledTools();

    [[nodiscard]] QTreeWidget* treeWidget() const;
    [[nodiscard]] QTreeWidgetItem* libraryRoot() const { return libraryRoot_; }
    [[nodiscard]] QTreeWidgetItem* installedRoot() const { return installedRoot_; }
    /// The installed tools in the order in which they came, whatever the rows are sorted by.
    [[nodiscard]] QList<ToolData*> installedTools() const { return installedTools_; }
    [[nodiscard]] const QString& libraryPath() const { return libraryPath_; }

  protected:
    /// Closes an open editor and saves the library.
    void closeEvent(QCloseEvent* event) override;

  private:
    void buildWindow();
    QAction* makeAction(const char* key, const char* icon, const QKeySequence& shortcut,
                        void (ToolsManager::*slot)());
    void enableActions();
    void addNewTool();
    void editSelected();
    void previewSelected();
    void toolEdited(ToolData* tool);
    void insertRow(ToolData* tool, QTreeWidgetItem* root, bool select);
    [[nodiscard]] bool mayRemove(ToolData* tool);
    /// Takes the row out of its list; the caller tells the observers before the tool goes.
    [[nodiscard]] std::unique_ptr<ToolData> takeRow(ToolData* tool);
    [[nodiscard]] std::vector<std::unique_ptr<ToolData>> takeInstalledRows();
    [[nodiscard]] int nextLibraryIndex() const;
    void keepUnreadLibrary();

    QString libraryPath_;
    ToolTree* treeWidget_ = nullptr;
    QTreeWidgetItem* libraryRoot_ = nullptr;
    QTreeWidgetItem* installedRoot_ = nullptr;
    QList<QAction*> actions_;
    QList<ToolObserver*> observers_;
    QList<ToolData*> installedTools_;
    bool libraryIsUnread_ = false;  ///< the file holds something that is not among the rows
};

}  // namespace TORNVALE

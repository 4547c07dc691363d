#include "tools/ToolManager.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>
#include <QFile>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "core/Version.h"
#include "core/WholeFile.h"
#include "core/calc/UniqueNumber.h"
#include "tools/ChainSawLibrary.h"
#include "tools/ToolData.h"
#include "tools/ToolEditor.h"
#include "tools/ToolPreviewer.h"
#include "tools/ToolTree.h"
#include "tools/calc/ChainSawValues.h"

namespace TORNVALE {

namespace {

constexpr qint64 kLargestLibrary_bytes = qint64{256} << 20;

QString text(const char* key) {
    return LanguageReader::instance().text(QStringLiteral("ToolsManager"), QLatin1String(key));
}

void logMessage(const char* key, const QString& detail) {
    qWarning().noquote() << text(key) + QLatin1Char('\t') + detail;
}

/// A row for a tool that was read from a file. The caller owns it.
ToolData* rowOf(ToolRecord record) {
    if (record.isChainSaw()) {
        if (const auto values = ChainSawLibrary::values(record.chainSaw))
            applyChainSawCompensations(*values, record);
    }
    auto* tool = new ToolData(std::move(record));  // owned by the caller
    tool->refreshRow();
    return tool;
}

}  // namespace

bool ToolsManager::LoadingLocalTools() {
    QFile file(libraryPath_);
    if (!file.open(QIODevice::ReadOnly)) {
        libraryIsUnread_ = file.exists();
        logMessage("OpenFailedErrorMsg", libraryPath_);
        return false;
    }
    Diagnostics diagnostics;
    std::optional<ToolLibrary> library;
    if (file.size() <= kLargestLibrary_bytes)
        library = readToolLibrary(file.readAll(), applicationVersion(), diagnostics);
    libraryIsUnread_ = !library || library->tools.isEmpty();
    if (!library) {
        const bool hasReason = !diagnostics.entries.empty();
        logMessage("ParseFailedErrorMsg", hasReason ? diagnostics.entries.front().text : libraryPath_);
        return false;
    }
    for (ToolData* tool : ToolTree::toolsUnder(libraryRoot_))
        ToolEditor::release(tool);
    qDeleteAll(libraryRoot_->takeChildren());
    QList<QTreeWidgetItem*> rows;
    for (ToolRecord& record : library->tools)
        rows.append(rowOf(std::move(record)));
    libraryRoot_->addChildren(rows);
    treeWidget_->fitColumns();
    return true;
}

bool ToolsManager::save() {
    ToolLibrary library;
    library.version = applicationVersion();
    for (const ToolData* tool : ToolTree::toolsUnder(libraryRoot_))
        library.tools.append(tool->record());
    keepUnreadLibrary();
    QString problem;
    if (writeWhole(libraryPath_, writeToolLibrary(library), &problem))
        return true;
    logMessage("SaveFailedErrorMsg", libraryPath_ + QLatin1Char(' ') + problem);
    userDialogs().tell(UserDialogs::Kind::Warning, text("Title"), text("SaveFailedErrorMsg"), this);
    return false;
}

/// A library that could not be read, or that gave no tool, may still be worth mending by hand.
void ToolsManager::keepUnreadLibrary() {
    if (!libraryIsUnread_)
        return;
    libraryIsUnread_ = false;
    const QString kept = libraryPath_ + QStringLiteral(".bak");
    QFile::remove(kept);
    if (!QFile::copy(libraryPath_, kept))
        QFile::rename(libraryPath_, kept);
}

void ToolsManager::addObserver(ToolObserver* observer, std::string typeName) {
    if (observer == nullptr)
        return;
    observer->setObserverName(std::move(typeName));
    if (!observers_.contains(observer))
        observers_.append(observer);
}

void ToolsManager::removeObserver(ToolObserver* observer) {
    observers_.removeAll(observer);
}

void ToolsManager::notifyObservers() {
    // An observer may deregister itself or others when it is told.
    const QList<ToolObserver*> told = observers_;
    for (ToolObserver* observer : told) {
        if (observers_.contains(observer))
            observer->UpdateToolList(installedTools_);
    }
}

ToolData* ToolsManager::findTool(int index, QTreeWidgetItem* root) const {
    if (root == nullptr)
        return nullptr;
    for (ToolData* tool : ToolTree::toolsUnder(root)) {
        if (tool->record().index == index)
            return tool;
    }
    return nullptr;
}

void ToolsManager::insertRow(ToolData* tool, QTreeWidgetItem* root, bool select) {
    tool->refreshRow();
    root->addChild(tool);
    if (root == installedRoot_)
        installedTools_.append(tool);
    if (select)
        treeWidget_->setCurrentItem(tool);
    treeWidget_->fitColumns();
}

void ToolsManager::addTool(ToolData* tool, QTreeWidgetItem* root) {
    if (tool == nullptr || root == nullptr)
        return;
    insertRow(tool, root, true);
    if (root == libraryRoot_)
        editSelected();
    else if (root == installedRoot_)
        notifyObservers();
}

/// The rule of unique names; a library with odd numbers gets the first free one from 0.
int ToolsManager::nextLibraryIndex() const {
    std::vector<int> taken;
    for (const ToolData* tool : ToolTree::toolsUnder(libraryRoot_))
        taken.push_back(tool->record().index);
    int index = nextUniqueNumber(std::move(taken));
    if (index < 0 || findTool(index, libraryRoot_) != nullptr) {
        index = 0;
        while (findTool(index, libraryRoot_) != nullptr)
            ++index;
    }
    return index;
}

void ToolsManager::addNewTool() {
    auto* tool = new ToolData;  // owned by its row from addTool on
    tool->resetForNewTool();
    tool->record().index = nextLibraryIndex();
    tool->record().toolNo = 1;  // the number that every spindle has
    addTool(tool, libraryRoot_);
}

void ToolsManager::editSelected() {
    const QList<ToolData*> selected = treeWidget_->selectedTools();
    if (selected.isEmpty())
        return;
    ToolEditor& editor = ToolEditor::instance();
    connect(&editor, &ToolEditor::accepted, this, &ToolsManager::toolEdited, Qt::UniqueConnection);
    editor.setTool(selected.first());
    editor.show();
    editor.raise();
    editor.activateWindow();
}

void ToolsManager::toolEdited(ToolData* tool) {
    treeWidget_->fitColumns();
    if (installedTools_.contains(tool))
        notifyObservers();
}

void ToolsManager::previewSelected() {
    const QList<ToolData*> selected = treeWidget_->selectedTools();
    if (!selected.isEmpty())
        ToolPreviewer::instance().preview(*selected.first());
}

bool ToolsManager::mayRemove(ToolData* tool) {
    bool mayGo = true;
    const QList<ToolObserver*> asked = observers_;
    for (ToolObserver* observer : asked)
        mayGo = (!observers_.contains(observer) || observer->canRemoveTool(tool)) && mayGo;
    if (!mayGo)
        userDialogs().tell(UserDialogs::Kind::Warning, QStringLiteral("Warning"),
                           QStringLiteral("Useing.Can't be deleted"), this);
    return mayGo;
}

std::unique_ptr<ToolData> ToolsManager::takeRow(ToolData* tool) {
    ToolEditor::release(tool);
    tool->parent()->removeChild(tool);
    installedTools_.removeAll(tool);
    return std::unique_ptr<ToolData>(tool);
}

void ToolsManager::removeSelected() {
    const QList<ToolData*> selected = treeWidget_->selectedTools();
    QList<ToolData*> vetoed;
    for (ToolData* tool : selected) {
        if (!mayRemove(tool)) {
            vetoed.append(tool);
            continue;
        }
        const std::unique_ptr<ToolData> going = takeRow(tool);
        notifyObservers();
    }
    // Qt selects a neighbour of a row that goes.
    treeWidget_->clearSelection();
    for (ToolData* tool : vetoed)
        tool->setSelected(true);
}

void ToolsManager::copySelectedTo() {
    const QList<ToolData*> selected = treeWidget_->selectedTools();
    if (selected.isEmpty())
        return;
    for (const ToolData* tool : selected) {
        QTreeWidgetItem* target = tool->parent() == libraryRoot_ ? installedRoot_ : libraryRoot_;
        if (ToolData* same = findTool(tool->record().index, target))
            same->copyFrom(*tool);
        else
            insertRow(new ToolData(*tool), target, target == installedRoot_);  // owned by its row
    }
    notifyObservers();
}

std::vector<std::unique_ptr<ToolData>> ToolsManager::takeInstalledRows() {
    std::vector<std::unique_ptr<ToolData>> going;
    for (int row = installedRoot_->childCount() - 1; row >= 0; --row) {
        ToolData* tool = toolOfRow(installedRoot_->child(row));
        if (tool != nullptr && mayRemove(tool))
            going.push_back(takeRow(tool));
    }
    return going;
}

void ToolsManager::removeInstalledTools() {
    // They live until the observers have let go of them.
    const std::vector<std::unique_ptr<ToolData>> going = takeInstalledRows();
    notifyObservers();
}

void ToolsManager::loadFromProject(const QJsonValue& toolList) {
    if (toolList.isUndefined() || toolList.isNull())
        return;
    const bool takesLibraryValues =
        userDialogs().ask(QCoreApplication::applicationName(), text("AskUpdateToolList"), this);
    // The old tools live until the observers have let go of them.
    const std::vector<std::unique_ptr<ToolData>> going = takeInstalledRows();
    for (ToolRecord& record : toolsFromJson(toolList)) {
        ToolData* tool = rowOf(std::move(record));  // owned by its row
        insertRow(tool, installedRoot_, false);
        const ToolData* known = findTool(tool->record().index, libraryRoot_);
        if (takesLibraryValues && known != nullptr)
            tool->copyFrom(*known);
    }
    treeWidget_->fitColumns();
    notifyObservers();
}

}  // namespace TORNVALE

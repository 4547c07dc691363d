#include <QContextMenuEvent>
#include <QCursor>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "items/CodeManagerItem.h"
#include "items/TreeOrder.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "tools/CheckRpmReverse.h"
#include "tools/GetToolWidget.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

// What mouse and keys do in the program tree.

using TORNVALE::CodeManagerItem;

namespace {

constexpr int kInsertIsoProgram = 3;  // operation of the wizard

QString treeText(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("TreeWidgetManager"), QLatin1String(key));
}

}  // namespace

void TreeWidgetManager::OperationWizardSlot(int operation, const QString& wcsName) {
    UserTopItem* group = root_->group(wcsName);
    if (group == nullptr)
        qFatal("parent is nullptr.");
    setCurrentItem(group);
    group->setExpanded(true);
    if (operation == kInsertIsoProgram)
        group->InsertIsoItem(nullptr);
    fitColumns();
}

// --- double click ---

void TreeWidgetManager::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeWidgetItem* row = itemAt(event->pos());
    if (row == nullptr) {
        UserTopItem* group = groupOf(currentItem());
        if (group == nullptr && root_->childCount() > 0)
            group = root_->groups().first();
        if (group != nullptr)
            OperationWizardSlot(kInsertIsoProgram, group->wcsName());
        return;
    }
    QTreeWidget::mouseDoubleClickEvent(event);
    auto* item = dynamic_cast<CodeManagerItem*>(row);
    if (item == nullptr || !item->isActive())
        return;
    openCell(*item, columnAt(event->pos().x()));
}

void TreeWidgetManager::openCell(CodeManagerItem& item, int column) {
    if (item.type() == TORNVALE::kCurveItem)
        return item.openEditor();
    switch (column) {
        case CodeManagerItem::kToolColumn:
            return chooseTool(item);
        case CodeManagerItem::kSystemColumn:
            return chooseSystem(item);
        case CodeManagerItem::kRpmColumn:
            return chooseRpm(item);
        default:
            return item.openEditor();
    }
}

void TreeWidgetManager::chooseTool(CodeManagerItem& item) {
    auto* chooser = new TORNVALE::GetToolWidget(this);  // deletes itself when it closes
    chooser->setWindowFlags(Qt::Tool);
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    const quint64 id = item.state()->id;
    connect(chooser, &TORNVALE::GetToolWidget::toolChosen, this, [this, id](const QString& text) {
        // The item may have gone while the window was open.
        CodeManagerItem* chosen = program(id);
        for (ToolData* tool : TORNVALE::ToolsManager::instance().installedTools()) {
            if (chosen == nullptr || tool->displayText() != text)
                continue;
            chosen->SetTool(tool, false);
            chosen->regenerate();
            edited(QStringLiteral("EditItem"));
            return;
        }
    });
    chooser->move(QCursor::pos());
    chooser->show();
}

CodeManagerItem* TreeWidgetManager::program(quint64 id) const {
    for (const UserTopItem* group : root_->groups()) {
        for (CodeManagerItem* item : group->items()) {
            if (item->state()->id == id)
                return item;
        }
    }
    return nullptr;
}

void TreeWidgetManager::chooseSystem(CodeManagerItem& item) {
    item.refreshUserCoordinateIds();
    QStringList ids;
    for (const int id : item.userCoordinateIds())
        ids.append(QString::number(id));
    const int current = item.userCoordinateIds().indexOf(item.record().UserCoordiSystemId);
    const std::optional<QString> choice =
        userDialogs().chooseItemFrom(treeText("Title"), treeText("CurrentUCSId"), ids, qMax(0, current));
    if (!choice || choice->isEmpty() || choice->toInt() == item.record().UserCoordiSystemId)
        return;
    item.changeUserCoordinateSystem(choice->toInt());
    item.regenerate();
    edited(QStringLiteral("EditItem"));
}

void TreeWidgetManager::chooseRpm(CodeManagerItem& item) {
    constexpr double kMost = 100000;
    const std::optional<double> value =
        userDialogs().askNumber(treeText("Rpm"), treeText("Rpm"), item.record().ItemRpm, -kMost, kMost, 0);
    if (!value)
        return;
    double rpm = *value;
    SharedMethods::CheckRpmReverse(item.tool().record().spindleNo, rpm, this);
    item.editRecord().ItemRpm = rpm;
    item.refresh();
    edited(QStringLiteral("EditItem"));
}

// --- menu, keys ---

void TreeWidgetManager::contextMenuEvent(QContextMenuEvent* event) {
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard;
    popup(isKey ? viewport()->mapToGlobal(visualItemRect(currentItem()).bottomLeft()) : event->globalPos());
}

void TreeWidgetManager::popup(const QPoint& place) {
    QTreeWidgetItem* row = lastSelected();
    if (auto* item = dynamic_cast<CodeManagerItem*>(row))
        return item->popupMenu(place);
    if (auto* group = dynamic_cast<UserTopItem*>(row))
        return group->popupMenu(place);
    if (row == root_)
        root_->popupMenu(place, [this] { removeAll(); });
}

void TreeWidgetManager::removeAll() {
    root_->clear();
    edited(QStringLiteral("RemoveItem"));
}

void TreeWidgetManager::deleteSelected() {
    QTreeWidgetItem* row = lastSelected();
    if (row == nullptr)
        return;
    if (row == root_)
        return removeAll();
    UserTopItem* group = groupOf(row);
    if (group != nullptr &&
        userDialogs().ask(QStringLiteral("Warning"), QStringLiteral("Delete Items?"), this))
        group->removeSelected();
}

void TreeWidgetManager::keyPressEvent(QKeyEvent* event) {
    UserTopItem* group = groupOf(currentItem());
    if (event->key() == Qt::Key_Delete)
        return deleteSelected();
    if (group != nullptr && event->matches(QKeySequence::Copy))
        return group->copySelection();
    if (group != nullptr && event->matches(QKeySequence::Cut))
        return group->cutSelection();
    if (group != nullptr && event->matches(QKeySequence::Paste)) {
        CodeManagerItem* item = currentProgram();
        return group->paste(item ? group->indexOfChild(item) : -1);
    }
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (CodeManagerItem* item = currentProgram(); isEnter && item != nullptr)
        return item->openEditor();
    QTreeWidget::keyPressEvent(event);
}

// --- drag and drop ---

void TreeWidgetManager::startDrag(Qt::DropActions actions) {
    dragged_ = currentProgram();
    QTreeWidget::startDrag(actions);
    dragged_ = nullptr;
}

void TreeWidgetManager::dropEvent(QDropEvent* event) {
    if (dragged_ == nullptr) {
        event->ignore();
        return;
    }
    const TORNVALE::TreeOrder before(*root_);
    const CodeManagerItem* const dragged = dragged_;
    QTreeWidget::dropEvent(event);
    if (before.settle(*root_, dragged))
        edited(QStringLiteral("MoveItem"));
}

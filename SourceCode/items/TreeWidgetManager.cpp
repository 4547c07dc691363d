#include "items/TreeWidgetManager.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>
#include <QUndoStack>
#include <algorithm>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "items/CodeManagerItem.h"
#include "items/GenerationProgress.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/MotionNodeManager.h"
#include "machine/calc/MachineDescription.h"
#include "nc/trajNode.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

using TORNVALE::CodeManagerItem;
using TORNVALE::GenerationRun;
using TORNVALE::TreeSnapshot;

namespace {

const QString kRootKey = QStringLiteral("class UserTopItemManager");
constexpr int kUndoSteps = 200;

QString textOf(const QString& group, const QString& key) {
    return TORNVALE::LanguageReader::instance().text(group, key);
}

}  // namespace

/// One step of the history: the programs before and after.
class SnapshotCommand : public QUndoCommand {
  public:
    SnapshotCommand(TreeWidgetManager& tree, TreeSnapshot before, TreeSnapshot after, const QString& text)
        : QUndoCommand(text), tree_(tree), before_(std::move(before)), after_(std::move(after)) {}

    void undo() override { tree_.showSnapshot(before_); }
    void redo() override {
        if (isDone_)
            tree_.showSnapshot(after_);
        isDone_ = true;
    }

  private:
    TreeWidgetManager& tree_;
    TreeSnapshot before_;
    TreeSnapshot after_;
    bool isDone_ = false;
};

TreeWidgetManager::TreeWidgetManager(MotionNodeManager& manager, QWidget* parent)
    : QTreeWidget(parent),
      root_(new UserTopItemManager),    // owned by this tree
      history_(new QUndoStack(this)),   // owned by this tree
      commitTimer_(new QTimer(this)) {  // owned by this tree
    setObjectName(QStringLiteral("ProgramsTreeWidget"));
    setStyle(QStyleFactory::create(QStringLiteral("windows")));
    style()->setParent(this);
    setHeaderLabels(
        textOf(QStringLiteral("TreeWidgetManager"), QStringLiteral("HeaderLabels")).split(QLatin1Char('-')));
    setDragDropMode(QAbstractItemView::InternalMove);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDefaultDropAction(Qt::MoveAction);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAlternatingRowColors(true);
    setExpandsOnDoubleClick(false);
    invisibleRootItem()->setFlags(invisibleRootItem()->flags() & ~Qt::ItemIsDropEnabled);
    addTopLevelItem(root_);
    buildGroups(manager);
    watchZones(manager);
    fitColumns();
    history_->setUndoLimit(kUndoSteps);
    commitTimer_->setSingleShot(true);
    commitTimer_->setInterval(0);
    connect(commitTimer_, &QTimer::timeout, this, &TreeWidgetManager::commitEdits);
    connect(this, &QTreeWidget::currentItemChanged, this, &TreeWidgetManager::highlight);
    last_ = TORNVALE::takeSnapshot(*root_);
}

TreeWidgetManager::~TreeWidgetManager() {
    // Items and groups talk to this tree while they go.
    blockSignals(true);
    delete takeTopLevelItem(indexOfTopLevelItem(root_));
}

void TreeWidgetManager::buildGroups(const MotionNodeManager& manager) {
    for (const auto& record : manager.machine().workCoordinateSystems) {
        auto* group = new UserTopItem(*record);  // owned by the root
        root_->addChild(group);
        connect(group, &UserTopItem::edited, this, &TreeWidgetManager::edited);
        connect(group, &UserTopItem::itemRefreshed, this, &TreeWidgetManager::programRefreshed);
    }
    expandAll();
}

/// A user coordinate system that is moved takes its programs along.
void TreeWidgetManager::watchZones(const MotionNodeManager& manager) {
    for (WorkCoordinateSystem* zone : manager.workCoordinateSystems()) {
        const QString name = zone->record().name;
        const auto watch = [this, zone, name] {
            for (userCoordinateSystem* system : zone->ucsList()) {
                disconnect(system, &userCoordinateSystem::originMoved, this, nullptr);
                connect(system, &userCoordinateSystem::originMoved, this,
                        [this, name, system] { originMoved(name, system->id()); });
            }
        };
        watch();
        connect(zone, &WorkCoordinateSystem::systemsChanged, this, watch);
    }
}

void TreeWidgetManager::originMoved(const QString& wcsName, int systemId) {
    UserTopItem* group = root_->group(wcsName);
    if (group == nullptr)
        return;
    bool any = false;
    group->changeTogether([&any, group, systemId] {
        for (CodeManagerItem* item : group->items()) {
            if (item->record().UserCoordiSystemId != systemId || item->record().IsoCode.isEmpty())
                continue;
            any = true;
            item->regenerate();
        }
    });
    if (any)
        edited(QStringLiteral("MoveSystem"));
}

CodeManagerItem* TreeWidgetManager::currentProgram() const {
    return dynamic_cast<CodeManagerItem*>(currentItem());
}

UserTopItem* TreeWidgetManager::groupOf(QTreeWidgetItem* row) const {
    if (auto* group = dynamic_cast<UserTopItem*>(row))
        return group;
    if (const auto* item = dynamic_cast<CodeManagerItem*>(row))
        return item->group();
    return nullptr;
}

QTreeWidgetItem* TreeWidgetManager::lastSelected() const {
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? nullptr : selected.last();
}

void TreeWidgetManager::fitColumns() {
    for (int column = 0; column < columnCount(); ++column)
        resizeColumnToContents(column);
}

// --- document ---

QJsonObject TreeWidgetManager::Get() const {
    return {{kRootKey, root_->Get()}};
}

bool TreeWidgetManager::Set(const QJsonObject& object, bool isValue) {
    clearAll();
    if (isValue)
        root_->Set(object);
    else if (!object.isEmpty())
        root_->Set(object.begin().value().toObject());
    const bool isComplete = !GenerationRun::takeStopped();
    if (!isComplete)
        root_->clear();
    expandAll();
    fitColumns();
    commitTimer_->stop();
    last_ = TORNVALE::takeSnapshot(*root_);
    return isComplete;
}

void TreeWidgetManager::clearAll() {
    commitTimer_->stop();
    root_->clear();
    history_->clear();
    last_ = TORNVALE::takeSnapshot(*root_);
}

// --- history ---

void TreeWidgetManager::edited(const QString& key) {
    pendingKey_ = key;
    commitTimer_->start();
}

void TreeWidgetManager::commitEdits() {
    if (GenerationRun::isAny()) {
        // The progress dialog lets events through; the change is not whole yet.
        commitTimer_->start();
        return;
    }
    commitTimer_->stop();
    if (GenerationRun::takeStopped()) {
        // A change that was stopped half way is no change.
        showSnapshot(last_);
        return;
    }
    TreeSnapshot now = TORNVALE::takeSnapshot(*root_);
    if (TORNVALE::sameSnapshot(last_, now))
        return;
    TreeSnapshot before = std::exchange(last_, now);
    history_->push(new SnapshotCommand(*this, std::move(before), std::move(now),  // owned by the stack
                                       textOf(QStringLiteral("Undo"), pendingKey_)));
    fitColumns();
    Q_EMIT programsEdited();
}

void TreeWidgetManager::showSnapshot(const TreeSnapshot& snapshot) {
    const CodeManagerItem* current = currentProgram();
    const quint64 id = current == nullptr ? 0 : current->state()->id;
    TORNVALE::restoreSnapshot(*root_, snapshot);
    last_ = TORNVALE::takeSnapshot(*root_);
    for (UserTopItem* group : root_->groups()) {
        for (CodeManagerItem* item : group->items()) {
            if (item->state()->id == id)
                setCurrentItem(item);
        }
    }
    Q_EMIT programsEdited();
}

void TreeWidgetManager::highlight(QTreeWidgetItem* current, QTreeWidgetItem* previous) {
    if (const auto* item = dynamic_cast<CodeManagerItem*>(previous); item && item->pathNode())
        item->pathNode()->setHighlighted(false);
    auto* item = dynamic_cast<CodeManagerItem*>(current);
    if (item != nullptr && item->pathNode() != nullptr)
        item->pathNode()->setHighlighted(true);
    Q_EMIT currentProgramChanged(item);
}

#include "items/UserTopItem.h"

#include <QDebug>
#include <QJsonArray>
#include <QScopedValueRollback>
#include <QSet>
#include <algorithm>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "core/getUniquelyIdentifies.h"
#include "items/CodeManagerItem.h"
#include "items/GenerationProgress.h"
#include "items/IsoItem.h"
#include "items/ItemMaker.h"
#include "items/PlaybackText.h"
#include "machine/MotionNodeManager.h"
#include "machine/readConfig.h"
#include "nc/HeaderTailEditor.h"
#include "nc/UserPostProcessor.h"
#include "nc/calc/HeaderTail.h"
#include "nc/calc/ProgramText.h"
#include "setup/WorkCoordinateSystem.h"
#include "tools/ToolManager.h"

using TORNVALE::CodeManagerItem;
using TORNVALE::GenerationRun;

namespace {

const QString kHeaderTailKey = QStringLiteral("class TORNVALE::HeaderTailManager");
constexpr int kNameColumn = CodeManagerItem::kNameColumn;

const MachineDescription& machine() {
    return ConfigReader::instance().description();
}

QString treeText(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("TreeWidgetManager"), QLatin1String(key));
}

}  // namespace

UserTopItem::UserTopItem(const workCoordinateSystemStruct& record)
    : QTreeWidgetItem(kItemType), record_(record), Chain(record.kinematicChain.value(0)) {
    changingItself_ = true;
    setFlags(Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsDropEnabled);
    setCheckState(kNameColumn, Qt::Checked);
    SetupAuxiliaryAxis();
    setText(0, record.nickName.isEmpty() ? record.name : record.nickName);
    setText(kNameColumn, record.name);
    setData(2, Qt::DisplayRole, Chain);
    freshRecords();
    changingItself_ = false;
}

UserTopItem::~UserTopItem() {
    // The items ask their group while they go.
    qDeleteAll(takeChildren());
}

void UserTopItem::SetupAuxiliaryAxis() {
    auxiliaryAxis_ = auxiliaryAxisOf(machine(), Chain);
    qInfo() << (auxiliaryAxis_ ? "Initial AuxiliaryAxis Sucessful." : "Initial AuxiliaryAxis Failed.");
}

void UserTopItem::freshRecords() {
    headerTail_ = std::make_unique<FormatItems>(auxiliaryAxis_);
    headerTail_->headerTail.add(machine(), Chain);
}

// --- items ---

QVector<CodeManagerItem*> UserTopItem::items() const {
    QVector<CodeManagerItem*> items;
    items.reserve(childCount());
    for (int i = 0; i < childCount(); ++i) {
        if (auto* item = dynamic_cast<CodeManagerItem*>(child(i)))
            items.append(item);
    }
    return items;
}

QList<TORNVALE::ProgramItem*> UserTopItem::programItems() const {
    QList<TORNVALE::ProgramItem*> list;
    for (CodeManagerItem* item : items())
        list.append(item);
    return list;
}

QString UserTopItem::wcsName() const {
    return record_.name;
}

std::shared_ptr<AuxiliaryAxis> UserTopItem::auxiliaryAxis() const {
    return auxiliaryAxis_;
}

QVector<int> UserTopItem::userCoordinateIds() const {
    const MotionNodeManager* manager = MotionNodeManager::instance();
    const WorkCoordinateSystem* zone = manager ? manager->findWorkCoordinateSystem(record_.name) : nullptr;
    return zone ? zone->ucsTranslations().keys().toVector() : QVector<int>();
}

QString UserTopItem::uniqueName(int type) const {
    const QString prefix = TORNVALE::itemNamePrefix(type);
    QStringList names;
    for (int i = 0; i < childCount(); ++i) {
        if (const QString name = child(i)->text(kNameColumn); name.startsWith(prefix))
            names.append(name);
    }
    return prefix + QString::number(getUniquelyIdentifies::instance().makeUniquelyIdentifies(names));
}

CodeManagerItem* UserTopItem::InsertIsoItem(CodeManagerItem* before) {
    const QList<ToolData*> tools = TORNVALE::ToolsManager::instance().installedTools();
    if (tools.isEmpty()) {
        userDialogs().tell(UserDialogs::Kind::Warning, treeText("Title"), treeText("ToolListEmptyErrorMsg"));
        return nullptr;
    }
    auto made = std::make_unique<TORNVALE::IsoItem>();
    CodeManagerItem* item = made.get();
    adopt(std::move(made), before ? indexOfChild(before) : -1);
    item->setName(uniqueName(item->type()));
    item->editRecord().Chain = Chain;
    item->editRecord().WCSName = record_.name;
    item->SetTool(tools.first(), false);
    item->refreshUserCoordinateIds();
    item->changeUserCoordinateSystem(item->userCoordinateIds().value(0));
    item->showColumns();
    Q_EMIT edited(QStringLiteral("AddItem"));
    item->openEditor();
    return item;
}

void UserTopItem::adopt(std::unique_ptr<CodeManagerItem> item, int index) {
    if (index < 0 || index > childCount())
        index = childCount();
    insertChild(index, item.release());
}

std::unique_ptr<CodeManagerItem> UserTopItem::release(CodeManagerItem* item) {
    removeChild(item);
    return std::unique_ptr<CodeManagerItem>(item);
}

QVector<CodeManagerItem*> UserTopItem::selectedItems() const {
    QVector<CodeManagerItem*> selected;
    for (CodeManagerItem* item : items()) {
        if (item->isSelected())
            selected.append(item);
    }
    return selected;
}

void UserTopItem::removeSelected() {
    const QVector<CodeManagerItem*> all = items();
    QVector<CodeManagerItem*> gone;
    for (int i = 0; i < all.size(); ++i) {
        const auto isSelected = [&all](int index) {
            return index >= 0 && index < all.size() && all[index]->isSelected();
        };
        const bool isCurve = all[i]->type() == TORNVALE::kCurveItem;
        if (isSelected(i) || (isCurve && (isSelected(i - 1) || isSelected(i + 1))))
            gone.append(all[i]);
    }
    if (gone.isEmpty())
        return;
    takeOut(gone);
    Q_EMIT edited(QStringLiteral("RemoveItem"));
}

/// Destroys these items. Whatever has followed one of them on its chain generates anew: it starts from
/// another place now.
void UserTopItem::takeOut(const QVector<CodeManagerItem*>& gone) {
    const QSet<CodeManagerItem*> leaving(gone.begin(), gone.end());
    QSet<QString> openChains;
    QVector<CodeManagerItem*> followers;
    for (CodeManagerItem* item : items()) {
        if (leaving.contains(item)) {
            openChains.insert(item->chainName());
        } else if (openChains.contains(item->chainName())) {
            followers.append(item);
            if (item->isActive())
                openChains.remove(item->chainName());
        }
    }
    for (CodeManagerItem* item : gone)
        release(item);
    changeTogether([&followers] {
        for (CodeManagerItem* item : followers)
            item->regenerate();
    });
}

void UserTopItem::clear() {
    keptBlocks_.clear();
    qDeleteAll(takeChildren());
    freshRecords();
}

// --- regeneration ---

void UserTopItem::regenerateAfter(const CodeManagerItem* item) {
    const int next = indexOfChild(const_cast<CodeManagerItem*>(item)) + 1;
    if (sweeping_ || next == 0)
        return;
    if (held_ > 0) {
        firstHeld_ = firstHeld_ < 0 ? next : std::min(firstHeld_, next);
        return;
    }
    regenerateFrom(next);
}

void UserTopItem::changeTogether(const std::function<void()>& change) {
    ++held_;
    change();
    if (--held_ > 0 || firstHeld_ < 0)
        return;
    const int first = firstHeld_;
    firstHeld_ = -1;
    if (!sweeping_)
        regenerateFrom(first);
}

void UserTopItem::regenerateFrom(int index) {
    const QScopedValueRollback<bool> sweeping(sweeping_, true);
    GenerationRun run(childCount() - index);
    for (int i = index; i < childCount(); ++i) {
        auto* item = dynamic_cast<CodeManagerItem*>(child(i));
        if (item == nullptr || !item->isActive())
            continue;
        if (!run.step(item->itemName()))
            return;
        item->doIt();
    }
}

void UserTopItem::takeCheckState(bool checked) {
    const QScopedValueRollback<bool> itself(changingItself_, true);
    setCheckState(kNameColumn, checked ? Qt::Checked : Qt::Unchecked);
}

void UserTopItem::setData(int column, int role, const QVariant& value) {
    QTreeWidgetItem::setData(column, role, value);
    if (changingItself_ || column != kNameColumn || role != Qt::CheckStateRole)
        return;
    const bool checked = checkState(kNameColumn) == Qt::Checked;
    changeTogether([this, checked] {
        for (CodeManagerItem* item : items())
            item->setChecked(checked);
    });
}

// --- derived texts ---

void UserTopItem::refreshDerivedTexts() {
    const QVector<CodeManagerItem*> all = items();
    for (const CodeManagerItem* item : all) {
        if (!item->chainName().isEmpty())
            headerTail_->headerTail.add(machine(), item->chainName());
    }
    for (const QString& chain : headerTail_->headerTail.chains()) {
        HeaderTailRecord& record = *headerTail_->headerTail.record(chain);
        const auto takes = [&chain](const CodeManagerItem* item) {
            return item->isActive() && item->chainName() == chain;
        };
        const auto first = std::find_if(all.begin(), all.end(), takes);
        const auto last = std::find_if(all.rbegin(), all.rend(), takes);
        const QString header = first == all.end() ? QString() : firstLineOf((*first)->LeadIn()).toString();
        const QString tail = last == all.rend() ? QString() : lastLineOf((*last)->LeadOut()).toString();
        if (!header.isEmpty())
            record.itemHeader = header;
        if (!tail.isEmpty())
            record.itemTail = tail;
    }
}

void UserTopItem::editHeaderTail() {
    refreshDerivedTexts();
    TORNVALE::HeaderTailEditor& editor = TORNVALE::HeaderTailEditor::instance();
    disconnect(&editor, nullptr, this, nullptr);
    connect(&editor, &TORNVALE::HeaderTailEditor::changed, this, [this, &editor] {
        if (editor.items() == headerTail_.get())
            Q_EMIT edited(QStringLiteral("HeaderTail"));
    });
    editor.Edit(headerTail_.get());
}

void UserTopItem::play() {
    TORNVALE::playGroups({this});
}

// --- document ---

void UserTopItem::Set(const QJsonObject& object) {
    clear();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (entry.key() == kHeaderTailKey)
            headerTail_->headerTail.fromJson(entry.value().toObject());
        else
            readItems(entry.value().toArray());
    }
}

void UserTopItem::readItems(const QJsonArray& blocks) {
    const int keptBefore = keptBlocks_.size();
    generateItems(blocks);
    // A box in the middle of the run would stand behind the progress dialog.
    tellKeptBlocks(keptBefore);
}

void UserTopItem::generateItems(const QJsonArray& blocks) {
    GenerationRun run(blocks.size());
    for (const QJsonValue& value : blocks) {
        const QJsonObject block = value.toObject();
        std::unique_ptr<CodeManagerItem> made = TORNVALE::makeItem(TORNVALE::itemTypeOf(block));
        if (made == nullptr) {
            keptBlocks_.append({childCount(), block});
            continue;
        }
        if (!run.step(block.value(QStringLiteral("itemName")).toString()))
            break;
        CodeManagerItem* item = made.get();
        adopt(std::move(made), -1);
        item->editRecord().WCSName = record_.name;
        item->refreshUserCoordinateIds();
        item->Set(block);
        // The code comes before the check mark, so that neighbours see it finished.
        item->doIt();
        item->takeCheckState(block.value(QStringLiteral("checkState")).toBool());
    }
}

/// One box for all blocks kept since: a document may hold thousands.
void UserTopItem::tellKeptBlocks(int keptBefore) {
    constexpr int kMostNames = 10;
    constexpr int kMostCharacters = 100;
    if (keptBlocks_.size() == keptBefore)
        return;
    QString text = TORNVALE::LanguageReader::instance().text(QStringLiteral("UserTopItem"),
                                                             QStringLiteral("ItemNameErrorMsg"));
    for (const auto& [place, block] : keptBlocks_.mid(keptBefore, kMostNames))
        text += QLatin1Char('\n') + block.value(QStringLiteral("itemName")).toString().left(kMostCharacters);
    if (keptBlocks_.size() - keptBefore > kMostNames)
        text += QStringLiteral("\n... (%1)").arg(keptBlocks_.size() - keptBefore);
    userDialogs().tell(UserDialogs::Kind::Warning, treeText("Title"), text);
}

QJsonObject UserTopItem::Get() const {
    QJsonArray blocks;
    int kept = 0;
    const QVector<CodeManagerItem*> all = items();
    for (int i = 0; i <= all.size(); ++i) {
        while (kept < keptBlocks_.size() && (keptBlocks_[kept].first <= i || i == all.size()))
            blocks.append(keptBlocks_[kept++].second);
        if (i < all.size())
            blocks.append(all[i]->Get());
    }
    return {{record_.name, blocks}, {kHeaderTailKey, headerTail_->headerTail.toJson()}};
}

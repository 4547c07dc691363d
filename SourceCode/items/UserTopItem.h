#pragma once

#include <QJsonObject>
#include <QString>
#include <QTreeWidgetItem>
#include <QVector>
#include <QWidget>
#include <functional>
#include <memory>
#include <utility>

#include "nc/ProgramItem.h"

struct workCoordinateSystemStruct;

namespace TORNVALE {
class CodeManagerItem;
}

/// The program group of one work coordinate system: its items in program order, its header and tail records,
/// its auxiliary axis.
class UserTopItem : public QWidget, public QTreeWidgetItem, public TORNVALE::ProgramGroup {
    Q_OBJECT
  public:
    static constexpr int kItemType = TORNVALE::kProgramGroup;

    /// `record` belongs to the machine description and outlives the group.
    explicit UserTopItem(const workCoordinateSystemStruct& record);
    ~UserTopItem() override;
    UserTopItem(const UserTopItem&) = delete;
    UserTopItem& operator=(const UserTopItem&) = delete;

    // --- items ---

    /// The items in order.
    [[nodiscard]] QVector<TORNVALE::CodeManagerItem*> items() const;
    /// All make an item with the first installed tool and open its editor; without a tool the user is told,
    /// and nullptr comes back. `before` nullptr: at the end.
    TORNVALE::CodeManagerItem* InsertIsoItem(TORNVALE::CodeManagerItem* before);
    /// Adds a made item, at the end for index -1.
    void adopt(std::unique_ptr<TORNVALE::CodeManagerItem> item, int index);
    /// Takes it out without destroying it.
    std::unique_ptr<TORNVALE::CodeManagerItem> release(TORNVALE::CodeManagerItem* item);
    /// The selected children and the curves beside them go; the items that have followed them regenerate.
    void removeSelected();
    /// Destroys all items; fresh header and tail records.
    void clear();

    /// The selected children, or all checked ones, as a document on the clipboard. Curves stay out.
    void copySelection();
    void cutSelection();
    /// Items of the clipboard's document, from `index` on; at the end for -1.
    void paste(int index);

    /// Next free name of a kind of item.
    [[nodiscard]] QString uniqueName(int type) const;
    /// Ids of the user coordinate systems of the group's work coordinate system.
    [[nodiscard]] QVector<int> userCoordinateIds() const;

    // --- regeneration ---

    /// All checked items behind `item` generate anew, in order. Calls from within change nothing: the items
    /// still to come are on their way already.
    void regenerateAfter(const TORNVALE::CodeManagerItem* item);
    /// All checked items from `index` on generate anew, in order.
    void regenerateFrom(int index);
    /// Runs `change` with regeneration held back, and then once from the first item concerned on.
    void changeTogether(const std::function<void()>& change);

    // --- derived texts, document ---

    /// A record for every chain in use; first and last lines of the active items.
    void refreshDerivedTexts();
    void Set(const QJsonObject& object);
    [[nodiscard]] QJsonObject Get() const;

    /// Merges this group and plays it.
    void play();
    void editHeaderTail();
    void writeReport();
    void popupMenu(const QPoint& place);

    [[nodiscard]] const workCoordinateSystemStruct& record() const { return record_; }
    [[nodiscard]] const QString& chain() const { return Chain; }

    [[nodiscard]] QString wcsName() const override;
    [[nodiscard]] QList<TORNVALE::ProgramItem*> programItems() const override;
    [[nodiscard]] std::shared_ptr<AuxiliaryAxis> auxiliaryAxis() const override;
    [[nodiscard]] FormatItems* headerTail() const override { return headerTail_.get(); }

    /// Items of kinds that are not known, with the number of items before them: written back as they came.
    using KeptBlocks = QVector<QPair<int, QJsonObject>>;
    [[nodiscard]] const KeptBlocks& keptBlocks() const { return keptBlocks_; }
    void setKeptBlocks(KeptBlocks blocks) { keptBlocks_ = std::move(blocks); }
    /// The group's own check mark; its items stay as they are.
    void takeCheckState(bool checked);

    void setData(int column, int role, const QVariant& value) override;

  Q_SIGNALS:
    /// The user has changed the programs; `key` names the action in the language group "Undo".
    void edited(const QString& key);
    /// An item's code, columns or path are new.
    void itemRefreshed(TORNVALE::CodeManagerItem* item);

  private:
    void SetupAuxiliaryAxis();
    void freshRecords();
    void readItems(const QJsonArray& blocks);
    void generateItems(const QJsonArray& blocks);
    void tellKeptBlocks(int keptBefore);
    [[nodiscard]] QVector<TORNVALE::CodeManagerItem*> selectedItems() const;
    [[nodiscard]] QVector<TORNVALE::CodeManagerItem*> itemsToCopy() const;
    void copyItems(const QVector<TORNVALE::CodeManagerItem*>& chosen) const;
    void takeOut(const QVector<TORNVALE::CodeManagerItem*>& gone);
    [[nodiscard]] QString report() const;

    const workCoordinateSystemStruct& record_;
    QString Chain;
    std::unique_ptr<FormatItems> headerTail_;
    std::shared_ptr<AuxiliaryAxis> auxiliaryAxis_;
    KeptBlocks keptBlocks_;
    bool sweeping_ = false;
    int held_ = 0;
    int firstHeld_ = -1;
    bool changingItself_ = false;
};

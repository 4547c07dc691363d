#pragma once

#include <Inventor/SbMatrix.h>

#include <QJsonObject>
#include <QString>
#include <QTreeWidgetItem>
#include <QVector>
#include <memory>

#include "items/ItemState.h"
#include "nc/ProgramItem.h"
#include "tools/ToolObserver.h"

class QPoint;
class UserTopItem;
class userCoordinateSystem;

namespace TORNVALE {

/// One row of the program tree: a piece of NC code with its own tool, chain, work coordinate system and user
/// coordinate system. The base holds the code, checks it against the axis limits, shows it in the columns and
/// in the scene, and plays it; a derived class generates it.
///
/// Stands below a UserTopItem, the owner; without one (a fresh clone) it carries fields only.
class CodeManagerItem : public QTreeWidgetItem, public ToolObserver, public ProgramItem {
  public:
    enum Column {
        kTypeColumn,
        kNameColumn,
        kKindColumn,
        kToolColumn,
        kSystemColumn,
        kRpmColumn,
        kLimitColumn,
        kAuxiliaryColumn,
        kColumnCount
    };

    ~CodeManagerItem() override;
    CodeManagerItem(const CodeManagerItem&) = delete;
    CodeManagerItem& operator=(const CodeManagerItem&) = delete;

    // --- what a kind supplies ---

    /// Reads the item's block of a project document; tolerant. The item already has its group.
    virtual void Set(const QJsonObject& object) = 0;
    [[nodiscard]] virtual QJsonObject Get() const = 0;
    /// Chain, zone, user coordinate systems and name follow the new parent.
    virtual void reactToNewPlace() = 0;
    /// Generates the code from the fields and shows it.
    virtual void doIt() = 0;
    virtual void openEditor() = 0;

    // --- common, some replaced by a kind ---

    /// Columns, colours and the path in the scene. An item without code unchecks itself and turns red.
    virtual void refresh();
    /// R5 * R4 of `Fourth` and `Fifth`; the identity when the chain lacks one of the axes.
    [[nodiscard]] virtual SbMatrix rotationMatrix() const;
    /// Asks for a file and writes the common block into it, for inspection.
    virtual void WriteTo();
    /// `Time` from the number of lines.
    virtual void updateTime();

    /// Takes a copy of the tool, its speed, and the chain that the tool or the group asks for.
    void SetTool(ToolData* tool, bool generate);
    void UpdateToolList(QList<ToolData*> tools) override;
    /// Hangs the path into the scene of the item's user coordinate system.
    void MapItemToNode();
    /// The path leaves the old system; the next refresh shows it in the new one.
    void changeUserCoordinateSystem(int id);
    void refreshUserCoordinateIds();

    /// Generates, and then what depends on it: later siblings when this item's end of axis 5 has moved.
    void regenerate();

    /// True for an unchecked item, else whether all joined code keeps the limits of the machine.
    [[nodiscard]] bool isInLimits() const;
    /// `LeadIn`, `IsoCode` and `LeadOut`, joined with line feeds.
    [[nodiscard]] QString joinedCode() const;
    /// Nearest checked sibling of the same chain; nullptr when there is none.
    [[nodiscard]] CodeManagerItem* previousActive() const;
    [[nodiscard]] CodeManagerItem* nextActive() const;
    /// Last value of axis 5 in the previous active item's `LeadOut`; 0 without one.
    [[nodiscard]] double previousFifth() const;
    /// Last value of axis 5 in this item's `LeadOut`, degrees.
    [[nodiscard]] double exitFifth() const;
    /// True also for an item at index 0, without a text: the first item always takes its tool.
    [[nodiscard]] bool IsToolChangeNeeded(QString& out) const;
    [[nodiscard]] QString GetToolChangeActionString() const;
    /// The code that plays this item with its surroundings.
    [[nodiscard]] QString GetAnimationText() const;
    /// Plays the item on the machine when it is checked.
    void play();

    [[nodiscard]] UserTopItem* group() const;
    [[nodiscard]] const ItemRecord& record() const { return record_; }
    /// For changes of fields; the caller regenerates.
    [[nodiscard]] ItemRecord& editRecord() { return changed(), record_; }
    [[nodiscard]] ToolData& tool() const { return *tool_; }
    [[nodiscard]] const QVector<int>& userCoordinateIds() const { return userCoordinateIds_; }
    void setUserCoordinateIds(QVector<int> ids) { userCoordinateIds_ = std::move(ids); }
    void setName(const QString& name);
    void setChecked(bool checked);
    /// The check mark of a document: neighbours stay as they are.
    void takeCheckState(bool checked);
    /// Writes the texts of the columns, without a verdict on the code.
    void showColumns();
    /// The menu of this row, at a place of the screen.
    void popupMenu(const QPoint& place);
    /// Changes with the item; equal numbers mean nothing has changed.
    [[nodiscard]] quint64 revision() const { return revision_; }
    [[nodiscard]] SharedItemState state() const;
    /// Becomes what the state says, without generating.
    void restore(const ItemState& state);

    // --- as the pipeline sees it ---
    [[nodiscard]] int itemType() const override { return type(); }
    [[nodiscard]] const QString& itemName() const override { return record_.Name; }
    [[nodiscard]] const QString& chainName() const override { return record_.Chain; }
    [[nodiscard]] bool isActive() const override;
    [[nodiscard]] const ToolData* toolData() const override;
    [[nodiscard]] double rpm() const override { return record_.ItemRpm; }
    [[nodiscard]] const QString& LeadIn() const override { return record_.LeadIn; }
    [[nodiscard]] const QString& LeadOut() const override { return record_.LeadOut; }
    [[nodiscard]] const QString& IsoCode() const override { return record_.IsoCode; }
    [[nodiscard]] const QString& WorkCode() const override { return record_.WorkCode; }
    void toScene(WayPoints& points) const override;
    void setTrajNode(trajNode* node) override { node_ = node; }
    [[nodiscard]] trajNode* pathNode() const override { return node_; }

    void setData(int column, int role, const QVariant& value) override;

  protected:
    CodeManagerItem(int type, const QString& displayName, const QString& icon, const char* typeName);

    [[nodiscard]] virtual KindRecord kindRecord() const { return {}; }
    virtual void setKindRecord(const KindRecord& /*kind*/) {}

    /// Before generating: the origin of the user coordinate system as it stands now.
    void prepare();
    /// After generating: neighbouring curves follow.
    void closeGeneration();
    void changed() { ++revision_; }
    void adoptTool(const QJsonValue& tool);
    void takePlaceFrom(const UserTopItem& group);

  private:
    class Guard;
    void checkChanged();
    void checkNeighbouringCurves(bool checked);
    void paintRow(const QColor& colour);
    void paintLimits();
    void markFailed();
    void markNew();
    void leaveScene();
    [[nodiscard]] userCoordinateSystem* ucs() const;
    [[nodiscard]] CodeManagerItem* sibling(int step) const;
    [[nodiscard]] CodeManagerItem* activeNeighbour(int step) const;

    ItemRecord record_;
    std::unique_ptr<ToolData> tool_;
    trajNode* node_ = nullptr;  ///< in the scene, not owned
    QVector<int> userCoordinateIds_;
    bool changingItself_ = true;
    quint64 id_;
    quint64 revision_ = 1;
    mutable quint64 stateRevision_ = 0;
    mutable SharedItemState state_;
};

}  // namespace TORNVALE

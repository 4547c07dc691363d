#pragma once

#include <QJsonObject>
#include <QList>
#include <QStringList>
#include <QVector>
#include <QWidget>
#include <memory>

#include "machine/CarriedNode.h"
#include "machine/ChainListener.h"
#include "machine/calc/MachineDescription.h"
#include "tools/ToolObserver.h"

class CommandProcessor;
class FixtureMounter;
class PlaybackStop;
class QToolBar;
class QTreeWidgetItem;
class SoNode;
class SoSeparator;
class SpindleNode;
class WorkCoordinateSystem;

/// The machine: every axis, part, spindle and work zone of the machine file under one scene root, joined
/// along the kinematic chains. The single entry for a line of motion, and the owner of the collision pass.
/// The main window makes the process's one manager and must outlive nothing of it but the tool library.
class MotionNodeManager : public QWidget, public TORNVALE::ToolObserver, public ChainListener {
    Q_OBJECT
  public:
    /// Builds the whole machine and brings it home. `machine` must outlive the manager. A model that is
    /// missing and repeat settings that do not fit end the process, with the reason in the log.
    explicit MotionNodeManager(const MachineDescription& machine, QWidget* parent = nullptr);
    ~MotionNodeManager() override;
    MotionNodeManager(const MotionNodeManager&) = delete;
    MotionNodeManager& operator=(const MotionNodeManager&) = delete;

    /// The process's machine; nullptr before it is made.
    [[nodiscard]] static MotionNodeManager* instance();

    // --- what the machine consists of ---

    [[nodiscard]] SoSeparator* root() const;
    [[nodiscard]] const MachineDescription& machine() const;
    /// Numerical axes first, each kind in file order. Repeats are in no list.
    [[nodiscard]] const QVector<AxisBase*>& axes() const;
    [[nodiscard]] const QVector<SpindleNode*>& spindles() const;
    [[nodiscard]] const QVector<WorkCoordinateSystem*>& workCoordinateSystems() const;

    /// All give nullptr for what is not there.
    [[nodiscard]] AxisBase* findAxis(const QString& name) const;
    [[nodiscard]] SpindleNode* findSpindle(int number) const;
    [[nodiscard]] WorkCoordinateSystem* findWorkCoordinateSystem(const QString& name) const;
    /// The first node of this scene name below the node that `underName` finds, or below the root.
    [[nodiscard]] SoNode* findNode(const QString& name, const QString& underName = {}) const;
    /// The last node of a path of scene names, each looked for below the one before.
    [[nodiscard]] SoNode* findNodeByPath(const QStringList& path) const;

    // --- motion ---

    /// Moves the machine to a line of the program, or lets a spindle react to its M word, then runs the
    /// collision pass. The same line twice in a row does nothing the second time, whatever has happened in
    /// between.
    void executeLine(const QString& line);
    /// Brings all numerical axes home. `clearAll` also takes off fixtures, work pieces and user coordinate
    /// systems; `remountFixtures` then mounts those of the machine file.
    void resetMachine(bool clearAll, bool remountFixtures);

    // --- collisions ---

    /// Makes the groups of collision objects anew from the machine file.
    void setCollisionEnabled();
    void refreshCollisionGroup(const QStringList& chain) override;
    void collisionPass();
    /// Colours the node of this path and keeps it for the next reset; a path that leads nowhere is dropped.
    void markCollided(const QStringList& chain);
    void ResetCollided() override;
    [[nodiscard]] bool isCollisionEnabled() const;
    void switchCollision(bool enabled);
    /// Group name -> the objects tested against other groups, without empty entries.
    [[nodiscard]] const QMap<QString, CollisionObjects>& collisionGroups() const;
    [[nodiscard]] const QVector<SoNode*>& collidedNodes() const;

    // --- others ---

    void UpdateToolList(QList<ToolData*> tools) override;
    /// False for the tool that a program has put into a spindle with a changer.
    bool canRemoveTool(ToolData* tool) override;
    /// Spindles with a changer wait for their first tool again.
    void emptyToolChangers();
    [[nodiscard]] CommandProcessor& commandProcessor() const;
    /// Not owned; nullptr for none.
    void setPlayback(PlaybackStop* playback);
    [[nodiscard]] PlaybackStop* playback() const;
    void setFixtureMounter(FixtureMounter* mounter);
    void mountFixtures();

    /// The machine's part of a project document.
    [[nodiscard]] QJsonObject toJson() const;
    /// Brings the machine home first, without fixtures and work pieces. `legacy` is the older form.
    void fromJson(const QJsonObject& object, bool legacy);

    /// Top rows of the machine tree: chain heads, fixed work zones, parts with collision check. The tree that
    /// takes them may delete them.
    [[nodiscard]] QList<QTreeWidgetItem*> treeItems() const;
    /// Owned by this widget until a window takes it.
    [[nodiscard]] QToolBar* toolBar() const;
    /// A frameless tool window with a row per spindle.
    [[nodiscard]] QWidget* spindleStatusWindow() const;

  Q_SIGNALS:
    /// A line was executed.
    void showCommandString(const QString& line);
    /// The pass found these two touching; name paths from the top down.
    void contactFound(const QStringList& first, const QStringList& second);
    /// The marks of all contacts were taken back, as before each pass.
    void contactsReset();

  private:
    struct Private;
    void UpdateCollisionObject(const QStringList& chain) { refreshCollisionGroup(chain); }
    void InitializeChain();
    void BuildNumericalAxis();
    void BuildNonNumericalAxis();
    void buildSpindles();
    void buildSpindleStatusWindow();
    void InitialNumericalAxisOnChain();
    void InitialSpindleOnChain();
    void InitialNonNumericalAxisOnChain();
    void InitialWorkCoordinateSystems();
    void InitialRepeatNode();
    void repeatSpindles(const QVector<AxisBase*>& carriers);
    void buildToolBar();
    void fillCommandMaps();
    void listenToNodes(ChainListener* listener);
    void addToRoot(SoNode* node);
    void bringHome();
    bool touch(fcl::CollisionObject<float>* one, fcl::CollisionObject<float>* other);

    std::unique_ptr<Private> pimpl_;
};

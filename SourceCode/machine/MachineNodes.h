#pragma once

#include <Inventor/nodes/SoSeparator.h>

#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

#include "machine/AxisBase.h"
#include "machine/SpindleClass.h"
#include "setup/WorkCoordinateSystem.h"

/// The nodes of one machine and the look-ups among them. Holds a reference to each node, so that those which
/// found no place in the scene live as long as the others.
class MachineNodes {
  public:
    explicit MachineNodes(const QString& rootName);
    ~MachineNodes();
    MachineNodes(const MachineNodes&) = delete;
    MachineNodes& operator=(const MachineNodes&) = delete;

    void add(AxisBase* axis);
    void add(SpindleNode* spindle);
    void add(WorkCoordinateSystem* zone);

    [[nodiscard]] SoSeparator* root() const { return root_; }
    [[nodiscard]] const QVector<AxisBase*>& axes() const { return axes_; }
    [[nodiscard]] const QVector<SpindleNode*>& spindles() const { return spindles_; }
    [[nodiscard]] const QVector<WorkCoordinateSystem*>& zones() const { return zones_; }

    /// All give nullptr for what is not there; see MotionNodeManager.
    [[nodiscard]] AxisBase* findAxis(const QString& name) const;
    [[nodiscard]] SpindleNode* findSpindle(int number) const;
    [[nodiscard]] WorkCoordinateSystem* findZone(const QString& name) const;
    [[nodiscard]] SoNode* findNode(const QString& name, const QString& underName = {}) const;
    [[nodiscard]] SoNode* findNodeByPath(const QStringList& path) const;
    /// The axis at the head of a path of scene names. Costs a comparison per axis and allocates nothing.
    [[nodiscard]] AxisBase* findHead(const QString& sceneName) const;

  private:
    SoSeparator* root_;
    QVector<AxisBase*> axes_;
    QVector<SpindleNode*> spindles_;
    QVector<WorkCoordinateSystem*> zones_;
};

#pragma once

#include <QStringList>
#include <QVector>

class MachineNodes;
class SoNode;

/// The nodes that are shown as collided.
class CollisionMarks {
  public:
    explicit CollisionMarks(const MachineNodes& nodes) : nodes_(nodes) {}

    /// Colours the node of this path; a path that leads nowhere is dropped.
    void mark(const QStringList& chain);
    void reset();
    [[nodiscard]] const QVector<SoNode*>& nodes() const { return marked_; }

  private:
    const MachineNodes& nodes_;
    QVector<SoNode*> marked_;
};

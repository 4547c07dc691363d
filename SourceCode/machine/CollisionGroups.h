#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>
#include <vector>

#include "machine/CarriedNode.h"
#include "machine/calc/CollisionPlan.h"
#include "machine/calc/MachineDescription.h"

class MachineNodes;
class SoNode;

/// Which collision objects of a machine are tested against which: one group per chain, per listed part and
/// per fixed work zone. Kept ready, so that a pass only walks arrays.
class CollisionGroups {
  public:
    CollisionGroups(const MachineDescription& machine, const MachineNodes& nodes);

    /// From the machine file. Parts that are no axes take part when the file lists them with "true" and no
    /// chain holds them.
    void make();
    /// The group at the head of this path is collected anew; with an empty path all groups are. A head that
    /// is no group changes nothing.
    void refresh(const QStringList& chain);
    /// Those of the chains that carry spindles are collected anew.
    void refreshSpindleGroups();

    /// Calls `touches(one, other)` for the pairs of one pass, until runCollisionPass ends it. No contact may
    /// change a group.
    template <typename Touches>
    bool pass(const Touches& touches) {
        ordered_.clear();
        for (auto group = groups_.cbegin(); group != groups_.cend(); ++group)
            ordered_.push_back(&group.value());
        return runCollisionPass(
            plan_, [this](int group) { return ordered_[static_cast<std::size_t>(group)]->size(); },
            [this, &touches](int group, int i, int other, int j) {
                return touches(ordered_[static_cast<std::size_t>(group)]->at(i),
                               ordered_[static_cast<std::size_t>(other)]->at(j));
            });
    }

    [[nodiscard]] const QMap<QString, CollisionObjects>& groups() const { return groups_; }
    /// Heads of the chains that carry a spindle, in the order of the spindles.
    [[nodiscard]] const QStringList& toolChainRoots() const { return toolChainRoots_; }

  private:
    [[nodiscard]] SoNode* nodeOf(const QString& key) const;
    [[nodiscard]] CollisionObjects collect(const QString& key) const;
    void findSpindleHeads();

    const MachineDescription& machine_;
    const MachineNodes& nodes_;
    QMap<QString, CollisionObjects> groups_;
    QStringList spindleParents_;
    QStringList toolChainRoots_;
    CollisionPlan plan_;
    CollisionObjects scratch_;
    std::vector<const CollisionObjects*> ordered_;  ///< groups_ in key order; only while a pass runs
};

#pragma once

#include <QStringList>

/// Whoever keeps the collision groups of the machine's chains. The nodes of the scene know it only by this
/// interface; without a listener they work alone. It is not owned and must take itself out
/// (setChainListener(nullptr)) before it goes.
class ChainListener {
  public:
    ChainListener() = default;
    ChainListener(const ChainListener&) = delete;
    ChainListener& operator=(const ChainListener&) = delete;
    virtual ~ChainListener() = default;

    /// The collision objects below the head of this name path moved or are not the same any more. An empty
    /// path means all chains; objects of the old groups may be gone by now and must not be looked at.
    virtual void refreshCollisionGroup(const QStringList& chain) = 0;
    /// Nodes are about to leave the scene: no mark may stay on them.
    virtual void ResetCollided() = 0;
};

#pragma once

#include <QStringList>

#include "geometry/calc/CollisionEngine.h"

/// What a model hangs on: a coordinate system, an axis or a work zone. These classes stand in folders above
/// this one and implement the interface beside their scene node, which is where a model looks for it.
class ModelCarrier {
  public:
    ModelCarrier() = default;
    ModelCarrier(const ModelCarrier&) = delete;
    ModelCarrier& operator=(const ModelCarrier&) = delete;
    virtual ~ModelCarrier() = default;

    /// Where the things that hang on this node stand in the machine now, mm.
    [[nodiscard]] virtual CollisionTransform carrierTransform() const = 0;
    /// Scene names from the top of the chain down to this node, own name last.
    [[nodiscard]] virtual QStringList carrierChain() const = 0;
};

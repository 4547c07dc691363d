#pragma once

#include <QtGlobal>
#include <memory>
#include <variant>

#include "items/calc/IsoRecord.h"
#include "items/calc/ItemRecord.h"
#include "tools/calc/ToolRecord.h"

namespace TORNVALE {

/// Fields of the kinds beyond the common ones.
using KindRecord = std::variant<std::monostate, IsoRecord>;

/// Everything that an item is, code included: what undo brings back without generating anything. The texts
/// are shared with the item until one of them changes.
struct ItemState {
    int type = 0;
    quint64 id = 0;  ///< of the item; never used twice in a process
    bool checked = false;
    ItemRecord record;
    KindRecord kind;
    ToolRecord tool;
};

using SharedItemState = std::shared_ptr<const ItemState>;

/// Apart from run-time only fields; tools are compared by their project form.
[[nodiscard]] bool sameState(const ItemState& one, const ItemState& other);

}  // namespace TORNVALE

#pragma once

#include <QJsonObject>
#include <QString>
#include <memory>

namespace TORNVALE {

class CodeManagerItem;

/// A new item of the kind; nullptr for a number that is no kind.
[[nodiscard]] std::unique_ptr<CodeManagerItem> makeItem(int type);

/// Prefix of the names of a kind, from the name table; empty for a number that is no kind.
[[nodiscard]] QString itemNamePrefix(int type);

/// The kind of a block of a project document: its "type", in older files the start of its "itemName".
/// 0 when neither tells.
[[nodiscard]] int itemTypeOf(const QJsonObject& block);

}  // namespace TORNVALE

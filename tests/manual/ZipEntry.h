#pragma once

#include <QByteArray>
#include <optional>

/// The content of the entry `name` of a zip archive, stored or deflated; nothing when the bytes are no
/// archive or have no such entry.
[[nodiscard]] std::optional<QByteArray> zipEntry(const QByteArray& archive, const QByteArray& name);

#pragma once

#include <QString>
#include <optional>

namespace TORNVALE {

/// The text of an ISO program's file, see decodedSource. Nothing, and a log line, for a folder or a device,
/// a file that cannot be read or one of more than 512 MB.
[[nodiscard]] std::optional<QString> readSourceFile(const QString& path);

}  // namespace TORNVALE

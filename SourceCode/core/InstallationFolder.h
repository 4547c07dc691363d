#pragma once

#include <QString>

/// The folder that holds the settings, languages, machines, models and tools: the executable's own folder
/// unless another one was set (the batch tool's --data, a test's copy). No slash at the end.
[[nodiscard]] QString installationFolder();

/// An empty path goes back to the executable's folder.
void setInstallationFolder(const QString& folder);

/// `path` as it stands when it is absolute, otherwise below the installation folder.
[[nodiscard]] QString installationPath(const QString& path);

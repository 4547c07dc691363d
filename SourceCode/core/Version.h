#pragma once

#include <QString>

/// The program's version, four numbers such as "3.3.0.5", from the version file of the installation; empty
/// when that cannot be read. Files are compared with this one.
[[nodiscard]] QString applicationVersion();

/// The version that this executable was built as.
[[nodiscard]] QString builtVersion();

/// Path of the version file below the installation folder. The name is fixed, whatever version stands in it.
inline constexpr char kVersionFile[] = "Tornvale3.3.0.5.rc";

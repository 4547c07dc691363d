#pragma once

#include <QString>

/// The four numbers of this program's version: "1.0.0.0".
[[nodiscard]] QString applicationVersion();

#pragma once

#include <QString>

/// The expected text tests/truth/golden/`name`. With TORNVALE_RENEW_GOLDEN=1 in the environment the file is
/// written anew as `text` and the test fails: look at what changed, and why, before it is committed.
[[nodiscard]] QString goldenText(const QString& name, const QString& text);

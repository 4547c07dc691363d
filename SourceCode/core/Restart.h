#pragma once

/// The process is to start anew, without arguments, when it has ended: only then nothing of it is in the way.
void requestRestart();
[[nodiscard]] bool takeRestartRequest();

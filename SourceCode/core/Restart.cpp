#include "core/Restart.h"

#include <utility>

namespace {
bool isRequested = false;
}  // namespace

void requestRestart() {
    isRequested = true;
}

bool takeRestartRequest() {
    return std::exchange(isRequested, false);
}

#include "items/GenerationProgress.h"

#include <utility>

namespace TORNVALE {

namespace {

GenerationProgress* currentProgress = nullptr;
int runDepth = 0;
bool stopped = false;

}  // namespace

void GenerationProgress::set(GenerationProgress* progress) {
    currentProgress = progress;
}

GenerationProgress* GenerationProgress::current() {
    return currentProgress;
}

GenerationRun::GenerationRun(int count) {
    if (++runDepth == 1 && currentProgress != nullptr)
        currentProgress->begin(count);
}

GenerationRun::~GenerationRun() {
    if (--runDepth == 0 && currentProgress != nullptr)
        currentProgress->end();
}

bool GenerationRun::step(const QString& itemName) {
    if (runDepth == 1 && currentProgress != nullptr && !stopped && !currentProgress->step(itemName))
        stopped = true;
    return !stopped;
}

bool GenerationRun::isAny() {
    return runDepth > 0;
}

bool GenerationRun::takeStopped() {
    return std::exchange(stopped, false);
}

}  // namespace TORNVALE

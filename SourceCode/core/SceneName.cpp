#include "core/SceneName.h"

SbName sceneName(const QString& name) {
    constexpr int kMostCharacters = 1000;
    return SbName(name.left(kMostCharacters).toUtf8().constData());
}

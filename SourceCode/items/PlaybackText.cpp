#include "items/PlaybackText.h"

#include "items/calc/ItemText.h"
#include "machine/MotionNodeManager.h"
#include "nc/calc/AuxiliaryAxis.h"
#include "nc/myTimer.h"

namespace TORNVALE {

QString auxiliaryWord(const AuxiliaryAxis& axis) {
    constexpr int kDecimals = 3;
    return axis.nickName + QString::number(axis.value, 'f', kDecimals);
}

void playText(const QString& code, const AuxiliaryAxis* axis) {
    myTimer::closeIfOpen();
    myTimer& playback = myTimer::instance();
    playback.SetAnimationText(code);
    MotionNodeManager* manager = MotionNodeManager::instance();
    if (axis != nullptr && manager != nullptr)
        manager->executeLine(auxiliaryWord(*axis));
    playback.show();
    playback.raise();
}

}  // namespace TORNVALE

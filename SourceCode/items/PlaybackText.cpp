#include "items/PlaybackText.h"

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "items/GenerateIsoCode.h"
#include "items/UserTopItem.h"
#include "machine/MotionNodeManager.h"
#include "nc/UserPostProcessor.h"
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

QString joinedProgram(const QVector<UserTopItem*>& groups) {
    for (UserTopItem* group : groups)
        group->refreshDerivedTexts();
    QString text;
    UserPostProcessor::instance().ProcessGroups(text, {groups.begin(), groups.end()}, false);
    return text;
}

void playGroups(const QVector<UserTopItem*>& groups) {
    const QString missing = missingSpindleText(groups);
    if (missing.isEmpty())
        playText(joinedProgram(groups), nullptr);
    else
        userDialogs().tell(
            UserDialogs::Kind::Warning,
            LanguageReader::instance().text(QStringLiteral("UserTopItem"), QStringLiteral("Title")), missing);
}

}  // namespace TORNVALE

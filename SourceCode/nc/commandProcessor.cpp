#include "nc/commandProcessor.h"

#include <QDebug>
#include <typeinfo>

#include "core/ParaReader.h"
#include "machine/AxisBase.h"
#include "machine/PlaybackStop.h"
#include "machine/SpindleClass.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

CommandProcessor::CommandProcessor(QObject* parent) : QObject(parent) {
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    tools.addObserver(this, typeid(*this).name());
    toolList_ = tools.installedTools();
}

CommandProcessor::~CommandProcessor() {
    TORNVALE::ToolsManager::instance().removeObserver(this);
}

void CommandProcessor::UpdateToolList(QList<ToolData*> tools) {
    toolList_ = std::move(tools);
}

void CommandProcessor::addCommandMap(const QMap<QString, SoNode*>& map) {
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        commandMap_.insert(entry.key(), entry.value());
        const int letter = entry.key().size() == 1 ? entry.key().front().unicode() - u'A' : -1;
        if (letter >= 0 && letter < kLetters)
            axes_[static_cast<std::size_t>(letter)] = dynamic_cast<AxisBase*>(entry.value());
    }
}

void CommandProcessor::addToolChangeCommandMap(const QMap<QString, SoNode*>& map) {
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        qInfo() << "key:" << entry.key() << "\tvalue:" << static_cast<const void*>(entry.value());
        toolChangeCommandMap_.insert(entry.key(), entry.value());
    }
}

bool CommandProcessor::ProcessWord(QStringView word) {
    if (word.contains(u'M'))
        return HandleSpindleStatusChange(word.toString());
    const int letter = word.isEmpty() ? -1 : word.front().unicode() - u'A';
    if (letter < 0 || letter >= kLetters)
        return false;
    AxisBase* const axis = axes_[static_cast<std::size_t>(letter)];
    if (axis != nullptr)
        axis->setValueFromText(word);
    return false;
}

bool CommandProcessor::HandleSpindleStatusChange(const QString& line) {
    const QRegularExpressionMatch match = mPattern_.match(line);
    if (!match.hasMatch())
        return false;
    const QString code = match.captured(0);
    if (auto* spindle = dynamic_cast<SpindleNode*>(commandMap_.value(code))) {
        spindle->onCommand(line);
        if (ParaReader().isTrue(QStringLiteral("MotionNode/StopWhenTheSpindleStatusChanges")))
            stopPlayback();
        return false;
    }
    if (auto* spindle = dynamic_cast<SpindleNode*>(toolChangeCommandMap_.value(code))) {
        const bool isChanged = changeTool(line, *spindle);
        Q_EMIT updateCollisionObject(QStringList());
        return isChanged;
    }
    return false;
}

void CommandProcessor::stopPlayback() {
    qInfo().noquote() << "StopAnimationWhenSpindleStatusChanges.";
    if (playback_ != nullptr && playback_->stopOnContact())
        playback_->stop();
}

/// The first tool of the line's number on this spindle; without one the mounted tool stays.
bool CommandProcessor::changeTool(const QString& line, SpindleNode& spindle) {
    static const QRegularExpression pattern(QStringLiteral("T(\\d+)"));
    const QRegularExpressionMatch match = pattern.match(line);
    bool isNumber = false;
    const int number = match.captured(1).toInt(&isNumber);
    if (!match.hasMatch() || !isNumber)
        return false;
    for (const ToolData* tool : qAsConst(toolList_)) {
        if (tool->record().toolNo == number && tool->record().spindleNo == spindle.number()) {
            spindle.setTool(*tool);
            return true;
        }
    }
    return false;
}

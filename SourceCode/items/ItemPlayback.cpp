#include <QDebug>

#include "items/CodeManagerItem.h"
#include "items/PlaybackText.h"
#include "items/UserTopItem.h"
#include "items/calc/ItemText.h"
#include "machine/MotionNodeManager.h"
#include "machine/SpindleClass.h"
#include "machine/readConfig.h"
#include "nc/PostProcessorConfigulation.h"
#include "nc/UserPostProcessor.h"
#include "nc/calc/AuxiliaryAxis.h"
#include "nc/calc/HeaderTail.h"
#include "nc/multiThreadedTimeOptimal.h"
#include "tools/ToolData.h"

// What lies between an item and its neighbours: tool change, way in and way out; and playing the item.

namespace TORNVALE {

namespace {

const MachineDescription& machine() {
    return ConfigReader::instance().description();
}

void warnAll(const Diagnostics& diagnostics) {
    for (const Diagnostic& entry : diagnostics.entries)
        qWarning().noquote() << entry.text;
}

/// A line feed only where there is none yet.
QString asLines(QString text) {
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    return text;
}

/// The move between two items, or between an item and the start or end of the program.
QString timed(const QString& code, const CodeManagerItem& item, bool densePoint) {
    constexpr double kFullSpeed = 1.0;
    const UserTopItem* group = item.group();
    return asLines(multiThreadedTimeOptimal::TimeOptimizeCode(
        code, item.chainName(), group ? group->auxiliaryAxis() : nullptr, kFullSpeed, densePoint));
}

QString replaceMark(QString pattern, const QString& value) {
    return pattern.replace(QLatin1Char('#'), value);
}

}  // namespace

bool CodeManagerItem::IsToolChangeNeeded(QString& out) const {
    const ToolRecord& own = tool_->record();
    const spindleStruct* spindle = machine().findSpindle(own.spindleNo);
    constexpr int kMagazine = 2;
    if (spindle == nullptr || spindle->range.toInt() < kMagazine)
        return false;
    const QTreeWidgetItem* parent = QTreeWidgetItem::parent();
    const int index = parent ? parent->indexOfChild(const_cast<CodeManagerItem*>(this)) : -1;
    if (index < 1)
        return index == 0;
    // The sibling at index 0 is never looked at: an item whose only predecessor is the first one changes no
    // tool. It must stay so.
    const CodeManagerItem* last = nullptr;
    for (int i = index - 1; i >= 1 && last == nullptr; --i) {
        QTreeWidgetItem* const row = parent->child(i);
        if (row->checkState(kNameColumn) != Qt::Checked)
            continue;
        const auto* item = dynamic_cast<const CodeManagerItem*>(row);
        if (item == nullptr)
            return false;
        if (item->chainName() == chainName() && item->tool().record().spindleNo == own.spindleNo)
            last = item;
    }
    if (last == nullptr || last->tool().record().toolNo == own.toolNo)
        return false;
    out += tenCopies(replaceMark(spindle->toolChangeString, QString::number(last->tool().record().toolNo)));
    return true;
}

QString CodeManagerItem::GetToolChangeActionString() const {
    QString text;
    if (!IsToolChangeNeeded(text))
        return {};
    if (group() == nullptr) {
        qWarning() << "parent is nullptr";
        return {};
    }
    const AxisMap letters = machine().axisMap(chainName(), true);
    const QString home = machine().homeLine(chainName());
    Diagnostics diagnostics;
    if (const CodeManagerItem* previous = previousActive())
        text +=
            timed(withLastLineAt(home, previous->LeadOut(), letters, {3}, diagnostics) + QLatin1Char('\n'),
                  *this, false);
    const ToolRecord& own = tool_->record();
    const spindleStruct& spindle = *machine().findSpindle(own.spindleNo);
    text += tenCopies(replaceMark(spindle.toolChangeString, QString::number(own.toolNo)));
    text += tenCopies(replaceMark(spindle.startString, QString::number(record_.ItemRpm)));
    text += tenCopies(machine().userCommand.delay);
    text += timed(
        withFirstLineAt(home, record_.LeadIn, letters, {1, 2, 4, 5, 6}, diagnostics) + QLatin1Char('\n'),
        *this, false);
    warnAll(diagnostics);
    return text;
}

QString CodeManagerItem::GetAnimationText() const {
    UserTopItem* parent = group();
    const QString action = GetToolChangeActionString();
    if (parent == nullptr)
        qFatal("parent is nullptr.");
    parent->refreshDerivedTexts();
    const HeaderTailRecord* ends = parent->headerTail()->headerTail.record(chainName());
    const PostProcessorConfigulation& rules = UserPostProcessor::instance().configuration();
    const AxisMap letters = machine().axisMap(chainName(), true);
    const CodeManagerItem* previous = previousActive();
    Diagnostics diagnostics;
    QString text;
    if (!action.isEmpty()) {
        text = action + asLines(record_.IsoCode);
    } else if (type() == kCurveItem) {
        const CodeManagerItem* next = nextActive();
        text = timed((previous ? asLines(previous->LeadOut()) : QString()) + asLines(record_.IsoCode) +
                         (next ? next->LeadIn() : QString()),
                     *this, true);
    } else if (previous != nullptr) {
        text = timed(previous->LeadOut() + QLatin1Char('\n') + record_.LeadIn, *this, false) +
               asLines(record_.IsoCode);
    } else {
        text = timed(joinByAxisGroups(ends ? ends->header : QString(), record_.LeadIn, letters,
                                      rules.entrySequences(), diagnostics),
                     *this, false) +
               asLines(record_.IsoCode);
    }
    const QTreeWidgetItem* row = QTreeWidgetItem::parent();
    const bool isLast = row->child(row->childCount() - 1) == this;
    text += timed(isLast ? joinByAxisGroups(record_.LeadOut, ends ? ends->tail : QString(), letters,
                                            rules.exitSequences(), diagnostics)
                         : record_.LeadOut,
                  *this, false);
    warnAll(diagnostics);
    return text;
}

void CodeManagerItem::play() {
    MotionNodeManager* manager = MotionNodeManager::instance();
    if (!isActive() || manager == nullptr)
        return;
    const ToolData tool(*tool_);
    if (SpindleNode* spindle = manager->findSpindle(tool.record().spindleNo))
        spindle->setTool(tool);
    manager->UpdateToolList({});
    const UserTopItem* parent = group();
    const std::shared_ptr<AuxiliaryAxis> axis = parent ? parent->auxiliaryAxis() : nullptr;
    playText(GetAnimationText(), axis.get());
}

}  // namespace TORNVALE

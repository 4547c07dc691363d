#include "nc/UserPostProcessor.h"

#include <QDebug>
#include <algorithm>

#include "core/BusyCursor.h"
#include "machine/readConfig.h"
#include "nc/calc/ChainJoin.h"
#include "nc/calc/HeaderTail.h"
#include "nc/calc/OutputText.h"
#include "nc/calc/ProgramText.h"
#include "nc/calc/SegmentText.h"
#include "nc/machineStatePreprocessing.h"
#include "tools/ToolData.h"

namespace TORNVALE {

namespace {

constexpr int kSequential = 0;
constexpr int kTandem = 1;

const MachineDescription& machine() {
    return ConfigReader::instance().description();
}

void report(const Diagnostics& diagnostics) {
    for (const Diagnostic& entry : diagnostics.entries)
        qWarning().noquote() << entry.text;
}

/// The machine's own planner. One serves a whole run: it remembers which spindles turn.
PlanChain machinePlanner() {
    return [planner = machineStatePreprocessing()](const ChainPlan& plan) mutable {
        return planner.ProcessChain(plan.header, plan.tail, plan.chain, plan.preAction, plan.postAction,
                                    plan.entrySequences, plan.exitSequences, plan.items,
                                    plan.startCoordinates, plan.endCoordinates, plan.auxiliaryAxis);
    };
}

ChainRecord& recordOf(WorkCoodinateSegment& segment, const QString& chain) {
    for (ChainRecord& record : segment.chains) {
        if (record.Chain == chain)
            return record;
    }
    segment.chains.append(ChainRecord{chain, {}, {}, {}, {}});
    return segment.chains.last();
}

/// The position, with what it lacks taken from another one.
ChainPosition completed(ChainPosition position, const ChainPosition& other) {
    for (auto axis = other.begin(); axis != other.end(); ++axis) {
        if (!position.contains(axis.key()))
            position.insert(axis.key(), axis.value());
    }
    return position;
}

int toolNumber(const ProgramItem& item) {
    return item.toolData()->record().toolNo;
}

/// The record whose last line is the last one of the segment.
const ChainRecord& lastRecord(const WorkCoodinateSegment& segment) {
    if (segment.MultiChain != kTandem)
        return segment.chains.last();
    return *std::max_element(
        segment.chains.begin(), segment.chains.end(),
        [](const ChainRecord& a, const ChainRecord& b) { return a.runTime_ms < b.runTime_ms; });
}

}  // namespace

UserPostProcessor& UserPostProcessor::instance() {
    // Owned by the process and never destroyed: its records log when they go, and there is no log at the end.
    static auto* const object = new UserPostProcessor;
    return *object;
}

UserPostProcessor::UserPostProcessor() : configuration_(std::make_unique<PostProcessorConfigulation>()) {}

void UserPostProcessor::ProcessGroups(QString& out, const QVector<ProgramGroup*>& groups, bool usePattern) {
    const BusyCursor busy;
    groups_ = groups;
    groups_.removeAll(nullptr);
    usePattern_ = usePattern;
    startCoordinates_.clear();
    lastSegment_ = false;
    isIncomplete_ = false;
    out.clear();
    const QVector<Segment> segments = makeSegments();
    processSegments(segments);
    out = assembled(segments);
    if (isIncomplete_)  // half a program is none
        out.clear();
    current_.reset();
    groups_.clear();
}

QVector<UserPostProcessor::Segment> UserPostProcessor::makeSegments() {
    QVector<Segment> segments;
    for (const ProgramGroup* group : groups_) {
        current_ = std::make_shared<WorkCoodinateSegment>();
        current_->name = group->wcsName();
        current_->MultiChain = configuration_->MultiChain;
        current_->auxiliaryAxis = group->auxiliaryAxis();
        for (ProgramItem* item : group->programItems()) {
            if (item->isActive())
                recordOf(*current_, item->chainName()).items.append(item);
        }
        fillHeaders(*current_);
        segments.append(current_);
    }
    return segments;
}

/// A program that does not use the user's header and tail starts and ends where its items do.
void UserPostProcessor::fillHeaders(WorkCoodinateSegment& segment) const {
    for (ChainRecord& record : segment.chains) {
        if (configuration_->UserHeaderTail)
            GetUserHeaderTail(record.Chain, record.header, record.tail);
        else
            GetItemHeaderTail(record.Chain, record.header, record.tail);
    }
}

void UserPostProcessor::processSegments(const QVector<Segment>& segments) {
    const PlanChain planner = planner_ ? planner_ : machinePlanner();
    ChainPosition before;
    for (int i = 0; i < segments.size(); ++i) {
        current_ = segments[i];
        lastSegment_ = i == segments.size() - 1;
        // A run of one segment has no start of its own yet: it returns to that of the segment.
        const ChainPosition after = lastSegment_ && !startCoordinates_.isEmpty()
                                        ? startCoordinates_
                                        : GetStartCoordinates(*segments[lastSegment_ ? i : i + 1]);
        planSegment(planner, before, after);
        joinSegment(*current_);
        if (i == 0)
            startCoordinates_ = GetStartCoordinates(*current_);
        before = GetEndCoordinates(*current_);
        for (ChainRecord& record : current_->chains)
            record.outputLines.clear();  // the segment's text holds them all
    }
}

void UserPostProcessor::planSegment(const PlanChain& planner, const ChainPosition& before,
                                    const ChainPosition& after) {
    for (ChainRecord& record : current_->chains) {
        ChainPlan plan;
        plan.header = record.header;
        plan.tail = record.tail;
        plan.chain = record.Chain;
        if (const PrePostAction* actions = configuration_->actionsOf(record.Chain)) {
            plan.preAction = actions->PreAction;
            plan.postAction = actions->PostAction;
        }
        plan.entrySequences = configuration_->entrySequences();
        plan.exitSequences = configuration_->exitSequences();
        plan.items = record.items;
        plan.startCoordinates = completed(before, headerPosition(machine(), record.Chain, record.header));
        plan.endCoordinates = after;
        plan.auxiliaryAxis = current_->auxiliaryAxis;
        const QString home = lastSegment_
                                 ? positionLine(machine(), record.Chain, after, current_->auxiliaryAxis.get())
                                 : QString();
        if (!home.isEmpty())  // the program returns to where it started
            plan.tail += QLatin1Char('\n') + home;
        record.outputLines = planner(plan);
        const bool hasCode = std::any_of(record.items.begin(), record.items.end(),
                                         [](const ProgramItem* item) { return !item->IsoCode().isEmpty(); });
        isIncomplete_ = isIncomplete_ || (hasCode && record.outputLines.isEmpty());
    }
}

/// A way of joining other than these two leaves the segment empty, without a word.
void UserPostProcessor::joinSegment(WorkCoodinateSegment& segment) {
    const unsigned period_ms = machine().interpolationParameters.interpolationTime;
    QVector<QString> texts;
    std::uint32_t longest_ms = 0;
    for (ChainRecord& record : segment.chains) {
        texts.append(record.outputLines);
        record.runTime_ms = runTime_ms(record.outputLines, period_ms);
        longest_ms = std::max(longest_ms, record.runTime_ms);
    }
    Diagnostics diagnostics;
    if (segment.MultiChain == kSequential)
        segment.text = joinChains(texts, diagnostics);
    else if (segment.MultiChain == kTandem && !texts.isEmpty())
        segment.text = mergeTandem(texts, longest_ms, diagnostics);
    const bool isJoined = segment.MultiChain == kSequential || segment.MultiChain == kTandem;
    isIncomplete_ = isIncomplete_ || (isJoined && longest_ms > 0 && segment.text.isEmpty());
    report(diagnostics);
}

void UserPostProcessor::appendSegment(OutputText& out, WorkCoodinateSegment& segment) {
    Diagnostics diagnostics;
    const bool mustStay = hasContent(segment.text);
    const QString text = processedSegment(std::move(segment.text), rulesOf(segment), diagnostics);
    isIncomplete_ = isIncomplete_ || (mustStay && text.isEmpty());
    segment.text.clear();
    report(diagnostics);
    out.append(text);
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        out.append(u'\n');
}

/// Each slot takes the first segment of its name that no slot before has taken.
void UserPostProcessor::fillPattern(OutputText& out, QVector<Segment> segments) {
    const QDomElement chosen = pattern();
    for (QDomElement child = chosen.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (!isCoordinate(child)) {
            out.appendLine(child.text());
            continue;
        }
        const QString name = child.text().trimmed();
        const auto slot = std::find_if(segments.begin(), segments.end(),
                                       [&name](const Segment& segment) { return segment->name == name; });
        if (slot == segments.end()) {
            qWarning().noquote() << "No program group for the work coordinate system" << name;
            continue;
        }
        appendSegment(out, **slot);
        segments.erase(slot);
    }
}

QString UserPostProcessor::assembled(const QVector<Segment>& segments) {
    OutputText out;
    if (usePattern_) {
        fillPattern(out, segments);
    } else {
        for (const Segment& segment : segments)
            out.appendLine(segment->text);
    }
    if (out.isFull())
        qWarning("The program is too long and is left out.");
    return out.take();
}

SegmentRules UserPostProcessor::rulesOf(const WorkCoodinateSegment& segment) const {
    SegmentRules rules;
    rules.rapid = configuration_->Rapid;
    rules.linear = configuration_->Linear;
    rules.prepend = configuration_->Prepend;
    rules.rapidMovement = configuration_->RapidMovement;
    rules.rapidThreshold_mmPerMin = machine().interpolationParameters.rapidThreshold;
    for (const ChainRecord& record : segment.chains)
        rules.letters += machine().axisLetters(record.Chain);
    if (segment.auxiliaryAxis && !segment.auxiliaryAxis->name.isEmpty())
        rules.letters += segment.auxiliaryAxis->name.front();
    rules.userHeaderTail = configuration_->UserHeaderTail;
    if (!segment.chains.isEmpty()) {
        rules.firstTool = toolNumber(*segment.chains.first().items.first());
        rules.lastTool = toolNumber(*lastRecord(segment).items.last());
    }
    return rules;
}

const HeaderTailRecord* UserPostProcessor::headerTailOf(const QString& chain) const {
    const auto group = std::find_if(groups_.begin(), groups_.end(), [this](const ProgramGroup* candidate) {
        return current_ && candidate->wcsName() == current_->name;
    });
    if (group == groups_.end())
        return nullptr;
    const FormatItems* list = (*group)->headerTail();
    if (list == nullptr)
        qFatal("HeaderTailManager is nullptr");
    return list->headerTail.record(chain);
}

void UserPostProcessor::GetUserHeaderTail(const QString& chain, QString& header, QString& tail) const {
    const HeaderTailRecord* record = headerTailOf(chain);
    if (record == nullptr)
        qWarning().noquote() << "No header and tail for the chain" << chain;
    header = record != nullptr ? record->header : QString();
    tail = record != nullptr ? record->tail : QString();
}

void UserPostProcessor::GetItemHeaderTail(const QString& chain, QString& header, QString& tail) const {
    const HeaderTailRecord* record = headerTailOf(chain);
    if (record == nullptr)
        qWarning().noquote() << "No header and tail for the chain" << chain;
    header = record != nullptr ? record->itemHeader : QString();
    tail = record != nullptr ? record->itemTail : QString();
}

ChainPosition UserPostProcessor::GetStartCoordinates(const WorkCoodinateSegment& segment) const {
    ChainPosition position;
    bool found = false;
    for (const ChainRecord& record : segment.chains) {
        const QStringView line =
            firstMotionLine(record.outputLines.isEmpty() ? record.header : record.outputLines);
        found = found || !line.isEmpty();
        position =
            completed(position, linePosition(machine(), record.Chain, line, segment.auxiliaryAxis.get()));
    }
    if (!found)
        qWarning("frontLine is empty.");
    return position;
}

ChainPosition UserPostProcessor::GetEndCoordinates(const WorkCoodinateSegment& segment) const {
    ChainPosition position;
    bool found = false;
    for (const ChainRecord& record : segment.chains) {
        const QStringView line =
            lastMotionLine(record.outputLines.isEmpty() ? record.tail : record.outputLines);
        found = found || !line.isEmpty();
        // A later chain moves the axes that they share last.
        position =
            completed(linePosition(machine(), record.Chain, line, segment.auxiliaryAxis.get()), position);
    }
    if (!found)
        qWarning("backLine is empty.");
    return position;
}

}  // namespace TORNVALE

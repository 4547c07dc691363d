#include "nc/calc/SpindleModel.h"

#include <QSet>
#include <cmath>

namespace {

constexpr int kRepeats = 10;

/// `line` and a line feed, ten times; nothing for a command that the machine does not have.
QString block(const QString& line) {
    return line.isEmpty() ? QString() : (line + QLatin1Char('\n')).repeated(kRepeats);
}

QString withNumber(QString text, const QString& number) {
    return text.replace(QLatin1Char('#'), number);
}

QString speedText(double rpm) {
    constexpr int kDigits = 6;
    return QString::number(rpm, 'g', kDigits);
}

double speedNow(const SpindleState& spindle) {
    return spindle.stopped == 0 ? spindle.speed : 0.0;
}

SpindleState freshState(const spindleStruct& record, int shaft) {
    SpindleState state;
    state.name = record.name;
    state.startText = record.startString;
    state.stopText = record.stopString;
    state.checkText = record.checkString;
    state.toolChangeText = record.toolChangeString;
    state.range = record.range;
    state.coaxial = record.coaxial;
    state.parent = record.parent;
    state.number = record.name.trimmed().remove(QLatin1Char('T')).toInt();
    state.shaft = shaft;
    return state;
}

bool isMagazine(const SpindleState& spindle) {
    return spindle.range.toInt() > 1 && !spindle.toolChangeText.isEmpty();
}

}  // namespace

SpindleModel::SpindleModel(const std::vector<std::unique_ptr<spindleStruct>>& spindles, const QString& delay)
    : delay_(delay.isEmpty() ? QString() : delay + QLatin1Char('\n')) {
    for (const auto& record : spindles) {
        if (!states_.contains(record->name))
            states_.insert(record->name, freshState(*record, states_.size()));
    }
    joinShafts();
}

/// Spindles that name each other, in either direction, get one shaft.
void SpindleModel::joinShafts() {
    for (const SpindleState& spindle : states_.values()) {
        const auto partner = states_.constFind(spindle.coaxial);
        if (partner == states_.constEnd())
            continue;
        const int to = partner->shaft;
        const int from = states_[spindle.name].shaft;
        for (SpindleState& other : states_) {
            if (other.shaft == from)
                other.shaft = to;
        }
    }
}

const SpindleState* SpindleModel::find(const PlanItem& item) const {
    for (const SpindleState& spindle : states_) {
        if (spindle.number == item.tool->spindleNo)
            return &spindle;
    }
    return nullptr;
}

SpindleState* SpindleModel::stateOf(const PlanItem& item) {
    const SpindleState* found = find(item);
    return found == nullptr ? nullptr : &states_[found->name];
}

int SpindleModel::runningShafts() const {
    QSet<int> shafts;
    for (const SpindleState& spindle : states_) {
        if (spindle.stopped == 0)
            shafts.insert(spindle.shaft);
    }
    return shafts.size();
}

bool SpindleModel::shareSpindle(const PlanItem& a, const PlanItem& b) const {
    if (a.tool->spindleNo == b.tool->spindleNo)
        return a.tool->toolNo == b.tool->toolNo;
    const SpindleState* first = find(a);
    const SpindleState* second = find(b);
    return first != nullptr && second != nullptr && first->shaft == second->shaft;
}

bool SpindleModel::holdsOtherTool(const PlanItem& item) const {
    const SpindleState* spindle = find(item);
    return spindle != nullptr && spindle->currentToolNumber >= 0 &&
           spindle->currentToolNumber != item.tool->toolNo;
}

bool SpindleModel::needsOtherTool(const PlanItem& item, const PlanItem& other) const {
    return item.tool->spindleNo == other.tool->spindleNo && item.tool->toolNo != other.tool->toolNo;
}

bool SpindleModel::hasMagazine(const PlanItem& item) const {
    const SpindleState* spindle = find(item);
    return spindle != nullptr && isMagazine(*spindle);
}

bool SpindleModel::needsToolChange(const PlanItem& item) const {
    return hasMagazine(item) && find(item)->currentToolNumber != item.tool->toolNo;
}

bool SpindleModel::turnsAt(const SpindleState& spindle, double rpm) const {
    return spindle.stopped == 0 && std::abs(spindle.speed - rpm) <= kSpeedTolerance;
}

// --- commands ---

QString SpindleModel::start(const PlanItem& item) {
    SpindleState* spindle = stateOf(item);
    if (spindle == nullptr)
        return {};
    const double before = speedNow(*spindle);
    QString text;
    if (!turnsAt(*spindle, item.rpm)) {
        text = startBlock(*spindle, item);
        if (std::abs(item.rpm - before) > kSpeedJump)
            text += delay_.repeated(kRepeats);
    }
    spindle->currentToolNumber = item.tool->toolNo;
    spindle->currentTool = item.tool;
    return text;
}

QString SpindleModel::forcedStart(const PlanItem& item) {
    QString text = start(item);
    const SpindleState* spindle = find(item);
    if (!text.isEmpty() || spindle == nullptr)
        return text;
    return block(withNumber(spindle->startText, speedText(item.rpm)));
}

QString SpindleModel::earlyStart(const PlanItem& present, const PlanItem& next) {
    SpindleState* spindle = stateOf(next);
    const SpindleState* busy = find(present);
    if (spindle == nullptr || runningShafts() >= kRunningLimit || turnsAt(*spindle, next.rpm) ||
        needsToolChange(next) || (busy != nullptr && busy->shaft == spindle->shaft))
        return {};
    return startBlock(*spindle, next);
}

QString SpindleModel::startBlock(SpindleState& spindle, const PlanItem& item) {
    for (SpindleState& other : states_) {
        if (other.shaft == spindle.shaft) {
            other.stopped = 0;
            other.speed = item.rpm;
        }
    }
    return block(withNumber(spindle.startText, speedText(item.rpm))) + check(item);
}

QString SpindleModel::check(const PlanItem& item) const {
    const SpindleState* spindle = find(item);
    return spindle == nullptr ? QString() : block(withNumber(spindle->checkText, speedText(item.rpm)));
}

QString SpindleModel::stop(const PlanItem& item) {
    SpindleState* spindle = stateOf(item);
    return spindle == nullptr || spindle->stopped != 0 ? QString() : stopBlock(*spindle);
}

QString SpindleModel::stopBlock(SpindleState& spindle) {
    for (SpindleState& other : states_) {
        if (other.shaft == spindle.shaft)
            other.stopped = 1;
    }
    return block(spindle.stopText);
}

QString SpindleModel::stopAll() {
    QString text;
    for (SpindleState& spindle : states_) {
        if (spindle.stopped == 0)
            text += stopBlock(spindle);
    }
    return text;
}

QString SpindleModel::changeTool(const PlanItem& item) {
    if (!hasMagazine(item))
        return {};
    QString text = stopAll();
    for (SpindleState& spindle : states_) {
        spindle.stopped = 1;
        spindle.currentTool = nullptr;
        spindle.currentToolNumber = -1;
        spindle.speed = 0;
    }
    SpindleState& spindle = *stateOf(item);
    spindle.currentTool = item.tool;
    spindle.currentToolNumber = item.tool->toolNo;
    return text + block(withNumber(spindle.toolChangeText, QString::number(item.tool->toolNo)));
}

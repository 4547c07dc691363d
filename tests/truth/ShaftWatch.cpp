#include "ShaftWatch.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kSameSpeed = 0.1;

/// The number where `pattern` has "#", 0 when it has none; nothing when the rest differs.
std::optional<double> match(const QString& pattern, const QString& line) {
    const int place = pattern.indexOf(QLatin1Char('#'));
    if (pattern.isEmpty() || (place < 0 && pattern != line))
        return std::nullopt;
    if (place < 0)
        return 0.0;
    const QString behind = pattern.mid(place + 1);
    bool ok = false;
    const double number = line.mid(place, line.size() - place - behind.size()).toDouble(&ok);
    const bool same = line.startsWith(pattern.left(place)) && line.endsWith(behind);
    return same && ok ? std::optional(number) : std::nullopt;
}

}  // namespace

ShaftWatch::ShaftWatch(const std::vector<std::unique_ptr<spindleStruct>>& spindles) {
    for (const auto& record : spindles) {
        const int number = record->name.mid(1).toInt();
        words_[number] = {record->startString, record->stopString, record->checkString,
                          record->toolChangeString, record->range.toInt() > 1};
        const int partner = record->coaxial.mid(1).toInt();
        shafts_[number] = partner > 0 ? std::min(number, partner) : number;
    }
}

std::optional<ShaftWatch::Event> ShaftWatch::read(const QString& line) const {
    for (const auto& [spindle, words] : words_) {
        if (const auto number = match(words.start, line))
            return Event{Event::Kind::Start, spindle, *number};
        if (match(words.stop, line))
            return Event{Event::Kind::Stop, spindle};
        if (match(words.check, line))
            return Event{Event::Kind::Check, spindle};
        if (const auto number = match(words.change, line))
            return Event{Event::Kind::Change, spindle, *number};
    }
    return std::nullopt;
}

std::string ShaftWatch::obey(const Event& event) {
    Shaft& shaft = states_[shaftOf(event.spindle)];
    switch (event.kind) {
        case Event::Kind::Start:
            if (isRunningAt(event.spindle, event.number))
                return "a start of a spindle that turns at this speed";
            shaft = {true, event.number};
            return runningShafts() > 2 ? "more than two shafts turn" : "";
        case Event::Kind::Stop:
            if (!shaft.isRunning)
                return "a stop of a spindle that stands";
            shaft.isRunning = false;
            return {};
        case Event::Kind::Check:
            return shaft.isRunning ? "" : "a check of a spindle that stands";
        case Event::Kind::Change: {
            const int tool = static_cast<int>(event.number);
            const bool isSame = heldTool(event.spindle) == tool;
            held_.clear();
            held_[event.spindle] = tool;
            if (runningShafts() > 0)
                return "a tool change while a spindle turns";
            return isSame ? "a change to the tool that is there" : "";
        }
    }
    return {};
}

bool ShaftWatch::isRunning(int spindle) const {
    const auto state = states_.find(shaftOf(spindle));
    return state != states_.end() && state->second.isRunning;
}

bool ShaftWatch::isRunningAt(int spindle, double speed) const {
    return isRunning(spindle) && std::abs(states_.at(shaftOf(spindle)).speed - speed) <= kSameSpeed;
}

int ShaftWatch::runningShafts() const {
    return static_cast<int>(std::count_if(states_.begin(), states_.end(),
                                          [](const auto& state) { return state.second.isRunning; }));
}

bool ShaftWatch::hasMagazine(int spindle) const {
    const Words& words = words_.at(spindle);
    return words.isMagazine && !words.change.isEmpty();
}

bool ShaftWatch::hasCheck(int spindle) const {
    return !words_.at(spindle).check.isEmpty();
}

int ShaftWatch::heldTool(int spindle) const {
    const auto held = held_.find(spindle);
    return held == held_.end() ? -1 : held->second;
}

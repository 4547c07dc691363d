#include "planning/ProgramInterpreter.h"

#include <algorithm>
#include <cmath>

using planningtest::kHome;
using planningtest::kSpindles;
using planningtest::Position;

namespace {

constexpr int kRepeats = 10;
constexpr double kText = 0.0011;  ///< rounding of two positions

bool isMotion(const QString& line) {
    return line.startsWith(QStringLiteral("G1 "));
}

/// The number where `pattern` has "#", when the rest is the same. A pattern without "#" gives 0.
bool matches(const char* pattern, const QString& line, double& number) {
    const QString text = QLatin1String(pattern);
    number = 0;
    const int place = text.indexOf(QLatin1Char('#'));
    if (place < 0)
        return !text.isEmpty() && text == line;
    const QString before = text.left(place);
    const QString behind = text.mid(place + 1);
    if (!line.startsWith(before) || !line.endsWith(behind))
        return false;
    bool ok = false;
    number = line.mid(place, line.size() - before.size() - behind.size()).toDouble(&ok);
    return ok;
}

bool isNear(const Position& a, const Position& b) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::abs(a[i] - b[i]) > kText)
            return false;
    }
    return true;
}

}  // namespace

ProgramInterpreter::ProgramInterpreter(const std::vector<PlanItem>& items, Options options)
    : items_(items), options_(options) {
    current_ = nextWorking(0);
}

std::string ProgramInterpreter::report() const {
    std::string text;
    for (const std::string& fault : faults_)
        text += fault + "\n";
    return text;
}

void ProgramInterpreter::object(const std::string& text) {
    faults_.push_back("line " + std::to_string(lineNumber_) + ": " + text);
}

std::size_t ProgramInterpreter::nextWorking(std::size_t index) const {
    while (index < items_.size() && items_[index].isCurve)
        ++index;
    return index;
}

int ProgramInterpreter::shaftOf(std::size_t index) const {
    return wordsOf(items_[index].tool->spindleNo).shaft;
}

const ProgramInterpreter::Words& ProgramInterpreter::wordsOf(int spindle) {
    return kSpindles[static_cast<std::size_t>(spindle - 1)];
}

int ProgramInterpreter::runningShafts() const {
    return static_cast<int>(
        std::count_if(shafts_.begin(), shafts_.end(), [](const auto& s) { return s.second.isRunning; }));
}

void ProgramInterpreter::run(const QString& program) {
    const QStringList lines = program.split(QLatin1Char('\n'));
    if (!program.endsWith(QLatin1Char('\n')))
        object("the program does not end with a line feed");
    for (int i = 0; i < lines.size(); ++i) {
        lineNumber_ = i + 1;
        if (lines[i].isEmpty())
            continue;
        if (isMotion(lines[i])) {
            motion(lines[i]);
            continue;
        }
        int count = 1;
        while (i + count < lines.size() && lines[i + count] == lines[i])
            ++count;
        command(lines[i], count);
        i += count - 1;
    }
    finish();
}

// --- commands ---

void ProgramInterpreter::command(const QString& line, int count) {
    if (line.startsWith(QStringLiteral("(DLY"))) {
        for (auto& [number, shaft] : shafts_)
            shaft.neededDelays -= count;
        if (isInBody_)
            object("a delay inside a body");
        return;
    }
    if (count % kRepeats != 0)
        object(line.toStdString() + " stands " + std::to_string(count) + " times");
    commands_[line.toStdString()] += count / kRepeats;
    for (int block = 0; block < std::max(1, count / kRepeats); ++block)
        obey(line);
}

void ProgramInterpreter::obey(const QString& line) {
    bool isKnown = false;
    for (const Words& spindle : kSpindles) {
        double number = 0;
        if (matches(spindle.change, line, number)) {
            isKnown = true;
            change(spindle, static_cast<int>(number));
        } else if (matches(spindle.start, line, number)) {
            isKnown = true;
            start(spindle, number);
        } else if (matches(spindle.stop, line, number)) {
            isKnown = true;
            stop(spindle);
        } else if (matches(spindle.check, line, number)) {
            isKnown = true;
            checked_[spindle.number] = true;
            if (!shafts_[spindle.shaft].isRunning)
                object("a check of a spindle that stands");
        }
    }
    if (!isKnown)
        object("unknown command " + line.toStdString());
}

void ProgramInterpreter::start(const Words& spindle, double speed) {
    Shaft& shaft = shafts_[spindle.shaft];
    if (shaft.isRunning && std::abs(shaft.speed - speed) <= 0.1)
        object("spindle " + std::to_string(spindle.number) + " turns at this speed already");
    const double jump = std::abs(speed - (shaft.isRunning ? shaft.speed : 0));
    shaft.isRunning = true;
    shaft.speed = speed;
    const bool hasTime = isInBody_ || (options_.startsEarly && options_.preLaunchTime_s <= 0);
    shaft.neededDelays = jump > 10001 && !hasTime ? kRepeats : 0;
    if (runningShafts() > 2)
        object("more than two shafts turn");
    if (isInBody_)
        checkEarlyStart();
    const std::size_t next = isInBody_ ? nextWorking(last_ + 1) : current_;
    if (next >= items_.size())
        return;
    if (shaftOf(next) == spindle.shaft) {
        checkToolOf(next);
        return;
    }
    // Without room inside the body that comes, the start of the item behind it stands in front of it.
    const std::size_t behind = nextWorking(next + 1);
    if (isInBody_ || behind >= items_.size() || shaftOf(behind) != spindle.shaft) {
        object("a start of a spindle that the next item does not use");
        return;
    }
    checkToolOf(behind);
    shaft.neededDelays = 0;
    ++earlyStarts_;
    if (planningtest::linesOf(items_[next].body).size() > linesOfWait())
        object("an early start in front of a body that is longer than the wait");
}

void ProgramInterpreter::checkToolOf(std::size_t index) {
    const ToolRecord& tool = *items_[index].tool;
    const bool isMagazine = QLatin1String(wordsOf(tool.spindleNo).change).size() > 0;
    if (isMagazine && held_[tool.spindleNo] != tool.toolNo)
        object("a start before the tool change");
}

/// Lines are time: T seconds before the end are T / period lines, a part of a line counts as one.
int ProgramInterpreter::linesOfWait() const {
    const int time_ms = static_cast<int>(std::lround(options_.preLaunchTime_s * 1000));
    const int period_ms = static_cast<int>(options_.period_ms);
    return (time_ms + period_ms - 1) / period_ms;
}

void ProgramInterpreter::checkEarlyStart() {
    ++earlyStarts_;
    const int toCome = body_.size() - bodyLine_;
    if (toCome != linesOfWait())
        object("an early start " + std::to_string(toCome) + " lines before the end, not " +
               std::to_string(linesOfWait()));
}

void ProgramInterpreter::stop(const Words& spindle) {
    Shaft& shaft = shafts_[spindle.shaft];
    if (!shaft.isRunning)
        object("a stop of spindle " + std::to_string(spindle.number) + " that stands");
    if (isInBody_)
        object("a stop inside a body");
    shaft.isRunning = false;
    for (const Words& other : kSpindles) {
        if (other.shaft == spindle.shaft)
            turnedWith_.erase(other.number);
    }
}

void ProgramInterpreter::change(const Words& spindle, int tool) {
    if (runningShafts() != 0)
        object("a tool change while a shaft turns");
    if (held_.count(spindle.number) != 0 && held_[spindle.number] == tool)
        object("a change to the tool that the spindle holds");
    if (isInBody_)
        object("a tool change inside a body");
    if (hasMoved_ && std::abs(position_[2] - kHome[2]) > kText)
        object("a tool change below home");
    held_.clear();
    held_[spindle.number] = tool;
    isBehindChange_ = true;
}

// --- motion ---

void ProgramInterpreter::motion(const QString& line) {
    const Position position = planningtest::positionOf(line);
    const double feed = line.mid(line.indexOf(QLatin1Char('F')) + 1).toDouble();
    const bool isBody = feed < 2000;
    if (isBody && !isInBody_) {
        beginBody(static_cast<std::size_t>(std::lround(feed - planningtest::feedOfBody(0))));
    }
    if (!isBody && isInBody_)
        object("a body breaks off");
    follow(position);
    if (!isBody) {
        way_.push_back(position);
        return;
    }
    if (bodyLine_ >= body_.size() || body_[bodyLine_] != line)
        object("another line than the body has");
    if (++bodyLine_ >= body_.size())
        endBody();
}

void ProgramInterpreter::follow(const Position& position) {
    if (isBehindChange_ && hasMoved_ && !isNear(position, kHome))
        object("the way on from a tool change does not begin at home");
    if (!isBehindChange_ && hasMoved_) {
        for (std::size_t i = 0; i < position.size(); ++i) {
            if (std::abs(position[i] - position_[i]) > options_.largestStep + kText)
                object("a jump of " + std::to_string(position[i] - position_[i]) + " in axis " +
                       std::to_string(i + 1));
        }
    }
    isBehindChange_ = false;
    hasMoved_ = true;
    position_ = position;
}

void ProgramInterpreter::beginBody(std::size_t index) {
    if (index != current_ || index >= items_.size()) {
        object("item " + std::to_string(index) + " comes out of its turn");
        if (index >= items_.size())
            return;
    }
    const PlanItem& item = items_[index];
    const Words& spindle = wordsOf(item.tool->spindleNo);
    const Shaft& shaft = shafts_[spindle.shaft];
    if (!shaft.isRunning)
        object("item " + std::to_string(index) + " begins while its spindle stands");
    if (std::abs(shaft.speed - item.rpm) > 0.1)
        object("item " + std::to_string(index) + " begins at " + std::to_string(shaft.speed) + " rpm");
    if (shaft.neededDelays > 0)
        object("no time for a jump of the speed");
    if (QLatin1String(spindle.change).size() > 0 && held_[spindle.number] != item.tool->toolNo)
        object("item " + std::to_string(index) + " begins with another tool");
    if (turnedWith_.count(spindle.number) != 0 && turnedWith_[spindle.number] != item.tool->toolNo)
        object("item " + std::to_string(index) + " gets its tool while the spindle turns");
    turnedWith_[spindle.number] = item.tool->toolNo;
    if (QLatin1String(spindle.check).size() > 0 && !checked_[spindle.number])
        object("item " + std::to_string(index) + " begins without a check");
    checkCurves(isFirst_ ? 0 : last_ + 1, index);
    body_ = planningtest::linesOf(item.body);
    bodyLine_ = 0;
    isInBody_ = true;
    isFirst_ = false;
    last_ = index;
    way_.clear();
}

void ProgramInterpreter::endBody() {
    isInBody_ = false;
    checked_.clear();
    current_ = nextWorking(last_ + 1);
}

/// The points of the curves between two items are on the way, in their order.
void ProgramInterpreter::checkCurves(std::size_t from, std::size_t to) {
    std::size_t at = 0;
    for (std::size_t i = from; i < to && i < items_.size(); ++i) {
        if (!items_[i].isCurve)
            continue;
        for (const QString& line : planningtest::linesOf(items_[i].body)) {
            const Position point = planningtest::positionOf(line);
            while (at < way_.size() && !isNear(way_[at], point))
                ++at;
            if (at == way_.size() && options_.curvesAreExact)
                object("curve " + std::to_string(i) + " is not driven");
        }
    }
}

void ProgramInterpreter::finish() {
    if (isInBody_)
        object("the last body breaks off");
    if (current_ < items_.size())
        object("item " + std::to_string(current_) + " is missing");
    if (runningShafts() != 0)
        object("a shaft turns at the end");
    if (nextWorking(0) < items_.size())
        checkCurves(last_ + 1, items_.size());
    if (hasMoved_ && !isNear(position_, planningtest::positionOf(planningtest::kTail)))
        object("the program does not end at the tail");
}

#include "NcPlayer.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "WayGeometry.h"

namespace {

using Event = ShaftWatch::Event;

constexpr int kRepeats = 10;
constexpr int kToolAxis = 3;

std::vector<LimitOracle::Axis> axesOf(const MachineDescription& machine, const QVector<QChar>& letters) {
    constexpr double kSecondsPerMinute = 60;
    std::vector<LimitOracle::Axis> axes;
    for (const QChar letter : letters) {
        for (const auto& axis : machine.numericalAxes) {
            if (axis->name == QString(letter))
                axes.push_back({std::string(1, letter.toLatin1()),
                                axis->maxVelocity.toDouble() / kSecondsPerMinute,
                                axis->acceleration.toDouble()});
        }
    }
    return axes;
}

double periodOf(const MachineDescription& machine) {
    return machine.interpolationParameters.interpolationTime / 1000.0;
}

}  // namespace

NcPlayer::NcPlayer(const MachineDescription& machine, const NcDialect& dialect, std::vector<PlayedItem> items,
                   Options options)
    : machine_(machine),
      dialect_(dialect),
      items_(std::move(items)),
      options_(std::move(options)),
      shafts_(machine.spindles),
      beforeFront_(machine.spindles),
      flying_(axesOf(machine, dialect.letters), periodOf(machine)),
      holding_(flying_) {}

std::string NcPlayer::report() const {
    std::string text;
    for (const auto* list : {&faults_, &flying_.faults(), &holding_.faults()}) {
        for (const std::string& fault : *list) {
            if (text.size() < 2000)
                text += fault + '\n';
        }
    }
    return text;
}

void NcPlayer::object(const NcLine& line, const std::string& text) {
    faults_.push_back("line " + std::to_string(line.number) + " (" + line.text.toStdString() + "): " + text);
}

const PlayedItem* NcPlayer::behind(std::size_t index) const {
    const bool isThere = index + 1 < items_.size() && items_[index + 1].group == items_[index].group;
    return isThere ? &items_[index + 1] : nullptr;
}

void NcPlayer::play(const NcText& program) {
    faults_ = program.faults;
    const std::vector<NcLine>& lines = program.lines;
    for (std::size_t i = 0; i < lines.size();) {
        if (lines[i].kind == NcLine::Kind::Motion) {
            playMotion(lines, i++);
            continue;
        }
        int count = 1;
        while (i + static_cast<std::size_t>(count) < lines.size() &&
               lines[i + static_cast<std::size_t>(count)].text == lines[i].text)
            ++count;
        playCommands(lines, i, count);
        i += static_cast<std::size_t>(count);
    }
    finish(program);
}

// --- commands ---

void NcPlayer::playCommands(const std::vector<NcLine>& lines, std::size_t from, int count) {
    const NcLine& line = lines[from];
    expected_.reset();  // where the next spindle starts early depends on what the spindles do
    for (int i = 0; i < count; ++i)
        holdAxes(line);
    if (line.kind == NcLine::Kind::Remark)
        return;
    if (line.kind == NcLine::Kind::Delay) {
        if (body_)
            object(line, "a delay inside a body");
        return;
    }
    if (options_.known.contains(line.text)) {
        if (body_)
            object(line, "an action inside a body");
        return;
    }
    const std::optional<Event> event = shafts_.read(line.text);
    if (!event) {
        object(line, "an unknown line");
        return;
    }
    const int size = options_.isFolded ? 1 : kRepeats;
    if (count % size != 0)
        object(line, "stands " + std::to_string(count) + " times");
    for (int i = 0; i < count / size; ++i)
        playEvent(line, *event);
}

/// See NcPlayer, 3.
void NcPlayer::holdAxes(const NcLine& line) {
    if (!body_ || line.kind != NcLine::Kind::Command)
        holding_.hold(line.number);
}

void NcPlayer::playEvent(const NcLine& line, const Event& event) {
    if (event.kind == Event::Kind::Start)
        playStart(line, event);
    if (body_) {
        const PlayedItem* next = next_ < items_.size() && next_ > 0 ? behind(next_ - 1) : nullptr;
        const bool isEarly = event.kind == Event::Kind::Start || event.kind == Event::Kind::Check;
        if (!isEarly || next == nullptr || next->spindle != event.spindle)
            object(line, "a command inside a body");
    }
    if (event.kind == Event::Kind::Stop && next_ > 0) {
        const PlayedItem* next = behind(next_ - 1);
        const PlayedItem& present = items_[next_ - 1];
        if (next != nullptr && next->spindle == present.spindle && next->tool == present.tool &&
            event.spindle == present.spindle)
            object(line, "a stop of the spindle that goes on");
    }
    if (const std::string fault = shafts_.obey(event); !fault.empty())
        object(line, fault);
    if (event.kind == Event::Kind::Check)
        checked_[event.spindle] = true;
    if (event.kind != Event::Kind::Change)
        return;
    ++toolChanges_;
    const std::size_t index = toolAxisOf(items_.front().chain);
    const bool isUp = lastEnd_.empty() || lastEnd_[index] == 0;  // every shipped machine has its home there
    if (!isUp)
        object(line, "a tool change below home");
    flying_.release(line.number);
    holding_.release(line.number);
    isBehindChange_ = true;
}

void NcPlayer::playStart(const NcLine& line, const Event& event) {
    if (body_) {
        ++startsInBody_;
        const int toCome = bodyLine_ < body_->indexes.size() ? body_->indexes[bodyLine_] : -1;
        if (toCome != body_->early)
            object(line, "an early start before line " + std::to_string(toCome) + " of the body, not " +
                             std::to_string(body_->early));
        return;
    }
    if (next_ >= items_.size()) {
        object(line, "a start behind the last item");
        return;
    }
    const PlayedItem* item = &items_[next_];
    if (shafts_.shaftOf(item->spindle) != shafts_.shaftOf(event.spindle)) {
        item = behind(next_);
        beforeFront_ = shafts_;
        frontStart_ = event.spindle;
    }
    if (item == nullptr || item->spindle != event.spindle) {
        object(line, "a start of a spindle that is not needed");
        return;
    }
    if (std::abs(item->rpm - event.number) > 0.1)
        object(line, "a start at another speed than the item's");
    if (shafts_.hasMagazine(item->spindle) && shafts_.heldTool(item->spindle) != item->tool)
        object(line, "a start with another tool than the item's");
}

// --- motion ---

void NcPlayer::playMotion(const std::vector<NcLine>& lines, std::size_t place) {
    const NcLine& line = lines[place];
    const auto before = static_cast<std::size_t>(motionIndex_);
    const bool isFolded =
        motionIndex_ >= 0 && before < options_.foldedMotions.size() && options_.foldedMotions[before];
    ++motionIndex_;
    flying_.step(line.position, line.number, isFolded);
    holding_.step(line.position, line.number, isFolded);
    if (!body_ && next_ < items_.size()) {
        if (!expected_)
            expected_ = bodyOf(items_[next_]);
        if (beginsHere(lines, place, *expected_)) {
            beginBody(line, std::move(*expected_));
            expected_.reset();
        }
    }
    if (body_) {
        if (++bodyLine_ == body_->lines.size()) {
            if (body_->early > 0 && body_->early < body_->indexes.back() + 1 && startsInBody_ == 0)
                object(line, "a body without the early start");
            body_.reset();
            checked_.clear();
            isWayOpen_ = true;
            way_ = {line.position};
        }
    } else {
        checkJoin(line);
        checked_.clear();  // what counts is the check at the end of the way
        way_.push_back(line.position);
    }
    lastEnd_ = line.position;
}

int NcPlayer::earlyLine(int lines) const {
    const double period_s = periodOf(machine_);
    const int wait = static_cast<int>(std::ceil(*options_.preLaunchTime_s / period_s - 1e-6));
    return std::max(0, lines - wait);
}

/// Code as items hold it.
NcText NcPlayer::emitted(const PlayedItem& item, const QString& text) const {
    NcDialect dialect = dialect_;
    dialect.order = QString();
    for (const QChar letter : machine_.axisMap(item.chain, false))
        dialect.order += letter;
    return NcText(text, dialect);
}

/// The lines of the item as the program must have them from here on.
NcPlayer::Body NcPlayer::bodyOf(const PlayedItem& item) const {
    const NcText text = emitted(item, item.body);
    Body body;
    const ShaftWatch& shafts = frontStart_ != 0 ? beforeFront_ : shafts_;
    const PlayedItem* next = behind(next_);
    if (options_.preLaunchTime_s && next != nullptr && shafts.runningShafts() < 2 &&
        shafts.shaftOf(next->spindle) != shafts.shaftOf(item.spindle) &&
        !shafts.isRunningAt(next->spindle, next->rpm) &&
        !(shafts.hasMagazine(next->spindle) && shafts.heldTool(next->spindle) != next->tool))
        body.early = earlyLine(static_cast<int>(text.lines.size()));
    for (std::size_t i = 0; i < text.lines.size(); ++i) {
        const NcLine& line = text.lines[i];
        const bool isCut = static_cast<int>(i) == body.early;
        if (options_.isFolded && !isCut && !body.lines.empty() && body.lines.back().isSameMotion(line))
            continue;
        body.lines.push_back(line);
        body.indexes.push_back(static_cast<int>(i));
    }
    return body;
}

bool NcPlayer::beginsHere(const std::vector<NcLine>& lines, std::size_t place, const Body& body) const {
    std::size_t at = 0;
    for (std::size_t i = place; i < lines.size() && at < body.lines.size(); ++i) {
        if (lines[i].kind != NcLine::Kind::Motion)
            continue;
        if (!lines[i].isSameMotion(body.lines[at]))
            return false;
        ++at;
    }
    return at > 0 && at == body.lines.size();
}

void NcPlayer::beginBody(const NcLine& line, Body body) {
    const PlayedItem& item = items_[next_];
    if (!shafts_.isRunningAt(item.spindle, item.rpm))
        object(line, "the body begins while its spindle stands or turns at another speed");
    if (shafts_.hasMagazine(item.spindle) && shafts_.heldTool(item.spindle) != item.tool)
        object(line, "the body begins with another tool");
    if (shafts_.hasCheck(item.spindle) && !checked_[item.spindle])
        object(line, "the body begins without a check");
    const PlayedItem* next = behind(next_);
    const bool isInFront = body.early == 0 && next != nullptr;
    if (isInFront ? frontStart_ != next->spindle : frontStart_ != 0)
        object(line, "an early start in front of the body, or none where it belongs");
    if (body.early >= 0)
        ++earlyStarts_;
    // A join that ends at the feed of the body shares its last line with it.
    const bool mayShare = options_.isFolded && body.lines.front().isRapid;
    if (!mayShare && !lastEnd_.empty() && !isSamePlace(lastEnd_, line.position))
        object(line, "the join does not end where the body begins");
    way_.push_back(line.position);
    checkWay(line, next_ > 0 ? &items_[next_ - 1] : nullptr, &item);
    frontStart_ = 0;
    startsInBody_ = 0;
    body_ = std::move(body);
    bodyLine_ = 0;
    isBehindChange_ = false;
    ++next_;
}

std::size_t NcPlayer::toolAxisOf(const QString& chain) const {
    const QChar letter = machine_.axisMap(chain, false).value(kToolAxis);
    return static_cast<std::size_t>(dialect_.letters.indexOf(letter));
}

/// Where a line of the chain goes to, however its numbers are written.
std::vector<double> NcPlayer::placeOf(const QString& line, const QString& chain) const {
    std::vector<double> place(static_cast<std::size_t>(dialect_.letters.size()),
                              std::numeric_limits<double>::quiet_NaN());
    for (const QChar letter : machine_.axisMap(chain, false))
        place[static_cast<std::size_t>(dialect_.letters.indexOf(letter))] =
            line.section(letter, 1).section(QLatin1Char(' '), 0, 0).toDouble();
    return place;
}

void NcPlayer::checkJoin(const NcLine& line) {
    if (!line.isRapid)
        object(line, "a feed move that is no item's");
    const bool isHead =
        next_ >= items_.size() || next_ == 0 || items_[next_].group != items_[next_ - 1].group;
    const PlayedItem& item = items_[std::min(next_, items_.size() - 1)];
    if (isBehindChange_) {
        const QString place =
            isHead ? item.leadIn.section(QLatin1Char('\n'), 0, 0) : machine_.homeLine(item.chain);
        std::vector<double> expected = placeOf(place, item.chain);
        if (isHead)
            expected[toolAxisOf(item.chain)] = 0;
        if (!isSamePlace(expected, line.position))
            object(line, "the way behind the tool change begins elsewhere");
    } else if (isWayOpen_ && !isHead && !options_.isFolded && !isSamePlace(lastEnd_, line.position)) {
        object(line, "the join does not begin where the body ended");
    }
    isBehindChange_ = false;
    isWayOpen_ = false;
}

void NcPlayer::checkWay(const NcLine& line, const PlayedItem* from, const PlayedItem* to) {
    // Corners are blended within half a millimetre, of which the chord between two lines takes a little more.
    // A walk with early starts first cuts them 10 mm before and behind with a curve, which stays away from a
    // corner by at most 5 mm: where the way turns back. These are mm of the axes 1 to 3; the rotary axes keep
    // in step with them, which may be many degrees.
    constexpr double kBlend = 0.55;
    constexpr double kCut = 5;
    const double rounded = kBlend + (options_.preLaunchTime_s ? kCut : 0);
    std::vector<NcLine> points;
    if (from != nullptr)
        points = emitted(*from, from->leadOut).lines;
    if (to != nullptr) {
        const std::vector<NcLine> arriving = emitted(*to, to->leadIn).lines;
        points.insert(points.end(), arriving.begin(), arriving.end());
    }
    if (options_.preLaunchTime_s) {
        for (NcLine& point : points)
            forgetRotation(point);
    }
    if (const NcLine* missed = firstMissed(way_, points, rounded))
        object(line, "the way before does not lead over " + missed->text.toStdString());
}

void NcPlayer::forgetRotation(NcLine& point) const {
    for (const PlayedItem& item : items_) {
        const AxisMap letters = machine_.axisMap(item.chain, false);
        for (auto axis = letters.upperBound(kToolAxis); axis != letters.end(); ++axis)
            point.position[static_cast<std::size_t>(dialect_.letters.indexOf(axis.value()))] =
                std::numeric_limits<double>::quiet_NaN();
    }
}

/// The last chain ends where the run began, in the axes that its first line names. A run of one group goes to
/// where its header stands, which is home here. Two runs have no such end: one whose first group moves
/// nothing, and one whose last group moves nothing; that group's tail would have led there.
void NcPlayer::checkReturn(const NcText& program) {
    const std::vector<const NcLine*> motions = program.motions();
    if (items_.empty() || items_.front().group != 1 || items_.back().group != options_.groups)
        return;
    const PlayedItem& last = items_.back();
    const std::vector<double> aim =
        options_.groups == 1 ? placeOf(machine_.homeLine(last.chain), last.chain) : motions.front()->position;
    for (const QChar letter : machine_.axisMap(last.chain, false)) {
        const auto axis = static_cast<std::size_t>(dialect_.letters.indexOf(letter));
        if (!std::isnan(aim[axis]) && aim[axis] != motions.back()->position[axis])
            object(*motions.back(), "the run does not return to where it began");
    }
}

void NcPlayer::finish(const NcText& program) {
    if (program.lines.empty())
        return;
    const NcLine& last = program.lines.back();
    flying_.hold(last.number);
    holding_.hold(last.number);
    if (body_)
        object(last, "the last body breaks off");
    if (next_ < items_.size())
        object(last, "item " + std::to_string(next_) + " is missing");
    if (shafts_.runningShafts() != 0)
        object(last, "a spindle turns at the end");
    if (next_ > 0)
        checkWay(last, &items_[next_ - 1], nullptr);
    checkReturn(program);
}

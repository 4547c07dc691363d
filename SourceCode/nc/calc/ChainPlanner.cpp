#include "nc/calc/ChainPlanner.h"

#include "nc/calc/AxisWords.h"
#include "nc/calc/LineWriter.h"
#include "nc/calc/ProgramText.h"

namespace {

constexpr int kToolAxis = 3;

QString joined(const QString& first, const QString& second) {
    return first.isEmpty() ? second : first + QLatin1Char('\n') + second;
}

/// Where the item ends: its lead-out, without one the last point of its body.
QString leaving(const PlanItem& item) {
    return item.leadOut.isEmpty() ? lastLineOf(item.body).toString() : item.leadOut;
}

/// Where the item begins: its lead-in, without one the first point of its body.
QString arriving(const PlanItem& item) {
    return item.leadIn.isEmpty() ? firstLineOf(item.body).toString() : item.leadIn;
}

/// True when the spindle of `items[index]` is needed again so soon that it stays on: by one of the next two
/// items, unless a long one comes before. A spindle that gets another tool stands for it. Curves use none.
bool staysOn(const std::vector<PlanItem>& items, std::size_t index, const SpindleModel& spindles,
             unsigned interpolationTime_ms) {
    constexpr std::size_t kItemsAhead = 2;
    constexpr quint32 kLongItem_ms = 300000;
    for (std::size_t i = index + 1; i < items.size() && i <= index + kItemsAhead; ++i) {
        if (items[i].isCurve)
            continue;
        if (spindles.needsOtherTool(items[index], items[i]))
            return false;
        if (spindles.shareSpindle(items[index], items[i]))
            return !spindles.holdsOtherTool(items[i]);
        if (runTime_ms(items[i].body, interpolationTime_ms) > kLongItem_ms)
            return false;
    }
    return false;
}

}  // namespace

ChainPlanner::ChainPlanner(const ChainJob& job, SpindleModel& spindles, Diagnostics& diagnostics)
    : job_(job), spindles_(spindles), diagnostics_(diagnostics) {}

QString ChainPlanner::PlanningWithPreBoot(const std::vector<PlanItem>& items) {
    return plan(items, true);
}

QString ChainPlanner::planPlainly(const std::vector<PlanItem>& items) {
    return plan(items, false);
}

QString ChainPlanner::plan(const std::vector<PlanItem>& items, bool startsEarly) {
    startsEarly_ = startsEarly;
    if (items.empty())
        return {};
    reserve(items);
    if (isTooLong_ || !write(items) || isTooLong_) {
        if (isTooLong_)
            diagnostics_.add(Severity::Warning, QStringLiteral("The program of the chain is too long."));
        return {};
    }
    return std::move(out_);
}

/// One piece of memory for the bodies, so that a chain is joined in time linear in its length.
void ChainPlanner::reserve(const std::vector<PlanItem>& items) {
    constexpr qsizetype kRoomForJoin = 10000;
    qsizetype size = 0;
    for (const PlanItem& item : items)
        size += item.body.size() + kRoomForJoin;
    isTooLong_ = size > LineWriter::kMaxLength;
    if (!isTooLong_)
        out_.reserve(static_cast<int>(size));
}

bool ChainPlanner::write(const std::vector<PlanItem>& items) {
    findStations(items);
    if (!job_.preAction.isEmpty())
        out_ += job_.preAction + QLatin1Char('\n');
    if (stations_.empty()) {
        writeCurves();
        return true;
    }
    const bool isToolChanged = changeFirstTool();
    if (!writeApproach(isToolChanged))
        return false;
    for (std::size_t k = 0; k + 1 < stations_.size(); ++k) {
        writeBody(k);
        writeStop(items, stations_[k]);
        if (!writeWayOn(stations_[k], *stations_[k + 1].item))
            return false;
    }
    writeBody(stations_.size() - 1);
    return writeEnd(stations_.back());
}

void ChainPlanner::findStations(const std::vector<PlanItem>& items) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!items[i].isCurve) {
            stations_.push_back({&items[i], i, {}});
        } else if (stations_.empty()) {
            leadingCurves_ = joined(leadingCurves_, items[i].body);
        } else {
            Station& station = stations_.back();
            if (station.curve == nullptr)
                station.curve = &items[i];
            station.curves = joined(station.curves, items[i].body);
        }
    }
}

/// A chain of nothing but curves moves and switches no spindle.
void ChainPlanner::writeCurves() {
    writePostAction();
    const QString way = joinedPath(job_.header, leadingCurves_, job_.letters, job_.entry, diagnostics_);
    writePath(joinedPath(way, job_.tail, job_.letters, job_.exit, diagnostics_), startsEarly_);
}

/// The first tool of a magazine, also when an item on another spindle comes before. True when a command was
/// written.
bool ChainPlanner::changeFirstTool() {
    for (const Station& station : stations_) {
        if (!spindles_.hasMagazine(*station.item))
            continue;
        if (!spindles_.needsToolChange(*station.item))
            return false;
        out_ += spindles_.changeTool(*station.item);
        return true;
    }
    return false;
}

bool ChainPlanner::writeApproach(bool isToolChanged) {
    const PlanItem& first = *stations_.front().item;
    if (spindles_.find(first) == nullptr)
        return refuse("spindle is nullptr");
    out_ += spindles_.forcedStart(first) + spindles_.delayLine();
    if (!isToolChanged) {
        const QString path = joined(leadingCurves_, arriving(first));
        writePath(joinedPath(job_.header, path, job_.letters, job_.entry, diagnostics_), startsEarly_);
        return true;
    }
    const QString path = joined(leadingCurves_, first.leadIn);
    QString above = firstLineOf(path).toString();
    if (above.isEmpty())
        return refuse("not contain lead in");
    if (!ModifyAxisPosition(above, job_.letters, kToolAxis, 0.0, diagnostics_))
        return false;
    writePath(joined(above, path), startsEarly_);
    return true;
}

/// Check block and body. Lines are time: a command T seconds before the end is a command so many lines before
/// the end.
void ChainPlanner::writeBody(std::size_t k) {
    const PlanItem& item = *stations_[k].item;
    out_ += spindles_.check(item);
    QString early;
    if (startsEarly_ && k + 1 < stations_.size())
        early = spindles_.earlyStart(item, *stations_[k + 1].item);
    InsertPreLaunch(out_, item.body, early, job_.preLaunchTime_s, job_.period_s);
    out_ += QLatin1Char('\n');
}

void ChainPlanner::writeStop(const std::vector<PlanItem>& items, const Station& station) {
    if (!staysOn(items, station.index, spindles_, job_.interpolationTime_ms))
        out_ += spindles_.stop(*station.item);
}

bool ChainPlanner::writeWayOn(const Station& station, const PlanItem& next) {
    const QString path = joined(station.curves, arriving(next));
    if (spindles_.needsToolChange(next)) {
        if (next.leadIn.isEmpty() && station.curves.isEmpty())
            return refuse("not contain lead in");
        return writeToolChange(*station.item, {next, station.curves, path, true});
    }
    out_ += spindles_.start(next);
    writePath(joined(leaving(*station.item), path), startsEarly_);
    return true;
}

bool ChainPlanner::writeEnd(const Station& station) {
    const PlanItem& last = *station.item;
    const SpindleState* spindle = spindles_.find(last);
    bool isNeededBehind = false;
    for (const SpindleState& other : spindles_.states()) {
        if (spindle != nullptr && other.shaft == spindle->shaft && job_.endCoordinates.contains(other.name))
            isNeededBehind = true;
    }
    if (!isNeededBehind)
        out_ += spindles_.stop(last);
    writePostAction();
    if (station.curve != nullptr && spindles_.needsToolChange(*station.curve)) {
        const QString path = joinedPath(station.curves, job_.tail, job_.letters, job_.exit, diagnostics_);
        return writeToolChange(last, {*station.curve, station.curves, path, false});
    }
    const QString out = joined(leaving(last), station.curves);
    writePath(joinedPath(out, job_.tail, job_.letters, job_.exit, diagnostics_), startsEarly_);
    return true;
}

/// The tool goes up to home, is changed, and comes back by way of home: all axes at home, then at the height
/// of home over the new place, then down. The magazine leaves the machine at home.
bool ChainPlanner::writeToolChange(const PlanItem& from, const Way& way) {
    if (!job_.letters.contains(kToolAxis))
        return refuse("Id error.not contains.");
    const QString first = firstLineOf(way.path).toString();
    if (first.isEmpty())
        return refuse("not contain lead in");
    const auto atHome = [this](const QString& line, const QList<int>& ids) {
        return withAxisWords(line, job_.homeLine, job_.letters, ids, diagnostics_);
    };
    const QString out = leaving(from);
    writePath(joined(out, atHome(lastLineOf(out).toString(), {kToolAxis})), false);

    out_ += spindles_.changeTool(way.next);
    if (way.startsSpindle)
        out_ += spindles_.start(way.next);
    out_ += spindles_.delayLine();

    const QString down = joined(atHome(first, job_.letters.keys()), atHome(first, {kToolAxis}));
    if (way.curves.isEmpty()) {
        writePath(joined(down, way.path), false);
    } else {
        writePath(joined(down, first), false);
        writePath(way.path, startsEarly_);
    }
    return true;
}

void ChainPlanner::writePath(const QString& code, bool densePoint) {
    const QString path = job_.retime(code, densePoint);
    isTooLong_ = isTooLong_ || out_.size() + path.size() > LineWriter::kMaxLength;
    if (!isTooLong_)
        out_ += path;
}

void ChainPlanner::writePostAction() {
    if (job_.postAction.isEmpty())
        return;
    out_ += job_.postAction;
    if (!out_.endsWith(QLatin1Char('\n')))
        out_ += QLatin1Char('\n');
}

bool ChainPlanner::refuse(const char* text) {
    diagnostics_.add(Severity::Fatal, QLatin1String(text));
    return false;
}

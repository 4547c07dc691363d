#include "planning/PlanningTestSupport.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "nc/TestMachine.h"

namespace planningtest {

const std::array<SpindleWords, 7> kSpindles{{
    {1, "M3 S#", "M5", "M93 S#", "M6 T#", "12", 1, ""},
    {2, "M13 S#", "M15", "M94", "", "1", 2, ""},
    {3, "S# M23", "M25", "", "", "1", 3, ""},
    {4, "M43 S#", "M45", "M96", "", "", 4, ""},
    {5, "M53 S#", "M55", "", "", "1", 2, "T2"},
    {6, "M63 S#", "M65", "", "M66 T#", "4", 6, ""},
    {7, "M73 S#", "M75", "", "", "1", 7, ""},
}};

namespace {

constexpr const char* kLetters = "XYZCA";

std::unique_ptr<spindleStruct> spindleOf(const SpindleWords& words) {
    auto record = std::make_unique<spindleStruct>();
    record->name = QStringLiteral("T%1").arg(words.number);
    record->startString = QLatin1String(words.start);
    record->stopString = QLatin1String(words.stop);
    record->checkString = QLatin1String(words.check);
    record->toolChangeString = QLatin1String(words.change);
    record->range = QLatin1String(words.range);
    record->coaxial = QLatin1String(words.coaxial);
    return record;
}

double uniform(std::mt19937& random, double low, double high) {
    return std::round(std::uniform_real_distribution<double>(low, high)(random) * 1000) / 1000;
}

int pick(std::mt19937& random, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
}

Position somewhere(std::size_t seed) {
    std::mt19937 random(static_cast<unsigned>(seed) * 7919U + 17U);
    return {uniform(random, -200, 200), uniform(random, -200, 200), uniform(random, 0, 100),
            uniform(random, -90, 90), uniform(random, -30, 30)};
}

Position above(Position position) {
    position[2] = 120;
    return position;
}

}  // namespace

std::unique_ptr<MachineDescription> planningMachine(unsigned interpolationTime_ms) {
    auto machine = fiveAxisMachine(interpolationTime_ms);
    for (std::size_t i = 0; i < kHome.size(); ++i)
        machine->numericalAxes[i]->homePosition = QString::number(kHome[i]);
    machine->interpolationParameters.rapidThreshold = kRapid;
    machine->userCommand.delay = QStringLiteral("(DLY,1)");
    for (const SpindleWords& words : kSpindles)
        machine->spindles.push_back(spindleOf(words));
    return machine;
}

QString lineOf(const Position& position, double feed) {
    char buffer[160];
    std::snprintf(buffer, sizeof buffer, "G1 X%.3f Y%.3f Z%.3f C%.3f A%.3f F%.0f\n", position[0], position[1],
                  position[2], position[3], position[4], feed);
    return QString::fromLatin1(buffer);
}

Position positionOf(const QString& line) {
    Position position{};
    const std::string text = line.toStdString();
    for (std::size_t i = 0; i < position.size(); ++i) {
        const std::size_t at = text.find(kLetters[i]);
        if (at != std::string::npos)
            position[i] = std::strtod(text.c_str() + at + 1, nullptr);
    }
    return position;
}

QStringList linesOf(const QString& text) {
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString straightRetime(const QString& code) {
    const QStringList lines = linesOf(code);
    if (lines.size() < 2)
        return {};
    const double feed = lines.back().mid(lines.back().indexOf(QLatin1Char('F')) + 1).toDouble();
    Position last = positionOf(lines.front());
    QString text = lineOf(last, feed);
    for (const QString& line : lines) {
        const Position next = positionOf(line);
        double longest = 0;
        for (std::size_t i = 0; i < next.size(); ++i)
            longest = std::max(longest, std::abs(next[i] - last[i]));
        const int steps = static_cast<int>(std::ceil(longest / (kLargestStep * 0.9)));
        for (int step = 1; step <= steps; ++step) {
            Position between{};
            for (std::size_t i = 0; i < next.size(); ++i)
                between[i] = last[i] + (next[i] - last[i]) * step / steps;
            text += lineOf(between, feed);
        }
        last = next;
    }
    return text;
}

double feedOfBody(std::size_t index) {
    return 1000 + static_cast<double>(index);
}

PlanItem& TestItems::add(int spindle, int tool, double rpm, int bodyLines) {
    const std::size_t index = items.size();
    const double feed = feedOfBody(index);
    tools.emplace_back();
    tools.back().spindleNo = spindle;
    tools.back().toolNo = tool;
    Position position = somewhere(index);
    PlanItem item{&tools.back(), rpm, false, {}, {}, {}};
    item.leadIn = lineOf(above(position), kRapid) + lineOf(position, kRapid);
    for (int i = 0; i < bodyLines; ++i) {
        item.body += lineOf(position, feed);
        if (i + 1 < bodyLines)
            position[0] += 0.5;
    }
    item.leadOut = lineOf(position, kRapid) + lineOf(above(position), kRapid);
    items.push_back(item);
    return items.back();
}

PlanItem& TestItems::addCurve(int spindle, int tool) {
    tools.emplace_back();
    tools.back().spindleNo = spindle;
    tools.back().toolNo = tool;
    items.push_back({&tools.back(), 1234, true, {}, {}, {}});
    return items.back();
}

void TestItems::connectCurves() {
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!items[i].isCurve)
            continue;
        const QString from = i > 0 ? linesOf(items[i - 1].leadOut).back() : kHeader;
        const QString to = i + 1 < items.size() && !items[i + 1].isCurve
                               ? linesOf(items[i + 1].leadIn).front()
                               : (i + 1 < items.size() ? lineOf(somewhere(i + 500), kRapid) : kTail);
        Position middle = positionOf(from);
        const Position end = positionOf(to);
        for (std::size_t k = 0; k < middle.size(); ++k)
            middle[k] = (middle[k] + end[k]) / 2;
        middle[2] += 30;
        items[i].body = lineOf(positionOf(from), kRapid) + lineOf(middle, kRapid) + lineOf(end, kRapid);
        items[i].leadIn = linesOf(items[i].body).front();
        items[i].leadOut = linesOf(items[i].body).back();
    }
}

TestItems randomItems(std::mt19937& random) {
    static constexpr std::array<double, 6> kSpeeds{6000, 6000.05, 18000, -18000, 9000, 4500.5};
    TestItems program;
    const int count = pick(random, 1, 9);
    bool isCurveAllowed = true;
    for (int i = 0; i < count; ++i) {
        const int spindle = pick(random, 0, 2) == 0 ? 1 : pick(random, 1, 7);
        const int tool =
            spindle == 1 || spindle == 6 ? pick(random, 1, 3) : spindle * 10 + pick(random, 0, 1);
        if (isCurveAllowed && pick(random, 0, 3) == 0) {
            program.addCurve(spindle, tool);
            isCurveAllowed = false;
        } else {
            const double rpm = kSpeeds[static_cast<std::size_t>(pick(random, 0, 5))];
            program.add(spindle, tool, rpm, pick(random, 0, 4) == 0 ? 1 : pick(random, 2, 400));
            isCurveAllowed = true;
        }
    }
    program.connectCurves();
    return program;
}

std::string description(const TestItems& program) {
    std::string text;
    for (const PlanItem& item : program.items) {
        char buffer[96];
        std::snprintf(buffer, sizeof buffer, "%s T%d tool %d %g rpm, %d lines; ",
                      item.isCurve ? "curve" : "item", item.tool->spindleNo, item.tool->toolNo, item.rpm,
                      linesOf(item.body).size());
        text += buffer;
    }
    return text;
}

ChainJob jobFor(const MachineDescription& machine, double preLaunchTime_s) {
    ChainJob job;
    job.header = kHeader;
    job.tail = kTail;
    job.homeLine = machine.homeLine(kChain);
    job.letters = machine.axisMap(kChain, false);
    job.preLaunchTime_s = preLaunchTime_s;
    job.interpolationTime_ms = machine.interpolationParameters.interpolationTime;
    job.period_s = job.interpolationTime_ms / 1000.0;
    job.retime = [](const QString& code, bool) { return straightRetime(code); };
    return job;
}

}  // namespace planningtest

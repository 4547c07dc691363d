#include "nc/calc/IsoInterpreter.h"

#include "core/calc/NumberText.h"
#include "nc/calc/IsoInclinedPlane.h"
#include "nc/calc/IsoLetters.h"

// Words of the dialect: lines, G words, planes. IsoInterpreterMotion.cpp makes the way points.

namespace {
constexpr int kAxisEntries = 5;
}

IsoInterpreter::IsoInterpreter(const MachineDescription& machine, const QString& chain,
                               Diagnostics& diagnostics)
    : rapidFeed(machine.interpolationParameters.rapidThreshold), machine_(machine) {
    if (const auto letters = nickNameLetters(machine, machine.axisMap(chain, false), diagnostics))
        useLetters(*letters);
}

void IsoInterpreter::useLetters(const AxisMap& letters) {
    letters_ = letters;
    axes_.clear();
    for (auto it = letters.begin(); it != letters.end(); ++it) {
        if (it.key() >= 1 && it.key() <= kAxisEntries)
            axes_.push_back({it.key() - 1, it.value()});
    }
}

bool IsoInterpreter::refuse(Diagnostics& diagnostics, const char* reason) const {
    diagnostics.add(Severity::Warning, QString::fromLatin1(reason), lineNumber_);
    return false;
}

bool IsoInterpreter::run(QStringView code, Diagnostics& diagnostics) {
    working_ = WayPoint();
    working_.count = kAxisEntries;
    if (auxiliaryValue)
        working_.append(*auxiliaryValue);
    working_.append(rapidFeed);

    IsoLine line;
    LineReader reader(code);
    while (reader.next()) {
        lineNumber_ = reader.lineNumber();
        line.set(reader.line());
        if (!line.isIgnored() && !readLine(line, diagnostics))
            return false;
    }
    lineNumber_ = 0;
    return true;
}

bool IsoInterpreter::readLine(const IsoLine& line, Diagnostics& diagnostics) {
    const Scan scan = readGWords(line, diagnostics);
    if (scan != Scan::GoOn)
        return scan == Scan::LineDone;
    if (line.isDirective()) {
        const QStringView directive = line.directive();
        return directive.startsWith(u"UPR") ? handleUpr(directive, diagnostics) : true;
    }
    if (line.isAssignment())
        return true;
    if (const std::optional<double> feed = line.word(u'F'))
        modes.feed_mmPerMin = *feed;
    return move(line, diagnostics);
}

IsoInterpreter::Scan IsoInterpreter::readGWords(const IsoLine& line, Diagnostics& diagnostics) {
    GWords words(line);
    while (const std::optional<int> word = words.next()) {
        if (*word >= 0 && *word <= 3)
            modes.motion = *word;
        else if (*word == 90 || *word == 91)
            modes.distance = *word;
        else if (*word >= 16 && *word <= 19)
            return choosePlane(*word, line, diagnostics) ? Scan::LineDone : Scan::Failed;
    }
    return Scan::GoOn;
}

bool IsoInterpreter::choosePlane(int plane, const IsoLine& line, Diagnostics& diagnostics) {
    constexpr int kInclined = 16;
    modes.plane = plane;
    if (plane != kInclined || !line.has(u'U') || !line.has(u'V'))
        return resetLetters(diagnostics);
    if (points.empty())
        return refuse(diagnostics, "G16 with U and V needs a move before it");
    AxisMap letters = letters_;
    letters[1] = u'U';
    letters[2] = u'V';
    letters[3] = u'W';
    useLetters(letters);
    modes.heldFourth = points.back()[3];
    modes.heldFifth = points.back()[4];
    return true;
}

bool IsoInterpreter::resetLetters(Diagnostics& diagnostics) {
    const std::optional<AxisMap> letters = nickNameLetters(machine_, letters_, diagnostics);
    if (!letters) {
        diagnostics.entries.back().line = lineNumber_;
        return false;
    }
    useLetters(*letters);
    return true;
}

bool IsoInterpreter::handleUpr(QStringView directive, Diagnostics& diagnostics) {
    const InclinedPlane plane = inclinedPlaneOf(directive);
    switch (plane.kind) {
        case InclinedPlane::Kind::Unchanged:
            return true;
        case InclinedPlane::Kind::BadLetters:
            diagnostics.add(Severity::Debug, QStringLiteral("UPR Error."), lineNumber_);
            return true;
        case InclinedPlane::Kind::OutOfRange:
            return refuse(diagnostics, "a number of the inclined plane is out of range");
        case InclinedPlane::Kind::Plane:
            break;
    }
    modes.inclinedPlane = plane.matrix;
    return points.empty() || followTool(diagnostics);
}

#include <QString>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "machine/calc/MachineDescription.h"
#include "nc/calc/FeedRuns.h"
#include "nc/calc/IsoInterpreter.h"
#include "nc/calc/PathSplit.h"

// Any bytes as an ISO program: way points are finite, a refusal names its line, the splits hold together.

namespace {

void addAxis(MachineDescription& machine, char16_t name, char16_t nickName, int id) {
    auto axis = std::make_unique<numericalAxisStruct>();
    axis->name = QChar(name);
    axis->nickName = QChar(nickName);
    axis->id = id;
    axis->direction = QStringLiteral("0 0 1");
    machine.numericalAxes.push_back(std::move(axis));
}

const MachineDescription& machine() {
    static const std::unique_ptr<MachineDescription> description = [] {
        auto made = std::make_unique<MachineDescription>();
        addAxis(*made, u'X', u'X', 1);
        addAxis(*made, u'Y', u'Y', 2);
        addAxis(*made, u'Z', u'Z', 3);
        addAxis(*made, u'C', u'C', 4);
        addAxis(*made, u'A', u'A', 5);
        addAxis(*made, u'U', u'X', 7);
        addAxis(*made, u'V', u'Y', 8);
        addAxis(*made, u'W', u'Z', 9);
        made->rebuildIndex();
        return made;
    }();
    return *description;
}

void require(bool holds) {
    if (!holds)
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kEnoughPoints = 100'000;
    const QString code = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    Diagnostics diagnostics;
    IsoInterpreter interpreter(machine(), QStringLiteral("XYZCA"), diagnostics);
    interpreter.mostPoints = kEnoughPoints;
    if (size > 0 && data[0] % 2 == 0)
        interpreter.auxiliaryValue = 5.0;
    const bool done = interpreter.run(code, diagnostics);
    require(done || diagnostics.entries.back().line > 0);
    require(allFinite(interpreter.points));
    require(interpreter.points.size() <= kEnoughPoints);

    WayPoints path = interpreter.points;
    const WayPoints head = splitHead(path, interpreter.rapidFeed);
    const WayPoints tail = splitTail(path, interpreter.rapidFeed);
    require(path.empty() == interpreter.points.empty());
    require(head.empty() == path.empty() && tail.empty() == path.empty());
    std::size_t end = 0;
    for (const FeedRun& run : feedRuns(path))
        end = run.end;
    require(end == path.size());
    return 0;
}

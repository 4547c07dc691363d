#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "TestMachine.h"
#include "nc/calc/IsoInterpreter.h"

// One ISO program read on a small machine, for the tests of the dialect.

/// X, Y, Z, C about Z, A about X; rapid feed 20000; chain "XYZCA".
inline std::unique_ptr<MachineDescription> isoMachine(std::initializer_list<TestAxis> more = {}) {
    std::unique_ptr<MachineDescription> machine = fiveAxisMachine();
    std::unique_ptr<MachineDescription> others = makeTestMachine(more);
    for (auto& axis : others->numericalAxes)
        machine->numericalAxes.push_back(std::move(axis));
    machine->numericalAxes[3]->direction = QStringLiteral("0 0 1");
    machine->interpolationParameters.rapidThreshold = 20000;
    machine->rebuildIndex();
    return machine;
}

/// The same with axes named U, V and W of no use but to be found by name; their letters in ISO text are X, Y
/// and Z, so that a program can leave an inclined plane.
inline std::unique_ptr<MachineDescription> planeMachine() {
    std::unique_ptr<MachineDescription> machine = isoMachine({{"U", 7}, {"V", 8}, {"W", 9}});
    for (const int i : {5, 6, 7})
        machine->numericalAxes[static_cast<std::size_t>(i)]->nickName = QStringLiteral("XYZ")[i - 5];
    return machine;
}

struct IsoProgram {
    explicit IsoProgram(const QString& code, std::unique_ptr<MachineDescription> description = isoMachine(),
                        std::optional<double> auxiliaryValue = {}, const QString& chain = "XYZCA")
        : machine(std::move(description)), interpreter(*machine, chain, diagnostics) {
        interpreter.auxiliaryValue = auxiliaryValue;
        done = interpreter.run(code, diagnostics);
    }

    [[nodiscard]] const WayPoints& points() const { return interpreter.points; }
    [[nodiscard]] QString firstText() const {
        return diagnostics.entries.empty() ? QString() : diagnostics.entries.front().text;
    }
    [[nodiscard]] int firstLine() const {
        return diagnostics.entries.empty() ? -1 : diagnostics.entries.front().line;
    }

    std::unique_ptr<MachineDescription> machine;
    Diagnostics diagnostics;
    IsoInterpreter interpreter;
    bool done = false;
};

inline std::vector<double> entries(const WayPoint& point) {
    return {point.values.begin(), point.values.begin() + point.count};
}

inline WayPoint wayPoint(std::initializer_list<double> values) {
    WayPoint point;
    for (const double value : values)
        point.append(value);
    return point;
}

#pragma once

#include <memory>

#include "machine/calc/MachineDescription.h"

// A machine of a few lines for the tests of the NC folder.

struct TestAxis {
    const char* name;
    int id;
    const char* acceleration = "1000";
    const char* maxVelocity = "60000";
    const char* jerk = "50000";
    const char* lower = "-1000";
    const char* upper = "1000";
};

inline std::unique_ptr<MachineDescription> makeTestMachine(std::initializer_list<TestAxis> axes,
                                                           unsigned interpolationTime_ms = 4) {
    auto machine = std::make_unique<MachineDescription>();
    for (const TestAxis& axis : axes) {
        auto record = std::make_unique<numericalAxisStruct>();
        record->name = QString::fromUtf8(axis.name);
        record->nickName = record->name;
        record->homePosition = QStringLiteral("0");
        record->acceleration = QString::fromUtf8(axis.acceleration);
        record->maxVelocity = QString::fromUtf8(axis.maxVelocity);
        record->jerk = QString::fromUtf8(axis.jerk);
        record->lower = QString::fromUtf8(axis.lower);
        record->upper = QString::fromUtf8(axis.upper);
        record->direction = QStringLiteral("1 0 0");
        record->initialization = QStringLiteral("0 0 0");
        record->type = QStringLiteral("LINEAR");
        record->id = axis.id;
        machine->numericalAxes.push_back(std::move(record));
    }
    machine->interpolationParameters.interpolationTime = interpolationTime_ms;
    machine->rebuildIndex();
    return machine;
}

/// Three linear and two rotary axes, chain "XYZCA".
inline std::unique_ptr<MachineDescription> fiveAxisMachine(unsigned interpolationTime_ms = 4) {
    return makeTestMachine({{"X", 1}, {"Y", 2}, {"Z", 3}, {"C", 4}, {"A", 5}}, interpolationTime_ms);
}

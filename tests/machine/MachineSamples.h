#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

#include "machine/calc/MachineDescription.h"

// Machines for tests, made without a file.

struct SampleAxis {
    QString name;
    int id = 6;
    QString type = QStringLiteral("LINEAR");
    QString direction = QStringLiteral("1 0 0");
    QString initialization = QStringLiteral("0 0 0");
    QString lower = QStringLiteral("-1000");
    QString upper = QStringLiteral("1000");
};

/// A machine of these axes; name and nick name are the same.
[[nodiscard]] std::unique_ptr<MachineDescription> sampleMachine(const std::vector<SampleAxis>& axes);

/// X, Y, Z, C (id 4, about +Z), A (id 5, about +X, 150 mm above its own place), V (id 6); spindle T1 at
/// (1, 2, 30) with an angle offset of 5 degrees, T2 without one; G54 at (100, 200, 300).
[[nodiscard]] std::unique_ptr<MachineDescription> fiveAxisMachine();

/// Places of fiveAxisMachine's X, Y and Z, summed, in front of which G54 adds its origin.
inline const SbVec3f kSampleLinearOffset{11, 22, 33};

/// A machine file with one record of each kind and every element.
[[nodiscard]] QByteArray sampleMachineFile();

/// sampleMachineFile without the root's child element of this name.
[[nodiscard]] QByteArray sampleMachineFileWithout(const QByteArray& element);

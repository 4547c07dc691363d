#pragma once

#include <array>
#include <memory>

#include "machine/calc/Kinematics.h"

// The transform once more, by other means: as an oracle for the tests.

/// One case: what KinematicTransform::make takes, and the numbers that it should draw from it.
struct KinematicCase {
    std::unique_ptr<MachineDescription> machine;
    KinematicTool tool;
    double extraLength_mm = 0;
    SbVec3f userOffset_mm{0, 0, 0};
    QString chain = QStringLiteral("X->Y->Z->C->A");
    QString workSystem = QStringLiteral("G54");
    SbVec3f base_mm{0, 0, 0};        ///< origin + user offset + places of the linear axes
    SbVec3f toolVector_mm{0, 0, 0};  ///< tip with its mounting + spindle offset
    SbVec3f direction4{0, 0, 0};
    SbVec3f direction5{0, 0, 0};
    SbVec3f offset5_mm{0, 0, 0};
    float spindleAngle_deg = 0;

    [[nodiscard]] KinematicTransform make(int mode) const;
};

/// fiveAxisMachine with an end mill of 100 mm on T1, mounted straight, and 10 mm extra length.
[[nodiscard]] KinematicCase plainCase();
/// A machine, tool and offsets of random numbers; with compensations when asked for.
[[nodiscard]] KinematicCase randomCase(unsigned seed, bool compensated);

/// k through SbRotation and SbMatrix, as the formula has it.
[[nodiscard]] SbVec3f literalOffset(const KinematicCase& data, int mode, float a4_deg, float a5_deg);
/// k in double precision by Rodrigues' rotation formula.
[[nodiscard]] std::array<double, 3> exactOffset(const KinematicCase& data, int mode, double a4_deg,
                                                double a5_deg);
/// The text rule word by word, with the slow means of the text library.
[[nodiscard]] QString literalText(const KinematicCase& data, int mode, const QString& text);

#pragma once

#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>

#include <QString>
#include <QStringView>
#include <optional>

#include "machine/calc/MachineRecords.h"
#include "machine/calc/NodeKinematics.h"

/// What a node of the machine knows about itself. Lengths in mm, angles in degrees.
struct AxisRecord {
    enum Kind { Numerical = 0, NonNumerical = 1 };

    QString name;  ///< scene name and key
    int kind = Numerical;
    MotionType motionType = MotionType::Linear;
    SbColor color{1, 1, 1};
    SbColor collisionColor{1, 0, 0};
    SbColor highlightColor{1, 1, 0};
    int id = -1;  ///< kinematic role
    SbVec3f direction{0, 0, 1};
    SbVec3f offset{0, 0, 0};  ///< place in the parent
    double lower = 0;
    double upper = 0;
    double home = 0;
    double value = 0;
    QString modelPath;
    double step = 0.001;  ///< of the slider
};

/// What a numerical axis adds.
struct AxisDynamics {
    double maxVelocity = 0;
    double acceleration = 0;
    double jerk = 0;
};

struct AxisReading {
    AxisRecord record;
    AxisDynamics dynamics;
    bool hasVectors = false;  ///< place and direction are three numbers each
    bool hasColor = false;    ///< otherwise white
};

/// A numerical axis stands at the negated `initialization` of the file.
[[nodiscard]] AxisReading readAxis(const numericalAxisStruct& axis);
/// A part that is no axis stands at `initialization` as it is; nothing unless place, direction and colour are
/// three numbers each.
[[nodiscard]] std::optional<AxisRecord> readAxis(const nonNumericalAxisStruct& part);

/// The number behind the letter of an ISO word such as "X12.5"; nothing when there is no finite number.
[[nodiscard]] std::optional<float> wordValue(QStringView word);

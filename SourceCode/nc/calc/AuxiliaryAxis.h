#pragma once

#include <QString>

/// The auxiliary axis (id 6) of a program group.
struct AuxiliaryAxis {
    QString name;
    double value = 0;         ///< current value, mm or degrees
    double acceleration = 0;  ///< per s^2
    double jerk = 0;          ///< per s^3
};

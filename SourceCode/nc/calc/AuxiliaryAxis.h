#pragma once

#include <QString>
#include <memory>

class MachineDescription;

/// The auxiliary axis (id 6) of a program group: the record of the machine's axis as numbers, and where the
/// axis stands. mm or degrees.
struct AuxiliaryAxis {
    QString name;
    double value = 0;         ///< current value
    double acceleration = 0;  ///< per s^2
    double jerk = 0;          ///< per s^3
    int id = 6;
    QString nickName = {};   ///< letter in which ISO programs are written
    double homing = 0;       ///< home position
    double maxVelocity = 0;  ///< per minute
};

/// The axis of id 6 of `chain`, standing at its lower limit; null when the chain has none. A text of the
/// machine file that is no number counts as 0.
[[nodiscard]] std::shared_ptr<AuxiliaryAxis> auxiliaryAxisOf(const MachineDescription& machine,
                                                             const QString& chain);

/// "Chain:Z->W Name:W NickName:W Homing:0 Current:12.5", for the log and for reports.
[[nodiscard]] QString auxiliaryAxisText(const AuxiliaryAxis& axis, const QString& chain);

#include "nc/calc/AuxiliaryAxis.h"

#include "machine/calc/MachineDescription.h"

std::shared_ptr<AuxiliaryAxis> auxiliaryAxisOf(const MachineDescription& machine, const QString& chain) {
    constexpr int kAuxiliaryId = 6;
    const AxisMap letters = machine.axisMap(chain, true);
    const auto found = letters.constFind(kAuxiliaryId);
    if (found == letters.constEnd())
        return nullptr;
    const numericalAxisStruct& record = *machine.findAxis(found.value());
    AuxiliaryAxis axis;
    axis.name = record.name;
    axis.nickName = record.nickName;
    axis.id = record.id;
    axis.value = record.lower.toDouble();
    axis.homing = record.homePosition.toDouble();
    axis.acceleration = record.acceleration.toDouble();
    axis.jerk = record.jerk.toDouble();
    axis.maxVelocity = record.maxVelocity.toDouble();
    return std::make_shared<AuxiliaryAxis>(axis);
}

QString auxiliaryAxisText(const AuxiliaryAxis& axis, const QString& chain) {
    return QStringLiteral("Chain:") + chain + QStringLiteral(" Name:") + axis.name +
           QStringLiteral(" NickName:") + axis.nickName + QStringLiteral(" Homing:") +
           QString::number(axis.homing) + QStringLiteral(" Current:") + QString::number(axis.value);
}

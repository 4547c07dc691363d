#include "installation/MachineSceneModel.h"

#include <stdexcept>

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

Eigen::Affine3d rotationAbout(const Eigen::Vector3d& direction, double angle_deg) {
    return Eigen::Affine3d(Eigen::AngleAxisd(angle_deg * kDegree, direction.normalized()));
}

QStringList parts(const QString& text) {
    return text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

}  // namespace

Eigen::Vector3d vectorOf(const QString& text) {
    const QStringList numbers = parts(text);
    if (numbers.size() < 3)
        throw std::runtime_error("three numbers expected: " + text.toStdString());
    return {numbers[0].toDouble(), numbers[1].toDouble(), numbers[2].toDouble()};
}

const numericalAxisStruct& MachineSceneModel::axis(const QString& name) const {
    for (const auto& record : machine_.numericalAxes) {
        if (record->name == name)
            return *record;
    }
    throw std::runtime_error("no axis " + name.toStdString());
}

const nonNumericalAxisStruct* MachineSceneModel::part(const QString& name) const {
    for (const auto& record : machine_.nonNumericalAxes) {
        if (record->name == name)
            return record.get();
    }
    return nullptr;
}

Eigen::Vector3d MachineSceneModel::originsOn(const QString& name) const {
    Eigen::Vector3d sum = Eigen::Vector3d::Zero();
    for (const auto& system : machine_.workCoordinateSystems) {
        if (system->parent == name)
            sum += vectorOf(system->initialization);
    }
    return sum;
}

QStringList MachineSceneModel::pathTo(const QString& axisName) const {
    if (const nonNumericalAxisStruct* fixed = part(axisName))
        return (fixed->parent.isEmpty() ? QStringList() : pathTo(fixed->parent)) << axisName;
    for (const QString& entry : machine_.machineParameters.kinematicChain) {
        for (const QString& chain : entry.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            const QStringList names = chain.trimmed().split(QStringLiteral("->"), Qt::SkipEmptyParts);
            const int place = names.indexOf(axisName);
            if (place >= 0)
                return names.mid(0, place + 1);
        }
    }
    throw std::runtime_error("no chain leads to " + axisName.toStdString());
}

Eigen::Affine3d MachineSceneModel::localTransform(const QString& axisName) const {
    if (const nonNumericalAxisStruct* fixed = part(axisName))
        return Eigen::Affine3d(Eigen::Translation3d(vectorOf(fixed->initialization) + originsOn(axisName)));
    const numericalAxisStruct& record = axis(axisName);
    const Eigen::Vector3d offset = -vectorOf(record.initialization);
    const Eigen::Vector3d direction = vectorOf(record.direction);
    const double value = values_.value(axisName, 0.0);

    Eigen::Affine3d motion = Eigen::Affine3d::Identity();
    if (record.type.trimmed() == QLatin1String("LINEAR"))
        motion = Eigen::Translation3d(direction * value);
    else if (record.type.trimmed() == QLatin1String("ROTATION"))
        motion = Eigen::Translation3d(offset) * rotationAbout(direction, value);
    return Eigen::Translation3d(offset + originsOn(axisName)) * motion;
}

Eigen::Affine3d MachineSceneModel::worldTransform(const QStringList& path) const {
    Eigen::Affine3d world = Eigen::Affine3d::Identity();
    for (const QString& name : path)
        world = world * localTransform(name);
    return world;
}

Eigen::Vector3d MachineSceneModel::toolTip(const ToolRecord& tool) const {
    const spindleStruct* spindle = machine_.findSpindle(tool.spindleNo);
    if (spindle == nullptr)
        throw std::runtime_error("the tool names no spindle");
    const QStringList path = spindle->parent.split(QStringLiteral("->"), Qt::SkipEmptyParts);
    const QStringList numbers = parts(spindle->initialization);
    const Eigen::Affine3d turn =
        rotationAbout(vectorOf(axis(path.last()).direction), numbers.at(3).toDouble());
    const Eigen::Affine3d mounted = turn * Eigen::Translation3d(-vectorOf(spindle->initialization));

    const QVector<float>& t = tool.transform;
    const Eigen::Affine3d mount =
        rotationAbout(Eigen::Vector3d::UnitZ(), t[5]) * rotationAbout(Eigen::Vector3d::UnitY(), t[4]) *
        rotationAbout(Eigen::Vector3d::UnitX(), t[3]) * Eigen::Translation3d(t[0], t[1], t[2]);
    const Eigen::Vector3d tip = tool.isChainSaw()
                                    ? Eigen::Vector3d(-double{tool.toolTip[0]}, 0.0, -double{tool.toolTip[2]})
                                    : Eigen::Vector3d(0.0, 0.0, -double{tool.length});
    return worldTransform(path) * mounted * mount * tip;
}

Eigen::Vector3d MachineSceneModel::workPoint(const workCoordinateSystemStruct& system,
                                             const Eigen::Vector3d& userOffset,
                                             const Eigen::Vector3d& point) const {
    const Eigen::Vector3d placed = point + userOffset;
    if (system.parent.isEmpty())
        return placed + vectorOf(system.initialization);
    return worldTransform(pathTo(system.parent)) * placed;
}

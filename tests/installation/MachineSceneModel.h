#pragma once

#include <Eigen/Geometry>
#include <QMap>
#include <QString>
#include <QStringList>

#include "machine/calc/MachineDescription.h"
#include "tools/calc/ToolRecord.h"

/// The machine's scene in double precision, written from the rules of its nodes alone and sharing no code
/// with them or with the kinematic transform: the oracle that says where the tool tip and a point of the
/// work piece stand for a set of axis values.
///
/// Column vectors; a node's local transform is O * M. Numerical axes: a linear one moves along its direction
/// from the negated offset; a rotary one turns and takes its negated offset in twice. A part that no program
/// moves stands at its offset as the file has it.
class MachineSceneModel {
  public:
    explicit MachineSceneModel(const MachineDescription& machine) : machine_(machine) {}

    /// Axis values by machine letter, mm and degrees.
    void setValue(const QString& axisName, double value) { values_[axisName] = value; }

    /// Where the tool's tip stands in the world when the tool hangs in its spindle.
    [[nodiscard]] Eigen::Vector3d toolTip(const ToolRecord& tool) const;
    /// Where a point of the work piece stands, given in the user coordinate system at `userOffset`.
    [[nodiscard]] Eigen::Vector3d workPoint(const workCoordinateSystemStruct& system,
                                            const Eigen::Vector3d& userOffset,
                                            const Eigen::Vector3d& point) const;
    /// Names from the root down to the axis, along the machine's chains.
    [[nodiscard]] QStringList pathTo(const QString& axisName) const;

  private:
    [[nodiscard]] Eigen::Affine3d localTransform(const QString& axisName) const;
    [[nodiscard]] Eigen::Affine3d worldTransform(const QStringList& path) const;
    [[nodiscard]] const numericalAxisStruct& axis(const QString& name) const;
    /// nullptr when no part that the program does not move has this name.
    [[nodiscard]] const nonNumericalAxisStruct* part(const QString& name) const;
    /// Sum of the origins of the work coordinate systems on this node.
    [[nodiscard]] Eigen::Vector3d originsOn(const QString& name) const;

    const MachineDescription& machine_;
    QMap<QString, double> values_;
};

/// Three numbers separated by blanks.
[[nodiscard]] Eigen::Vector3d vectorOf(const QString& text);

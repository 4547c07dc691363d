#pragma once

#include <Inventor/SbMatrix.h>

#include <Eigen/Geometry>
#include <QStringList>
#include <QVector>

#include "geometry/GeometryTestSupport.h"
#include "machine/ChainListener.h"
#include "machine/NonNumericalAxis.h"
#include "machine/numerialAxis.h"

/// An installation with the shipped texts, names and settings, and a cube of 20 mm as "models/Box.stl".
class NodesInstallation : public TemporaryInstallation {
  public:
    NodesInstallation();
    /// Writes a cube with this half side and gives its path.
    [[nodiscard]] QString cube(const QString& name, float half_mm) const;
};

/// Records that build, at the origin, about or along +Z, home 0.
[[nodiscard]] numericalAxisStruct axisRecord(const QString& name, const QString& type);
[[nodiscard]] nonNumericalAxisStruct partRecord(const QString& name, const QString& type);

/// New nodes, set up; the test takes the first reference.
[[nodiscard]] numericalAxis* makeAxis(numericalAxisStruct record);
[[nodiscard]] numericalAxis* makeAxis(const QString& name, const QString& type);
[[nodiscard]] NonNumericalAxis* makePart(nonNumericalAxisStruct record);

class RecordingListener : public ChainListener {
  public:
    void refreshCollisionGroup(const QStringList& chain) override { refreshed.append(chain); }
    void ResetCollided() override { ++resets; }
    QVector<QStringList> refreshed;
    int resets = 0;
};

/// Where `point`, given in the frame behind `node` (a transform counts), stands in `root`, as the scene's own
/// traversal has it.
[[nodiscard]] Eigen::Vector3d placeInScene(SoNode* root, SoNode* node, const Eigen::Vector3d& point);
[[nodiscard]] Eigen::Vector3d placeOf(const CollisionTransform& pose, const Eigen::Vector3d& point);

/// Largest difference of the entries; the scene's matrix is for row vectors.
[[nodiscard]] double deviation(const SbMatrix& matrix, const Eigen::Affine3d& expected);
[[nodiscard]] double deviation(const CollisionTransform& pose, const Eigen::Affine3d& expected);

/// Rotation in double precision, from its definition.
[[nodiscard]] Eigen::Affine3d turned(const Eigen::Vector3d& direction, double angle_deg);
[[nodiscard]] Eigen::Affine3d shifted(double x, double y, double z);

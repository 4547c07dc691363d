#pragma once

#include <QString>

class AxisBase;

/// Mounts and removes clamping fixtures on axes. Fixtures stand in a folder above this one; without a mounter
/// the machine has none. Not owned; must outlive the machine.
class FixtureMounter {
  public:
    FixtureMounter() = default;
    FixtureMounter(const FixtureMounter&) = delete;
    FixtureMounter& operator=(const FixtureMounter&) = delete;
    virtual ~FixtureMounter() = default;

    /// `distance_mm` is the opening of the fixture's blocks.
    virtual void addFixture(AxisBase& axis, const QString& path, float distance_mm) = 0;
    virtual void removeFixtures(AxisBase& axis) = 0;
};

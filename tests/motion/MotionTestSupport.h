#pragma once

#include <memory>
#include <vector>

#include "machine/MotionNodeManager.h"
#include "machine/PlaybackStop.h"
#include "nodes/NodesTestSupport.h"
#include "tools/ToolData.h"

/// A small machine whose meshes are all cubes of 20 mm. X (along x) carries Z (along z), which carries the
/// spindles T1 (tool changer: start M3 S#, stop M5, check M8, tool change M6) and T2 (no changer: start
/// M13 S#, stop M15). Y (along y) is a table with the zone G54. Bed is a fixed part with collision check,
/// Lamp one without, G55 a fixed zone. All axes are home at 0:
///
///     X   z = 500      Y    the origin      Bed   x = 300
///     Z   z = 400      G55  x = -300        Lamp  x = 600
///
/// A tool of 100 mm in T1 thus ends at z = 300, and touches the table's top (z = 10) at Z-290.
struct SmallMachine {
    SmallMachine();
    /// Builds it; one at a time.
    MotionNodeManager& build();
    MotionNodeManager& manager() { return *manager_; }

    NodesInstallation installation;
    MachineDescription machine;

  private:
    std::unique_ptr<MotionNodeManager> manager_;
};

[[nodiscard]] spindleStruct spindleRecord(const QString& name, const QString& parent);

/// A cylinder of 100 mm below the spindle, radius 5 mm.
[[nodiscard]] ToolData cylinderTool(int spindleNo, int toolNo, float length_mm = 100);

/// A playback that counts its stops.
class CountingPlayback : public PlaybackStop {
  public:
    [[nodiscard]] bool stopOnContact() const override { return wanted; }
    void stop() override { ++stops; }
    bool wanted = true;
    int stops = 0;
};

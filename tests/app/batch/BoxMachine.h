#pragma once

#include "BatchTestSupport.h"

/// An installation whose machine is made of cubes of 20 mm, so that every contact is known beforehand. X
/// (along x) carries Z (along z), which carries the spindle T1 with a tool changer (M6 T#). Y (along y) is a
/// table with the zone G54. Bed is a fixed part with collision check, Lamp one without. All axes are home
/// at 0:
///
///     X   z = 500     Y    the origin     Bed   x = 300
///     Z   z = 400                         Lamp  x = 600
///
/// The library's tool 1 is a cylinder of 100 mm: it ends at z = 300, and touches the table's top (z = 10)
/// at Z-290. A line lasts 2 ms.
class BoxMachine : public Batch {
  protected:
    void SetUp() override;
};

#pragma once

#include "Mesh.h"

// Parts that the five-axis heads have in common.

namespace modelgen {

/// A milling unit whose spindle points along -Z: housing, motor above, bearing towards +X up to x = 134. The
/// tilting axis is the X axis.
Mesh millingUnit();

/// A swivel arm in the YZ plane from x = 0 to `thickness`: it hangs from its root below z = -68 down to a
/// round end about (0, -reach); `rootHalf` is half of its width at the root.
Mesh milledArm(double thickness, double reach, double rootHalf);

/// A finned drive that stands on z = 0 and turns about Z.
Mesh swivelDrive();

}  // namespace modelgen

#pragma once

#include "Mesh.h"

// The models of the fixed-bridge machine. All in millimetres; the frame of each part is named with it.

namespace modelgen::bridge {

// Machine frame: the floor is z = 0, the bridge stands along X, the operator in front of it at negative y.
Mesh bed();
Mesh bedRails();
Mesh portal();
Mesh portalTrim();
Mesh portalRails();
Mesh cableTrack();

// Frames of their own, on the floor.
Mesh toolMagazine();
Mesh cabinet();
Mesh cabinetTrim();
Mesh console();

// Frame of a table: the work zero point is the origin, the vacuum pods end at z = 0.
Mesh table();
Mesh tableCarriage();
Mesh pods();
Mesh stops();

// Frames of the axes X, Z, C and A; those of C and A have their origin on the rotation axis.
Mesh carriage();
Mesh carriageDrive();
Mesh ram();
Mesh ramDrive();
Mesh extraction();
Mesh fork();
Mesh forkDrive();
Mesh head();
Mesh noses();

/// A small mark for the theoretical axes of the inclined plane.
Mesh planeMark();

}  // namespace modelgen::bridge

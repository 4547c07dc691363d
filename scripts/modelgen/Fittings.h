#pragma once

#include "Solids.h"

// Bought parts that every machine carries: screws, linear guides, motors, feet, hoses.

namespace modelgen {

/// A socket head screw that stands on z = 0 and points up.
Mesh capScrew(double headDiameter);
/// `count` socket head screws from `first` on, `step` apart, each turned by `stand`.
Mesh screwRow(double headDiameter, Vec3 first, Vec3 step, int count, const Placement& stand = {});

/// Outline of a linear guide rail, its foot on y = 0, its head up; `width` about 45.
Outline railOutline(double width);
/// A rail from x = 0 to `length` on the plane z = 0, with its screws.
Mesh linearRail(double length, double width = 45.0, double screwStep = 240.0);
/// A runner block, centred at x = 0, that rides on such a rail without touching it.
Mesh runner(double length, double railWidth = 45.0);

/// A servo motor that stands on z = 0 with its flange down; `size` is the side of its flange.
Mesh servoMotor(double size, double length);
/// A gear box between a motor and a machine, from z = 0 up.
Mesh gearBox(double size, double height);

/// A levelling foot from the floor z = 0 up to `height`.
Mesh levellingFoot(double radius, double height);

/// Links of an energy chain that lies in a tray along X from x = 0, outside dimensions as given.
Mesh energyChain(int links, double pitch, double width, double height);

/// A gear rack along X, teeth up, `teeth` of the given pitch, from y = -width/2 to width/2.
Mesh gearRack(int teeth, double pitch, double width, double height);

/// A spindle nose that points along -Z from z = 0 (its front face, where a tool begins) up to `height`.
Mesh spindleNose(double radius, double bore, double height);

/// A plate in the XY plane with rounded corners and a row of round holes along its middle.
Mesh ribPlate(double width, double height, double thickness, double holeDiameter, int holes);

}  // namespace modelgen

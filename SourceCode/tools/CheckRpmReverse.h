#pragma once

class QWidget;

namespace SharedMethods {

/// Keeps a speed from reversing a spindle that cannot: a negative `rpm` (revolutions per minute) becomes
/// positive and a box says so. A spindle that the machine lacks is a log line, and the speed stays.
void CheckRpmReverse(int spindleId, double& rpm, QWidget* parent);

}  // namespace SharedMethods

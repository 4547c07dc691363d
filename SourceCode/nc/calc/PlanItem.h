#pragma once

#include <QString>

#include "tools/calc/ToolRecord.h"

/// One item of a chain as the planner sees it. The texts share the item's memory, the bodies among them are
/// never copied.
struct PlanItem {
    const ToolRecord* tool = nullptr;  ///< not owned, never nullptr
    double rpm = 0;                    ///< negative: reverse
    bool isCurve = false;              ///< connects its neighbours and starts no spindle
    QString leadIn;                    ///< machine axes, to the start of the body
    QString leadOut;                   ///< off the end of the body
    QString body;                      ///< one line a period; of a curve: its points, not re-timed
};

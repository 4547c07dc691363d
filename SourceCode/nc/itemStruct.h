#pragma once

#include <QString>

class ToolData;

namespace TORNVALE {

/// One checked item of a chain, as it is handed to the planner. The texts share the item's memory.
struct itemStruct {
    const ToolData* tool = nullptr;  ///< not owned
    QString IsoCode;                 ///< machine axes, one line a period
    QString Name;
    double rpm = 0;  ///< negative: reverse
    int type = 0;    ///< kCurveItem (1002) for a connecting item, kIsoItem (1001) for every other
    QString LeadIn;
    QString LeadOut;
};

}  // namespace TORNVALE

#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "items/IsoItem.h"
#include "items/UserTopItem.h"
#include "machine/MotionNodeManager.h"
#include "nodes/NodesTestSupport.h"
#include "support/TestSupport.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

/// A machine of X, Y, Z, C about Z and A about X with the zone G54 (chain "XYZCA", user coordinate systems 0
/// and 1, the second at 10 20 30), two installed tools, and the zone's program group. The log is captured.
class IsoBench {
  public:
    explicit IsoBench(const std::function<void(MachineDescription&)>& change = {});
    ~IsoBench();
    IsoBench(const IsoBench&) = delete;
    IsoBench& operator=(const IsoBench&) = delete;

    /// At the end of the group, with the first tool, not generated.
    TORNVALE::IsoItem& add(const QString& source);
    /// The same, generated.
    TORNVALE::IsoItem& made(const QString& source);
    [[nodiscard]] UserTopItem& group() { return *group_; }
    [[nodiscard]] userCoordinateSystem& system(int id);
    [[nodiscard]] static ToolRecord tool(int toolNo, float length_mm);

    NodesInstallation installation;
    LogCapture log;

  private:
    std::unique_ptr<MotionNodeManager> manager_;
    std::unique_ptr<UserTopItem> group_;
};

/// A way in, a feed move, a way out.
inline const QString kShortProgram = QStringLiteral("G0 X0 Y0 Z50\nG1 Z5 F3000\nX20 Y10\nG0 Z50\n");
/// Its third line is an arc whose end is too far away.
inline const QString kRefusedProgram = QStringLiteral("G0 X0 Y0\nG1 X5 F1000\nG2 X50 R2\nG1 X0\n");

/// Text of the English table.
[[nodiscard]] QString english(const char* group, const char* key);

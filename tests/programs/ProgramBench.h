#pragma once

#include <QJsonObject>
#include <QString>
#include <memory>

#include "support/TestSupport.h"

class MotionNodeManager;
class ToolData;
class TreeWidgetManager;
class UserTopItem;
class userCoordinateSystem;

namespace TORNVALE {
class CodeManagerItem;
class IsoItem;
}  // namespace TORNVALE

/// A program tree on the shipped five-axis machine, whose models are small cubes here: groups G54 (chain
/// X->Z->C->A;Y) and G55 (X->Z->C->A;V), all tools of the shipped library installed, texts in English. The
/// tool library belongs to the process, so all tests of one process share the folder.
class ProgramBench {
  public:
    static constexpr double kCorner = 100;

    /// `machine`: the stem of the shipped machine file, and of its post-processor file. On another machine
    /// than the bridge the tools fit its first chain.
    explicit ProgramBench(const QString& machine = QStringLiteral("TornBridge5"));
    ~ProgramBench();
    ProgramBench(const ProgramBench&) = delete;
    ProgramBench& operator=(const ProgramBench&) = delete;

    [[nodiscard]] TreeWidgetManager& tree() { return *tree_; }
    [[nodiscard]] MotionNodeManager& machine() { return *machine_; }
    [[nodiscard]] UserTopItem& left();
    [[nodiscard]] UserTopItem& right();
    /// The document of the left table with a block at this index, -1 for the last one, whose kind nobody
    /// knows.
    [[nodiscard]] QJsonObject leftWithUnknownBlock(int index = -1);

    /// A program around a square with its corner at (x, y), the fifth axis at `a_deg`.
    [[nodiscard]] static QString square(double x, double y = 100, double a_deg = 0);
    [[nodiscard]] static QString square() { return square(kCorner); }
    /// An item at the end of the group, generated: two feed moves at this height over the table, between
    /// rapid ones. Without a code the item is new and empty.
    TORNVALE::IsoItem& add(UserTopItem& group, const QString& code, int tool = 0);
    TORNVALE::IsoItem& add(UserTopItem& group) { return add(group, square()); }
    /// The installed tool of this index.
    [[nodiscard]] static ToolData* tool(int index);
    void commit();
    /// A further user coordinate system of G54, whose box is expected.
    userCoordinateSystem* addSystem();

    static TemporaryInstallation& installation();

  private:
    std::unique_ptr<MotionNodeManager> machine_;
    std::unique_ptr<TreeWidgetManager> tree_;
};

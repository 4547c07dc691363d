#pragma once

#include <QMap>
#include <QString>
#include <memory>
#include <vector>

#include "machine/calc/MachineRecords.h"
#include "nc/calc/PlanItem.h"

/// What is known of one spindle at the present place of the program.
struct SpindleState {
    QString name;       ///< "T" and the number
    QString startText;  ///< "#" stands for the speed
    QString stopText;
    QString checkText;       ///< "#" stands for the speed
    QString toolChangeText;  ///< "#" stands for the tool number
    QString range;           ///< number of tool places; above 1 means a magazine
    QString coaxial;         ///< name of a spindle that shares the shaft
    QString parent;
    int number = 0;
    int currentToolNumber = -1;
    double speed = 0;  ///< last commanded, revolutions per minute
    const ToolRecord* currentTool = nullptr;
    int stopped = 1;
    int shaft = 0;  ///< spindles with the same shaft turn together
};

/// The spindles of a machine, and the commands that bring them from state to state. Each command is a block:
/// its line ten times, which holds the machine for ten interpolation periods. A spindle without the text for
/// a command gets an empty block. A tool whose spindle the machine lacks gets empty blocks as well.
///
/// The states tell what the machine does behind the text that was handed out so far, so a block must be
/// written in the order in which it was asked for; an early start is the one exception.
class SpindleModel {
  public:
    static constexpr double kSpeedTolerance = 0.1;  ///< speeds this near are the same
    static constexpr double kSpeedJump = 10001.0;   ///< a larger change of speed gets time
    static constexpr int kRunningLimit = 2;         ///< shafts that may turn at the same time

    /// Every spindle stands and holds no tool. Of two spindles of one name the first counts.
    SpindleModel(const std::vector<std::unique_ptr<spindleStruct>>& spindles, const QString& delay);

    [[nodiscard]] const SpindleState* find(const PlanItem& item) const;
    [[nodiscard]] const QMap<QString, SpindleState>& states() const { return states_; }
    [[nodiscard]] int runningShafts() const;
    /// Same spindle with the same tool number, or two spindles on one shaft.
    [[nodiscard]] bool shareSpindle(const PlanItem& a, const PlanItem& b) const;
    /// True when the item's spindle is known to hold another tool.
    [[nodiscard]] bool holdsOtherTool(const PlanItem& item) const;
    /// True when the item needs the spindle of `other` with another tool.
    [[nodiscard]] bool needsOtherTool(const PlanItem& item, const PlanItem& other) const;
    /// True when the item's spindle has a magazine and does not hold the item's tool.
    [[nodiscard]] bool needsToolChange(const PlanItem& item) const;
    [[nodiscard]] bool hasMagazine(const PlanItem& item) const;

    /// Nothing when the item's spindle turns at the item's speed; otherwise a start block, and ten delay
    /// lines when the speed jumps by more than kSpeedJump. A spindle that stands has the speed 0.
    QString start(const PlanItem& item);
    /// The same, but never nothing: without need ten start lines.
    QString forcedStart(const PlanItem& item);
    /// The start block of `next`, to stand inside `present`; empty when it cannot be that early: two shafts
    /// turn already, the shaft is the one that `present` uses, it turns at speed, or its tool must be changed
    /// first. No delay lines: they would hold the tool in its cut, and the time until `present` ends is
    /// there.
    QString earlyStart(const PlanItem& present, const PlanItem& next);
    [[nodiscard]] QString check(const PlanItem& item) const;
    /// Empty when the spindle stands already.
    QString stop(const PlanItem& item);
    QString stopAll();
    /// Whatever turns is stopped first. Behind it every spindle stands without a tool, but the item's spindle
    /// holds the item's tool. Empty for a spindle without a magazine.
    QString changeTool(const PlanItem& item);
    [[nodiscard]] QString delayLine() const { return delay_; }

  private:
    SpindleState* stateOf(const PlanItem& item);
    void joinShafts();
    /// Start lines and check lines.
    QString startBlock(SpindleState& spindle, const PlanItem& item);
    QString stopBlock(SpindleState& spindle);
    [[nodiscard]] bool turnsAt(const SpindleState& spindle, double rpm) const;

    QMap<QString, SpindleState> states_;
    QString delay_;
};

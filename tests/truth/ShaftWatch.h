#pragma once

#include <QString>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "machine/calc/MachineRecords.h"

/// What the spindles of a machine do while a program runs, from its command lines and the machine file alone,
/// and what an operator would object to.
class ShaftWatch {
  public:
    struct Shaft {
        bool isRunning = false;
        double speed = 0;
    };
    struct Event {
        enum class Kind { Start, Stop, Check, Change };
        Kind kind;
        int spindle;
        double number = 0;  ///< speed or tool
    };

    explicit ShaftWatch(const std::vector<std::unique_ptr<spindleStruct>>& spindles);

    /// What the line commands; nothing for a line that is no command of a spindle.
    [[nodiscard]] std::optional<Event> read(const QString& line) const;
    /// Carries it out; the objection, or an empty text.
    std::string obey(const Event& event);

    [[nodiscard]] int shaftOf(int spindle) const { return shafts_.at(spindle); }
    [[nodiscard]] bool isRunningAt(int spindle, double speed) const;
    [[nodiscard]] bool isRunning(int spindle) const;
    [[nodiscard]] int runningShafts() const;
    [[nodiscard]] bool hasMagazine(int spindle) const;
    [[nodiscard]] bool hasCheck(int spindle) const;
    /// Tool of a spindle with a magazine; -1 when it holds none.
    [[nodiscard]] int heldTool(int spindle) const;

  private:
    struct Words {
        QString start, stop, check, change;
        bool isMagazine = false;
    };
    std::map<int, Words> words_;
    std::map<int, int> shafts_;
    std::map<int, Shaft> states_;  ///< by shaft
    std::map<int, int> held_;
};

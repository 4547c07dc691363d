#pragma once

#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>

#include <QRegularExpression>
#include <QString>

#include "core/calc/Diagnostics.h"
#include "machine/calc/MachineRecords.h"

/// A spindle of the machine file, converted.
struct SpindleRecord {
    int number = 0;  ///< the name without its "T"
    QString name;
    SbVec3f offset{0, 0, 0};  ///< on its carrier, mm; negated against the file
    float angle_deg = 0;      ///< about the carrier's direction; as in the file
    QString startString;      ///< with "#" where the speed stands
    QString stopString;
    QString checkString;
    QString toolChangeString;
    SbVec3f direction{0, 0, 0};
    int range = 0;  ///< places for tools
    QString coaxial;
    QString parent;
    SbColor color{0, 0, 0};
    bool hasToolChanger = false;
};

/// Missing numbers are 0; each text of a wrong form is a debug diagnostic.
[[nodiscard]] SpindleRecord readSpindle(const spindleStruct& spindle, Diagnostics& diagnostics);

/// First "M" with digits in a text; empty when there is none.
[[nodiscard]] QString firstMCode(const QString& text);

/// What a spindle does on a line of the program.
struct SpindleReaction {
    enum Kind { None, Start, Stop, Check };
    Kind kind = None;
    double speed = 0;   ///< revolutions per minute, with Start
    QString speedText;  ///< as the line has it
};

/// The texts of a spindle as patterns. An empty text, and one that is no pattern, matches nothing.
class SpindleCommands {
  public:
    SpindleCommands() = default;
    explicit SpindleCommands(const SpindleRecord& spindle);

    /// Start wins over stop, stop over check.
    [[nodiscard]] SpindleReaction reactionTo(const QString& line) const;

    [[nodiscard]] const QRegularExpression& start() const { return start_; }
    [[nodiscard]] const QRegularExpression& stop() const { return stop_; }
    [[nodiscard]] const QRegularExpression& check() const { return check_; }

  private:
    QRegularExpression start_;
    QRegularExpression stop_;
    QRegularExpression check_;
};

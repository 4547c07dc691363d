#pragma once

#include <Inventor/SbVec3f.h>

#include <QString>
#include <QStringView>
#include <memory>

#include "core/calc/Diagnostics.h"
#include "core/calc/WayPoint.h"
#include "nc/calc/AuxiliaryAxis.h"
#include "nc/calc/IsoInterpreter.h"

class ToolData;

namespace HandleIsoCode {

/// Turns the ISO text of one program item into the four texts that every item carries. Made for one run: set
/// the fields, call `doIt` once, take the texts.
///
/// A program that cannot be converted is refused: `doIt` returns false, the texts are empty, the reason
/// stands in `diagnostics()` with its line and in the log as a warning. A machine that does not fit the
/// program ends the process through qFatal.
class GCodeConverter {
  public:
    /// `chain`: letters of the kinematic chain. Uses the process's machine.
    explicit GCodeConverter(const QString& chain);

    QString Chain;
    QString LeadIn;    ///< result: moves before the body, machine axes, at rapid feed
    QString LeadOut;   ///< result: moves behind the body
    QString WorkCode;  ///< result: the whole path in work coordinates
    QString IsoCode;   ///< result: the re-timed body in machine axes

    std::shared_ptr<AuxiliaryAxis> auxiliaryAxis;  ///< of the item's group; may be null
    SbVec3f translation{0, 0, 0};                  ///< item placement, mm
    SbVec3f offset{0, 0, 0};                       ///< in the work plane, mm
    int mirrorAngle = 0;                           ///< degrees; 0: no mirroring
    ToolData* tool = nullptr;                      ///< not owned; null: the path stays in work coordinates
    double axisShift = 0;                          ///< extra tool length, mm
    SbVec3f UserCoordinate{0, 0, 0};               ///< mm
    QString WCSName;                               ///< work coordinate system
    double previousFifth = 0.0;                    ///< axis 5 at the end of the previous active item, degrees
    double rapidFeed;                              ///< mm per minute; the machine's rapid threshold
    bool reTime = true;                            ///< false: `IsoCode` stays empty

    /// Runs the whole conversion.
    bool doIt(const QString& code);

    // The steps of doIt.

    /// An inclined plane directive without its brackets. False: refused, as in doIt.
    bool HandleUPR(const QString& directive);
    /// Letters of the program back to the axes' nick names.
    void ResetAxis_1_2_3_Name();
    /// Applies `translation` and `offset` to the way points.
    void DoUserTransform();
    /// Applies `mirrorAngle` to the way points.
    void DoUserMirror();
    /// The way points, re-timed run by run of equal feed. Empty for an empty path, and when the path cannot
    /// be run in a sensible time (see `diagnostics`).
    [[nodiscard]] QString DoTrajectoryOptimization();

    /// The number behind the first occurrence of the letter; 0.0 and `ok` false when there is none.
    [[nodiscard]] static double ReadWord(QStringView line, QChar letter, bool* ok);
    /// The emitted form of way points that end with their feed.
    [[nodiscard]] QString FormatWayPoints(const WayPoints& points) const;

    /// The path: work coordinates until the tool is applied, machine axes from then on.
    [[nodiscard]] WayPoints& wayPoints() { return interpreter_.points; }
    /// Modal values: feed, motion, distance and plane mode, inclined plane, held rotaries.
    [[nodiscard]] const IsoModes& modes() const { return interpreter_.modes; }
    /// Axis id -> letter in which the program is read now.
    [[nodiscard]] const AxisMap& inputLetters() const { return interpreter_.letters(); }
    [[nodiscard]] const Diagnostics& diagnostics() const { return diagnostics_; }

  private:
    bool readProgram(const QString& code);
    bool writeTexts();
    bool canBeWritten();
    bool canBePlanned(const WayPoints& points, double feed_mmPerMin);
    bool refuse(const char* reason);
    void report();
    void clearTexts();

    Diagnostics diagnostics_;
    std::size_t reported_ = 0;  // diagnostics that the log has already
    bool refused_ = false;
    IsoInterpreter interpreter_;
};

}  // namespace HandleIsoCode

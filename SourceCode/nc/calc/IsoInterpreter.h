#pragma once

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>

#include <QString>
#include <QStringView>
#include <optional>
#include <vector>

#include "core/calc/Diagnostics.h"
#include "core/calc/WayPoint.h"
#include "machine/calc/MachineDescription.h"
#include "nc/calc/ArcPoints.h"
#include "nc/calc/IsoLine.h"
#include "nc/calc/RotationSubdivision.h"

/// What holds from line to line of an ISO program.
struct IsoModes {
    double feed_mmPerMin = 250.0;
    int distance = 90;  ///< 90 absolute, 91 incremental
    int motion = 0;     ///< 0 to 3: rapid, feed, clockwise arc, counter-clockwise arc
    int plane = 17;     ///< 16 inclined plane, 17 work frame, 18 and 19 no motion
    SbMatrix inclinedPlane = SbMatrix::identity();  ///< plane frame to work frame, row vectors
    double heldFourth = 0.0;                        ///< degrees, in plane 16 and along arcs
    double heldFifth = 0.0;
    SbVec3f currentPoint{0, 0, 0};  ///< in the inclined plane's own frame, or an arc's start, mm
};

/// Reads the ISO dialect: text in, way points in the work frame out.
///
/// A program that cannot be read to its end is refused: the operation returns false and a Warning diagnostic
/// names the line and the reason. A letter that names no axis is a Fatal diagnostic. What is merely unknown
/// is ignored.
class IsoInterpreter {
  public:
    /// Most points that one line may make (an arc of one kilometre, 277 turns of a rotary axis), and most
    /// points of a program (640 MB).
    static constexpr std::size_t kMostPointsOfLine = 1'000'000;
    static constexpr std::size_t kMostPoints = 10'000'000;

    /// `machine` must outlive this object. A letter of the chain that names no axis is a Fatal diagnostic.
    IsoInterpreter(const MachineDescription& machine, const QString& chain, Diagnostics& diagnostics);

    double rapidFeed;                      ///< mm per minute
    std::optional<double> auxiliaryValue;  ///< sixth entry of the way points, when there is one
    RotationLimits rotation;
    std::size_t mostPoints = kMostPoints;
    IsoModes modes;
    /// The path. Neighbours equal in every entry, the feed included, are kept once.
    WayPoints points;

    /// Reads a whole program, once for each object.
    [[nodiscard]] bool run(QStringView code, Diagnostics& diagnostics);

    /// An inclined plane directive without its brackets.
    [[nodiscard]] bool handleUpr(QStringView directive, Diagnostics& diagnostics);

    /// Every letter in force, taken as an axis's name, becomes the first character of its `nickName`. The
    /// letters U, V, W of an inclined plane count too: a machine without axes of these names cannot leave it.
    [[nodiscard]] bool resetLetters(Diagnostics& diagnostics);

    /// Axis id -> letter of the program now.
    [[nodiscard]] const AxisMap& letters() const { return letters_; }

  private:
    enum class Scan { GoOn, LineDone, Failed };
    struct AxisLetter {
        int index;  ///< of the way point's entry
        QChar letter;
    };

    void useLetters(const AxisMap& letters);
    bool refuse(Diagnostics& diagnostics, const char* reason) const;
    bool readLine(const IsoLine& line, Diagnostics& diagnostics);
    Scan readGWords(const IsoLine& line, Diagnostics& diagnostics);
    bool choosePlane(int plane, const IsoLine& line, Diagnostics& diagnostics);
    /// The current point becomes the last way point, seen in the inclined plane.
    bool followTool(Diagnostics& diagnostics);

    bool move(const IsoLine& line, Diagnostics& diagnostics);
    bool lineInWorkFrame(const IsoLine& line, Diagnostics& diagnostics);
    bool lineInPlane(const IsoLine& line, Diagnostics& diagnostics);
    bool arc(const IsoLine& line, Diagnostics& diagnostics);
    std::optional<SbVec3f> arcStart() const;
    bool appendArc(const SbVec3f& start, const SbVec3f& end, double radius_mm, Diagnostics& diagnostics);
    void warnOfHeldRotaries(Diagnostics& diagnostics);
    /// Reads the words of X, Y and Z into the point; true when there was one.
    bool readPoint(const IsoLine& line, SbVec3f& point) const;
    /// The way point of a place in the inclined plane; nothing when it is beyond single precision.
    std::optional<WayPoint> pointOfPlane(const SbVec3f& place, double feed) const;
    /// Appends a move, with points of its own when it is a big rotary swing over a short way.
    bool appendMove(const WayPoint& target, Diagnostics& diagnostics);
    bool appendPoint(const WayPoint& point, Diagnostics& diagnostics);
    [[nodiscard]] double motionFeed() const { return modes.motion == 0 ? rapidFeed : modes.feed_mmPerMin; }

    const MachineDescription& machine_;
    AxisMap letters_;
    std::vector<AxisLetter> axes_;  // the letters that have an entry in a way point
    WayPoint working_;              // last position, with auxiliary value and feed
    std::vector<ArcPoint> arcPoints_;
    int lineNumber_ = 0;
    int rotaryWarnings_ = 0;
};

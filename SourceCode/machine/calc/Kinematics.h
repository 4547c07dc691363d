#pragma once

#include <Inventor/SbMatrix.h>
#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/SbVec4f.h>

#include <QString>
#include <array>
#include <optional>

#include "core/calc/Diagnostics.h"
#include "core/calc/WayPoint.h"
#include "machine/calc/MachineDescription.h"

/// What the kinematic transform needs of a tool.
struct KinematicTool {
    int spindleNo = 1;
    bool isChainSaw = false;
    float length = 0;                       ///< mm, along +z of the tool frame
    SbVec3f toolTip{0, 0, 0};               ///< chain saw: x and z count, mm
    SbMatrix mount = SbMatrix::identity();  ///< tool frame in the spindle's frame (row vectors)
    QString installationName;   ///< its last character is the letter of the axis that carries the spindle
    float ax4Compensation = 0;  ///< degrees
    float ax5Compensation = 0;  ///< degrees
};

/// Degrees to radians as all rotations of the machine take them: single precision, division first.
[[nodiscard]] inline float radiansOf(float degrees) {
    return degrees / 180.0F * 3.1415927F;
}

/// The rotary-tool-centre-point computation of one tool, one chain and one work coordinate system:
/// programmed tool tip <-> values of the machine's axes. Mode 0 goes to the machine, mode 1 comes back; any
/// other mode changes nothing but the layout of a text.
class KinematicTransform {
  public:
    static constexpr int kToMachine = 0;
    static constexpr int kToTip = 1;

    /// Nothing, and a Fatal diagnostic, when a text of the machine file is not three numbers.
    static std::optional<KinematicTransform> make(const MachineDescription& machine,
                                                  const KinematicTool& tool, double extraLength_mm,
                                                  const SbVec3f& userOffset_mm, const QString& chain,
                                                  const QString& workCoordinateName, int mode,
                                                  Diagnostics& diagnostics);

    /// Way points in place: X, Y, Z, axis 4, axis 5 (mm and degrees).
    void transformPoints(WayPoints& points) const;

    /// ISO lines; empty lines go, each line is simplified. Keeps the modal values of axes 4 and 5 from call
    /// to call, so one object serves one program, in order.
    [[nodiscard]] QString transformText(const QString& text);

    /// Kinematic offset for these axis values (degrees): what separates the tool tip from the linear axes.
    [[nodiscard]] SbVec3f kinematicOffset(float a4_deg, float a5_deg) const;

    [[nodiscard]] const SbVec3f& toolVector() const { return toolVector_; }

  private:
    static constexpr std::size_t kIds = 5;
    class EditableLine;

    /// The offset of the rotary values that were asked for last: most lines of a program keep theirs.
    class OffsetCache {
      public:
        SbVec3f at(const KinematicTransform& transform, float a4_deg, float a5_deg);

      private:
        SbVec3f offset_{0, 0, 0};
        float a4_deg_ = 0;
        float a5_deg_ = 0;
        bool known_ = false;
    };

    KinematicTransform() = default;
    void transformLine(EditableLine& line, OffsetCache& cache);

    int mode_ = kToMachine;
    SbVec3f toolVector_{0, 0, 0};  ///< tool tip in the spindle's frame plus the spindle's offset, mm
    SbVec3f baseOffset_{0, 0, 0};  ///< work origin, user offset and places of the linear axes, mm
    SbVec3f direction4_{0, 0, 0};
    SbVec3f direction5_{0, 0, 0};
    SbVec3f offset5_{0, 0, 0};    ///< place of axis 5 on axis 4, mm
    float spindleAngle_deg_ = 0;  ///< fourth number of the spindle's `initialization`
    float compensation4_deg_ = 0;
    float compensation5_deg_ = 0;
    float modal4_deg_ = 0;
    float modal5_deg_ = 0;
    std::array<QChar, kIds> letters_{};  ///< by id - 1; null when the chain lacks the id
    QChar carrierLetter_;                ///< last character of the tool's installation name
};

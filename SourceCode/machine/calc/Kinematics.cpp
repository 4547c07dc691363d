#include "machine/calc/Kinematics.h"

#include <algorithm>

namespace {

constexpr int kAxis4 = 4;
constexpr int kAxis5 = 5;

/// Direction and place of one rotary axis, or why its texts are no numbers.
struct RotaryAxes {
    SbVec3f direction4{0, 0, 0};
    SbVec3f direction5{0, 0, 0};
    SbVec3f offset5{0, 0, 0};
    const char* error = nullptr;
};

/// Without both axes everything stays zero: a chain of three axes then takes the same formulas.
RotaryAxes rotaryAxes(const MachineDescription& machine, const AxisMap& letters) {
    RotaryAxes axes;
    if (!letters.contains(kAxis4) || !letters.contains(kAxis5))
        return axes;
    const numericalAxisStruct& axis4 = *machine.findAxis(letters[kAxis4]);
    const numericalAxisStruct& axis5 = *machine.findAxis(letters[kAxis5]);
    const std::optional<SbVec3f> direction4 = threeNumbers(axis4.direction);
    const std::optional<SbVec3f> direction5 = threeNumbers(axis5.direction);
    if (!direction4 || !direction5) {
        axes.error = "Ax4 Ax5 DirectionFormatError";
        return axes;
    }
    const std::optional<SbVec3f> offset5 = threeNumbers(axis5.initialization);
    // The place of axis 4 must be three numbers too, though no formula asks for it.
    if (!threeNumbers(axis4.initialization) || !offset5) {
        axes.error = "Ax4 Ax5 InitializationFormatError";
        return axes;
    }
    return {*direction4, *direction5, *offset5, nullptr};
}

/// Sum of the places of all axes of the chain that do not turn; nothing when one is not three numbers.
std::optional<SbVec3f> sumOfLinearOffsets(const MachineDescription& machine, const AxisMap& letters,
                                          SbVec3f sum) {
    for (const QChar letter : letters) {
        const numericalAxisStruct& axis = *machine.findAxis(letter);
        if (axis.type == QLatin1String("ROTATION"))
            continue;
        const std::optional<SbVec3f> offset = threeNumbers(axis.initialization);
        if (!offset)
            return std::nullopt;
        sum += *offset;
    }
    return sum;
}

SbVec3f toolTipVector(const KinematicTool& tool, double extraLength_mm) {
    SbVec3f tip(0, 0, static_cast<float>(extraLength_mm + double{tool.length}));
    if (tool.isChainSaw)  // its tip says all, `length` must not count
        tip.setValue(tool.toolTip[0], 0, static_cast<float>(double{tool.toolTip[2]} + extraLength_mm));
    SbVec3f mounted;
    tool.mount.multVecMatrix(tip, mounted);
    return mounted;
}

SbRotation rotationAbout(const SbVec3f& direction, float angle_deg) {
    if (direction == SbVec3f(0, 0, 0))
        return SbRotation::identity();
    return {direction, radiansOf(angle_deg)};
}

SbVec3f rotated(const SbRotation& rotation, const SbVec3f& vector) {
    SbMatrix matrix;
    matrix.setRotate(rotation);
    SbVec3f result;
    matrix.multVecMatrix(vector, result);
    return result;
}

}  // namespace

std::optional<KinematicTransform> KinematicTransform::make(const MachineDescription& machine,
                                                           const KinematicTool& tool, double extraLength_mm,
                                                           const SbVec3f& userOffset_mm, const QString& chain,
                                                           const QString& workCoordinateName, int mode,
                                                           Diagnostics& diagnostics) {
    const AxisMap letters = machine.axisMap(chain, false);
    const RotaryAxes axes = rotaryAxes(machine, letters);
    const SbVec3f origin = machine.workCoordinateOrigin(workCoordinateName);
    const auto baseOffset = sumOfLinearOffsets(machine, letters, origin + userOffset_mm);
    if (axes.error != nullptr || !baseOffset) {
        const char* text = axes.error != nullptr ? axes.error : "InitializationFormatError";
        diagnostics.add(Severity::Fatal, QLatin1String(text));
        return std::nullopt;
    }
    const SbVec4f spindle = machine.spindleOffset(tool.spindleNo);
    KinematicTransform transform;
    transform.mode_ = mode;
    transform.toolVector_ = toolTipVector(tool, extraLength_mm) + SbVec3f(spindle[0], spindle[1], spindle[2]);
    transform.baseOffset_ = *baseOffset;
    transform.direction4_ = axes.direction4;
    transform.direction5_ = axes.direction5;
    transform.offset5_ = axes.offset5;
    transform.spindleAngle_deg_ = spindle[3];
    transform.compensation4_deg_ = tool.ax4Compensation;
    transform.compensation5_deg_ = tool.ax5Compensation;
    for (auto entry = letters.begin(); entry != letters.end(); ++entry)
        transform.letters_[static_cast<std::size_t>(entry.key() - 1)] = entry.value();
    if (!tool.installationName.isEmpty())
        transform.carrierLetter_ = tool.installationName.back();
    return transform;
}

// Row vectors, p the programmed tip and m the values of the linear axes:
//     m = p + k,    k = base + tool * R5 * R4 + offset5 * R4
// with tool = tip in the spindle's frame + spindle offset, and base = work origin + user offset + the places
// of the linear axes. Mode 1 takes the same k from m, with the angles that mode 0 started from.
SbVec3f KinematicTransform::kinematicOffset(float a4_deg, float a5_deg) const {
    float angle4_deg = compensation4_deg_ + a4_deg;
    float angle5_deg = compensation5_deg_ + a5_deg;
    if (mode_ == kToTip) {
        angle4_deg = a4_deg - compensation4_deg_;
        angle5_deg = a5_deg - compensation5_deg_ + spindleAngle_deg_;
    }
    const SbRotation turn4 = rotationAbout(direction4_, angle4_deg);
    const SbRotation turn5 = rotationAbout(direction5_, angle5_deg);
    return baseOffset_ + rotated(turn5 * turn4, toolVector_) + rotated(turn4, offset5_);
}

SbVec3f KinematicTransform::OffsetCache::at(const KinematicTransform& transform, float a4_deg, float a5_deg) {
    if (!known_ || a4_deg != a4_deg_ || a5_deg != a5_deg_) {
        offset_ = transform.kinematicOffset(a4_deg, a5_deg);
        a4_deg_ = a4_deg;
        a5_deg_ = a5_deg;
        known_ = true;
    }
    return offset_;
}

// The rotary values do not take the compensations here, unlike in a text; that must stay.
void KinematicTransform::transformPoints(WayPoints& points) const {
    constexpr int kLinear = 3;
    if (mode_ != kToMachine && mode_ != kToTip)
        return;
    const double sign = mode_ == kToMachine ? 1.0 : -1.0;
    OffsetCache cache;
    for (WayPoint& point : points) {
        const float a4_deg = point.size() >= kAxis4 ? static_cast<float>(point[kAxis4 - 1]) : 0.0F;
        const float a5_deg = point.size() >= kAxis5 ? static_cast<float>(point[kAxis5 - 1]) : 0.0F;
        const SbVec3f offset = cache.at(*this, a4_deg, a5_deg);
        for (int i = 0; i < std::min(kLinear, point.size()); ++i)
            point[i] += sign * double{offset[i]};
        if (point.size() >= kAxis5)
            point[kAxis5 - 1] -= sign * double{spindleAngle_deg_};
    }
}

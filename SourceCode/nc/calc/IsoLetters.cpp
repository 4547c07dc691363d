#include "nc/calc/IsoLetters.h"

#include <cmath>

namespace {
constexpr int kAuxiliaryId = 6;
}

std::optional<AxisMap> nickNameLetters(const MachineDescription& machine, const AxisMap& letters,
                                       Diagnostics& diagnostics) {
    AxisMap result;
    for (auto it = letters.begin(); it != letters.end(); ++it) {
        const numericalAxisStruct* const axis = machine.findAxis(it.value());
        if (axis == nullptr) {
            diagnostics.add(Severity::Fatal, QStringLiteral("Error: Can't find the axis name"));
            return std::nullopt;
        }
        result.insert(it.key(), axis->nickName.isEmpty() ? it.value() : axis->nickName.front());
    }
    return result;
}

double auxiliaryValueOf(const MachineDescription& machine, QStringView chain,
                        const AuxiliaryAxis* auxiliary) {
    if (auxiliary != nullptr)
        return auxiliary->value;
    const AxisMap letters = machine.axisMap(chain, true);
    const auto found = letters.find(kAuxiliaryId);
    const numericalAxisStruct* const axis =
        found == letters.end() ? nullptr : machine.findAxis(found.value());
    const double lower = axis == nullptr ? 0.0 : axis->lower.toDouble();
    return std::isfinite(lower) ? lower : 0.0;
}

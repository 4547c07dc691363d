#include <QString>
#include <cstddef>
#include <cstdint>

#include "machine/calc/AxisLimits.h"
#include "machine/calc/Kinematics.h"

namespace {

MachineDescription makeMachine() {
    MachineDescription machine;
    int id = 0;
    for (const char letter : {'X', 'Y', 'Z', 'C', 'A'}) {
        auto axis = std::make_unique<numericalAxisStruct>();
        axis->name = QChar::fromLatin1(letter);
        axis->id = ++id;
        axis->direction = id == 4 ? QStringLiteral("0 0 1") : QStringLiteral("1 0 0");
        axis->type = id > 3 ? QStringLiteral("ROTATION") : QStringLiteral("LINEAR");
        axis->initialization = QStringLiteral("1 2 3");
        axis->lower = QStringLiteral("-1000");
        axis->upper = QStringLiteral("1000");
        machine.numericalAxes.push_back(std::move(axis));
    }
    machine.rebuildIndex();
    return machine;
}

}  // namespace

// The first byte picks the mode, the second the carrier's letter, the rest is the program: the number of
// lines stays, and the limit check reads what came out.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MachineDescription kMachine = makeMachine();
    if (size < 2)
        return 0;
    KinematicTool tool;
    tool.length = 100;
    tool.installationName = QChar::fromLatin1(static_cast<char>(data[1]));
    const QString chain = QStringLiteral("X->Y->Z->C->A");
    Diagnostics diagnostics;
    auto transform = KinematicTransform::make(kMachine, tool, 0, SbVec3f(0, 0, 0), chain, QString(),
                                              data[0] % 3, diagnostics);
    if (!transform)
        __builtin_trap();
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data) + 2, static_cast<int>(size - 2));
    const QString result = transform->transformText(text);
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (result.count(QLatin1Char('\n')) != (lines.isEmpty() ? 0 : lines.size() - 1))
        __builtin_trap();
    auto rows = axisLimitRows(kMachine, kMachine.axisMap(chain, false), diagnostics);
    if (!rows)
        __builtin_trap();
    (void)checkAxisLimits(*rows, result);
    return 0;
}

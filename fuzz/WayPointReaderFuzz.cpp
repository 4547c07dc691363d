#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "machine/calc/MachineDescription.h"
#include "nc/calc/ProgramAudit.h"
#include "nc/calc/WayPointText.h"

namespace {

MachineDescription& machine() {
    static MachineDescription description;
    if (description.numericalAxes.empty()) {
        for (int id = 1; id <= 6; ++id) {
            auto axis = std::make_unique<numericalAxisStruct>();
            axis->name = QStringLiteral("XYZCAW").mid(id - 1, 1);
            axis->acceleration = QStringLiteral("1000");
            axis->id = id;
            description.numericalAxes.push_back(std::move(axis));
        }
        description.interpolationParameters.interpolationTime = 4;
        description.rebuildIndex();
    }
    return description;
}

}  // namespace

// The first byte picks the auxiliary axis, the rest is the code.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const QString code =
        QString::fromUtf8(reinterpret_cast<const char*>(data + 1), static_cast<int>(size - 1));
    const AuxiliaryAxis auxiliary{QStringLiteral("W1="), 2.5, 100, 1000};
    const bool hasAuxiliary = (data[0] & 1) != 0;
    const QString chain = QStringLiteral("X->Y->Z->C->A;W");

    const WayPoints points = WayPointsFromCode(machine(), chain, code, hasAuxiliary ? &auxiliary : nullptr);
    const int dimensions = hasAuxiliary ? 6 : 5;
    for (const WayPoint& point : points) {
        if (point.size() != dimensions)
            std::abort();
    }
    const WayPoints smooth = smoothCorners(points);
    if (smooth.size() < points.size())
        std::abort();
    const QString text = FormatWayPoints(smooth, machine().axisMap(chain, true), lastFeed(code));
    if (text.count(QLatin1Char('\n')) != static_cast<int>(smooth.size()))
        std::abort();
    Diagnostics diagnostics;
    if (!auditProgram(machine(), chain, code, diagnostics))
        std::abort();
    return 0;
}

#include <QByteArray>
#include <cstddef>
#include <cstdint>

#include "machine/calc/MachineFile.h"

// Any bytes as a machine file: a machine or a refusal, then every look-up that a machine offers.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    Diagnostics diagnostics;
    std::optional<XmlError> refusal;
    const auto machine = readMachineFile(bytes, diagnostics, &refusal);
    if (machine == nullptr || (refusal && machine->valid))
        __builtin_trap();
    for (const QString& chain : machine->machineParameters.kinematicChain) {
        const AxisMap letters = machine->axisMap(chain, true);
        if (letters.size() > 6 || machine->accelerations(chain).size() > 5)
            __builtin_trap();
        (void)machine->homeLine(chain);
        (void)machine->chainHead(chain);
    }
    for (const auto& system : machine->workCoordinateSystems)
        (void)machine->workCoordinateOrigin(system->name);
    (void)machine->spindleOffset(1);
    return 0;
}

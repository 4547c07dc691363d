#include "core/calc/MachineChoice.h"

QStringList offeredMachines(QStringList entries) {
    entries.removeAll(kMachineTemplate);
    return entries;
}

QString chosenMachinePath(const QString& name) {
    return QStringLiteral("machineSample/") + name;
}

bool isProjectSuffix(const QString& suffix) {
    return suffix.toLower() == QLatin1String("tornvale");
}

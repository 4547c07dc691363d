#pragma once

#include <QString>
#include <QStringList>

// Which machine file a start takes.

/// Name filter of machine files, and the template among them that is never offered.
inline const QString kMachineFilter = QStringLiteral("*.xml");
inline const QString kMachineTemplate = QStringLiteral("machineSample.xml");

/// What the user may choose from: `entries` of the folder "machineSample" without the template.
[[nodiscard]] QStringList offeredMachines(QStringList entries);

/// The text that is stored for a chosen machine: "machineSample/" and its name. It is looked up from the
/// working directory, not from the executable's.
[[nodiscard]] QString chosenMachinePath(const QString& name);

/// True for the suffix "tornvale" in any capitals: a first argument that is opened as a project.
[[nodiscard]] bool isProjectSuffix(const QString& suffix);

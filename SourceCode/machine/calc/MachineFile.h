#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

#include "core/calc/Diagnostics.h"
#include "machine/calc/MachineDescription.h"
#include "machine/calc/XmlGuard.h"

// The machine file: one XML document whose root may have any name. Its children "machineParameters",
// "numericalAxis", "nonNumericalAxis", "spindle", "interpolationParameters", "userCoordinateSystem",
// "userCommand", "collisionObjectList" and "userFixtureList" are found by name, the first of each wins.
// Diagnostics carry the keys of the language group "ConfigReader", all in debug level.

/// Reads the bytes of a machine file. Never nullptr; `valid` of the result is false when the document is
/// refused (all lists are empty then) or a required element is missing. `refusal`, when given, takes why the
/// document was refused, and is emptied otherwise.
[[nodiscard]] std::unique_ptr<MachineDescription> readMachineFile(const QByteArray& bytes,
                                                                  Diagnostics& diagnostics,
                                                                  std::optional<XmlError>* refusal = nullptr);

/// The same from a path, which goes into the result. nullptr and "InvalidErrorMsg" when the file cannot be
/// opened.
[[nodiscard]] std::unique_ptr<MachineDescription> loadMachineFile(const QString& path,
                                                                  Diagnostics& diagnostics,
                                                                  std::optional<XmlError>* refusal = nullptr);

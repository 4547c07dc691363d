#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <variant>

#include "app/batch/BatchReport.h"
#include "app/batch/CommandLine.h"
#include "machine/calc/MachineDescription.h"
#include "tools/calc/ToolRecord.h"

class ToolData;

// What a call needs of the installation: machine, work coordinate system, chain and tool.

/// Makes the call's data folder and machine those of the process. The machine file in use comes back.
[[nodiscard]] std::variant<QString, Failure> useInstallation(const BatchCall& call);

/// Where a command works.
struct WorkPlace {
    QString workCoordinate;  ///< empty when the machine has none
    QString chain;
};

/// The named system and chain, otherwise the machine's first system and its first chain.
[[nodiscard]] std::variant<WorkPlace, Failure> workPlace(const MachineDescription& machine,
                                                         const BatchCall& call);

/// All tools of the call's library.
[[nodiscard]] std::variant<QVector<ToolRecord>, Failure> readTools(const BatchCall& call);

/// The tool of the call's index; a null pointer when the call names none.
[[nodiscard]] std::variant<std::shared_ptr<ToolData>, Failure> findTool(const BatchCall& call);

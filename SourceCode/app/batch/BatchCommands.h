#pragma once

#include "app/batch/BatchReport.h"
#include "app/batch/CommandLine.h"

/// Carries out one call, from reading the installation to writing the result. Errors are printed; what is
/// returned is the exit status of the program.
[[nodiscard]] ExitStatus runCommand(const BatchCall& call);

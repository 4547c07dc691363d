#pragma once

#include <QString>
#include <QVector>
#include <cstdint>

#include "core/calc/Diagnostics.h"

// The planned texts of the chains of one work coordinate segment made one text. Lines are separated by line
// feeds; a chain's text of n line feeds has n + 1 lines, the last of them mostly empty.

/// One chain behind the other, each followed by a line feed.
[[nodiscard]] QString joinChains(const QVector<QString>& chains, Diagnostics& diagnostics);

/// All chains at once: line i holds line i of every chain that has one. Equal lines appear once, lines of
/// which one is a command (an M word) stand below one another, any others are joined with a blank. A single
/// chain stays as it is.
///
/// `bound` lines are written, though it is a time in ms: behind the last line of the longest chain they are
/// empty, and at a period of 1 ms the longest chain's last line is left out.
[[nodiscard]] QString mergeTandem(const QVector<QString>& chains, std::uint32_t bound,
                                  Diagnostics& diagnostics);

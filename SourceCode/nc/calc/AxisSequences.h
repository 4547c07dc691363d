#pragma once

#include <QList>
#include <QVector>

/// The order in which the axes go to the first item or leave the last one: each list of axis ids (1 to 6) is
/// one move. With fewer than two lists all axes move at once.
using AxisSequences = QVector<QList<int>>;

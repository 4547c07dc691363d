#pragma once

#include <QString>

#include "core/calc/Diagnostics.h"

/// Why an ISO program made no code.
struct IsoProblem {
    int line = 0;  ///< 1-based line of the source; 0: no line is meant
    QString key;   ///< in the language group "IsoItem/Problem"; empty when there is none for this reason
    QString text;  ///< the reason as the converter told it

    [[nodiscard]] bool isEmpty() const { return key.isEmpty() && text.isEmpty(); }
    friend bool operator==(const IsoProblem&, const IsoProblem&) = default;
};

/// The reason of a conversion that has left no code: its last warning; without one, that the source is empty,
/// that it holds no move, or, when it has a path (`hasPath`), that the path could not be timed.
[[nodiscard]] IsoProblem isoProblem(const Diagnostics& diagnostics, const QString& source, bool hasPath);

#pragma once

#include <QChar>
#include <QString>
#include <QVector>
#include <optional>

#include "core/calc/Diagnostics.h"

/// What the passes over the text of one work coordinate segment need to know.
struct SegmentRules {
    QString rapid;          ///< mark where motion changes to rapid
    QString linear;         ///< mark where motion changes to feed
    QString prepend;        ///< text in front of "G1" lines
    QString rapidMovement;  ///< word of rapid lines
    double rapidThreshold_mmPerMin = 0;
    QVector<QChar> letters;  ///< axes of all chains of the segment, in the order in which words stand
    bool userHeaderTail = true;
    std::optional<int> firstTool;  ///< tool number at the start; counts without user header and tail only
    std::optional<int> lastTool;
};

/// The text of a segment as it stands in the NC program: motion marks, prepended text, rapid words, the order
/// of words, and the words of its ends, in this order. An empty segment stays empty; one with content that
/// comes back empty is too long for any text, and a Warning says so.
[[nodiscard]] QString processedSegment(QString text, const SegmentRules& rules, Diagnostics& diagnostics);

/// True when the text holds more than empty lines.
[[nodiscard]] bool hasContent(QStringView text);

#include "nc/calc/SegmentText.h"

#include <algorithm>

#include "nc/calc/MotionPasses.h"
#include "nc/calc/WordOrder.h"

bool hasContent(QStringView text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c != u'\n'; });
}

// Each pass lets go of the text before it, so that a program of a million lines is in memory twice at most.
QString processedSegment(QString text, const SegmentRules& rules, Diagnostics& diagnostics) {
    if (text.isEmpty())
        return text;
    const bool mustStay = hasContent(text);
    text = withMotionMarks(text, rules.rapid, rules.linear, rules.rapidThreshold_mmPerMin);
    text = withPrepended(text, rules.prepend, rules.linear);
    text = withRapidWords(text, rules.rapidMovement, rules.rapidThreshold_mmPerMin);
    text = withOrderedWords(text, rules.letters, rules.prepend, diagnostics);
    if (!rules.userHeaderTail)
        text = withToolWords(text, rules.prepend, rules.firstTool, rules.lastTool);
    if (mustStay && text.isEmpty())
        diagnostics.add(Severity::Warning, QStringLiteral("The program is too long and is left out."));
    return text;
}

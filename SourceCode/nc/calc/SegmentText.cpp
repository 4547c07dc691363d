#include "nc/calc/SegmentText.h"

#include "nc/calc/MotionPasses.h"
#include "nc/calc/WordOrder.h"

// Each pass lets go of the text before it, so that a program of a million lines is in memory twice at most.
QString processedSegment(QString text, const SegmentRules& rules, Diagnostics& diagnostics) {
    if (text.isEmpty())
        return text;
    text = withMotionMarks(text, rules.rapid, rules.linear, rules.rapidThreshold_mmPerMin);
    text = withPrepended(text, rules.prepend, rules.linear);
    text = withRapidWords(text, rules.rapidMovement, rules.rapidThreshold_mmPerMin);
    text = withOrderedWords(text, rules.letters, rules.prepend, diagnostics);
    if (!rules.userHeaderTail)
        text = withToolWords(text, rules.prepend, rules.firstTool, rules.lastTool);
    if (text.isEmpty())
        diagnostics.add(Severity::Warning, QStringLiteral("The program is too long and is left out."));
    return text;
}

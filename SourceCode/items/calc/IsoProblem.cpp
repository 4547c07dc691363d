#include "items/calc/IsoProblem.h"

#include <algorithm>
#include <array>

namespace {

struct Reason {
    const char* beginning;  ///< of the converter's text
    const char* key;
};

constexpr std::array kReasons{
    Reason{"the first motion of a program cannot be an arc", "ArcFirst"},
    Reason{"an arc back to its own start", "ArcWithoutChord"},
    Reason{"the chord of the arc", "ArcChord"},
    Reason{"the radius of the arc", "ArcRadius"},
    Reason{"the arc has too many points", "ArcTooLong"},
    Reason{"the start of the arc", "OutOfRange"},
    Reason{"the place is out of range", "OutOfRange"},
    Reason{"the tool's place in the inclined plane", "OutOfRange"},
    Reason{"a number of the inclined plane", "OutOfRange"},
    Reason{"a place of the program", "OutOfRange"},
    Reason{"way point ", "OutOfRange"},
    Reason{"G16 with U and V", "PlaneFirst"},
    Reason{"the rotary swing has too many points", "TooManyPoints"},
    Reason{"the program has too many points", "TooManyPoints"},
    Reason{"the code of the program would be longer", "TooLong"},
    Reason{"the program is longer", "TooLong"},
    Reason{"the program would run", "TooSlow"},
    Reason{"a feed of F", "FeedZero"},
};

QString keyOf(const QString& text) {
    const auto* const found = std::find_if(kReasons.begin(), kReasons.end(), [&text](const Reason& reason) {
        return text.startsWith(QLatin1String(reason.beginning));
    });
    return found == kReasons.end() ? QString() : QString::fromLatin1(found->key);
}

bool isBlank(const QString& text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c.isSpace() || c == QChar::ByteOrderMark; });
}

}  // namespace

IsoProblem isoProblem(const Diagnostics& diagnostics, const QString& source, bool hasPath) {
    const auto last =
        std::find_if(diagnostics.entries.rbegin(), diagnostics.entries.rend(),
                     [](const Diagnostic& entry) { return entry.severity == Severity::Warning; });
    if (last != diagnostics.entries.rend())
        return {last->line, keyOf(last->text), last->text};
    if (hasPath)
        return {0, QStringLiteral("NotTimed"), QStringLiteral("the path could not be timed")};
    if (isBlank(source))
        return {0, QStringLiteral("Empty"), QStringLiteral("there is no program text yet")};
    return {0, QStringLiteral("NoMove"), QStringLiteral("no line of the program makes a move")};
}

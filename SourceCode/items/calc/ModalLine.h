#pragma once

#include <QString>
#include <QStringView>

class CodeLines;

/// Bounds of the walk back through the program.
struct ModalWalk {
    int lines = 20000;
    int letters = 4000000;
};

/// Line `index` with all words that bring the machine to where the line ends: the words of the line itself
/// without comments and line number, then for each of `axisLetters` that it lacks, in their order, the last
/// word found in the lines before, one blank between words. An axis that no line within the walk names is
/// left out. A line with an M word gives the axis words alone: the machine takes a line with "M" for a
/// command and would not move. Empty outside of the text.
[[nodiscard]] QString modalLine(const CodeLines& lines, int index, QStringView axisLetters,
                                const ModalWalk& walk = {});

#include "nc/calc/MotionPasses.h"

#include <optional>

#include "core/calc/NumberText.h"
#include "nc/calc/OutputText.h"
#include "nc/calc/OutputWords.h"

namespace {

/// Room for the lines that a pass adds to a text.
qsizetype withRoom(qsizetype length) {
    constexpr qsizetype kFewLines = 4096;
    return length + kFewLines;
}

/// True when the line is a linear move and has a feed, and every feed on it is that of rapid moves.
bool isRapidLine(QStringView line, double rapidThreshold) {
    std::optional<FoundWord> feed = findWord(line, u'F');
    if (!feed || !findLinearWord(line))
        return false;
    while (feed) {
        const std::optional<double> value = numberFromRun(line.mid(feed->place + 1, feed->length - 1));
        if (!value || !isRapidFeed(*value, rapidThreshold))
            return false;
        feed = findWord(line, u'F', feed->place + feed->length);
    }
    return true;
}

/// Where the text before a feed word that goes ends: the blanks in front of the word go with it.
qsizetype behindBlanks(QStringView line, qsizetype from, qsizetype place) {
    while (place > from && line[place - 1] == u' ')
        --place;
    return place;
}

void appendRapidLine(QStringView line, const QString& word, OutputText& out) {
    qsizetype done = 0;
    std::optional<FoundWord> linear = findLinearWord(line);
    std::optional<FoundWord> feed = findWord(line, u'F');
    while (linear || feed) {
        const bool takesLinear = linear && (!feed || linear->place < feed->place);
        if (takesLinear) {
            out.append(line.mid(done, linear->place - done));
            out.append(word);
            done = linear->place + linear->length;
            linear = findLinearWord(line, done);
        } else {
            out.append(line.mid(done, behindBlanks(line, done, feed->place) - done));
            done = feed->place + feed->length;
            feed = findWord(line, u'F', done);
        }
    }
    out.append(line.mid(done));
}

}  // namespace

QString withMotionMarks(const QString& text, const QString& rapid, const QString& linear,
                        double rapidThreshold_mmPerMin) {
    OutputText out(withRoom(text.size()));
    bool isRapid = true;
    out.appendLine(rapid);
    forLines(text, out, [&](QStringView line) {
        const std::optional<double> feed = feedOfLine(line);
        if (feed && isRapidFeed(*feed, rapidThreshold_mmPerMin) != isRapid) {
            isRapid = !isRapid;
            out.appendLine(isRapid ? rapid : linear);
        }
        out.append(line);
    });
    return out.take();
}

QString withPrepended(const QString& text, const QString& prepend, const QString& linear) {
    if (prepend.isEmpty() || linear.isEmpty())
        return text;
    OutputText out(withRoom(text.size()));
    forLines(text, out, [&](QStringView line) {
        if (line.startsWith(QLatin1String("G1")))
            out.append(prepend);
        out.append(line);
    });
    return out.take();
}

QString withRapidWords(const QString& text, const QString& word, double rapidThreshold_mmPerMin) {
    if (word.size() < 2 || word.mid(1).toDouble() == 1.0)
        return text;
    OutputText out(withRoom(text.size()));
    forLines(text, out, [&](QStringView line) {
        if (isRapidLine(line, rapidThreshold_mmPerMin))
            appendRapidLine(line, word, out);
        else
            out.append(line);
    });
    return out.take();
}

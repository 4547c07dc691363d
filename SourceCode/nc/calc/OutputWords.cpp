#include "nc/calc/OutputWords.h"

#include <cmath>

#include "core/calc/NumberText.h"

namespace {

bool isDigitAt(QStringView line, qsizetype place) {
    return place < line.size() && line[place] >= u'0' && line[place] <= u'9';
}

/// Where the digits that start at `place` end.
qsizetype digitsEnd(QStringView line, qsizetype place) {
    while (isDigitAt(line, place))
        ++place;
    return place;
}

bool endsFeed(QChar c) {
    return (c >= u'A' && c <= u'Z') || c == u'/' || c == u's';
}

/// False before more digits or a decimal part: the word would be another one.
bool endsWordAt(QStringView line, qsizetype place) {
    return !isDigitAt(line, place) && !(place < line.size() && line[place] == u'.');
}

}  // namespace

qsizetype numberLength(QStringView line, qsizetype place) {
    const qsizetype whole = place < line.size() && line[place] == u'-' ? place + 1 : place;
    qsizetype end = digitsEnd(line, whole);
    if (end == whole)
        return 0;
    if (end < line.size() && line[end] == u'.' && isDigitAt(line, end + 1))
        end = digitsEnd(line, end + 1);
    return end - place;
}

std::optional<FoundWord> findWord(QStringView line, QChar letter, qsizetype from) {
    for (qsizetype place = line.indexOf(letter, from); place >= 0; place = line.indexOf(letter, place + 1)) {
        if (const qsizetype length = numberLength(line, place + 1); length > 0)
            return FoundWord{place, length + 1};
    }
    return std::nullopt;
}

bool holdsCommand(QStringView line) {
    for (qsizetype place = line.indexOf(u'M'); place >= 0; place = line.indexOf(u'M', place + 1)) {
        if (isDigitAt(line, place + 1))
            return true;
    }
    return false;
}

std::optional<FoundWord> findLinearWord(QStringView line, qsizetype from) {
    for (qsizetype place = line.indexOf(u'G', from); place >= 0; place = line.indexOf(u'G', place + 1)) {
        const qsizetype digit = place + 1 < line.size() && line[place + 1] == u'0' ? place + 2 : place + 1;
        if (digit < line.size() && line[digit] == u'1' && endsWordAt(line, digit + 1))
            return FoundWord{place, digit + 1 - place};
    }
    return std::nullopt;
}

std::optional<double> feedOfLine(QStringView line) {
    const qsizetype place = line.indexOf(u'F');
    if (place < 0)
        return std::nullopt;
    qsizetype end = place + 1;
    while (end < line.size() && !endsFeed(line[end]))
        ++end;
    const QStringView text = line.mid(place + 1, end - place - 1).trimmed();
    if (const std::optional<double> feed = numberFromRun(text.left(numberRun(text, 0).size()));
        feed && numberRun(text, 0).size() == text.size())
        return feed;
    bool isNumber = false;
    const double feed = text.toString().toDouble(&isNumber);
    return isNumber ? std::optional(feed) : std::nullopt;
}

bool isRapidFeed(double feed, double rapidThreshold) {
    constexpr double kSameFeed = 0.1;
    return std::abs(feed - rapidThreshold) <= kSameFeed;
}

qsizetype motionWordLength(QStringView line) {
    constexpr qsizetype kMostDigits = 3;
    if (line.isEmpty() || line.front() != u'G')
        return 0;
    const qsizetype end = digitsEnd(line, 1);
    if (end == 1 || end > 1 + kMostDigits || !endsWordAt(line, end))
        return 0;
    for (qsizetype zero = 1; zero < end - 1; ++zero) {
        if (line[zero] != u'0')
            return 0;
    }
    return line[end - 1] <= u'3' ? end : 0;
}

bool isMotionLine(QStringView line) {
    return motionWordLength(line.trimmed()) > 0;
}

#include "nc/calc/ProgramText.h"

#include <algorithm>
#include <cmath>
#include <execution>

namespace {

constexpr char16_t kLineFeed = u'\n';

void endLine(QString& out) {
    if (!out.endsWith(QLatin1Char('\n')))
        out += QLatin1Char('\n');
}

/// Lines of the text, without the empty part behind its last line feed.
qsizetype lineCount(QStringView text) {
    const bool open = !text.isEmpty() && text.back() != QLatin1Char('\n');
    return countLineFeeds(text) + (open ? 1 : 0);
}

/// n - time / period, truncated; the quotient of two decimal numbers that should be whole is taken as whole.
qsizetype insertionLine(qsizetype lines, double time_s, double period_s) {
    constexpr double kRoundingNoise_lines = 1e-6;
    if (!(time_s > 0))
        return lines;
    const double last = static_cast<double>(lines);
    if (!(period_s > 0) || time_s > last * period_s)
        return 0;
    const double index = std::trunc(last - time_s / period_s + kRoundingNoise_lines);
    return static_cast<qsizetype>(std::clamp(index, 0.0, last));
}

/// Where the last `lines` lines of the text begin.
qsizetype startOfLastLines(QStringView text, qsizetype lines) {
    qsizetype place = text.size();
    if (lines <= 0)
        return place;
    if (place > 0 && text[place - 1] == QLatin1Char('\n'))
        --place;
    while (lines > 0 && place > 0) {
        --place;
        if (text[place] == QLatin1Char('\n') && --lines == 0)
            return place + 1;
    }
    return 0;
}

}  // namespace

qsizetype countLineFeeds(QStringView text) {
    constexpr qsizetype kLongText = 100000;
    const char16_t* const begin = text.utf16();
    const char16_t* const end = begin + text.size();
    if (text.size() <= kLongText)
        return std::count(begin, end, kLineFeed);
    return std::count(std::execution::par, begin, end, kLineFeed);
}

quint32 runTime_ms(QStringView text, unsigned interpolationTime_ms) {
    return static_cast<quint32>(countLineFeeds(text)) * static_cast<quint32>(interpolationTime_ms);
}

QStringView firstLineOf(QStringView text) {
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = text.indexOf(QLatin1Char('\n'), begin);
        if (end < 0)
            end = text.size();
        if (end > begin)
            return text.mid(begin, end - begin);
        begin = end + 1;
    }
    return {};
}

QStringView lastLineOf(QStringView text) {
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == QLatin1Char('\n'))
        --end;
    qsizetype begin = end;
    while (begin > 0 && text[begin - 1] != QLatin1Char('\n'))
        --begin;
    return text.mid(begin, end - begin);
}

void InsertPreLaunch(QString& out, QStringView text, QStringView block, double preLaunchTime_s,
                     double period_s) {
    if (text.isEmpty() && block.isEmpty())
        return;
    if (block.isEmpty()) {
        out.append(text.data(), static_cast<int>(text.size()));
        endLine(out);
        return;
    }
    const qsizetype lines = lineCount(text);
    const qsizetype after = lines - insertionLine(lines, preLaunchTime_s, period_s);
    const qsizetype place = startOfLastLines(text, after);
    out.append(text.data(), static_cast<int>(place));
    if (place > 0)
        endLine(out);
    out.append(block.data(), static_cast<int>(block.size()));
    endLine(out);
    out.append(text.data() + place, static_cast<int>(text.size() - place));
    if (place < text.size())
        endLine(out);
}

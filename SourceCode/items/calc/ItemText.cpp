#include "items/calc/ItemText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

#include "nc/calc/AxisWords.h"

namespace {

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

qsizetype skipDigits(QStringView text, qsizetype place) {
    while (place < text.size() && isDigit(text[place]))
        ++place;
    return place;
}

/// End of the number "-?digits[.digits]" or "-?.digits" that starts at `place`, `place` itself when there is
/// none.
qsizetype numberEnd(QStringView text, qsizetype place) {
    const bool negative = place < text.size() && text[place] == QLatin1Char('-');
    const qsizetype whole = negative ? place + 1 : place;
    const qsizetype point = skipDigits(text, whole);
    const bool hasWhole = point > whole;
    if (point < text.size() && text[point] == QLatin1Char('.')) {
        const qsizetype end = skipDigits(text, point + 1);
        if (end > point + 1)
            return end;
    }
    return hasWhole ? point : place;
}

/// The number of an axis word within a text.
struct NumberPlace {
    qsizetype begin = 0;
    qsizetype end = 0;
    [[nodiscard]] QStringView in(QStringView text) const { return text.mid(begin, end - begin); }
};

/// The first word of `letter` that has a number.
std::optional<NumberPlace> findNumber(QStringView text, QChar letter) {
    for (qsizetype place = text.indexOf(letter); place >= 0; place = text.indexOf(letter, place + 1)) {
        const qsizetype end = numberEnd(text, place + 1);
        if (end > place + 1)
            return NumberPlace{place + 1, end};
    }
    return std::nullopt;
}

/// Nothing when the number is beyond the range of double.
std::optional<double> valueOf(QStringView number) {
    constexpr qsizetype kUsual = 64;
    std::array<char, kUsual> bytes{};
    if (number.size() > kUsual) {
        bool ok = false;
        const double value = number.toString().toDouble(&ok);
        return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
    }
    std::transform(number.begin(), number.end(), bytes.begin(), [](QChar c) { return c.toLatin1(); });
    double value = 0;
    const char* const end = bytes.data() + number.size();
    const auto read = std::from_chars(bytes.data(), end, value, std::chars_format::fixed);
    return read.ec == std::errc() && read.ptr == end ? std::optional(value) : std::nullopt;
}

/// The same attitude, reached the other way round.
double otherWayRound(double angle_deg) {
    constexpr double kTurn_deg = 360.0;
    return angle_deg > 0 ? angle_deg - kTurn_deg : angle_deg + kTurn_deg;
}

void append(QString& text, QStringView more) {
    text.append(more.data(), static_cast<int>(more.size()));
}

/// General format with six digits; in decimals where that would be an exponent, which no reader takes.
void appendGeneral(QString& text, double value) {
    constexpr int kDigits = 6;
    std::array<char, 32> bytes{};
    const auto written =
        std::to_chars(bytes.data(), bytes.data() + bytes.size(), value, std::chars_format::general, kDigits);
    if (std::find(bytes.data(), written.ptr, 'e') != written.ptr)
        text += QString::number(value, 'f', 3);
    else
        text += QLatin1String(bytes.data(), static_cast<int>(written.ptr - bytes.data()));
}

/// The lines that are not empty. For lead texts, which are short.
std::vector<QString> linesOf(const QString& text) {
    std::vector<QString> lines;
    for (const QStringRef& line : text.splitRef(QLatin1Char('\n'), Qt::SkipEmptyParts))
        lines.push_back(line.toString());
    return lines;
}

QString closedLines(const std::vector<QString>& lines) {
    QString text;
    for (const QString& line : lines)
        text += line + QLatin1Char('\n');
    return text;
}

qsizetype lineFeeds(QStringView text) {
    return std::count(text.begin(), text.end(), QLatin1Char('\n'));
}

double linesToSeconds(qsizetype lines, unsigned period_ms) {
    constexpr double kSecondsPerMillisecond = 0.001;
    return static_cast<double>(lines) * (period_ms * kSecondsPerMillisecond);
}

}  // namespace

namespace SharedMethods {

void ReplaceSpecifyAxis(const QString& source, QString& target, const AxisMap& chain,
                        const QList<int>& axisIdList, Diagnostics& diagnostics) {
    if (source.isEmpty() || target.isEmpty() || chain.isEmpty() || axisIdList.isEmpty()) {
        diagnostics.add(Severity::Warning,
                        QStringLiteral("Failed: source, target, chain, or axisIdList is empty."));
        return;
    }
    for (const int id : axisIdList) {
        const auto letter = chain.constFind(id);
        if (letter == chain.constEnd() || !takeAxisWord(target, source, *letter))
            diagnostics.add(Severity::Warning,
                            QStringLiteral("Replace failed. Axis ID: ") + QString::number(id));
    }
}

}  // namespace SharedMethods

QString joinByAxisGroups(const QString& first, const QString& second, const AxisMap& chain,
                         const AxisGroups& groups, Diagnostics& diagnostics) {
    std::vector<QString> lines = linesOf(first);
    if (groups.size() < 2 || lines.empty())
        return first + QLatin1Char('\n') + second;
    for (const QList<int>& group : groups) {
        QString line = lines.back();
        SharedMethods::ReplaceSpecifyAxis(second, line, chain, group, diagnostics);
        lines.push_back(line);
    }
    return closedLines(lines);
}

QString withLastLineAt(const QString& home, const QString& code, const AxisMap& chain, const QList<int>& ids,
                       Diagnostics& diagnostics) {
    std::vector<QString> lines = linesOf(code);
    QString line = lines.empty() ? QString() : lines.back();
    SharedMethods::ReplaceSpecifyAxis(home, line, chain, ids, diagnostics);
    if (!lines.empty())
        lines.push_back(line);
    return closedLines(lines);
}

QString withFirstLineAt(const QString& home, const QString& code, const AxisMap& chain, const QList<int>& ids,
                        Diagnostics& diagnostics) {
    std::vector<QString> lines = linesOf(code);
    QString line = lines.empty() ? QString() : lines.front();
    SharedMethods::ReplaceSpecifyAxis(home, line, chain, ids, diagnostics);
    if (!lines.empty())
        lines.insert(lines.begin(), line);
    return closedLines(lines);
}

double lastAxisValue(QStringView code, QChar letter) {
    for (qsizetype place = code.lastIndexOf(letter); place >= 0;
         place = place > 0 ? code.lastIndexOf(letter, place - 1) : -1) {
        const qsizetype end = numberEnd(code, place + 1);
        if (end > place + 1)
            return valueOf(code.mid(place + 1, end - place - 1)).value_or(0.0);
    }
    return 0.0;
}

QString shortestRotaryPath(const QString& code, QChar letter, double previous_deg) {
    const QStringView text(code);
    const std::optional<NumberPlace> first = findNumber(text, letter);
    const std::optional<double> value = first ? valueOf(first->in(text)) : std::nullopt;
    if (!value || !(std::abs(previous_deg - otherWayRound(*value)) < std::abs(previous_deg - *value)))
        return code;
    QString turned;
    turned.reserve(code.size() + code.size() / 16);  // a number may grow by a sign or a digit
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype feed = text.indexOf(QLatin1Char('\n'), begin);
        const qsizetype end = feed < 0 ? text.size() : feed + 1;
        const QStringView line = text.mid(begin, end - begin);
        const std::optional<NumberPlace> place = findNumber(line, letter);
        const std::optional<double> angle_deg = place ? valueOf(place->in(line)) : std::nullopt;
        if (angle_deg) {
            append(turned, line.left(place->begin));
            appendGeneral(turned, otherWayRound(*angle_deg));
            append(turned, line.mid(place->end));
        } else {
            append(turned, line);
        }
        begin = end;
    }
    return turned;
}

double runTime_s(QStringView leadIn, QStringView isoCode, QStringView leadOut, unsigned period_ms) {
    // Joined by two line feeds.
    return linesToSeconds(lineFeeds(leadIn) + lineFeeds(isoCode) + lineFeeds(leadOut) + 3, period_ms);
}

double runTime_s(QStringView code, unsigned period_ms) {
    return linesToSeconds(lineFeeds(code) + 1, period_ms);
}

QString tenCopies(const QString& block) {
    constexpr int kPeriods = 10;
    return (block + QLatin1Char('\n')).repeated(kPeriods);
}

#include "NcText.h"

#include <QCryptographicHash>
#include <cmath>
#include <limits>
#include <optional>

namespace {

/// A number with exactly so many decimals, "-" in front or not; nothing when it is written otherwise.
std::optional<double> numberOf(QStringView text, int decimals) {
    const bool isNegative = text.startsWith(QLatin1Char('-'));
    text = text.mid(isNegative ? 1 : 0);
    const qsizetype point = decimals == 0 ? text.size() : text.size() - 1 - decimals;
    qint64 digits = 0;
    double scale = 1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (i == point && text[i] == QLatin1Char('.'))
            continue;
        if (i == point || !text[i].isDigit() || i > 14)
            return std::nullopt;
        digits = digits * 10 + text[i].digitValue();
        scale *= i > point ? 10 : 1;
    }
    const double value = static_cast<double>(digits) / scale;
    return point < 1 ? std::nullopt : std::optional(isNegative ? -value : value);
}

NcLine::Kind kindOf(const QString& text, const QString& delay) {
    if (text.startsWith(QStringLiteral("G0 ")) || text.startsWith(QStringLiteral("G1 ")))
        return NcLine::Kind::Motion;
    if (text == delay)
        return NcLine::Kind::Delay;
    if (text.startsWith(QLatin1Char(';')))
        return NcLine::Kind::Remark;
    if (text.startsWith(QLatin1Char('M')))
        return NcLine::Kind::Command;
    return NcLine::Kind::Other;
}

QString feedWord(const QString& line) {
    const int place = line.indexOf(QLatin1Char('F'));
    return line.left(2) + (place < 0 ? QString() : line.mid(place));
}

}  // namespace

bool NcLine::isSameMotion(const NcLine& other) const {
    // A rapid word takes the feed off its line, so that the modal feed says nothing.
    if (isRapid != other.isRapid || (!isRapid && feed != other.feed))
        return false;
    for (std::size_t i = 0; i < position.size(); ++i) {
        const bool isOpen = std::isnan(position[i]) || std::isnan(other.position[i]);
        if (!isOpen && position[i] != other.position[i])
            return false;
    }
    return true;
}

NcText::NcText(const QString& text, const NcDialect& dialect)
    : position_(static_cast<std::size_t>(dialect.letters.size()), std::numeric_limits<double>::quiet_NaN()) {
    int number = 0;
    for (const QString& raw : text.split(QLatin1Char('\n'))) {
        ++number;
        if (raw.isEmpty())
            continue;
        NcLine line;
        line.text = raw;
        line.number = number;
        line.kind = kindOf(raw, dialect.delay);
        if (line.kind == NcLine::Kind::Motion)
            readMotion(line, dialect);
        lines.push_back(std::move(line));
    }
}

void NcText::readMotion(NcLine& line, const NcDialect& dialect) {
    line.isRapid = line.text[1] == QLatin1Char('0');
    int order = -1;
    const QStringView all(line.text);
    for (qsizetype from = 3, end = 3; from < all.size(); from = end + 1) {
        end = all.indexOf(QLatin1Char(' '), from);
        end = end < 0 ? all.size() : end;
        const QStringView word = all.mid(from, end - from);
        if (word.isEmpty())
            continue;
        const bool isFeed = word[0] == QLatin1Char('F');
        const int axis = isFeed ? dialect.letters.size() : dialect.letters.indexOf(word[0]);
        const std::optional<double> value = numberOf(word.mid(1), isFeed ? 0 : 3);
        if (axis < 0 || !value) {
            object(line, "a word that is none");
            continue;
        }
        const int place = isFeed ? dialect.order.size() : dialect.order.indexOf(word[0]);
        if (place <= order)
            object(line, "words twice or out of order");
        order = place;
        if (isFeed)
            feed_ = *value;
        else
            position_[static_cast<std::size_t>(axis)] = *value;
        line.isRapid = line.isRapid || (isFeed && *value == dialect.rapidFeed);
    }
    if (line.text[1] == QLatin1Char('1') && order < dialect.order.size())
        object(line, "a feed move without its feed");
    line.feed = feed_;
    line.position = position_;
}

void NcText::object(const NcLine& line, const char* text) {
    faults.push_back("line " + std::to_string(line.number) + " (" + line.text.toStdString() + "): " + text);
}

std::vector<const NcLine*> NcText::motions() const {
    std::vector<const NcLine*> result;
    for (const NcLine& line : lines) {
        if (line.kind == NcLine::Kind::Motion)
            result.push_back(&line);
    }
    return result;
}

QString listing(const QString& program) {
    QString result;
    const QStringList lines = program.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size();) {
        const bool isMotion = kindOf(lines[i], {}) == NcLine::Kind::Motion;
        QCryptographicHash sum(QCryptographicHash::Md5);
        int end = i;
        while (end < lines.size() &&
               (isMotion ? feedWord(lines[end]) == feedWord(lines[i]) : lines[end] == lines[i]))
            sum.addData(lines[end++].toUtf8() + '\n');
        const QString count = QString::number(end - i);
        if (isMotion)
            result += QStringLiteral("%1 lines %2 to %3\n")
                          .arg(count, QString::fromLatin1(sum.result().toHex().left(8)), lines[end - 1]);
        else
            result += end - i > 1 ? count + QLatin1Char(' ') + lines[i] + QLatin1Char('\n')
                                  : lines[i] + QLatin1Char('\n');
        i = end;
    }
    return result;
}

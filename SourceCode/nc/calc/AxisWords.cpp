#include "nc/calc/AxisWords.h"

#include "core/calc/NumberText.h"
#include "nc/calc/ProgramText.h"

namespace {

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

qsizetype behindDigits(QStringView text, qsizetype place) {
    while (place < text.size() && isDigit(text[place]))
        ++place;
    return place;
}

/// The number of a word, without its letter.
struct WordPlace {
    qsizetype begin = -1;
    qsizetype end = -1;
    [[nodiscard]] bool isFound() const { return begin >= 0; }
};

WordPlace findWord(QStringView text, QChar letter) {
    for (qsizetype at = text.indexOf(letter); at >= 0; at = text.indexOf(letter, at + 1)) {
        const qsizetype begin = at + 1;
        const bool negative = begin < text.size() && text[begin] == QLatin1Char('-');
        const qsizetype digits = begin + (negative ? 1 : 0);
        qsizetype end = behindDigits(text, digits);
        if (end == digits)
            continue;
        if (end + 1 < text.size() && text[end] == QLatin1Char('.') && isDigit(text[end + 1]))
            end = behindDigits(text, end + 1);
        return {begin, end};
    }
    return {};
}

}  // namespace

bool ModifyAxisPosition(QString& text, const AxisMap& letters, int id, double value,
                        Diagnostics& diagnostics) {
    const auto letter = letters.constFind(id);
    if (letter == letters.constEnd()) {
        diagnostics.add(Severity::Fatal, QStringLiteral("Id error.not contains."));
        return false;
    }
    std::string number;
    appendFixed3(number, value);
    const QString word = QString::fromLatin1(number.data(), static_cast<int>(number.size()));
    QString result;
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = QStringView(text).indexOf(QLatin1Char('\n'), begin);
        end = end < 0 ? text.size() : end + 1;
        const QStringView line = QStringView(text).mid(begin, end - begin);
        const qsizetype at = line.indexOf(*letter);
        const qsizetype behind = at + 1 + (at < 0 ? 0 : numberRun(line, at + 1).size());
        result.append(line.data(), static_cast<int>(at + 1));
        if (at >= 0)
            result.append(word);
        result.append(line.data() + behind, static_cast<int>(line.size() - behind));
        begin = end;
    }
    text = result;
    return true;
}

bool takeAxisWord(QString& target, QStringView source, QChar letter) {
    const WordPlace from = findWord(source, letter);
    const WordPlace to = findWord(target, letter);
    if (!from.isFound() || !to.isFound())
        return false;
    target.replace(static_cast<int>(to.begin), static_cast<int>(to.end - to.begin),
                   source.mid(from.begin, from.end - from.begin).toString());
    return true;
}

QString withAxisWords(QString target, QStringView source, const AxisMap& letters, const QList<int>& ids,
                      Diagnostics& diagnostics) {
    for (const int id : ids) {
        const auto letter = letters.constFind(id);
        if (letter == letters.constEnd())
            continue;
        if (!takeAxisWord(target, source, *letter))
            diagnostics.add(Severity::Warning,
                            QStringLiteral("Replace failed. Axis ID: ") + QString::number(id));
    }
    return target;
}

QString joinedPath(const QString& from, const QString& to, const AxisMap& letters,
                   const AxisSequences& sequence, Diagnostics& diagnostics) {
    const QStringView aim = firstLineOf(to);
    QString line = lastLineOf(from).toString();
    QString path = from + QLatin1Char('\n');
    if (sequence.size() > 1 && !line.isEmpty() && !aim.isEmpty()) {
        for (const QList<int>& group : sequence) {
            line = withAxisWords(line, aim, letters, group, diagnostics);
            path += line + QLatin1Char('\n');
        }
    }
    return path + to;
}

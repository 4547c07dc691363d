#pragma once

#include <QChar>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVector>
#include <random>

// The passes over output text once more, by regular expressions and lists of lines: slow, and sharing no code
// with what they are held against.

namespace oracle {

inline QStringList lines(const QString& text) {
    return text.split('\n');
}

inline QString marks(const QString& text, const QString& rapid, const QString& linear, double threshold) {
    static const QRegularExpression end("[A-Z/s]");
    QStringList result{rapid};
    bool state = true;
    for (const QString& line : lines(text)) {
        const int place = line.indexOf('F');
        if (place >= 0) {
            const int stop = line.indexOf(end, place + 1);
            bool ok = false;
            const double feed = line.mid(place + 1, stop < 0 ? -1 : stop - place - 1).toDouble(&ok);
            const bool isRapid = qAbs(feed - threshold) <= 0.1;
            if (ok && isRapid != state) {
                state = isRapid;
                result << (state ? rapid : linear);
            }
        }
        result << line;
    }
    return result.join('\n');
}

inline QString prepended(const QString& text, const QString& prepend, const QString& linear) {
    static const QRegularExpression start("^G1", QRegularExpression::MultilineOption);
    return prepend.isEmpty() || linear.isEmpty() ? text : QString(text).replace(start, prepend + "G1");
}

inline QString rapidWords(const QString& text, const QString& word, double threshold) {
    static const QRegularExpression linear("G0?1(?![\\d.])");
    static const QRegularExpression feed("F(-?\\d+(\\.\\d+)?)");
    static const QRegularExpression feedWithBlanks(" *F-?\\d+(\\.\\d+)?");
    if (word.size() < 2 || word.mid(1).toDouble() == 1.0)
        return text;
    QStringList result = lines(text);
    for (QString& line : result) {
        bool isRapid = line.contains(linear) && line.contains(feed);
        for (auto match = feed.globalMatch(line); match.hasNext();)
            isRapid = qAbs(match.next().captured(1).toDouble() - threshold) <= 0.1 && isRapid;
        if (isRapid)
            line.replace(linear, word).remove(feedWithBlanks);
    }
    return result.join('\n');
}

inline QString folded(const QString& text) {
    QStringList result;
    for (const QString& line : lines(text)) {
        if (result.isEmpty() || line != result.last())
            result << line;
    }
    return result.join('\n');
}

/// `letters`: the axis letters of the segment, each once, none of them F or G.
inline QString ordered(const QString& text, const QString& letters, const QString& prepend) {
    const QRegularExpression motionLine("^(G0{0,2}[0-3])(?![\\d.])(?:[ \\t]*(?:[F" + letters +
                                        "]-?\\d+(?:\\.\\d+)?|\\1(?!\\.?\\d)))*$");
    QStringList result = lines(folded(text));
    for (QString& line : result) {
        const QString whole = line.trimmed();
        const QString start = !prepend.isEmpty() && whole.startsWith(prepend) ? prepend : QString();
        const QString motion = whole.mid(start.size());
        const auto match = motionLine.match(motion);
        QStringList words{match.captured(1)};
        for (const QChar letter : letters) {
            const auto word = QRegularExpression(QString("%1(-?\\d+(\\.\\d+)?)").arg(letter)).match(motion);
            if (word.hasMatch())
                words << word.captured(0);
        }
        if (!match.hasMatch() || words.size() == 1)
            continue;
        const auto feed = QRegularExpression("F(-?\\d+(\\.\\d+)?)").match(motion);
        if (feed.hasMatch())
            words << feed.captured(0);
        line = start + words.join(' ');
    }
    return result.join('\n');
}

}  // namespace oracle

/// Lines as programs have them and as they should never have them, from a seed.
class LineMaker {
  public:
    explicit LineMaker(unsigned seed) : random_(seed) {}

    QString text(int lineCount) {
        QStringList result;
        for (int i = 0; i < lineCount; ++i)
            result << (below(6) == 0 && !result.isEmpty() ? result.last() : line());
        return result.join('\n');
    }

    QString line() {
        switch (below(8)) {
            case 0:
                return {};
            case 1:
                return pick({"M5", "M6 T3", ";LEFT TABLE", "(DLY,1)", "G4 F1", " M9", "G17", "G61", "\r"});
            case 2:
                return junk();
            default:
                return motion();
        }
    }

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

  private:
    QString pick(const QStringList& texts) { return texts[below(texts.size())]; }

    QString number() {
        return pick(
            {"0", "1", "-3", "12.000", "-0.125", "7.5", "100", "5000", "50000", "49999.95", "50000.2"});
    }

    QString motion() {
        QString result = pick({"G1", "G1", "G1", "G01", "G0", "G1.5", "G11"});
        for (int i = below(6); i >= 0; --i)
            result += pick({" ", "", "  "}) + pick({"X", "Y", "Z", "V", "F", "F", "G1", "Q"}) + number();
        return result + pick({"", "", " F50000", "  F5000", " F50000 "});
    }

    QString junk() {
        static const QString letters = "GFXM01.-5 /s;ETY(\t";
        QString result;
        for (int i = below(24); i > 0; --i)
            result += letters[below(letters.size())];
        return result;
    }

    std::mt19937 random_;
};

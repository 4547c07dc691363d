#include "items/calc/CodeWords.h"

namespace {

bool isCapital(QChar letter) {
    return letter >= QLatin1Char('A') && letter <= QLatin1Char('Z');
}

bool isDigit(QChar letter) {
    return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
}

/// The number at `from` with a sign, or `from` when none stands there.
int behindNumber(QStringView line, int from) {
    const int size = static_cast<int>(line.size());
    int at = from;
    if (at < size && (line[at] == QLatin1Char('-') || line[at] == QLatin1Char('+')))
        ++at;
    bool digits = false;
    for (; at < size && (isDigit(line[at]) || line[at] == QLatin1Char('.')); ++at)
        digits = digits || isDigit(line[at]);
    return digits ? at : from;
}

CodeWordKind kindOf(QChar letter) {
    switch (letter.unicode()) {
        case u'N':
            return CodeWordKind::Number;
        case u'G':
            return CodeWordKind::Preparatory;
        case u'M':
            return CodeWordKind::Command;
        case u'F':
            return CodeWordKind::Feed;
        case u'S':
        case u'T':
        case u'D':
        case u'H':
            return CodeWordKind::Tool;
        case u'L':
        case u'O':
        case u'P':
        case u'Q':
            return CodeWordKind::Other;
        default:
            return CodeWordKind::AxisLetter;
    }
}

}  // namespace

bool CodeWordReader::readComment() {
    const QChar first = line_[start_];
    const int size = static_cast<int>(line_.size());
    if (first == QLatin1Char('(')) {
        const int close = static_cast<int>(line_.indexOf(u')', start_));
        end_ = close < 0 ? size : close + 1;
        return true;
    }
    const bool lineOfProgram = first == QLatin1Char('%') && start_ == 0;
    const bool slashes = first == QLatin1Char('/') && start_ + 1 < size && line_[start_ + 1] == first;
    if (first != QLatin1Char(';') && !lineOfProgram && !slashes)
        return false;
    end_ = size;
    return true;
}

bool CodeWordReader::readWord() {
    if (!isCapital(line_[start_]) || (start_ > 0 && line_[start_ - 1].isLetter()))
        return false;
    end_ = behindNumber(line_, start_ + 1);
    return end_ > start_ + 1;
}

bool CodeWordReader::next() {
    for (start_ = end_; start_ < line_.size(); ++start_) {
        comment_ = readComment();
        if (comment_ || readWord())
            return true;
    }
    end_ = start_;
    return false;
}

void appendCodeSpans(QStringView line, CodeSpans& spans) {
    CodeWordReader words(line);
    while (words.next()) {
        const CodeWordKind kind = words.isComment() ? CodeWordKind::Comment : kindOf(words.letter());
        if (kind != CodeWordKind::AxisLetter) {
            spans.append({words.start(), words.length(), kind});
            continue;
        }
        spans.append({words.start(), 1, CodeWordKind::AxisLetter});
        spans.append({words.start() + 1, words.length() - 1, CodeWordKind::AxisValue});
    }
}

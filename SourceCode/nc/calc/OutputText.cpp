#include "nc/calc/OutputText.h"

#include <algorithm>

OutputText::OutputText(qsizetype expectedLength) {
    text_.reserve(static_cast<int>(std::min(expectedLength, kMaxLength)));
}

bool OutputText::makeRoom(qsizetype characters) {
    const qsizetype needed = text_.size() + characters;
    full_ = full_ || needed > kMaxLength;
    if (full_)
        return false;
    // By a quarter: doubling would let the memory of a large program peak at twice its text.
    if (needed > text_.capacity())
        text_.reserve(static_cast<int>(std::min(kMaxLength, needed + needed / 4)));
    return true;
}

void OutputText::append(QStringView text) {
    if (makeRoom(text.size()))
        text_.append(text.data(), static_cast<int>(text.size()));
}

void OutputText::appendLine(QStringView line) {
    append(line);
    append(u'\n');
}

void OutputText::append(qsizetype count, char16_t character) {
    if (count > 0 && makeRoom(count)) {
        const int size = text_.size();
        text_.resize(size + static_cast<int>(count));
        std::fill(text_.begin() + size, text_.end(), QChar(character));
    }
}

void OutputText::insert(qsizetype place, const QString& text) {
    if (makeRoom(text.size()))
        text_.insert(static_cast<int>(place), text);
}

QString OutputText::take() {
    return full_ ? QString() : std::move(text_);
}

bool LineWalk::next() {
    if (atEnd_)
        return false;
    const qsizetype end = rest_.indexOf(u'\n');
    atEnd_ = end < 0;
    line_ = atEnd_ ? rest_ : rest_.left(end);
    rest_ = atEnd_ ? QStringView() : rest_.mid(end + 1);
    return true;
}

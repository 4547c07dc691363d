#include "nc/calc/IsoLine.h"

#include <cstdint>
#include <limits>

#include "core/calc/NumberText.h"

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool isComment(QStringView line) {
    return line.startsWith(u';') || line.startsWith(u'%') || line.startsWith(u"//");
}

}  // namespace

void IsoLine::set(QStringView line) {
    text_ = withoutBlockNumber(line);
    ignored_ = text_.isEmpty() || isComment(text_);
    assignment_ = false;
    if (!ignored_)
        findLetters();
}

QStringView IsoLine::withoutBlockNumber(QStringView line) {
    const qsizetype place = line.indexOf(u'N');
    if (place < 0)
        return line;
    qsizetype end = place + 1;
    while (end < line.size() && isDigit(line[end]))
        ++end;
    if (place == 0)
        return line.mid(end).trimmed();
    if (end == line.size())
        return line.left(place).trimmed();
    joined_.assign(line.utf16(), static_cast<std::size_t>(place));
    joined_.append(line.utf16() + end, static_cast<std::size_t>(line.size() - end));
    return QStringView(joined_.data(), static_cast<qsizetype>(joined_.size())).trimmed();
}

void IsoLine::findLetters() {
    first_.fill(-1);
    const char16_t* const characters = text_.utf16();
    const int size = static_cast<int>(text_.size());
    for (int i = 0; i < size; ++i) {
        const auto letter = static_cast<std::size_t>(characters[i]) - std::size_t{u'A'};
        if (letter < kLetters) {
            if (first_[letter] < 0)
                first_[letter] = i;
        } else if (characters[i] == u'=') {
            assignment_ = true;
        }
    }
}

bool IsoLine::isDirective() const {
    return text_.size() >= 2 && text_.front() == u'(' && text_.back() == u')';
}

qsizetype IsoLine::placeOf(QChar letter) const {
    const std::size_t index = std::size_t{letter.unicode()} - std::size_t{u'A'};
    return index < kLetters ? first_[index] : text_.indexOf(letter);
}

std::optional<double> IsoLine::word(QChar letter) const {
    const qsizetype place = placeOf(letter);
    if (place < 0)
        return std::nullopt;
    return numberFromRun(numberRun(text_, place + 1));
}

std::optional<int> GWords::next() {
    if (place_ < 0)
        return std::nullopt;
    qsizetype end = place_ + 1;
    std::int64_t number = 0;
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    for (; end < text_.size() && isDigit(text_[end]); ++end) {
        if (number <= kLargest)
            number = number * 10 + (text_[end].unicode() - u'0');
    }
    if (end == place_ + 1)
        return std::nullopt;
    place_ = text_.indexOf(u'G', end);
    return number <= kLargest ? static_cast<int>(number) : kUnknown;
}

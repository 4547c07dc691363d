#include "items/calc/CodeSearch.h"

#include <algorithm>

// A block of places is tested at once for the first and the last letter of the needle, without a branch,
// which the compiler turns into vector instructions; only blocks that pass are looked at place by place.

namespace {

/// Letter by letter: QString's own forms may change the length ("ß").
QString folded(const QString& text, QChar (QChar::*form)() const) {
    QString result = text;
    for (QChar& letter : result)
        letter = (letter.*form)();
    return result;
}

const char16_t* lettersOf(QStringView text) {
    return text.utf16();
}

const char16_t* lettersOf(const QString& text) {
    return QStringView(text).utf16();
}

}  // namespace

CodeSearch::CodeSearch(const QString& needle, Qt::CaseSensitivity sensitivity)
    : lower_(needle), upper_(needle) {
    if (sensitivity == Qt::CaseSensitive)
        return;
    lower_ = folded(needle, &QChar::toLower);
    upper_ = folded(needle, &QChar::toUpper);
}

bool CodeSearch::matchesAt(const char16_t* place) const {
    const char16_t* lower = lettersOf(lower_);
    const char16_t* upper = lettersOf(upper_);
    for (int i = 0; i < length(); ++i) {
        if (place[i] != lower[i] && place[i] != upper[i])
            return false;
    }
    return true;
}

int CodeSearch::candidates(const char16_t* place) const {
    const int last = length() - 1;
    const char16_t firstLower = lettersOf(lower_)[0];
    const char16_t firstUpper = lettersOf(upper_)[0];
    const char16_t lastLower = lettersOf(lower_)[last];
    const char16_t lastUpper = lettersOf(upper_)[last];
    char16_t sum = 0;
    for (int i = 0; i < kBlock; ++i) {
        const auto first = static_cast<char16_t>((place[i] == firstLower) | (place[i] == firstUpper));
        const auto end =
            static_cast<char16_t>((place[i + last] == lastLower) | (place[i + last] == lastUpper));
        sum = static_cast<char16_t>(sum + (first & end));
    }
    return sum;
}

int CodeSearch::next(QStringView text, int from) const {
    if (isEmpty())
        return -1;
    const char16_t* letters = lettersOf(text);
    const int places = static_cast<int>(text.size()) - length() + 1;
    int place = std::max(from, 0);
    while (place < places) {
        const int end = std::min(place + kBlock, places);
        if (end - place == kBlock && candidates(letters + place) == 0) {
            place = end;
            continue;
        }
        for (; place < end; ++place) {
            if (matchesAt(letters + place))
                return place;
        }
    }
    return -1;
}

int CodeSearch::previous(QStringView text, int from) const {
    if (isEmpty())
        return -1;
    const char16_t* letters = lettersOf(text);
    int end = std::min(from, static_cast<int>(text.size()) - length()) + 1;
    while (end > 0) {
        const int begin = std::max(end - kBlock, 0);
        if (end - begin == kBlock && candidates(letters + begin) == 0) {
            end = begin;
            continue;
        }
        for (; end > begin; --end) {
            if (matchesAt(letters + end - 1))
                return end - 1;
        }
    }
    return -1;
}

CodeSearch::Found CodeSearch::nextWrapped(QStringView text, int from) const {
    const int found = next(text, from);
    if (found >= 0)
        return {found, false};
    const int again = next(text, 0);
    return {again, again >= 0};
}

CodeSearch::Found CodeSearch::previousWrapped(QStringView text, int from) const {
    const int found = from < 0 ? -1 : previous(text, from);
    if (found >= 0)
        return {found, false};
    const int again = previous(text, static_cast<int>(text.size()));
    return {again, again >= 0};
}

CodeSearch::Count CodeSearch::count(QStringView text, int offset) const {
    Count count;
    if (isEmpty())
        return count;
    const char16_t* letters = lettersOf(text);
    const int places = static_cast<int>(text.size()) - length() + 1;
    const bool exact = length() <= 2;  // nothing lies between the first and the last letter
    for (int begin = 0; begin < places; begin += kBlock) {
        const int end = std::min(begin + kBlock, places);
        const int found = end - begin == kBlock ? candidates(letters + begin) : -1;
        if (found == 0 || (exact && found > 0 && (end <= offset || begin > offset))) {
            count.total += found;
            count.number += begin > offset ? 0 : found;
            continue;
        }
        for (int place = begin; place < end; ++place) {
            if (!matchesAt(letters + place))
                continue;
            ++count.total;
            count.number += place <= offset ? 1 : 0;
        }
    }
    return count;
}

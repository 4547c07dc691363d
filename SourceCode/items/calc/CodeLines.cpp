#include "items/calc/CodeLines.h"

#include <algorithm>

namespace {

constexpr int kPageLines = 32;
constexpr int kPageLetters = 1024;

int findLineEnd(const QString& text, int from) {
    return static_cast<int>(QStringView(text).indexOf(u'\n', from));
}

}  // namespace

CodeLines::CodeLines(QString text) : text_(std::move(text)) {
    const int size = text_.size();
    int played = 0;
    int start = 0;
    while (start < size) {
        if (pages_.empty() || count_ - pages_.back().line >= kPageLines ||
            start - pages_.back().start >= kPageLetters)
            pages_.push_back({count_, start, played});
        const int found = findLineEnd(text_, start);
        const int end = found < 0 ? size : found;
        played += end > start ? 1 : 0;
        longest_ = std::max(longest_, end - start);
        ++count_;
        start = end + 1;
    }
    pages_.push_back({count_, start, played});
    pages_.shrink_to_fit();
}

const CodeLines::Page& CodeLines::pageOfLine(int index) const {
    const auto behind = std::upper_bound(pages_.begin(), pages_.end(), index,
                                         [](int line, const Page& page) { return line < page.line; });
    return *(behind - 1);
}

int CodeLines::behindLine(int start) const {
    const int found = findLineEnd(text_, start);
    return found < 0 ? text_.size() + 1 : found + 1;
}

int CodeLines::start(int index) const {
    if (index < 0 || count_ == 0)
        return 0;
    if (index >= count_)
        return text_.size();
    const Page& page = pageOfLine(index);
    int start = page.start;
    for (int line = page.line; line < index; ++line)
        start = behindLine(start);
    return start;
}

QStringView CodeLines::line(int index) const {
    return block(index, index);
}

QStringView CodeLines::block(int first, int last) const {
    if (first < 0 || first > last || last >= count_)
        return {};
    const int from = start(first);
    // The page behind knows where its line starts: a long line, always the last of its page, is not walked.
    const Page* page = &pageOfLine(last);
    int end = page->start;
    if (page[1].line == last + 1) {
        end = page[1].start - 1;
    } else {
        for (int line = page->line; line <= last; ++line)
            end = behindLine(end);
        --end;
    }
    if (end > from && text_.at(end - 1) == QLatin1Char('\r'))
        --end;
    return QStringView(text_).mid(from, end - from);
}

int CodeLines::lineAt(int offset) const {
    if (offset < 0 || offset >= text_.size())
        return -1;
    const auto behind = std::upper_bound(pages_.begin(), pages_.end(), offset,
                                         [](int place, const Page& page) { return place < page.start; });
    const Page& page = *(behind - 1);
    int line = page.line;
    for (int next = page.start; line + 1 < behind->line; ++line) {
        next = behindLine(next);
        if (next > offset)
            break;
    }
    return line;
}

int CodeLines::lineOfPlayed(int played) const {
    if (played < 0 || pages_.empty() || played >= pages_.back().played)
        return -1;
    const auto behind = std::upper_bound(pages_.begin(), pages_.end(), played,
                                         [](int number, const Page& page) { return number < page.played; });
    const Page& page = *(behind - 1);
    int line = page.line;
    int start = page.start;
    for (int number = page.played;; ++line) {
        if (text_.at(start) != QLatin1Char('\n') && number++ == played)
            return line;
        start = behindLine(start);
    }
}

qint64 CodeLines::indexBytes() const {
    return static_cast<qint64>(pages_.capacity()) * qint64{sizeof(Page)};
}

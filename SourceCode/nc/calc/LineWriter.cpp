#include "nc/calc/LineWriter.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "core/calc/NumberText.h"
#include "core/calc/WayPoint.h"

LineWriter::LineWriter(const QVector<QChar>& letters) {
    const int count = std::min<int>(letters.size(), WayPoint::kMaxEntries);
    for (int i = 0; i < count; ++i) {
        const char16_t letter = letters[i].unicode();
        words_.push_back(i == 0 ? Word{{u'G', u'1', u' ', letter}, 4} : Word{{u' ', letter}, 2});
    }
    longestLine_ = 4 + count * (4 + kFixedWidth);
}

void LineWriter::reserveLines(std::size_t lines) {
    constexpr double kUsualWord = 10;
    const double length =
        static_cast<double>(lines) * (kUsualWord + kUsualWord * static_cast<double>(words_.size()));
    if (length < static_cast<double>(kMaxLength) && length > buffer_.size())
        buffer_.resize(static_cast<int>(length));
}

/// Where the next characters go, with space for as many as told.
char16_t* LineWriter::room(qsizetype characters) {
    constexpr qsizetype kMostQString = 1'073'000'000;
    const qsizetype needed = used_ + characters;
    if (needed > buffer_.size())
        buffer_.resize(static_cast<int>(std::max(needed, std::min(2 * needed, kMostQString))));
    return reinterpret_cast<char16_t*>(buffer_.data()) + used_;
}

char16_t* LineWriter::appendSlowly(double value, qsizetype charactersToCome) {
    const QByteArray number = QByteArray::number(value, 'f', 3);
    char16_t* out = room(number.size() + charactersToCome);
    for (const char c : number)
        *out++ = static_cast<unsigned char>(c);
    used_ += number.size();
    return out;
}

void LineWriter::appendWords(const double* values) {
    if (isFull())
        return;
    char16_t* out = room(longestLine_);
    if (words_.empty())
        out = std::copy_n(u"G1", 2, out);
    for (std::size_t i = 0; i < words_.size(); ++i) {
        std::memcpy(out, words_[i].before.data(), sizeof(words_[i].before));
        out += words_[i].length;
        if (char16_t* const end = writeFixed3(out, values[i])) {
            out = end;
            continue;
        }
        used_ = out - reinterpret_cast<const char16_t*>(buffer_.constData());
        out = appendSlowly(values[i], longestLine_);
    }
    *out++ = u' ';
    used_ = out - reinterpret_cast<const char16_t*>(buffer_.constData());
}

void LineWriter::append(const QString& tail) {
    if (isFull())
        return;
    std::memcpy(room(tail.size()), tail.constData(),
                static_cast<std::size_t>(tail.size()) * sizeof(char16_t));
    used_ += tail.size();
}

void LineWriter::appendFeed(double feed_mmPerMin) {
    std::string tail = "F";
    appendFixed0(tail, feed_mmPerMin);
    tail += '\n';
    append(QString::fromLatin1(tail.data(), static_cast<int>(tail.size())));
}

QString LineWriter::take() {
    buffer_.truncate(isFull() ? 0 : static_cast<int>(used_));
    used_ = 0;
    return std::move(buffer_);
}

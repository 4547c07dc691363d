#include "core/calc/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

bool isRunCharacter(char16_t c) {
    return (c >= u'0' && c <= u'9') || c == u'.' || c == u'-';
}

bool isTrimmed(QChar c) {
    return c.isSpace() || c == QChar(0xFEFF);
}

/// Digits of a short run as an exact integer over a power of ten: exact in double up to 15 digits.
std::optional<double> shortNumber(QStringView run) {
    static constexpr std::array<double, 16> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                            1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char16_t* it = run.utf16();
    const char16_t* const end = it + run.size();
    const bool negative = *it == u'-';
    if (negative)
        ++it;
    std::int64_t mantissa = 0;
    std::size_t digits = 0;
    std::size_t decimals = 0;
    bool point = false;
    for (; it != end; ++it) {
        if (*it == u'-' || (*it == u'.' && point))
            return std::nullopt;
        if (*it == u'.') {
            point = true;
            continue;
        }
        mantissa = mantissa * 10 + (*it - u'0');
        ++digits;
        decimals += point ? 1 : 0;
    }
    if (digits == 0)
        return std::nullopt;
    const double magnitude = static_cast<double>(mantissa) / kPowersOfTen[decimals];
    return negative ? -magnitude : magnitude;
}

std::optional<double> longNumber(QStringView run) {
    const QByteArray bytes = run.toLatin1();
    double value = 0.0;
    const char* const end = bytes.constData() + bytes.size();
    const auto result = std::from_chars(bytes.constData(), end, value, std::chars_format::fixed);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return value;
}

/// "000" to "999", four places apart: a copy of fixed length takes one, its fourth place is overwritten next.
template <typename Char>
constexpr std::array<Char, 4000> makeDigitTriples() {
    std::array<Char, 4000> table{};
    for (std::size_t i = 0; i < 1000; ++i) {
        table[4 * i] = static_cast<Char>('0' + i / 100);
        table[4 * i + 1] = static_cast<Char>('0' + i / 10 % 10);
        table[4 * i + 2] = static_cast<Char>('0' + i % 10);
    }
    return table;
}
template <typename Char>
constexpr std::array<Char, 4000> kDigitTriples = makeDigitTriples<Char>();

template <typename Char>
Char* writeTriple(Char* out, std::uint32_t value) {
    std::memcpy(out, &kDigitTriples<Char>[std::size_t{value} * 4], 4 * sizeof(Char));
    return out + 3;
}

/// A whole number below 1000 without leading zeros.
template <typename Char>
Char* writeShort(Char* out, std::uint32_t value) {
    const std::uint32_t zeros = value < 10 ? 2 : value < 100 ? 1 : 0;
    const Char* const digits = &kDigitTriples<Char>[std::size_t{value} * 4];
    std::memcpy(out, digits + zeros, 3 * sizeof(Char));
    return out + 3 - zeros;
}

/// A whole number below 1e9 without leading zeros, three digits at a time.
template <typename Char>
Char* writeBelowBillion(Char* out, std::uint32_t value) {
    if (value < 1000)
        return writeShort(out, value);
    if (value < 1000000)
        return writeTriple(writeShort(out, value / 1000), value % 1000);
    out = writeShort(out, value / 1000000);
    return writeTriple(writeTriple(out, value / 1000 % 1000), value % 1000);
}

/// Rounds a scaled magnitude below 1e12 to the nearest whole number; nothing when it is so near to a tie
/// that the rounding of the scaling itself (at most half a unit in the last place, 6e-5 at 1e12) could
/// decide it.
std::optional<std::uint64_t> roundClearly(double scaled) {
    constexpr double kTieMargin = 1e-3;
    const auto whole = static_cast<std::int64_t>(scaled);  // signed: one instruction
    const double fraction = scaled - static_cast<double>(whole);
    if (std::abs(fraction - 0.5) < kTieMargin)
        return std::nullopt;
    return static_cast<std::uint64_t>(whole) + (fraction > 0.5 ? 1 : 0);
}

constexpr double kFastRange = 1e9 - 1;  // rounding up stays below 1e9

template <typename Char>
Char* writeThreeDecimals(Char* out, double value) {
    const double magnitude = std::abs(value);
    if (!(magnitude < kFastRange) || (value == 0.0 && std::signbit(value)))
        return nullptr;
    const std::optional<std::uint64_t> thousandths = roundClearly(magnitude * 1000.0);
    if (!thousandths)
        return nullptr;
    if (value < 0.0)
        *out++ = '-';
    out = writeBelowBillion(out, static_cast<std::uint32_t>(*thousandths / 1000));
    *out++ = '.';
    return writeTriple(out, static_cast<std::uint32_t>(*thousandths % 1000));
}

}  // namespace

QStringView numberRun(QStringView line, qsizetype position) {
    const char16_t* const begin = line.utf16() + position;
    const char16_t* const end = line.utf16() + line.size();
    const char16_t* it = begin;
    while (it != end && isRunCharacter(*it))
        ++it;
    return line.mid(position, it - begin);
}

std::optional<double> numberFromRun(QStringView run) {
    constexpr qsizetype kShort = 15;  // digits that a double's mantissa holds exactly
    if (run.isEmpty())
        return std::nullopt;
    return run.size() <= kShort ? shortNumber(run) : longNumber(run);
}

std::optional<double> readWord(QStringView line, QChar letter) {
    const qsizetype place = line.indexOf(letter);
    if (place < 0)
        return std::nullopt;
    return numberFromRun(numberRun(line, place + 1));
}

char* writeFixed3(char* out, double value) {
    return writeThreeDecimals(out, value);
}

char16_t* writeFixed3(char16_t* out, double value) {
    return writeThreeDecimals(out, value);
}

void appendFixed3(std::string& text, double value) {
    std::array<char, kFixedWidth> buffer;
    if (const char* end = writeFixed3(buffer.data(), value)) {
        text.append(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
        return;
    }
    const QByteArray slow = QByteArray::number(value, 'f', 3);
    text.append(slow.constData(), static_cast<std::size_t>(slow.size()));
}

void appendFixed0(std::string& text, double value) {
    const double magnitude = std::abs(value);
    std::optional<std::uint64_t> whole;
    if (magnitude < kFastRange && value > 0.0)
        whole = roundClearly(magnitude);
    if (whole) {
        std::array<char, kFixedWidth> buffer;
        const char* end = writeBelowBillion(buffer.data(), static_cast<std::uint32_t>(*whole));
        text.append(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
        return;
    }
    const QByteArray slow = QByteArray::number(value, 'f', 0);
    text.append(slow.constData(), static_cast<std::size_t>(slow.size()));
}

bool LineReader::next() {
    if (position_ > text_.size())
        return false;
    qsizetype end = text_.indexOf(u'\n', position_);
    if (end < 0)
        end = text_.size();
    qsizetype first = position_;
    qsizetype last = end;
    while (first < last && isTrimmed(text_[first]))
        ++first;
    while (last > first && isTrimmed(text_[last - 1]))
        --last;
    line_ = text_.mid(first, last - first);
    position_ = end + 1;
    ++number_;
    return true;
}

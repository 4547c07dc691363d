#include "items/calc/SourceText.h"

#include <QTextCodec>
#include <algorithm>

namespace {

constexpr char16_t kLine = 0x2028;
constexpr char16_t kParagraph = 0x2029;
constexpr char16_t kFrameStart = 0xFDD0;  // marks that the toolkit's documents keep for themselves
constexpr char16_t kFrameEnd = 0xFDD1;

bool isBreak(QChar letter) {
    return letter == u'\n' || letter == u'\r' || letter == kLine || letter == kParagraph ||
           letter == kFrameStart || letter == kFrameEnd;
}

/// Characters of the source that the shown character at `index` stands for.
qsizetype unitAt(QStringView source, qsizetype index) {
    return source[index] == u'\r' && index + 1 < source.size() && source[index + 1] == u'\n' ? 2 : 1;
}

struct GbCount {
    qsizetype apart = 0;    // characters without a byte of ASCII
    qsizetype touched = 0;  // characters whose last byte is an ASCII one
};

GbCount countGb(const QByteArray& bytes) {
    GbCount count;
    for (int i = 0; i < bytes.size(); ++i) {
        if (static_cast<uchar>(bytes[i]) < 0x80 || i + 1 == bytes.size())
            continue;
        ++i;
        ++(static_cast<uchar>(bytes[i]) < 0x80 ? count.touched : count.apart);
    }
    return count;
}

bool decode(QTextCodec* codec, const QByteArray& bytes, QString& text) {
    if (codec == nullptr)
        return false;
    // The header is looked at before; one in the middle of a file is a letter.
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

QString breakOf(QStringView source) {
    const auto* const found = std::find_if(source.begin(), source.end(), isBreak);
    if (found == source.end() || *found != u'\r')
        return QStringLiteral("\n");
    return unitAt(source, found - source.begin()) == 2 ? QStringLiteral("\r\n") : QStringLiteral("\r");
}

}  // namespace

QString decodedSource(const QByteArray& bytes) {
    if (QTextCodec* marked = QTextCodec::codecForUtfText(bytes, nullptr))
        return marked->toUnicode(bytes);
    QString text;
    if (decode(QTextCodec::codecForName("UTF-8"), bytes, text))
        return text;
    const GbCount count = countGb(bytes);
    if (count.apart > count.touched && decode(QTextCodec::codecForName("GB18030"), bytes, text))
        return text;
    return QString::fromLatin1(bytes.constData(), bytes.size());  // zero bytes included
}

QString shownSource(const QString& source) {
    if (std::none_of(source.begin(), source.end(), [](QChar c) { return c != u'\n' && isBreak(c); }))
        return source;
    QString shown;
    shown.reserve(source.size());
    for (qsizetype i = 0; i < source.size();) {
        const QChar letter = source[static_cast<int>(i)];
        shown += isBreak(letter) ? QChar(u'\n') : letter;
        i += unitAt(source, i);
    }
    return shown;
}

int sourceIndex(QStringView source, int shown) {
    qsizetype index = 0;
    for (; shown > 0 && index < source.size(); --shown)
        index += unitAt(source, index);
    return static_cast<int>(index);
}

int shownIndex(QStringView source, int index) {
    int shown = 0;
    for (qsizetype i = 0; i < source.size(); ++shown) {
        const qsizetype next = i + unitAt(source, i);
        if (index < next)
            break;
        i = next;
    }
    return shown;
}

QString editedSource(const QString& source, const QString& edited) {
    const QString shown = shownSource(source);
    const int most = std::min(shown.size(), edited.size());
    int front = 0;
    while (front < most && shown[front] == edited[front])
        ++front;
    if (front == shown.size() && front == edited.size())
        return source;
    int back = 0;
    while (back < most - front && shown[shown.size() - 1 - back] == edited[edited.size() - 1 - back])
        ++back;
    QString middle = edited.mid(front, edited.size() - front - back);
    const QString lineBreak = breakOf(source);
    if (lineBreak != QLatin1String("\n"))
        middle.replace(QLatin1Char('\n'), lineBreak);
    QString result = source.left(sourceIndex(source, front)) + middle +
                     source.mid(sourceIndex(source, shown.size() - back));
    // A new "\n" behind a kept "\r" would be one break instead of two.
    return shownSource(result) == edited ? result : edited;
}

int startOfLine(QStringView source, int line) {
    if (line < 1)
        return -1;
    qsizetype start = 0;
    while (--line > 0) {
        start = source.indexOf(u'\n', start) + 1;
        if (start == 0)
            return -1;
    }
    return static_cast<int>(start);
}

SourceSize sourceSize(QStringView source) {
    SourceSize size{static_cast<int>(source.size()), 1, 0};
    int length = 0;
    for (qsizetype i = 0; i < source.size(); i += unitAt(source, i)) {
        length = isBreak(source[i]) ? 0 : length + 1;
        size.lines += length == 0 ? 1 : 0;
        size.longestLine = std::max(size.longestLine, length);
    }
    return size;
}

#include "core/calc/VersionText.h"

#include "core/calc/NumberText.h"

namespace {

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// "3,3,0,5" or "3.3.0.5", with blanks anywhere, to "3.3.0.5".
QString fourNumbers(QStringView text) {
    constexpr int kNumbers = 4;
    constexpr int kMostDigits = 9;
    QString version;
    int numbers = 0;
    for (qsizetype i = 0; i < text.size();) {
        if (!isDigit(text[i])) {
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        if (++numbers > kNumbers || end - i > kMostDigits)
            return {};
        if (!version.isEmpty())
            version += QLatin1Char('.');
        version += QString::number(text.mid(i, end - i).toInt());
        i = end;
    }
    return numbers == kNumbers ? version : QString();
}

}  // namespace

QString versionOfResource(QStringView text) {
    const QStringView word = u"FILEVERSION";
    LineReader reader(text);
    while (reader.next()) {
        if (reader.line().startsWith(word))
            return fourNumbers(reader.line().mid(word.size()));
    }
    return {};
}

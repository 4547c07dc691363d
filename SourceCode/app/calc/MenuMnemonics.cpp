#include "app/calc/MenuMnemonics.h"

#include <QSet>

namespace {

constexpr QChar kMark = u'&';

/// A letter that a key of the keyboard types by itself.
bool isPressable(QChar letter) {
    const QChar::Script script = letter.script();
    return letter.isLetter() && (script == QChar::Script_Latin || script == QChar::Script_Cyrillic ||
                                 script == QChar::Script_Greek);
}

bool startsAWord(const QString& text, int place) {
    return place == 0 || !text[place - 1].isLetterOrNumber();
}

/// Where the first free letter stands, beginnings of words before the others; -1 for none.
int freeLetter(const QString& text, const QSet<QChar>& taken) {
    for (const bool onlyStarts : {true, false}) {
        for (int place = 0; place < text.size(); ++place) {
            if (isPressable(text[place]) && !taken.contains(text[place].toUpper()) &&
                (!onlyStarts || startsAWord(text, place)))
                return place;
        }
    }
    return -1;
}

QString marked(const MenuText& entry, QSet<QChar>& taken) {
    int place = entry.text.indexOf(kMark);
    if (place >= 0) {
        if (place + 1 < entry.text.size())
            taken.insert(entry.text[place + 1].toUpper());
        return entry.text;
    }
    QString text = entry.text;
    place = freeLetter(text, taken);
    if (place >= 0) {
        taken.insert(text[place].toUpper());
        return text.insert(place, kMark);
    }
    place = freeLetter(entry.key, taken);
    if (place < 0)
        return text;
    const QChar letter = entry.key[place].toUpper();
    taken.insert(letter);
    return text + QLatin1Char('(') + kMark + letter + QLatin1Char(')');
}

}  // namespace

QVector<QString> withMnemonics(const QVector<MenuText>& texts) {
    QSet<QChar> taken;
    QVector<QString> result;
    for (const MenuText& entry : texts)
        result.append(marked(entry, taken));
    return result;
}

#pragma once

#include <QString>
#include <QVector>

/// One text of a menu and the language key that it stands for.
struct MenuText {
    QString text;
    QString key;
};

/// The texts with a key of their own each, marked by '&', in the order given: the first letter of a word that
/// no earlier text has taken, then any other letter. A text without letters to press, as a Chinese one, or
/// without a free one, takes a letter of its key instead, in brackets behind it. A text that brings its '&'
/// keeps it.
[[nodiscard]] QVector<QString> withMnemonics(const QVector<MenuText>& texts);

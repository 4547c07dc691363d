#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVector>

// Texts that name places on the machine, and the words of a played line.

/// The chains of one entry: "X->Z; Y" gives (X, Z) and (Y). Empty parts are dropped, each chain is trimmed. A
/// chain without any name is an empty list, and so is an entry without any chain: the caller tells its user.
[[nodiscard]] QVector<QStringList> splitChains(const QString& entry);

/// The first names of all chains, each once, in the order of the entries.
[[nodiscard]] QStringList chainHeads(const QStringList& entries);

/// A spindle's carrier text as a name path: "X->Z" and "X;Z" both give (X, Z).
[[nodiscard]] QStringList carrierPath(const QString& carrier);

/// Head of the first chain whose text contains `carrier`, which may name one axis or a piece of a chain. A
/// search in the text: "A" is found in "XA->Z". Empty for an empty carrier and when no chain contains it.
[[nodiscard]] QString headOfCarrier(const QString& carrier, const QStringList& entries);

/// One word at a time of a line, without copying: the matches, from the left, of
///
///     [A-Z]-?\d*\.?\d*
///
/// so a letter alone is a word, and "X1.2.3" is the word "X1.2". Digits are those of every script, as the
/// pattern has it.
class WordReader {
  public:
    explicit WordReader(QStringView line) : line_(line) {}
    /// Moves to the next word; false behind the last one.
    bool next();
    [[nodiscard]] QStringView word() const { return word_; }

  private:
    QStringView line_;
    QStringView word_;
    qsizetype position_ = 0;
};

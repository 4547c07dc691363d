#include "machine/calc/ChainText.h"

namespace {

const QString kArrow = QStringLiteral("->");

QStringList chainsOf(const QString& entry) {
    return entry.trimmed().split(QLatin1Char(';'), Qt::SkipEmptyParts);
}

QStringList namesOf(const QString& chain) {
    return chain.trimmed().split(kArrow, Qt::SkipEmptyParts);
}

}  // namespace

QVector<QStringList> splitChains(const QString& entry) {
    QVector<QStringList> chains;
    for (const QString& chain : chainsOf(entry))
        chains.append(namesOf(chain));
    if (chains.isEmpty())
        chains.append(QStringList());
    return chains;
}

QStringList chainHeads(const QStringList& entries) {
    QStringList heads;
    for (const QString& entry : entries) {
        for (const QStringList& names : splitChains(entry)) {
            if (!names.isEmpty() && !heads.contains(names.first()))
                heads.append(names.first());
        }
    }
    return heads;
}

QStringList carrierPath(const QString& carrier) {
    QString text = carrier;
    text.replace(kArrow, QStringLiteral(";"));
    return text.split(QLatin1Char(';'), Qt::SkipEmptyParts);
}

QString headOfCarrier(const QString& carrier, const QStringList& entries) {
    if (carrier.isEmpty())
        return {};
    for (const QString& entry : entries) {
        for (const QString& chain : chainsOf(entry)) {
            const QStringList names = namesOf(chain);
            if (chain.contains(carrier) && !names.isEmpty())
                return names.first();
        }
    }
    return {};
}

bool WordReader::next() {
    const qsizetype length = line_.size();
    const auto at = [this, length](qsizetype i) { return i < length ? line_[i] : QChar(); };
    while (position_ < length && (line_[position_] < QLatin1Char('A') || line_[position_] > QLatin1Char('Z')))
        ++position_;
    if (position_ >= length)
        return false;
    qsizetype end = position_ + 1;
    if (at(end) == QLatin1Char('-'))
        ++end;
    while (at(end).isDigit())
        ++end;
    if (at(end) == QLatin1Char('.'))
        ++end;
    while (at(end).isDigit())
        ++end;
    word_ = line_.mid(position_, end - position_);
    position_ = end;
    return true;
}

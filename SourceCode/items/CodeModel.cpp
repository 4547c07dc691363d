#include "items/CodeModel.h"

#include <algorithm>

namespace {

/// Control characters, line and paragraph separators and the marks that turn the direction of the text.
bool isInvisible(QChar letter) {
    const char16_t code = letter.unicode();
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || (code >= 0x200b && code <= 0x200f) ||
           (code >= 0x2028 && code <= 0x202e) || (code >= 0x2060 && code <= 0x206f) || code == 0xfeff;
}

}  // namespace

CodeModel::CodeModel(QObject* parent)
    : QAbstractListModel(parent), lines_(std::make_shared<const CodeLines>()) {}

void CodeModel::setLines(std::shared_ptr<const CodeLines> lines) {
    beginResetModel();
    lines_ = std::move(lines);
    endResetModel();
}

QString CodeModel::shownText(int row) const {
    const QStringView line = lines_->line(row);
    int size = static_cast<int>(std::min<qsizetype>(line.size(), kShownLetters));
    if (size > 0 && size < line.size() && line[size - 1].isHighSurrogate())
        --size;
    QString text = line.left(size).toString();
    for (QChar& letter : text) {
        if (letter == QLatin1Char('\t'))
            letter = QLatin1Char(' ');
        else if (isInvisible(letter))
            letter = QChar(0xb7);
    }
    return text;
}

QVariant CodeModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= lines_->count())
        return {};
    return shownText(index.row());
}

int CodeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : lines_->count();
}

#include "items/IsoSourceEdit.h"

#include <QFontDatabase>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTimer>
#include <algorithm>

#include "items/calc/SourceText.h"

namespace TORNVALE {

namespace {

constexpr int kPiece = 400'000;  // characters; some 50 ms
constexpr int kCutLines = 1000;
constexpr int kCutColumns = 500;
const QColor kRefused(255, 205, 205);

bool isEditable(const SourceSize& size) {
    return size.lines <= IsoSourceEdit::kMostLines && size.characters <= IsoSourceEdit::kMostCharacters &&
           size.longestLine <= IsoSourceEdit::kLongestLine;
}

/// The first lines, each up to its first columns.
QString beginning(const QString& source) {
    QString cut;
    int start = 0;
    for (int line = 0; line < kCutLines && start < source.size(); ++line) {
        const int end = source.indexOf(QLatin1Char('\n'), start);
        const int length = (end < 0 ? source.size() : end) - start;
        cut += shownSource(source.mid(start, std::min(length, kCutColumns)));
        cut += length > kCutColumns ? QStringLiteral(" ...\n") : QStringLiteral("\n");
        start += length + 1;
    }
    return cut;
}

}  // namespace

IsoSourceEdit::IsoSourceEdit(QWidget* parent)
    : QPlainTextEdit(parent), pieces_(new QTimer(this)) {  // owned by this widget
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(true);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    connect(pieces_, &QTimer::timeout, this, &IsoSourceEdit::loadPiece);
}

void IsoSourceEdit::setSource(const QString& source) {
    pieces_->stop();
    source_ = source;
    isCut_ = !isEditable(sourceSize(source));
    shown_ = isCut_ ? beginning(source) : shownSource(source);
    loaded_ = 0;
    markedLine_ = 0;
    setExtraSelections({});
    setUndoRedoEnabled(false);
    setReadOnly(true);
    clear();
    loadPiece();
    if (isLoading())
        pieces_->start(0);
}

void IsoSourceEdit::loadPiece() {
    int end = std::min(loaded_ + kPiece, shown_.size());
    if (end < shown_.size()) {
        // A piece ends with a whole line, so that no character is torn apart.
        const int feed = shown_.indexOf(QLatin1Char('\n'), end);
        end = feed < 0 ? shown_.size() : feed + 1;
    }
    const bool isFirst = loaded_ == 0;
    const QString piece = shown_.mid(loaded_, end - loaded_);
    loaded_ = end;
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(piece);
    if (isFirst)
        moveCursor(QTextCursor::Start);
    if (!isLoading())
        finishLoading();
}

void IsoSourceEdit::finishLoading() {
    pieces_->stop();
    shown_.clear();
    loaded_ = 0;
    setUndoRedoEnabled(true);
    document()->setModified(false);
    setReadOnly(isCut_);
    if (markedLine_ > 0)
        showMark();
}

QString IsoSourceEdit::shownText() const {
    // Not toPlainText: it writes a blank for a no-break space.
    QString text = document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text;
}

bool IsoSourceEdit::isEdited() const {
    return !isCut_ && !isLoading() && document()->isModified();
}

QString IsoSourceEdit::source() const {
    return isEdited() ? editedSource(source_, shownText()) : source_;
}

QString IsoSourceEdit::takeSource() {
    source_ = source();
    if (!isLoading())
        document()->setModified(false);
    return source_;
}

void IsoSourceEdit::markLine(int line) {
    markedLine_ = line;
    setExtraSelections({});
    if (line > 0 && !isCut_ && !isLoading())
        showMark();
}

void IsoSourceEdit::showMark() {
    const int start = startOfLine(source_, markedLine_);
    if (start < 0)
        return;
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(document()->findBlock(shownIndex(source_, start)));
    mark.format.setBackground(kRefused);
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    setExtraSelections({mark});
    QTextCursor line = mark.cursor;
    line.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    setTextCursor(line);
    centerCursor();
}

}  // namespace TORNVALE

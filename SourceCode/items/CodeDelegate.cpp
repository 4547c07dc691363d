#include "items/CodeDelegate.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "items/CodeModel.h"

namespace {

constexpr int kTextMargin = 6;
constexpr int kArrowWidth = 10;
constexpr int kLeastFigures = 4;
const QChar kClipMark(0x2026);

int figuresOf(int count) {
    int figures = 1;
    for (; count >= 10; count /= 10)
        ++figures;
    return std::max(figures, kLeastFigures);
}

bool isPlain(const QString& text, int from, int length) {
    return std::all_of(text.begin() + from, text.begin() + from + length,
                       [](QChar letter) { return letter.unicode() < 0x7f; });
}

}  // namespace

CodeDelegate::CodeDelegate(const CodeModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model), metrics_(QFont()) {
    setFont(QFont());
}

void CodeDelegate::setFont(const QFont& font) {
    font_ = font;
    metrics_ = QFontMetricsF(font);
    figureWidth_ = metrics_.horizontalAdvance(QLatin1Char('0'));
    equalWidths_ = qFuzzyCompare(figureWidth_, metrics_.horizontalAdvance(QLatin1Char('i'))) &&
                   qFuzzyCompare(figureWidth_, metrics_.horizontalAdvance(QLatin1Char('M')));
    rowHeight_ = QFontMetrics(font).height() + 2;
    const int figures = figuresOf(model_.lines().count());
    gutterWidth_ = static_cast<int>(std::ceil(figures * figureWidth_)) + kArrowWidth + 2 * kTextMargin;
}

qreal CodeDelegate::advance(const QString& text, int from, int length) const {
    if (equalWidths_ && isPlain(text, from, length))
        return length * figureWidth_;
    return metrics_.horizontalAdvance(text.mid(from, length));
}

int CodeDelegate::textWidth(int row) const {
    const QString text = model_.shownText(row);
    const bool clipped = model_.lines().line(row).size() > text.size();
    const qreal width = advance(text, 0, text.size()) + (clipped ? metrics_.horizontalAdvance(kClipMark) : 0);
    return static_cast<int>(std::ceil(width)) + 2 * kTextMargin;
}

QPair<int, int> CodeDelegate::textPlace(int row, int column, int length) const {
    const QString text = model_.shownText(row);
    const int first = std::clamp(column, 0, text.size());
    const int end = std::clamp(column + length, first, text.size());
    const qreal left = advance(text, 0, first);
    const qreal right = left + advance(text, first, end - first);
    return {static_cast<int>(left), static_cast<int>(std::ceil(right)) + 2 * kTextMargin};
}

int CodeDelegate::usualWidth() const {
    const int letters = std::min(model_.lines().longest(), CodeModel::kShownLetters + 1);
    return static_cast<int>(std::ceil(letters * figureWidth_)) + 2 * kTextMargin;
}

void CodeDelegate::setSearch(const CodeSearch& search, int offset) {
    search_ = search;
    match_ = offset;
}

QColor CodeDelegate::colorOf(CodeWordKind kind) {
    switch (kind) {
        case CodeWordKind::Number:
            return {0x6b, 0x6b, 0x6b};
        case CodeWordKind::Preparatory:
            return {0x0b, 0x4f, 0xb3};
        case CodeWordKind::Command:
            return {0xb0, 0x00, 0x5c};
        case CodeWordKind::AxisLetter:
            return {0xa8, 0x3c, 0x00};
        case CodeWordKind::Feed:
            return {0x00, 0x66, 0x66};
        case CodeWordKind::Tool:
            return {0x6a, 0x1b, 0x9a};
        case CodeWordKind::Comment:
            return {0x2a, 0x73, 0x2e};
        case CodeWordKind::AxisValue:
        case CodeWordKind::Other:
            break;
    }
    return {0x20, 0x20, 0x20};
}

void CodeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const int line = index.row();
    const QString text = model_.shownText(line);
    const bool clipped = model_.lines().line(line).size() > text.size();
    painter->setFont(font_);
    if (line == runningLine_)
        painter->fillRect(option.rect, runningColor());
    else if ((option.state & QStyle::State_Selected) != 0)
        painter->fillRect(option.rect, selectionColor());
    paintMatches(*painter, option.rect, text, line);
    paintText(*painter, option.rect, text, clipped);
    paintGutter(*painter, option.rect, line);
}

void CodeDelegate::paintText(QPainter& painter, const QRect& row, const QString& text, bool clipped) const {
    const qreal baseline = row.top() + 1 + metrics_.ascent();
    qreal x = row.left() + gutterWidth_ + kTextMargin - offset_;
    const auto draw = [&](int from, int length, const QColor& color) {
        const qreal width = advance(text, from, length);
        // Letters left of the gutter and right of the view cost nothing.
        if (x + width > row.left() + gutterWidth_ && x < row.right()) {
            painter.setPen(color);
            painter.drawText(QPointF(x, baseline), text.mid(from, length));
        }
        x += width;
    };
    CodeSpans spans;
    appendCodeSpans(text, spans);
    int at = 0;
    for (const CodeSpan& span : spans) {
        if (span.start > at)
            draw(at, span.start - at, colorOf(CodeWordKind::Other));
        draw(span.start, span.length, colorOf(span.kind));
        at = span.start + span.length;
    }
    if (at < text.size())
        draw(at, text.size() - at, colorOf(CodeWordKind::Other));
    if (clipped) {
        painter.setPen(colorOf(CodeWordKind::Number));
        painter.drawText(QPointF(x, baseline), QString(kClipMark));
    }
}

void CodeDelegate::paintMatches(QPainter& painter, const QRect& row, const QString& text, int line) const {
    if (search_.isEmpty())
        return;
    const int column = match_ < 0 ? -1 : match_ - model_.lines().start(line);
    qreal x = row.left() + gutterWidth_ + kTextMargin - offset_;
    const qreal left = x;
    const auto fill = [&](qreal from, int at, const QColor& color) {
        painter.fillRect(QRectF(from, row.top() + 1, advance(text, at, search_.length()), row.height() - 2),
                         color);
    };
    int at = 0;
    for (int found = search_.next(text, 0); found >= 0 && x < row.right();
         found = search_.next(text, found + search_.length())) {
        x += advance(text, at, found - at);
        at = found;
        fill(x, at, matchColor());
    }
    if (column >= 0 && column + search_.length() <= text.size())
        fill(left + advance(text, 0, column), column, currentMatchColor());
}

void CodeDelegate::paintGutter(QPainter& painter, const QRect& row, int line) const {
    const QRect gutter(row.left(), row.top(), gutterWidth_, row.height());
    const bool running = line == runningLine_;
    painter.fillRect(gutter, running ? runningColor() : gutterColor());
    painter.setPen(running ? QColor(Qt::black) : QColor(0x6b, 0x70, 0x78));
    painter.drawText(gutter.adjusted(0, 0, -kTextMargin, 0), Qt::AlignRight | Qt::AlignVCenter,
                     QString::number(line + 1));
    if (!running)
        return;
    const int middle = gutter.center().y();
    const QPolygon arrow({QPoint(3, middle - 4), QPoint(3, middle + 4), QPoint(kArrowWidth - 1, middle)});
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xc0, 0x60, 0x00));
    painter.drawPolygon(arrow);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

QSize CodeDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
    return {gutterWidth_ + usualWidth(), rowHeight_};
}

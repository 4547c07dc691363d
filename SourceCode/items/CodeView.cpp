#include "items/CodeView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cstdlib>

#include "items/CodeDelegate.h"
#include "items/CodeModel.h"

namespace {

/// Rows farther away than this have no place in pixels that an int could hold.
constexpr int kFarRows = 20000000;

bool isStep(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown ||
           key == Qt::Key_Home || key == Qt::Key_End;
}

bool isEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

CodeView::CodeView(CodeModel& model, CodeDelegate& delegate, QWidget* parent)
    : QAbstractItemView(parent), model_(model), delegate_(delegate) {
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    // The colours of the words are made for a white ground, whatever the desktop's palette.
    QPalette light = palette();
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Text, QColor(0x20, 0x20, 0x20));
    setPalette(light);
    setItemDelegate(&delegate_);
    setModel(&model_);
    connect(this, &QAbstractItemView::clicked, this, &CodeView::chooseOnClick);
    measureFont();
}

void CodeView::setEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void CodeView::measureFont() {
    delegate_.setFont(font());
    textWidth_ = delegate_.usualWidth();
    updateGeometries();
    viewport()->update();
}

void CodeView::changeEvent(QEvent* event) {
    QAbstractItemView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        measureFont();
}

void CodeView::reset() {
    QAbstractItemView::reset();
    delegate_.setRunningLine(-1);
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    measureFont();
}

// --- places ---

int CodeView::topRow() const {
    return verticalScrollBar()->value();
}

void CodeView::setTopRow(int row) {
    verticalScrollBar()->setValue(row);
}

int CodeView::rowsInView() const {
    return std::max(1, viewport()->height() / delegate_.rowHeight());
}

QRect CodeView::rowRect(int row) const {
    const int down = std::clamp(row - topRow(), -kFarRows, kFarRows);
    return {0, down * delegate_.rowHeight(), viewport()->width(), delegate_.rowHeight()};
}

QRect CodeView::visualRect(const QModelIndex& index) const {
    return index.isValid() ? rowRect(index.row()) : QRect();
}

QModelIndex CodeView::indexAt(const QPoint& point) const {
    if (point.y() < 0)
        return {};
    return model_.index(topRow() + point.y() / delegate_.rowHeight(), 0);
}

int CodeView::horizontalOffset() const {
    return horizontalScrollBar()->value();
}

int CodeView::verticalOffset() const {
    return std::min(topRow(), kFarRows) * delegate_.rowHeight();
}

bool CodeView::isIndexHidden(const QModelIndex& /*index*/) const {
    return false;
}

void CodeView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (!index.isValid())
        return;
    const int row = index.row();
    const int rows = rowsInView();
    const bool inside = row >= topRow() && row < topRow() + rows;
    if (hint == PositionAtTop || (hint == EnsureVisible && row < topRow()))
        setTopRow(row);
    else if (hint == PositionAtBottom || (hint == EnsureVisible && !inside))
        setTopRow(row - rows + 1);
    else if (hint == PositionAtCenter)
        setTopRow(row - rows / 2);
}

int CodeView::widestInView() const {
    const int end = std::min(model_.lines().count(), topRow() + rowsInView() + 1);
    int width = 0;
    for (int row = topRow(); row < end; ++row)
        width = std::max(width, delegate_.textWidth(row));
    return width;
}

void CodeView::updateGeometries() {
    const int rows = rowsInView();
    verticalScrollBar()->setPageStep(rows);
    verticalScrollBar()->setSingleStep(1);
    verticalScrollBar()->setRange(0, std::max(0, model_.lines().count() - rows));
    // Wide letters (Chinese comments) make a line wider than its letters tell: those in view are measured.
    textWidth_ = std::max(textWidth_, widestInView());
    const int shown = std::max(0, viewport()->width() - delegate_.gutterWidth());
    horizontalScrollBar()->setPageStep(shown);
    horizontalScrollBar()->setSingleStep(20);
    horizontalScrollBar()->setRange(0, std::max(0, textWidth_ - shown));
    QAbstractItemView::updateGeometries();
}

void CodeView::scrollContentsBy(int dx, int dy) {
    delegate_.setOffset(horizontalOffset());
    if (dx != 0 || std::abs(dy) >= rowsInView())
        viewport()->update();  // sideways the gutter stays where it is
    else
        viewport()->scroll(0, dy * delegate_.rowHeight());
    if (dy != 0 && widestInView() > textWidth_)
        updateGeometries();
}

// --- selection ---

QModelIndex CodeView::moveCursor(CursorAction action, Qt::KeyboardModifiers /*modifiers*/) {
    const int last = model_.lines().count() - 1;
    if (last < 0)
        return {};
    int row = currentRow();
    switch (action) {
        case MoveUp:
        case MovePrevious:
            --row;
            break;
        case MoveDown:
        case MoveNext:
            ++row;
            break;
        case MovePageUp:
            row -= rowsInView();
            break;
        case MovePageDown:
            row += rowsInView();
            break;
        case MoveHome:
            row = 0;
            break;
        case MoveEnd:
            row = last;
            break;
        case MoveLeft:
            horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
            break;
        case MoveRight:
            horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
            break;
    }
    return model_.index(std::clamp(row, 0, last), 0);
}

void CodeView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
    const int last = model_.lines().count() - 1;
    const QRect box = rect.normalized();
    const int height = delegate_.rowHeight();
    const auto rowAt = [&](int y) { return topRow() + (y < 0 ? -((height - 1 - y) / height) : y / height); };
    const int from = std::max(0, rowAt(box.top()));
    const int to = std::min(last, rowAt(box.bottom()));
    if (from > to)
        selectionModel()->select(QItemSelection(), command);
    else
        selectionModel()->select(QItemSelection(model_.index(from, 0), model_.index(to, 0)), command);
}

QRegion CodeView::visualRegionForSelection(const QItemSelection& /*selection*/) const {
    return viewport()->rect();
}

void CodeView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QAbstractItemView::currentChanged(current, previous);
    Q_EMIT currentRowChanged(current.row());
}

void CodeView::goTo(int row) {
    const QModelIndex index = model_.index(row, 0);
    if (!index.isValid())
        return;
    const bool inside = row >= topRow() && row < topRow() + rowsInView();
    scrollTo(index, inside ? EnsureVisible : PositionAtCenter);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

void CodeView::goToMatch(int offset, int length) {
    const int row = model_.lines().lineAt(offset);
    goTo(row);
    const QPair<int, int> span = delegate_.textPlace(row, offset - model_.lines().start(row), length);
    QScrollBar* bar = horizontalScrollBar();
    const int shown = viewport()->width() - delegate_.gutterWidth();
    if (span.second > bar->value() + shown)
        bar->setValue(span.second - shown / 2);
    if (span.first < bar->value())
        bar->setValue(span.first - shown / 2);
}

void CodeView::setSearch(const CodeSearch& search, int offset) {
    delegate_.setSearch(search, offset);
    viewport()->update();
}

QString CodeView::selectedText() const {
    QItemSelection ranges = selectionModel()->selection();
    std::sort(ranges.begin(), ranges.end(), [](const auto& a, const auto& b) { return a.top() < b.top(); });
    QString text;
    for (const QItemSelectionRange& range : ranges) {
        if (&range != &ranges.first())
            text.append(QLatin1Char('\n'));
        text.append(model_.lines().block(range.top(), range.bottom()));
    }
    return text;
}

void CodeView::setRunningLine(int row) {
    const int before = delegate_.runningLine();
    if (row == before)
        return;
    delegate_.setRunningLine(row);
    viewport()->update(rowRect(before));
    if (row < 0)
        return;
    const int rows = rowsInView();
    // A page ahead is laid out at once, so that most steps repaint two rows and scroll nothing.
    if (row < topRow() || row >= topRow() + rows)
        setTopRow(row - rows / 4);
    viewport()->update(rowRect(row));
}

// --- the user ---

void CodeView::chooseOnClick(const QModelIndex& index) {
    if (QApplication::keyboardModifiers() == Qt::NoModifier)
        Q_EMIT lineChosen(index.row());
}

void CodeView::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && isEnter(event->key())) {
        if (currentIndex().isValid())
            Q_EMIT lineChosen(currentRow());
        return;
    }
    const QModelIndex before = currentIndex();
    QAbstractItemView::keyPressEvent(event);
    if (plain && isStep(event->key()) && currentIndex() != before)
        Q_EMIT lineChosen(currentRow());
}

void CodeView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const int height = delegate_.rowHeight();
    const int count = model_.lines().count();
    if (count == 0) {
        painter.setFont(QApplication::font());
        painter.setPen(QColor(0x6b, 0x6b, 0x6b));
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
        return;
    }
    QStyleOptionViewItem option = viewOptions();
    const int first = topRow() + event->rect().top() / height;
    const int last = std::min(count - 1, topRow() + event->rect().bottom() / height);
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = model_.index(row, 0);
        option.rect = rowRect(row);
        option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
        delegate_.paint(&painter, option, index);
    }
    const int below = (last + 1 - topRow()) * height;
    painter.fillRect(QRect(0, below, delegate_.gutterWidth(), std::max(0, viewport()->height() - below)),
                     CodeDelegate::gutterColor());
}

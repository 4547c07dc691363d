#include "items/CodeSearchBar.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>

#include "core/LanguageReader.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("CodePanel"), QString::fromLatin1(key));
}

}  // namespace

CodeSearchBar::CodeSearchBar(QWidget* parent)
    : QWidget(parent),
      field_(new QLineEdit(this)),      // owned by this widget
      matchCase_(new QCheckBox(this)),  // owned by this widget
      message_(new QLabel(this)) {      // owned by this widget
    field_->setObjectName(QStringLiteral("SearchField"));
    field_->setPlaceholderText(textOf("SearchField"));
    field_->setClearButtonEnabled(true);
    matchCase_->setObjectName(QStringLiteral("MatchCase"));
    matchCase_->setText(textOf("MatchCase"));
    message_->setObjectName(QStringLiteral("SearchMessage"));
    QToolButton* previous = addButton("FindPrevious");
    previous->setArrowType(Qt::UpArrow);
    QToolButton* next = addButton("FindNext");
    next->setArrowType(Qt::DownArrow);
    QToolButton* close = addButton("CloseSearch");
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));

    auto* grid = new QGridLayout(this);  // owned by this widget
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(3);
    grid->addWidget(field_, 0, 0, 1, 2);
    grid->addWidget(previous, 0, 2);
    grid->addWidget(next, 0, 3);
    grid->addWidget(close, 0, 4);
    grid->addWidget(matchCase_, 1, 0);
    grid->addWidget(message_, 1, 1, 1, 4, Qt::AlignRight | Qt::AlignVCenter);
    grid->setColumnStretch(1, 1);

    connect(field_, &QLineEdit::textChanged, this, &CodeSearchBar::needleChanged);
    connect(matchCase_, &QCheckBox::toggled, this, &CodeSearchBar::needleChanged);
    connect(previous, &QToolButton::clicked, this, &CodeSearchBar::previousAsked);
    connect(next, &QToolButton::clicked, this, &CodeSearchBar::nextAsked);
    connect(close, &QToolButton::clicked, this, &CodeSearchBar::closed);
    setFocusProxy(field_);
}

QToolButton* CodeSearchBar::addButton(const char* key) {
    auto* button = new QToolButton(this);  // owned by this widget
    button->setObjectName(QString::fromLatin1(key));
    button->setToolTip(textOf(key));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

QString CodeSearchBar::needle() const {
    return field_->text();
}

Qt::CaseSensitivity CodeSearchBar::sensitivity() const {
    return matchCase_->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

void CodeSearchBar::open() {
    show();
    field_->selectAll();
    field_->setFocus(Qt::ShortcutFocusReason);
}

void CodeSearchBar::showFound(int number, int total, bool wrapped) {
    if (total == 0)
        setMessage(textOf("NoMatch"), true);
    else
        setMessage(textOf(wrapped ? "MatchWrapped" : "MatchNumber").arg(number).arg(total), false);
}

void CodeSearchBar::showNothing() {
    setMessage({}, false);
}

void CodeSearchBar::setMessage(const QString& text, bool bad) {
    QPalette colours = palette();
    if (bad) {
        message_->setStyleSheet(QStringLiteral("color: #b00020"));
        colours.setColor(QPalette::Base, QColor(0xff, 0xe4, 0xe6));
    } else {
        message_->setStyleSheet({});
    }
    field_->setPalette(colours);
    message_->setText(text);
}

void CodeSearchBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        Q_EMIT closed();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->modifiers().testFlag(Qt::ShiftModifier) ? Q_EMIT previousAsked() : Q_EMIT nextAsked();
    else
        QWidget::keyPressEvent(event);
}

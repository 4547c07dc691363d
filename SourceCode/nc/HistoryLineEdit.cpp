#include "nc/HistoryLineEdit.h"

#include <QAction>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QMenu>
#include <QStringListModel>

#include "core/LanguageReader.h"

HistoryLineEdit::HistoryLineEdit(QWidget* parent)
    : QLineEdit(parent),
      menu_(new QMenu(this)),               // owned by this widget
      clear_(new QAction(this)),            // owned by this widget
      model_(new QStringListModel(this)) {  // owned by this widget
    clear_->setText(TORNVALE::LanguageReader::instance().text(QStringLiteral("OperationPanel"),
                                                              QStringLiteral("Clear Histroy")));
    setCompleter(new QCompleter(model_, this));  // owned by this widget
    connect(clear_, &QAction::triggered, this, &HistoryLineEdit::clearHistory);
    connect(this, &QLineEdit::returnPressed, this, &HistoryLineEdit::confirm);
    rebuild();
}

void HistoryLineEdit::setHistory(const QStringList& texts) {
    texts_ = texts;
    texts_.removeAll(QString());
    texts_.removeDuplicates();
    rebuild();
}

void HistoryLineEdit::confirm() {
    if (text().isEmpty() || texts_.contains(text()))
        return;
    texts_.append(text());
    rebuild();
    Q_EMIT historyChanged(texts_);
}

void HistoryLineEdit::clearHistory() {
    if (texts_.isEmpty())
        return;
    texts_.clear();
    rebuild();
    Q_EMIT historyChanged(texts_);
}

void HistoryLineEdit::rebuild() {
    menu_->clear();  // keeps the clear action, which is not the menu's
    for (const QString& text : texts_) {
        QString label = text;
        QAction* const action = menu_->addAction(label.replace(QLatin1Char('&'), QStringLiteral("&&")));
        connect(action, &QAction::triggered, this, [this, text] { setText(text); });
    }
    menu_->addSeparator();
    menu_->addAction(clear_);
    model_->setStringList(texts_);
}

void HistoryLineEdit::contextMenuEvent(QContextMenuEvent* event) {
    menu_->popup(event->globalPos());
    event->accept();
}

#include "core/UiLanguage.h"

#include <QHBoxLayout>
#include <QIcon>

#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "core/UserDialogs.h"

namespace {
QString text(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("UiLanguage"), QLatin1String(key));
}
}  // namespace

UiLanguage::UiLanguage(QWidget* parent)
    : QWidget(parent),
      languages_(new QComboBox(this)),                        // owned by this widget
      accept_(new QPushButton(text("AcceptButton"), this)) {  // owned by this widget
    setWindowTitle(text("Title"));
    setWindowIcon(QIcon(QStringLiteral(":/Icon/Logo.png")));
    languages_->addItems({QStringLiteral("Chinese"), QStringLiteral("English"), QStringLiteral("Russia")});
    languages_->setCurrentText(ParaReader().value(QStringLiteral("MainInterface/Language")).toString());
    auto* row = new QHBoxLayout(this);  // owned by this widget
    row->addWidget(languages_, 1);
    row->addWidget(accept_);
    connect(accept_, &QPushButton::clicked, this, &UiLanguage::accept);
}

void UiLanguage::accept() {
    if (ParaReader().SetLanguage(languages_->currentText()))
        userDialogs().tell(UserDialogs::Kind::Information, text("Title"), text("Success"), this);
    else
        userDialogs().tell(UserDialogs::Kind::Warning, text("Title"), text("Failed"), this);
    close();
}

void UiLanguage::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Enter)
        close();
}

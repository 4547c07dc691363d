#include "app/UserInfoForm.h"

#include <QDateTime>
#include <QFormLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "core/LanguageReader.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("Tornvale/UserInfoWidget"),
                                                     QString::fromLatin1(key));
}

}  // namespace

UserInfoForm::UserInfoForm(QWidget* parent) : QWidget(parent) {
    auto* form = new QFormLayout(this);  // owned by this widget
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    productName_ = addField(*form, "ProductName");
    productNumber_ = addField(*form, "ProductNumber");
    partName_ = addField(*form, "PartName");
    partNumber_ = addField(*form, "PartNumber");
    machiningTime_ = addField(*form, "LeftHandTime", true);
    createdTime_ = addField(*form, "CreatedTime", true);
    otherInfo_ = new QPlainTextEdit(this);  // owned by this widget
    otherInfo_->setObjectName(QStringLiteral("OtherInfo"));
    otherInfo_->setTabChangesFocus(true);
    form->addRow(textOf("OtherInfo"), otherInfo_);
    clear();
    connect(otherInfo_, &QPlainTextEdit::textChanged, this, &UserInfoForm::edited);
    setCreatedTime(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
}

QLineEdit* UserInfoForm::addField(QFormLayout& form, const char* key, bool readOnly) {
    auto* edit = new QLineEdit(this);  // owned by this widget
    edit->setObjectName(QString::fromLatin1(key));
    edit->setReadOnly(readOnly);
    if (readOnly) {  // told apart from what can be typed into
        QPalette shaded = edit->palette();
        shaded.setColor(QPalette::Base, shaded.color(QPalette::Window));
        edit->setPalette(shaded);
    }
    form.addRow(textOf(key), edit);
    connect(edit, &QLineEdit::textEdited, this, &UserInfoForm::edited);
    return edit;
}

ProjectHead UserInfoForm::head() const {
    ProjectHead head;
    head.productsName = productName_->text();
    head.productsNo = productNumber_->text();
    head.partName = partName_->text();
    head.partNo = partNumber_->text();
    head.marked = otherInfo_->toPlainText();
    head.dateTime = createdTime_->text();
    head.LTime = machiningTime_->text();
    return head;
}

void UserInfoForm::setHead(const ProjectHead& head) {
    productName_->setText(head.productsName);
    productNumber_->setText(head.productsNo);
    partName_->setText(head.partName);
    partNumber_->setText(head.partNo);
    for (QLineEdit* edit : {productName_, productNumber_, partName_, partNumber_})
        edit->home(false);  // a long text shows its start
    const QSignalBlocker notTyped(otherInfo_);
    otherInfo_->setPlainText(head.marked);
    createdTime_->setText(head.dateTime);
    machiningTime_->setText(head.LTime);
}

void UserInfoForm::clear() {
    ProjectHead empty;
    empty.LTime = QStringLiteral("0.0");
    setHead(empty);
}

void UserInfoForm::setMachiningTime(const QString& text) {
    machiningTime_->setText(text);
}

void UserInfoForm::setCreatedTime(const QString& text) {
    createdTime_->setText(text);
}

#include "machine/SpindleStatusWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/LanguageReader.h"
#include "machine/breathingLight.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("SpindleStatusWidget"),
                                                     QString::fromLatin1(key));
}

}  // namespace

SpindleStatusWidget::SpindleStatusWidget(QWidget* parent)
    : QWidget(parent), lamp_(new breathingLight) {  // owned by this widget through the layout
    auto* layout = new QHBoxLayout(this);           // owned by this widget
    layout->setContentsMargins(0, 0, 0, 0);
    name_ = addEdit("Name");
    id_ = addEdit("Id");
    toolNo_ = addEdit("ToolNo");
    toolLength_ = addEdit("ToolLen");
    toolDiameter_ = addEdit("ToolDia");
    rpm_ = addEdit("Rpm");
    layout->addWidget(lamp_);
    auto* state = new QLabel(textOf("State"));  // owned by this widget
    state->setObjectName(QStringLiteral("State"));
    layout->addWidget(state);
    auto* reset = new QPushButton(textOf("Reset"));  // owned by this widget
    reset->setObjectName(QStringLiteral("Reset"));
    layout->addWidget(reset);
    connect(reset, &QPushButton::clicked, this, &SpindleStatusWidget::showStopped);
}

QLineEdit* SpindleStatusWidget::addEdit(const char* key) {
    constexpr int kHeight = 20;
    auto* edit = new QLineEdit;  // owned by this widget
    edit->setObjectName(QString::fromLatin1(key));
    edit->setPlaceholderText(textOf(key));
    edit->setToolTip(textOf(key));
    edit->setFixedHeight(kHeight);
    edit->setReadOnly(true);
    layout()->addWidget(edit);
    return edit;
}

void SpindleStatusWidget::setSpindle(const QString& name, int number) {
    name_->setText(name);
    id_->setText(QString::number(number));
}

void SpindleStatusWidget::setTool(int number, float length_mm, float diameter_mm) {
    toolNo_->setText(QString::number(number));
    toolLength_->setText(QString::number(static_cast<double>(length_mm)));
    toolDiameter_->setText(QString::number(static_cast<double>(diameter_mm)));
}

void SpindleStatusWidget::showRunning(double speed_rpm) {
    lamp_->showRunning();
    rpm_->setText(QString::number(speed_rpm, 'f', 0));
}

void SpindleStatusWidget::showStopped() {
    lamp_->showStopped();
    rpm_->setText(QStringLiteral("0"));
}

void SpindleStatusWidget::showChecked() {
    lamp_->showChecked();
}

#include "machine/SpindleStatusWidget.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/LanguageReader.h"
#include "machine/breathingLight.h"

namespace {

constexpr int kCaptionRow = 0;
constexpr int kEditRow = 1;

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("SpindleStatusWidget"),
                                                     QString::fromLatin1(key));
}

}  // namespace

SpindleStatusWidget::SpindleStatusWidget(QWidget* parent)
    : QWidget(parent), lamp_(new breathingLight) {  // owned by this widget through the layout
    auto* grid = new QGridLayout(this);             // owned by this widget
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(1);
    name_ = addEdit("Name");
    id_ = addEdit("Id");
    toolNo_ = addEdit("ToolNo");
    toolLength_ = addEdit("ToolLen");
    toolDiameter_ = addEdit("ToolDia");
    rpm_ = addEdit("Rpm");
    const int column = grid->columnCount();
    addCaption("State", column)->setObjectName(QStringLiteral("State"));
    grid->addWidget(lamp_, kEditRow, column, Qt::AlignCenter);
    auto* reset = new QPushButton(textOf("Reset"));  // owned by this widget
    reset->setObjectName(QStringLiteral("Reset"));
    constexpr int kMargins_px = 16;
    reset->setFixedWidth(reset->fontMetrics().horizontalAdvance(reset->text()) + kMargins_px);
    grid->addWidget(reset, kEditRow, column + 1);
    connect(reset, &QPushButton::clicked, this, &SpindleStatusWidget::showStopped);
}

QLabel* SpindleStatusWidget::addCaption(const char* key, int column) {
    constexpr double kSmaller = 0.85;
    auto* caption = new QLabel(textOf(key));  // owned by this widget
    QFont small = caption->font();
    small.setPointSizeF(small.pointSizeF() * kSmaller);
    caption->setFont(small);
    caption->setWordWrap(true);
    caption->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    qobject_cast<QGridLayout*>(layout())->addWidget(caption, kCaptionRow, column);
    return caption;
}

QLineEdit* SpindleStatusWidget::addEdit(const char* key) {
    constexpr int kHeight = 20;
    constexpr int kLeastWidth = 36;  // a length with a decimal
    auto* edit = new QLineEdit;      // owned by this widget
    edit->setObjectName(QString::fromLatin1(key));
    edit->setPlaceholderText(textOf(key));
    edit->setToolTip(textOf(key));
    edit->setFixedHeight(kHeight);
    edit->setMinimumWidth(kLeastWidth);
    edit->setAlignment(Qt::AlignHCenter);
    edit->setReadOnly(true);
    auto* grid = qobject_cast<QGridLayout*>(layout());
    const int column = grid->count() == 0 ? 0 : grid->columnCount();
    addCaption(key, column)->setBuddy(edit);
    grid->addWidget(edit, kEditRow, column);
    grid->setColumnStretch(column, 1);
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

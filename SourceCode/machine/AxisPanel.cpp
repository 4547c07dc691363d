#include "machine/AxisPanel.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>

#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "core/UserDialogs.h"
#include "core/WindowKeys.h"
#include "machine/AxisBase.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("Axis"), QString::fromLatin1(key));
}

template <typename Button>
Button* addButton(QBoxLayout& layout, const char* key) {
    auto* button = new Button(textOf(key));  // owned by the layout's widget
    button->setObjectName(QString::fromLatin1(key));
    layout.addWidget(button);
    return button;
}

}  // namespace

int sliderTicks(double value, double step) {
    constexpr double kMost = std::numeric_limits<int>::max();
    const double ticks = value / step;
    return std::isfinite(ticks) ? static_cast<int>(std::clamp(ticks, -kMost, kMost)) : 0;
}

AxisPanel::AxisPanel(AxisBase& axis) : axis_(axis) {
    closeOnEscape(*this);
    auto* layout = new QVBoxLayout(this);  // owned by this widget
    addOperations(*layout);
    addVisibility(*layout);
    if (ParaReader().isShowAxisInfo())
        addInformation(*layout);
    layout->addStretch();
}

void AxisPanel::addOperations(QBoxLayout& layout) {
    auto* group = new QGroupBox(textOf("OperationPanle"));  // owned by this widget
    group->setObjectName(QStringLiteral("OperationPanle"));
    layout.addWidget(group);
    auto* column = new QVBoxLayout(group);  // owned by the group
    auto* translate = addButton<QRadioButton>(*column, "TranslateAxis");
    translate->setChecked(true);
    auto* accept = addButton<QPushButton>(*column, "AcceptButton");
    connect(accept, &QPushButton::clicked, this, [this, translate] {
        if (!translate->isChecked())
            return;
        QWidget* const window = axis_.manualWindow();
        window->show();
        window->raise();
        window->activateWindow();
    });
}

void AxisPanel::addVisibility(QBoxLayout& layout) {
    auto* visible = addButton<QCheckBox>(layout, "Visiable");
    visible->setChecked(axis_.isShapeVisible());
    connect(visible, &QCheckBox::toggled, this, [this](bool on) { axis_.setVisible(on); });
}

void AxisPanel::addInformation(QBoxLayout& layout) {
    auto* button = new QPushButton(QStringLiteral("Axis Info"));  // owned by this widget
    button->setObjectName(QStringLiteral("AxisInfo"));
    layout.addWidget(button);
    connect(button, &QPushButton::clicked, this, [this] {
        QString text;
        axis_.information(text);
        userDialogs().tell(UserDialogs::Kind::Information, QStringLiteral("Axis Info"), text, this);
    });
}

AxisManualWindow::AxisManualWindow(AxisBase& axis)
    : axis_(axis),
      slider_(new QSlider(Qt::Horizontal)),  // owned by this widget through the layout
      value_(new QLineEdit) {                // owned by this widget through the layout
    constexpr int kValueWidth = 60;
    setObjectName(QStringLiteral("ManualTranslation"));
    closeOnEscape(*this);
    setWindowTitle(textOf("ManualTranslation").arg(axis.name()));
    auto* layout = new QHBoxLayout(this);  // owned by this widget
    constexpr int kSliderWidth = 240;
    setWindowIcon(QIcon(QStringLiteral(":/Icon/Logo.png")));
    slider_->setObjectName(QStringLiteral("ValueSlider"));
    slider_->setMinimumWidth(kSliderWidth);
    layout->addWidget(slider_);
    layout->addWidget(new QLabel(textOf("Value")));  // owned by this widget
    value_->setObjectName(QStringLiteral("Value"));
    value_->setFixedWidth(kValueWidth);
    layout->addWidget(value_);
    auto* home = addButton<QPushButton>(*layout, "ResetButton");
    setUpSlider();
    connect(slider_, &QSlider::valueChanged, this, &AxisManualWindow::sliderMoved);
    connect(value_, &QLineEdit::textChanged, this, &AxisManualWindow::textChanged);
    connect(home, &QPushButton::clicked, this, &AxisManualWindow::goHome);
}

/// Shows where the axis is without moving it.
void AxisManualWindow::setUpSlider() {
    const QSignalBlocker quietSlider(slider_);
    const QSignalBlocker quietText(value_);
    const AxisRecord& axis = axis_.record();
    slider_->setRange(sliderTicks(axis.lower, axis.step), sliderTicks(axis.upper, axis.step));
    slider_->setValue(sliderTicks(axis_.currentValue(), axis.step));
    value_->setText(QString::number(slider_->value() * axis.step));
}

void AxisManualWindow::showEvent(QShowEvent* event) {
    setUpSlider();
    QWidget::showEvent(event);
}

void AxisManualWindow::sliderMoved(int ticks) {
    value_->setText(QString::number(ticks * axis_.record().step));
}

void AxisManualWindow::textChanged(const QString& text) {
    bool converted = false;
    const float value = text.toFloat(&converted);
    if (!converted || !std::isfinite(value))
        return;
    {
        // The slider stands for the text here and must not rewrite what is being typed.
        const QSignalBlocker quiet(slider_);
        const double step = axis_.record().step;
        slider_->setValue(sliderTicks(std::round(static_cast<double>(value) / step), 1.0));
    }
    axis_.setValue(value);
}

void AxisManualWindow::goHome() {
    const AxisRecord& axis = axis_.record();
    slider_->setValue(sliderTicks(axis.home, axis.step));
    const QString text = QString::number(slider_->value() * axis.step);
    if (value_->text() == text)
        textChanged(text);  // a program may have moved the axis meanwhile
    else
        value_->setText(text);
}

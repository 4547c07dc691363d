#include "items/NumberInput.h"

#include <QPalette>
#include <utility>

namespace TORNVALE {

namespace {

const QColor kBad(255, 205, 205);

}  // namespace

NumberInput::NumberInput(NumberRange range, int decimals, QWidget* parent)
    : QLineEdit(parent), range_(std::move(range)), decimals_(decimals) {
    connect(this, &QLineEdit::textChanged, this, &NumberInput::mark);
    setValue(0);
}

void NumberInput::setValue(double value) {
    exact_ = value;
    shown_ = QString::number(value, 'f', decimals_);
    setText(shown_);
    setCursorPosition(0);
    mark();
}

bool NumberInput::isGood() const {
    if (!isTouched())
        return true;
    bool ok = false;
    const double typed = text().trimmed().toDouble(&ok);
    return ok && typed >= range_.low && typed <= range_.high;
}

double NumberInput::value() const {
    return isTouched() ? text().trimmed().toDouble() : exact_;
}

QString NumberInput::rule() const {
    return range_.rule.arg(range_.title)
        .arg(QString::number(range_.low, 'f', 0))
        .arg(QString::number(range_.high, 'f', 0));
}

void NumberInput::mark() {
    const bool good = isGood();
    setToolTip(good ? QString() : rule());
    QPalette colours;
    if (!good)
        colours.setColor(QPalette::Base, kBad);
    setPalette(colours);
}

}  // namespace TORNVALE

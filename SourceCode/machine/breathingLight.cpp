#include "machine/breathingLight.h"

#include <QPainter>
#include <QPropertyAnimation>
#include <QRadialGradient>

breathingLight::breathingLight(QWidget* parent)
    : QLabel(parent), animation_(new QPropertyAnimation(this, "opacity", this)) {  // owned by this label
    constexpr int kSide = 20;
    constexpr int kBreath_ms = 2000;
    constexpr int kForEver = -1;
    setFixedSize(kSide, kSide);
    animation_->setDuration(kBreath_ms);
    animation_->setStartValue(1.0);
    animation_->setEndValue(0.1);
    animation_->setLoopCount(kForEver);
    animation_->setEasingCurve(QEasingCurve::InOutQuad);
}

void breathingLight::showRunning() {
    color_ = green;
    animation_->start();
    update();
}

void breathingLight::showStopped() {
    showStill(red);
}

void breathingLight::showChecked() {
    showStill(yellow);
}

void breathingLight::showStill(const QColor& color) {
    animation_->stop();
    color_ = color;
    setOpacity(1.0);
}

bool breathingLight::isBreathing() const {
    return animation_->state() == QAbstractAnimation::Running;
}

void breathingLight::setOpacity(double opacity) {
    opacity_ = opacity;
    update();
}

void breathingLight::paintEvent(QPaintEvent* event) {
    constexpr int kContrast_percent = 150;
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setOpacity(opacity_);
        QRadialGradient gradient(QRectF(rect()).center(), width() / 2.0);
        gradient.setColorAt(0, color_.lighter(kContrast_percent));
        gradient.setColorAt(1, color_.darker(kContrast_percent));
        painter.setPen(Qt::NoPen);
        painter.setBrush(gradient);
        painter.drawEllipse(rect());
    }
    QLabel::paintEvent(event);
}

#include "app/PathPicture.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

/// Isometric projection: x to the right and down, y to the right and up, z up.
QPointF project(const WayPoint& point) {
    constexpr double kCos30 = 0.8660254037844386;
    return {(point[0] + point[1]) * kCos30, (point[0] - point[1]) * 0.5 - point[2]};
}

double distance(const WayPoint& a, const WayPoint& b) {
    return std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]);
}

QColor colourOfSpeed(float share) {
    constexpr double kBlueHue = 0.62;
    return QColor::fromHsvF(kBlueHue * (1.0 - static_cast<double>(share)), 0.85, 0.85);
}

}  // namespace

PathPicture::PathPicture(QWidget* parent) : QWidget(parent) {
    setMinimumSize(200, 160);
}

void PathPicture::setPath(WayPoints points) {
    pieces_.clear();
    bounds_ = {};
    double largest = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        largest = std::max(largest, distance(points[i - 1], points[i]));
    pieces_.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const QPointF place = project(points[i]);
        const double speed = i == 0 || largest <= 0.0 ? 0.0 : distance(points[i - 1], points[i]) / largest;
        pieces_.push_back({place, static_cast<float>(speed)});
        const QRectF dot(place, QSizeF(1e-6, 1e-6));
        bounds_ = i == 0 ? dot : bounds_.united(dot);
    }
    update();
}

void PathPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0xf7, 0xf5, 0xf0));
    if (pieces_.size() < 2 || bounds_.isEmpty())
        return;
    constexpr double kMargin = 24.0;
    const double scale = std::min((width() - 2 * kMargin) / std::max(bounds_.width(), 1.0),
                                  (height() - 2 * kMargin) / std::max(bounds_.height(), 1.0));
    painter.setRenderHint(QPainter::Antialiasing);
    const auto place = [&](const QPointF& point) {
        return QPointF(width() / 2.0, height() / 2.0) + (point - bounds_.center()) * scale;
    };
    for (std::size_t i = 1; i < pieces_.size(); ++i) {
        painter.setPen(QPen(colourOfSpeed(pieces_[i].speed), 1.6, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(place(pieces_[i - 1].point), place(pieces_[i].point));
    }
}

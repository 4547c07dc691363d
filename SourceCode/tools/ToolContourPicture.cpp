#include "tools/ToolContourPicture.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

namespace {

const QColor kPaper(252, 253, 253);
const QColor kFrame(185, 193, 200);
const QColor kBody(226, 178, 98);
const QColor kOutline(19, 128, 111);
const QColor kText(60, 70, 78);

/// From mm in the tool's XZ plane to pixels.
struct Scale {
    double pixelsPerMm = 1;
    QPointF axisTop;  ///< place of x = 0, z = `top`
    double top = 0;

    [[nodiscard]] QPointF place(double x, double z) const {
        return {axisTop.x() + x * pixelsPerMm, axisTop.y() + (top - z) * pixelsPerMm};
    }
};

struct Extent {
    double radius = 0;
    double top = 0;
    double bottom = 0;
    [[nodiscard]] double height() const { return top - bottom; }
};

Extent extentOf(const QVector<SbVec3f>& contour) {
    Extent extent;
    extent.top = static_cast<double>(contour.first()[2]);
    extent.bottom = extent.top;
    for (const SbVec3f& point : contour) {
        extent.radius = std::max(extent.radius, std::abs(static_cast<double>(point[0])));
        extent.top = std::max(extent.top, static_cast<double>(point[2]));
        extent.bottom = std::min(extent.bottom, static_cast<double>(point[2]));
    }
    return extent;
}

Scale scaleFor(const Extent& extent, const QRectF& area) {
    const double across = std::max(2 * extent.radius, 1e-9);
    const double along = std::max(extent.height(), 1e-9);
    Scale scale;
    scale.pixelsPerMm = std::min(area.width() / across, area.height() / along);
    scale.top = extent.top;
    const double used = along * scale.pixelsPerMm;
    scale.axisTop = {area.center().x(), area.top() + (area.height() - used) / 2};
    return scale;
}

QPolygonF outline(const QVector<SbVec3f>& contour, const Scale& scale, double side) {
    QPolygonF polygon;
    for (const SbVec3f& point : contour)
        polygon.append(scale.place(side * static_cast<double>(point[0]), static_cast<double>(point[2])));
    return polygon;
}

void paintSizes(QPainter& painter, const Extent& extent, const QRect& frame) {
    painter.setPen(kText);
    const QString across = QStringLiteral("⌀ %1").arg(2 * extent.radius);
    const QString along = QStringLiteral("↕ %1").arg(extent.height());
    painter.drawText(frame.adjusted(6, 4, -6, -4), Qt::AlignLeft | Qt::AlignBottom, across);
    painter.drawText(frame.adjusted(6, 4, -6, -4), Qt::AlignRight | Qt::AlignBottom, along);
}

}  // namespace

ToolContourPicture::ToolContourPicture(QWidget* parent) : QWidget(parent) {
    setMinimumSize(120, 120);
}

void ToolContourPicture::setContour(const QVector<SbVec3f>& contour) {
    contour_.clear();
    for (const SbVec3f& point : contour) {
        if (std::isfinite(point[0]) && std::isfinite(point[2]))
            contour_.append(point);
    }
    update();
}

void ToolContourPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect frame = rect().adjusted(0, 0, -1, -1);
    painter.setPen(kFrame);
    painter.setBrush(kPaper);
    painter.drawRect(frame);
    if (contour_.isEmpty())
        return;
    const Extent extent = extentOf(contour_);
    const int textHeight = painter.fontMetrics().height();
    const QRectF area = QRectF(frame).adjusted(16, 12, -16, -(textHeight + 14));
    if (area.isEmpty())
        return;
    const Scale scale = scaleFor(extent, area);
    painter.setPen(QPen(kOutline, 1.5));
    painter.setBrush(kBody);
    for (const double side : {1.0, -1.0})
        painter.drawPolygon(outline(contour_, scale, side));
    painter.setPen(QPen(kText, 1, Qt::DashDotLine));
    painter.drawLine(scale.place(0, extent.top) - QPointF(0, 7),
                     scale.place(0, extent.bottom) + QPointF(0, 7));
    paintSizes(painter, extent, frame);
}

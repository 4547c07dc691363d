#include "tools/calc/ToolContours.h"

#include <QStringView>
#include <cmath>
#include <optional>

#include "core/calc/NumberText.h"

namespace {

constexpr int kLeastUserPoints = 5;

/// The common part of both outlines: down the shank and out to the blade.
QVector<SbVec3f> shank(const ToolRecord& tool) {
    const float shoulder = -(tool.length - tool.bladeLength);
    return {SbVec3f(0, 0, 0), SbVec3f(tool.handleDiameter / 2, 0, 0),
            SbVec3f(tool.handleDiameter / 2, 0, shoulder), SbVec3f(tool.diameter / 2, 0, shoulder)};
}

/// The point of a line of exactly three numbers.
std::optional<SbVec3f> pointOfLine(QStringView line) {
    SbVec3f point;
    int count = 0;
    qsizetype position = 0;
    while (position < line.size()) {
        if (line[position].isSpace()) {
            ++position;
            continue;
        }
        const qsizetype start = position;
        while (position < line.size() && !line[position].isSpace())
            ++position;
        bool ok = false;
        const float number = line.mid(start, position - start).toFloat(&ok);
        if (!ok || !std::isfinite(number) || count == 3)
            return std::nullopt;
        point[count++] = number;
    }
    return count == 3 ? std::optional<SbVec3f>(point) : std::nullopt;
}

}  // namespace

QVector<SbVec3f> endMillContour(const ToolRecord& tool) {
    QVector<SbVec3f> contour = shank(tool);
    contour.append(SbVec3f(tool.diameter / 2, 0, -tool.length));
    contour.append(SbVec3f(0, 0, -tool.length));
    contour.append(SbVec3f(0, 0, 0));
    return contour;
}

QVector<SbVec3f> ballEndContour(const ToolRecord& tool) {
    constexpr int kStep_deg = 5;
    constexpr double kRadians = 3.14159265358979323846 / 180;
    const double radius = static_cast<double>(tool.diameter) / 2;
    const double centre = -(static_cast<double>(tool.length) - radius);
    QVector<SbVec3f> contour = shank(tool);
    for (int angle_deg = 0; angle_deg <= 90; angle_deg += kStep_deg) {
        // On the axis to the last bit, which the cosine of a rounded right angle would miss.
        const double x = angle_deg == 90 ? 0 : radius * std::cos(angle_deg * kRadians);
        const double z = centre - radius * std::sin(angle_deg * kRadians);
        contour.append(SbVec3f(static_cast<float>(x), 0, static_cast<float>(z)));
    }
    contour.append(SbVec3f(0, 0, 0));
    return contour;
}

QVector<SbVec3f> userContour(const QString& text) {
    QVector<SbVec3f> contour;
    LineReader lines(text);
    while (lines.next()) {
        if (const std::optional<SbVec3f> point = pointOfLine(lines.line()))
            contour.append(*point);
    }
    const SbVec3f origin(0, 0, 0);
    if (contour.size() < kLeastUserPoints || contour.first() != origin || contour.last() != origin)
        contour.clear();
    return contour;
}

QVector<SbVec3f> contourOfType(const ToolRecord& tool, const QString& text) {
    switch (static_cast<ToolType>(tool.type)) {
        case ToolType::EndMillingSawBlades:
            return endMillContour(tool);
        case ToolType::BallEnd:
            return ballEndContour(tool);
        case ToolType::UserTool:
            return userContour(text);
        case ToolType::ChainSaw:
            break;
    }
    return {};
}

QString contourText(const QVector<SbVec3f>& contour) {
    const auto number = [](float value) { return QString::number(static_cast<double>(value)); };
    QString text;
    for (const SbVec3f& point : contour) {
        text += number(point[0]) + QLatin1Char(' ') + number(point[1]) + QLatin1Char(' ') + number(point[2]) +
                QLatin1Char('\n');
    }
    return text;
}

#include "core/calc/SettingValues.h"

#include <QStringList>
#include <cmath>

bool settingIsTrue(const QString& key, const QString& text) {
    // This one key must stay tolerant: it is edited by hand more than the others.
    const bool trimmed = key == QLatin1String("StatusPreProcessing/IsPreLaunch");
    return (trimmed ? text.trimmed() : text) == QLatin1String("true");
}

int settingInteger(const QString& text, int fallback) {
    return text.isEmpty() ? fallback : text.toInt();
}

double settingNumber(const QString& text, double fallback) {
    return text.isEmpty() ? fallback : text.toDouble();
}

std::array<double, 3> backgroundColour(const QString& text) {
    const QStringList parts = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (parts.size() != 3)
        return {1.0, 1.0, 1.0};
    std::array<double, 3> colour{};
    for (int i = 0; i < 3; ++i) {
        const double part = parts[i].toDouble();
        colour[static_cast<std::size_t>(i)] = std::isfinite(part) ? part : 0.0;
    }
    return colour;
}

TabSide tabSide(const QString& text) {
    if (text == QLatin1String("East"))
        return TabSide::East;
    if (text == QLatin1String("South"))
        return TabSide::South;
    if (text == QLatin1String("North"))
        return TabSide::North;
    return TabSide::West;
}

DockArea dockArea(const QString& text) {
    switch (text.toInt()) {
        case 2:
            return DockArea::Top;
        case 4:
            return DockArea::Bottom;
        case 8:
            return DockArea::Right;
        default:
            return DockArea::Left;
    }
}

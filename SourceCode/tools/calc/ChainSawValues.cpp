#include "tools/calc/ChainSawValues.h"

#include <QStringList>
#include <cmath>

namespace {

/// No number, or none that is finite, is 0.
float floatOf(const QString& text) {
    const float number = text.toFloat();
    return std::isfinite(number) ? number : 0.0F;
}

float numberAt(const QMap<QString, QString>& values, const char* key) {
    return floatOf(values.value(QLatin1String(key)).trimmed());
}

int integerAt(const QMap<QString, QString>& values, const char* key) {
    return values.value(QLatin1String(key)).trimmed().toInt();
}

/// The numbers of `text`, nothing when it has not exactly `count` of them.
QVector<float> numbersOf(const QString& text, int count) {
    const QStringList parts = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QVector<float> numbers;
    if (parts.size() != count)
        return numbers;
    for (const QString& part : parts)
        numbers.append(floatOf(part));
    return numbers;
}

}  // namespace

void applyChainSaw(const QString& group, const QMap<QString, QString>& values, ToolRecord& tool) {
    tool.chainSaw = group;
    tool.type = static_cast<int>(ToolType::ChainSaw);
    const QVector<float> tip = numbersOf(values.value(QStringLiteral("ToolTip")), 3);
    if (tip.size() == 3)
        tool.toolTip.setValue(tip[0], tip[1], tip[2]);
    const QVector<float> matrix = numbersOf(values.value(QStringLiteral("Matrix")), 6);
    if (matrix.size() == 6)
        tool.transform = matrix;
    tool.chainSawPath = values.value(QStringLiteral("Dir"));
    tool.annotation = values.value(QStringLiteral("Annonation"));
    tool.spindleNo = integerAt(values, "SpindleNo");
    tool.toolNo = integerAt(values, "ToolNumber");
    tool.rpm = numberAt(values, "Rpm");
    applyChainSawCompensations(values, tool);
}

void applyChainSawCompensations(const QMap<QString, QString>& values, ToolRecord& tool) {
    tool.ax4Compensation = numberAt(values, "Ax4Compensation");
    tool.ax5Compensation = numberAt(values, "Ax5Compensation");
}

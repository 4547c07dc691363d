#include "machine/numerialAxis.h"

#include <QDebug>
#include <QFileInfo>

#include "core/LanguageReader.h"

int numericalAxis::set(numericalAxisStruct& axis) {
    const AxisReading reading = readAxis(axis);
    if (!reading.hasVectors)
        qFatal("Initialization size is not 3");
    if (!reading.hasColor)
        qDebug().noquote() << axis.name + QStringLiteral(":color.size() != 3");
    setRecord(reading.record);
    dynamics_ = reading.dynamics;
    Setup();
    return 0;
}

void numericalAxis::Setup() {
    const QString file = modelFile();
    if (!QFileInfo::exists(file)) {
        const QString text = TORNVALE::LanguageReader::instance().text(
            QStringLiteral("Axis"), QStringLiteral("ModelExistedErrorMsg"));
        qFatal("%s", qUtf8Printable(text + QStringLiteral("\tName:") + name()));
    }
    buildScene(file, true);
}

AxisBase* numericalAxis::clone() const {
    auto* copy = new numericalAxis;  // owned by the caller
    copy->copyForClone(*this);
    copy->dynamics_ = dynamics_;
    copy->Setup();
    return copy;
}

void numericalAxis::information(QString& text) const {
    AxisBase::information(text);
    const QString rule = QString(38, QLatin1Char('-')) + QLatin1Char('\n');
    text += QStringLiteral("MaxVelocity: ") + QString::number(dynamics_.maxVelocity) + QLatin1Char('\n');
    text += QStringLiteral("Acceleration: ") + QString::number(dynamics_.acceleration) + QLatin1Char('\n');
    text += QStringLiteral("Jerk: ") + QString::number(dynamics_.jerk) + QLatin1Char('\n');
    text += rule;
    for (const AxisBase* repeat : repeats()) {
        text += QStringLiteral("RepeatNode:");
        repeat->information(text);
    }
    text += rule;
}

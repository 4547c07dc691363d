#include "machine/NonNumericalAxis.h"

#include <QDebug>
#include <QFileInfo>

#include "core/LanguageReader.h"

int NonNumericalAxis::set(nonNumericalAxisStruct& part) {
    const std::optional<AxisRecord> reading = readAxis(part);
    if (!reading)
        return -1;
    setRecord(*reading);
    parentName_ = part.parent;
    initAxis();
    return 0;
}

void NonNumericalAxis::initAxis() {
    const QString file = modelFile();
    if (!QFileInfo::exists(file)) {
        const QString text = TORNVALE::LanguageReader::instance().text(
            QStringLiteral("Axis"), QStringLiteral("ModelExistedErrorMsg"));
        qDebug().noquote() << text + QStringLiteral("\tName:") + name();
    }
    buildScene(file, false);
}

AxisBase* NonNumericalAxis::clone() const {
    auto* copy = new NonNumericalAxis;  // owned by the caller
    copy->copyForClone(*this);
    copy->initAxis();
    return copy;
}

#include "setup/calc/SystemJson.h"

#include <QSet>
#include <cmath>
#include <limits>

#include "machine/calc/MachineDescription.h"

namespace {

std::optional<int> firstDigit(const QString& text) {
    for (const QChar letter : text) {
        if (letter >= QLatin1Char('0') && letter <= QLatin1Char('9'))
            return letter.unicode() - u'0';
    }
    return std::nullopt;
}

SbVec3f translationFrom(const QString& text) {
    const SbVec3f numbers = threeNumbers(text).value_or(SbVec3f(0, 0, 0));
    for (int i = 0; i < 3; ++i) {
        if (!std::isfinite(numbers[i]))
            return {0, 0, 0};
    }
    return numbers;
}

}  // namespace

SystemData readSystem(const QJsonObject& object) {
    SystemData system;
    const int id = object.value(QStringLiteral("id")).toInt(-1);
    if (id >= 0)
        system.id = id;
    system.name = object.value(QStringLiteral("name")).toString();
    system.moveTranslation = object.value(QStringLiteral("moveTranslation")).toString();
    system.switcher = object.value(QStringLiteral("switcher")).toString();
    system.models = object.value(QStringLiteral("modelObject")).toObject();
    return system;
}

QJsonObject writeSystem(const SystemData& system, const QString& parentName) {
    return {
        {QStringLiteral("id"), system.id.value_or(-1)},
        {QStringLiteral("name"), system.name},
        {QStringLiteral("parentNodeName"), parentName},
        {QStringLiteral("moveTranslation"), system.moveTranslation},
        {QStringLiteral("switcher"), system.switcher},
        {QStringLiteral("modelObject"), system.models},
    };
}

QVector<OldSystemData> readOldSystems(const QJsonArray& array) {
    QVector<OldSystemData> systems;
    for (const QJsonValue& value : array) {
        const QJsonObject object = value.toObject();
        OldSystemData system;
        system.id = firstDigit(object.value(QStringLiteral("name")).toString());
        system.translation = translationFrom(object.value(QStringLiteral("moveTranslation")).toString());
        for (const QJsonValue model : object.value(QStringLiteral("modelArray")).toArray()) {
            const QJsonObject texts = model.toObject();
            system.models.append({texts.value(QStringLiteral("coordIndex")).toString(),
                                  texts.value(QStringLiteral("verticesProperty")).toString()});
        }
        systems.append(system);
    }
    return systems;
}

int numberNotTaken(int number, const QVector<int>& taken) {
    const QSet<int> used(taken.begin(), taken.end());
    while (number >= 0 && used.contains(number))
        number = number == std::numeric_limits<int>::max() ? -1 : number + 1;
    return number;
}

#include "machine/calc/MachineDescription.h"

#include <QStringList>

namespace {

constexpr int kFirstId = 1;
constexpr int kAuxiliaryId = 6;

bool isChainLetter(QChar c) {
    return c >= QLatin1Char('A') && c <= QLatin1Char('Z');
}

/// The parts of a text of numbers: separated by blanks, empty parts dropped.
QVector<QStringRef> numberParts(const QString& text) {
    return QStringRef(&text).trimmed().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// "X->Z->C" as its names.
QStringList chainNames(const QString& chain) {
    QStringList names = chain.split(QStringLiteral("->"));
    for (QString& name : names)
        name = name.trimmed();
    return names;
}

}  // namespace

std::optional<SbVec3f> threeNumbers(const QString& text) {
    const QVector<QStringRef> parts = numberParts(text);
    if (parts.size() != 3)
        return std::nullopt;
    return SbVec3f(parts[0].toFloat(), parts[1].toFloat(), parts[2].toFloat());
}

void MachineDescription::rebuildIndex() {
    axisByLetter_.fill(nullptr);
    axisByOtherLetter_.clear();
    for (const auto& axis : numericalAxes) {
        if (axis->name.size() != 1)
            continue;
        const char16_t letter = axis->name[0].unicode();
        if (letter < axisByLetter_.size()) {
            if (axisByLetter_[letter] == nullptr)
                axisByLetter_[letter] = axis.get();
        } else if (!axisByOtherLetter_.contains(letter)) {
            axisByOtherLetter_.insert(letter, axis.get());
        }
    }
}

const numericalAxisStruct* MachineDescription::findAxis(QChar letter) const {
    const char16_t code = letter.unicode();
    return code < axisByLetter_.size() ? axisByLetter_[code] : axisByOtherLetter_.value(code, nullptr);
}

const spindleStruct* MachineDescription::findSpindle(int number) const {
    for (const auto& spindle : spindles) {
        QString digits = spindle->name;
        const int letter = digits.indexOf(QLatin1Char('T'));
        if (letter >= 0)
            digits.remove(letter, 1);
        bool ok = false;
        if (digits.toInt(&ok) == number && ok)
            return spindle.get();
    }
    return nullptr;
}

SbVec4f MachineDescription::spindleOffset(int number) const {
    const spindleStruct* spindle = findSpindle(number);
    if (spindle == nullptr)
        return {0, 0, 0, 0};
    const QVector<QStringRef> parts = numberParts(spindle->initialization);
    if (parts.size() != 4)
        return {0, 0, 0, 0};
    return {parts[0].toFloat(), parts[1].toFloat(), parts[2].toFloat(), parts[3].toFloat()};
}

const workCoordinateSystemStruct* MachineDescription::findWorkCoordinateSystem(const QString& name) const {
    for (const auto& system : workCoordinateSystems) {
        if (system->name == name)
            return system.get();
    }
    return nullptr;
}

SbVec3f MachineDescription::workCoordinateOrigin(const QString& name) const {
    const workCoordinateSystemStruct* system = findWorkCoordinateSystem(name);
    return system == nullptr ? SbVec3f(0, 0, 0)
                             : threeNumbers(system->initialization).value_or(SbVec3f(0, 0, 0));
}

AxisMap MachineDescription::axisMap(QStringView text, bool withAuxiliary) const {
    AxisMap letters;
    const int lastId = withAuxiliary ? kAuxiliaryId : kAuxiliaryId - 1;
    for (const QChar letter : axisLetters(text)) {
        const int id = findAxis(letter)->id;
        if (id >= kFirstId && id <= lastId)
            letters.insert(id, letter);
    }
    return letters;
}

QVector<QChar> MachineDescription::axisLetters(QStringView text) const {
    QVector<QChar> letters;
    for (const QChar letter : text) {
        if (isChainLetter(letter) && findAxis(letter) != nullptr)
            letters.append(letter);
    }
    return letters;
}

std::vector<double> MachineDescription::accelerations(QStringView chain) const {
    std::vector<double> values;
    for (const QChar letter : axisMap(chain, false))
        values.push_back(findAxis(letter)->acceleration.toDouble());
    return values;
}

std::vector<double> MachineDescription::jerks(QStringView chain) const {
    std::vector<double> values;
    for (const QChar letter : axisMap(chain, false))
        values.push_back(findAxis(letter)->jerk.toDouble());
    return values;
}

QString MachineDescription::homeLine(QStringView chain) const {
    QString line = QStringLiteral("G1 ");
    const AxisMap letters = axisMap(chain, true);
    for (auto entry = letters.begin(); entry != letters.end(); ++entry) {
        const numericalAxisStruct* axis = findAxis(entry.value());
        line += entry.value() + (entry.key() == kAuxiliaryId ? axis->lower : axis->homePosition);
        line += QLatin1Char(' ');
    }
    return line + QLatin1Char('F') + QString::number(interpolationParameters.rapidThreshold, 'f', 0);
}

QString MachineDescription::chainHead(const QString& nodeName) const {
    if (nodeName.isEmpty())
        return {};
    for (const QString& entry : machineParameters.kinematicChain) {
        for (const QString& chain : entry.split(QLatin1Char(';'))) {
            const QStringList names = chainNames(chain);
            if (names.contains(nodeName))
                return names.first();
        }
    }
    return {};
}

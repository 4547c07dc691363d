#include "nc/calc/ChainPosition.h"

#include "core/calc/NumberText.h"
#include "nc/calc/OutputText.h"
#include "nc/calc/OutputWords.h"

namespace {

/// Names under which the axes of a chain stand on its lines, by rising id, the auxiliary axis last.
QStringList wordNames(const MachineDescription& machine, const QString& chain,
                      const AuxiliaryAxis* auxiliary) {
    QStringList names;
    for (const QChar letter : machine.axisMap(chain, false))
        names.append(QString(letter));
    if (auxiliary != nullptr && !auxiliary->name.isEmpty())
        names.append(auxiliary->name);
    return names;
}

}  // namespace

QStringView firstMotionLine(QStringView text) {
    LineWalk lines(text);
    while (lines.next()) {
        if (isMotionLine(lines.line()))
            return lines.line().trimmed();
    }
    return {};
}

QStringView lastMotionLine(QStringView text) {
    qsizetype end = text.size();
    while (end >= 0) {
        const qsizetype lineFeed = end > 0 ? text.lastIndexOf(u'\n', end - 1) : -1;
        const QStringView line = text.mid(lineFeed + 1, end - lineFeed - 1);
        if (isMotionLine(line))
            return line.trimmed();
        end = lineFeed;
    }
    return {};
}

ChainPosition linePosition(const MachineDescription& machine, const QString& chain, QStringView line,
                           const AuxiliaryAxis* auxiliary) {
    ChainPosition position;
    for (const QString& name : wordNames(machine, chain, auxiliary)) {
        const qsizetype place = line.indexOf(name);
        if (place < 0)
            continue;
        if (const std::optional<double> value = numberFromRun(numberRun(line, place + name.size())))
            position.insert(name, *value);
    }
    return position;
}

ChainPosition headerPosition(const MachineDescription& machine, const QString& chain, QStringView header) {
    ChainPosition position;
    for (const QChar letter : machine.axisMap(chain, true)) {
        const std::optional<FoundWord> word = findWord(header, letter);
        if (!word)
            continue;
        if (const auto value = numberFromRun(header.mid(word->place + 1, word->length - 1)))
            position.insert(QString(letter), *value);
    }
    return position;
}

QString positionLine(const MachineDescription& machine, const QString& chain, const ChainPosition& position,
                     const AuxiliaryAxis* auxiliary) {
    QString words;
    for (const QString& name : wordNames(machine, chain, auxiliary)) {
        const auto value = position.constFind(name);
        if (value != position.constEnd())
            words += name + QString::number(*value, 'f', 3) + QLatin1Char(' ');
    }
    if (words.isEmpty())
        return {};
    return QStringLiteral("G1 ") + words + QLatin1Char('F') +
           QString::number(machine.interpolationParameters.rapidThreshold, 'f', 0);
}

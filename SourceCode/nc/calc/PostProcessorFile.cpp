#include "nc/calc/PostProcessorFile.h"

namespace {

const QString& patternTag() {
    static const QString tag = QStringLiteral("Configulation");
    return tag;
}

/// Calls `take` with each part of `text` that is not empty.
template <typename Take>
void forParts(QStringView text, QLatin1String separator, const Take& take) {
    while (!text.isEmpty()) {
        const qsizetype end = text.indexOf(separator);
        const QStringView part = end < 0 ? text : text.left(end);
        if (!part.isEmpty())
            take(part);
        text = end < 0 ? QStringView() : text.mid(end + separator.size());
    }
}

/// The texts of the "Item" children, each ended by a line feed.
QString actionText(const QDomElement& chain, const char* name) {
    QString text;
    const QDomElement action = chain.firstChildElement(QLatin1String(name));
    const QString tag = QStringLiteral("Item");
    for (QDomElement item = action.firstChildElement(tag); !item.isNull();
         item = item.nextSiblingElement(tag))
        text += item.text() + QLatin1Char('\n');
    return text;
}

}  // namespace

AxisSequences axisSequences(QStringView text) {
    AxisSequences sequences;
    forParts(text, QLatin1String(";"), [&](QStringView group) {
        QList<int> ids;
        forParts(group, QLatin1String("->"), [&ids](QStringView part) {
            bool isNumber = false;
            const int id = part.toString().toInt(&isNumber);
            if (isNumber)
                ids.append(id);
        });
        if (!ids.isEmpty())
            sequences.append(ids);
    });
    return sequences;
}

std::optional<Regulation> readRegulation(const QDomElement& root) {
    const QDomElement element = root.firstChildElement(QStringLiteral("Regulation"));
    if (element.isNull())
        return std::nullopt;
    const auto attribute = [&element](const char* name) { return element.attribute(QLatin1String(name)); };
    Regulation values;
    values.rapid = attribute("Rapid");
    values.linear = attribute("Linear");
    if (const QString word = attribute("RapidMovement"); !word.isEmpty())
        values.rapidMovement = word;
    bool isNumber = false;
    const int scheme = attribute("AccelerationScheme").toInt(&isNumber);
    values.accelerationScheme = isNumber ? scheme : 1;
    values.prepend = attribute("Prepend");
    values.outputDir = attribute("OutputDir");
    // To the letter: "True", and no attribute at all, are false.
    values.userHeaderTail = attribute("UserHeaderTail") == QLatin1String("true");
    values.entry = axisSequences(attribute("EntrySequence"));
    values.exit = axisSequences(attribute("ExitSequence"));
    values.multiChain = attribute("MultiChain").toInt();
    return values;
}

std::optional<QVector<ChainActions>> readPrePostActions(const QDomElement& root) {
    const QDomElement list = root.firstChildElement(QStringLiteral("PrePostActions"));
    if (list.isNull())
        return std::nullopt;
    QVector<ChainActions> actions;
    const QString tag = QStringLiteral("Chain");
    for (QDomElement chain = list.firstChildElement(tag); !chain.isNull();
         chain = chain.nextSiblingElement(tag))
        actions.append({chain.attribute(QStringLiteral("Name")).trimmed(), actionText(chain, "PreAction"),
                        actionText(chain, "PostAction")});
    return actions;
}

QVector<PatternRow> patternRows(const QDomElement& root) {
    QVector<PatternRow> rows;
    for (QDomElement pattern = root.firstChildElement(patternTag()); !pattern.isNull();
         pattern = pattern.nextSiblingElement(patternTag()))
        rows.append({pattern.attribute(QStringLiteral("Name")), pattern.attribute(QStringLiteral("NickName")),
                     pattern.attribute(QStringLiteral("Image"))});
    return rows;
}

QDomElement findPattern(const QDomElement& root, const QString& name) {
    QDomElement pattern = root.firstChildElement(patternTag());
    while (!pattern.isNull() && pattern.attribute(QStringLiteral("Name")) != name)
        pattern = pattern.nextSiblingElement(patternTag());
    return pattern;
}

bool isCoordinate(const QDomElement& element) {
    return element.tagName() == QLatin1String("Coordinate");
}

QStringList coordinateList(const QDomElement& pattern) {
    QStringList names;
    for (QDomElement child = pattern.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (isCoordinate(child))
            names.append(child.text().trimmed());
    }
    return names;
}

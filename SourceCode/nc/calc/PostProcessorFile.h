#pragma once

#include <QDomElement>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVector>
#include <optional>

#include "nc/calc/AxisSequences.h"

// What a post-processor's XML file says, read from its root element. A null root reads as a file without
// anything in it.

/// The attributes of "Regulation".
struct Regulation {
    QString rapid;                                 ///< line where motion changes to rapid
    QString linear;                                ///< line where motion changes to feed
    QString rapidMovement = QStringLiteral("G1");  ///< word of rapid lines
    int accelerationScheme = 1;
    QString prepend;    ///< text in front of each "G1" line
    QString outputDir;  ///< as it stands in the file
    bool userHeaderTail = true;
    AxisSequences entry;
    AxisSequences exit;
    int multiChain = 0;  ///< 0 one chain after the other, 1 all at once
};

/// What is written before and behind the program of one chain, each item ended by a line feed.
struct ChainActions {
    QString chain;
    QString preAction;
    QString postAction;
};

/// One output pattern as the tool bar shows it.
struct PatternRow {
    QString name;
    QString nickName;
    QString image;  ///< file in the folder of the post-processors
};

/// "3;1->2" gives (3), (1, 2). Empty groups and parts are dropped, what is not an integer is skipped, and a
/// group without ids is not kept.
[[nodiscard]] AxisSequences axisSequences(QStringView text);

/// Nothing when the root has no "Regulation".
[[nodiscard]] std::optional<Regulation> readRegulation(const QDomElement& root);

/// The chains of "PrePostActions"; nothing when the root has no such element.
[[nodiscard]] std::optional<QVector<ChainActions>> readPrePostActions(const QDomElement& root);

/// Every "Configulation" of the root, in file order.
[[nodiscard]] QVector<PatternRow> patternRows(const QDomElement& root);

/// The first "Configulation" of the root with this name, to the letter; a null element when there is none.
[[nodiscard]] QDomElement findPattern(const QDomElement& root, const QString& name);

/// True for the element of a pattern that stands for a work coordinate system.
[[nodiscard]] bool isCoordinate(const QDomElement& element);

/// The trimmed texts of the "Coordinate" children of a pattern.
[[nodiscard]] QStringList coordinateList(const QDomElement& pattern);

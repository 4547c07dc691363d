#pragma once

#include <QByteArray>
#include <QString>

#include "core/calc/Diagnostics.h"

/// The fixed prefixes, words and flags of an installation, one text per key of
/// "data/UniquelyIdentifies.json". A key that the file lacks, or whose value is no text, is empty.
struct UniqueNames {
    QString userCoordinateSystem;
    QString trajectoryNodeNamePrefix;
    QString userCodeItemNamePrefix;
    QString megerItemNamePrefix;
    QString drillItemNamePrefix;
    QString isoCodeTopItemNamePrefix;
    QString isoCodeChildItemNamePrefix;
    QString mergeCodeTopItemNamePrefix;
    QString machineNodeTopItemNamePrefix;
    QString rectangularSpiralItemNamePrefix;
    QString leftTableProcessing;
    QString rightTableProcessing;
    QString alternateProcessing;
    QString consecutiveProcessing;
    QString draggerNodeName;
    QString userFixtureNamePrefix;
    QString userFixtureBlockNamePrefix;
    QString userModelNamePrefix;
    QString automaticAdjustmentStringPath;
    QString section;
    QString leftOutputFileExtension;
    QString rightOutputFileExtension;
    QString tandemOutputFileExtension;
    QString mergeOutputFileExtension;
    QString leftOutputFilePrefix;
    QString rightOutputFilePrefix;
    QString tandemOutputFilePrefix;
    QString mergeOutputFilePrefix;
    QString numericalAxisFlag;  ///< flags: what a tree item shows, kept in its role Qt::UserRole + 1
    QString nonNumericalAxisFlag;
    QString ucsFlag;
    QString wcsFlag;
    QString workPieceFlag;
    QString userFixtureFlag;
    QString userFixtureBlockFlag;
};

/// Reads the file's content, a flat JSON object. Anything else is a debug diagnostic and gives empty texts.
[[nodiscard]] UniqueNames parseUniqueNames(const QByteArray& json, Diagnostics& diagnostics);

#include "core/calc/UniqueNames.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

struct Field {
    const char* key;
    QString UniqueNames::*text;
};

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): the key of a field is its name.
#define TORNVALE_FIELD(name)      \
    Field {                       \
#name, &UniqueNames::name \
    }

constexpr Field kFields[] = {
    TORNVALE_FIELD(userCoordinateSystem),
    TORNVALE_FIELD(trajectoryNodeNamePrefix),
    TORNVALE_FIELD(userCodeItemNamePrefix),
    TORNVALE_FIELD(megerItemNamePrefix),
    TORNVALE_FIELD(drillItemNamePrefix),
    TORNVALE_FIELD(isoCodeTopItemNamePrefix),
    TORNVALE_FIELD(isoCodeChildItemNamePrefix),
    TORNVALE_FIELD(mergeCodeTopItemNamePrefix),
    TORNVALE_FIELD(machineNodeTopItemNamePrefix),
    TORNVALE_FIELD(rectangularSpiralItemNamePrefix),
    TORNVALE_FIELD(leftTableProcessing),
    TORNVALE_FIELD(rightTableProcessing),
    TORNVALE_FIELD(alternateProcessing),
    TORNVALE_FIELD(consecutiveProcessing),
    TORNVALE_FIELD(draggerNodeName),
    TORNVALE_FIELD(userFixtureNamePrefix),
    TORNVALE_FIELD(userFixtureBlockNamePrefix),
    TORNVALE_FIELD(userModelNamePrefix),
    TORNVALE_FIELD(automaticAdjustmentStringPath),
    TORNVALE_FIELD(section),
    TORNVALE_FIELD(leftOutputFileExtension),
    TORNVALE_FIELD(rightOutputFileExtension),
    TORNVALE_FIELD(tandemOutputFileExtension),
    TORNVALE_FIELD(mergeOutputFileExtension),
    TORNVALE_FIELD(leftOutputFilePrefix),
    TORNVALE_FIELD(rightOutputFilePrefix),
    TORNVALE_FIELD(tandemOutputFilePrefix),
    TORNVALE_FIELD(mergeOutputFilePrefix),
    TORNVALE_FIELD(numericalAxisFlag),
    TORNVALE_FIELD(nonNumericalAxisFlag),
    TORNVALE_FIELD(ucsFlag),
    TORNVALE_FIELD(wcsFlag),
    TORNVALE_FIELD(workPieceFlag),
    TORNVALE_FIELD(userFixtureFlag),
    TORNVALE_FIELD(userFixtureBlockFlag),
};
#undef TORNVALE_FIELD

}  // namespace

UniqueNames parseUniqueNames(const QByteArray& json, Diagnostics& diagnostics) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (document.isNull() || error.error != QJsonParseError::NoError) {
        diagnostics.add(Severity::Debug, QStringLiteral("json解析失败...") + error.errorString());
        return {};
    }
    const QJsonObject object = document.object();
    UniqueNames names;
    for (const Field& field : kFields)
        names.*field.text = object.value(QLatin1String(field.key)).toString();
    return names;
}

#include "items/IsoItem.h"

#include <QDebug>
#include <QFile>
#include <memory>
#include <typeinfo>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "items/IsoEditor.h"
#include "items/UserTopItem.h"
#include "machine/Transform.h"
#include "machine/readConfig.h"
#include "nc/GCodeConversionStrategy.h"
#include "nc/calc/IsoPlacement.h"
#include "tools/ToolData.h"

namespace TORNVALE {

namespace {

QString problemText(const char* key) {
    return LanguageReader::instance().text(QStringLiteral("IsoItem/Problem"), QLatin1String(key));
}

/// A reason without a translation stands as the converter told it.
QString textOf(const IsoProblem& problem) {
    QString text = problem.key.isEmpty() ? QString() : problemText(problem.key.toLatin1().constData());
    if (text.isEmpty())
        text = problem.text;
    return problem.line > 0 ? problemText("Line").arg(problem.line).arg(text) : text;
}

void writeFile(const QString& name, const QString& text) {
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly)) {
        qWarning().noquote() << QStringLiteral("%1 cannot be written: %2").arg(name, file.errorString());
        return;
    }
    file.write(text.toUtf8());
}

}  // namespace

IsoItem::IsoItem()
    : CodeManagerItem(kIsoItem, QStringLiteral("Iso"), QStringLiteral(":/Icon/iso.png"),
                      typeid(IsoItem).name()) {}

IsoItem::~IsoItem() {
    IsoEditor::release(this);
}

QTreeWidgetItem* IsoItem::clone() const {
    auto copy = std::make_unique<IsoItem>();
    copy->setUserCoordinateIds(userCoordinateIds());
    copy->tool() = tool();
    copy->toolList_ = toolList_;
    copy->iso_ = iso_;
    copy->setProblem({});
    ItemRecord& fields = copy->editRecord();
    fields.UserCoordiSystemId = record().UserCoordiSystemId;
    fields.ItemRpm = record().ItemRpm;
    fields.translation = record().translation;
    fields.offset = record().offset;
    fields.Annotation = record().Annotation;
    fields.t = record().t;
    return copy.release();
}

void IsoItem::Set(const QJsonObject& object) {
    isoItemFromJson(object, editRecord(), iso_);
    setName(record().Name);
    adoptTool(object.value(QStringLiteral("tool")));
    // The tool has brought its own speed.
    editRecord().ItemRpm = object.value(QStringLiteral("itemRPM")).toDouble();
}

QJsonObject IsoItem::Get() const {
    return isoItemToJson(record(), iso_, type(), tool().toJson(), isActive());
}

void IsoItem::setKindRecord(const KindRecord& kind) {
    if (const auto* iso = std::get_if<IsoRecord>(&kind)) {
        iso_ = *iso;
        setProblem(iso_.problem);
    }
}

void IsoItem::reactToNewPlace() {
    const UserTopItem* parent = group();
    if (parent == nullptr)
        return;
    const bool wasShown = pathNode() != nullptr;
    takePlaceFrom(*parent);
    setText(kNameColumn, {});  // its own old name is no neighbour's
    setName(parent->uniqueName(type()));
    if (wasShown)
        MapItemToNode();
}

void IsoItem::refresh() {
    for (const int column : {kNameColumn, kLimitColumn})
        setToolTip(column, problem_);
    CodeManagerItem::refresh();
}

void IsoItem::doIt() {
    const UserTopItem* parent = group();
    if (parent == nullptr)
        qFatal("parent is nullptr.");
    prepare();
    if (!canBePlaced()) {
        refresh();
        return;
    }
    HandleIsoCode::GCodeConverter converter(record().Chain);
    converter.auxiliaryAxis = parent->auxiliaryAxis();
    converter.previousFifth = previousFifth();
    converter.translation = record().translation;
    converter.offset = record().offset;
    converter.mirrorAngle = iso_.mirrorAngle;
    converter.tool = &tool();
    converter.axisShift = iso_.axisShift;
    converter.UserCoordinate = record().UserCoordinate;
    converter.WCSName = record().WCSName;
    static_cast<void>(converter.doIt(iso_.sourceCodeString));  // a refusal shows in the texts
    take(converter);
    if (record().WorkCode.isEmpty()) {
        refresh();
        return;
    }
    updateTime();
    refresh();
    closeGeneration();
}

/// Placing needs the rotary axes of the chain. A document may name a chain that has none, or that this
/// machine does not have: it costs the item, not the process.
bool IsoItem::canBePlaced() {
    const ItemRecord& placing = record();
    if (placing.translation == SbVec3f(0, 0, 0) && placing.offset == SbVec3f(0, 0, 0) &&
        iso_.mirrorAngle == 0)
        return true;
    Diagnostics diagnostics;
    if (rotaryDirections(ConfigReader::instance().description(), placing.Chain, diagnostics))
        return true;
    ItemRecord& texts = editRecord();
    for (QString* text : {&texts.LeadIn, &texts.LeadOut, &texts.IsoCode, &texts.WorkCode})
        text->clear();
    setProblem({0, QStringLiteral("NoRotaryAxes"), diagnostics.entries.back().text});
    return false;
}

void IsoItem::take(const HandleIsoCode::GCodeConverter& converter) {
    ItemRecord& texts = editRecord();
    texts.LeadIn = converter.LeadIn;
    texts.LeadOut = converter.LeadOut;
    texts.IsoCode = converter.IsoCode;
    texts.WorkCode = converter.WorkCode;
    setProblem(texts.IsoCode.isEmpty()
                   ? isoProblem(converter.diagnostics(), iso_.sourceCodeString, !texts.WorkCode.isEmpty())
                   : IsoProblem());
}

void IsoItem::setProblem(const IsoProblem& problem) {
    iso_.problem = problem;
    problem_ = problem.isEmpty() ? QString() : textOf(problem);
}

void IsoItem::openEditor() {
    refreshUserCoordinateIds();
    IsoEditor::instance().edit(*this);
}

void IsoItem::writeComparisonFiles() const {
    writeFile(QStringLiteral("input_file.txt"), record().WorkCode);
    constexpr double kNoShift = 0.0;
    constexpr int kToTip = 1;
    TransformationOperator inverse(&tool(), kNoShift, record().UserCoordinate, record().Chain,
                                   record().WCSName, kToTip);
    writeFile(QStringLiteral("output_file.txt"), inverse.transformText(record().IsoCode));
    userDialogs().tell(
        UserDialogs::Kind::Information, QStringLiteral("提示"),
        QStringLiteral("输入的IsoCode和输出的IsoCode已经写入到当前目录下的input_file.txt和output_file.txt"));
}

}  // namespace TORNVALE

#include "tools/ToolData.h"

#include <QDebug>
#include <QGuiApplication>
#include <QIcon>
#include <QStringList>
#include <array>

#include "core/LanguageReader.h"
#include "geometry/SharedMethods.h"
#include "geometry/calc/RevolvedMesh.h"
#include "machine/readConfig.h"
#include "tools/ChainSawLibrary.h"
#include "tools/ToolGraph.h"
#include "tools/ToolPicture.h"
#include "tools/calc/ChainSawValues.h"

namespace {

constexpr int kPictureColumn = 12;

QString numberText(float number) {
    return QString::number(static_cast<double>(number));
}

/// Six numbers, missing ones as 0.
QString transformText(const QVector<float>& transform) {
    QStringList numbers;
    for (int i = 0; i < 6; ++i)
        numbers.append(numberText(transform.value(i)));
    return numbers.join(QLatin1Char(' '));
}

std::optional<SbColor> spindleColor(int spindleNo) {
    const spindleStruct* spindle = ConfigReader::instance().description().findSpindle(spindleNo);
    if (spindle == nullptr)
        return std::nullopt;
    const std::optional<SbVec3f> numbers = threeNumbers(spindle->color);
    if (!numbers)
        return std::nullopt;
    return SbColor(*numbers);
}

bool canShowPictures() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

}  // namespace

ToolData::ToolData() : QTreeWidgetItem(kItemType) {}

ToolData::ToolData(ToolRecord record) : QTreeWidgetItem(kItemType), record_(std::move(record)) {}

// NOLINTNEXTLINE(bugprone-copy-constructor-init): the base's copy constructor would lose the item type.
ToolData::ToolData(const ToolData& other) : QTreeWidgetItem(kItemType), record_(other.record_) {
    QTreeWidgetItem::operator=(other);
}

ToolData& ToolData::operator=(const ToolData& other) {
    if (this != &other) {
        QTreeWidgetItem::operator=(other);
        record_ = other.record_;
    }
    return *this;
}

ToolData::~ToolData() = default;

SoSeparator* ToolData::GetSeparator() {
    if (!record_.isChainSaw())
        return revolvedToolGraph(record_, spindleColor(record_.spindleNo));
    if (record_.chainSawPath.isEmpty())
        return nullptr;
    record_.chainSawPath = ChainSawLibrary::modelPath(record_.chainSawPath);
    return modelToolGraph(record_, record_.chainSawPath);
}

MeshArrays ToolData::collisionMesh() const {
    constexpr float kClearance = 0.9999F;
    MeshArrays mesh;
    if (!record_.isChainSaw())
        mesh = revolvedMesh(record_.contour);
    else if (!record_.chainSawPath.isEmpty())
        SharedMethods::ReadSTLFile(ChainSawLibrary::modelPath(record_.chainSawPath), mesh.vertices,
                                   mesh.indices);
    scaleAboutOrigin(mesh.vertices, kClearance);
    return mesh;
}

void ToolData::LoadChainSawData(const QString& group) {
    const QMap<QString, QString> texts = ChainSawLibrary::values(group).value_or(QMap<QString, QString>());
    applyChainSaw(group, texts, record_);
    const QString imagePath = ChainSawLibrary::modelPath(texts.value(QStringLiteral("Image")));
    const QImage image = toolImageFromFile(imagePath);
    if (image.isNull())
        qDebug().noquote() << QStringLiteral(" load Image failed.ImagePath:") + imagePath;
    record_.image = toolImageBytes(image);
    refreshRow();
}

QJsonObject ToolData::toJson() const {
    return toolToJson(record_);
}

void ToolData::fromJson(const QJsonObject& object) {
    toolFromJson(object, record_);
    takeCompensations();
    refreshRow();
}

void ToolData::fromJsonArray(const QJsonArray& array) {
    toolFromJsonArray(array, record_);
    takeCompensations();
    refreshRow();
}

void ToolData::takeCompensations() {
    if (!record_.isChainSaw())
        return;
    if (const auto texts = ChainSawLibrary::values(record_.chainSaw))
        applyChainSawCompensations(*texts, record_);
}

void ToolData::copyFrom(const ToolData& other) {
    const int index = record_.index;
    record_ = other.record_;
    record_.index = index;
    refreshRow();
}

void ToolData::resetForNewTool() {
    ::resetForNewTool(record_);
}

SbMatrix ToolData::mountMatrix() const {
    return toolMountMatrix(record_.transform);
}

QString ToolData::displayText() const {
    return toolDisplayText(record_);
}

QString ToolData::typeText() const {
    static constexpr std::array<const char*, 4> kKeys{"EndMillingSawBlades", "BallEnd", "UserTool",
                                                      "ChainSaw"};
    const auto type = static_cast<std::size_t>(record_.type);
    if (type >= kKeys.size())
        return {};
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("ToolData"),
                                                     QString::fromLatin1(kKeys[type]));
}

void ToolData::refreshRow() {
    const QStringList texts{
        QString::number(record_.index),
        QString::number(record_.spindleNo),
        QString::number(record_.toolNo),
        numberText(record_.diameter),
        numberText(record_.length),
        numberText(record_.handleDiameter),
        numberText(record_.bladeLength),
        numberText(record_.rpm),
        record_.installationName,
        typeText(),
        ConfigReader::rotationDirection(record_.direction == 0 ? 0 : 1),
        transformText(record_.transform),
    };
    for (int column = 0; column < texts.size(); ++column)
        setText(column, texts[column]);
    for (int column = 0; column < kColumnCount; ++column)
        setTextAlignment(column, Qt::AlignCenter);
    if (canShowPictures()) {
        const QPixmap pixmap = picture();
        setIcon(kPictureColumn,
                pixmap.isNull() ? QIcon() : QIcon(pixmap.scaled(iconSize_, Qt::KeepAspectRatio)));
    }
}

QPixmap ToolData::picture() const {
    return record_.image.isEmpty() ? QPixmap() : QPixmap::fromImage(toolImageFromBytes(record_.image));
}

void ToolData::setPicture(const QPixmap& picture) {
    record_.image = toolImageBytes(picture.toImage());
}

QString ToolData::chainSawLibraryPath() {
    return ChainSawLibrary::path();
}

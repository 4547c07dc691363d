#include "tools/ToolEditor.h"

#include <QComboBox>
#include <QDebug>
#include <QDir>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <cmath>
#include <optional>

#include "core/LanguageReader.h"
#include "core/UserDialogs.h"
#include "core/WindowKeys.h"
#include "machine/readConfig.h"
#include "tools/ChainSawLibrary.h"
#include "tools/CheckRpmReverse.h"
#include "tools/ToolContourPicture.h"
#include "tools/ToolData.h"
#include "tools/ToolEditorForm.h"
#include "tools/ToolPicture.h"
#include "tools/ToolSceneView.h"
#include "tools/calc/ToolContours.h"

namespace {

constexpr int kMostToolNumbers = 10000;  ///< a machine file may name any count of places

ToolEditor* madeEditor = nullptr;

/// A finite number; nothing for any other text.
std::optional<float> numberOf(const QLineEdit& input) {
    bool ok = false;
    const float number = input.text().trimmed().toFloat(&ok);
    return ok && std::isfinite(number) ? std::optional<float>(number) : std::nullopt;
}

void readInto(float& field, const QLineEdit& input) {
    field = numberOf(input).value_or(field);
}

int spindleNumber(const spindleStruct& spindle) {
    return QString(spindle.name).remove(QLatin1Char('T')).toInt();
}

const spindleStruct* chosenSpindle(const QComboBox& box) {
    bool ok = false;
    const int number = box.currentData().toInt(&ok);
    return ok ? ConfigReader::instance().description().findSpindle(number) : nullptr;
}

bool canReverse(const spindleStruct* spindle) {
    return spindle != nullptr && spindle->reverseString == QLatin1String("true");
}

void warn(const char* key, QWidget* parent) {
    userDialogs().tell(UserDialogs::Kind::Warning, ToolEditorForm::text("Title"), ToolEditorForm::text(key),
                       parent);
}

}  // namespace

ToolEditor& ToolEditor::instance() {
    if (madeEditor == nullptr)
        madeEditor = new ToolEditor;  // owned by the process, never destroyed
    return *madeEditor;
}

void ToolEditor::release(const ToolData* tool) {
    if (madeEditor == nullptr || (tool != nullptr && madeEditor->tool_ != tool))
        return;
    madeEditor->tool_ = nullptr;
    madeEditor->close();
}

ToolEditor::ToolEditor(QWidget* parent) : QWidget(parent), form_(std::make_unique<ToolEditorForm>(*this)) {
    setWindowFlag(Qt::Window);
    setWindowTitle(ToolEditorForm::text("Title"));
    setWindowIcon(QIcon(QStringLiteral(":/Icon/editItem.png")));
    resize(800, 600);
    const auto& language = TORNVALE::LanguageReader::instance();
    for (const char* key : {"EndMillingSawBlades", "BallEnd", "UserTool", "ChainSaw"})
        form_->type->addItem(language.text(QStringLiteral("ToolData"), QLatin1String(key)));
    form_->direction->addItems({ToolEditorForm::text("CW"), ToolEditorForm::text("CCW")});
    closeOnEscape(*this);
    connectInputs();
    typeChanged(form_->type->currentIndex());
}

ToolEditor::~ToolEditor() = default;

void ToolEditor::connectInputs() {
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(form_->spindle, indexChanged, this, &ToolEditor::SpindleComboboxChanged);
    connect(form_->type, indexChanged, this, &ToolEditor::typeChanged);
    connect(form_->chainSawType, indexChanged, this, &ToolEditor::refreshPreview);
    connect(form_->index, &QLineEdit::editingFinished, this, &ToolEditor::indexEdited);
    for (QLineEdit* input : {form_->diameter, form_->handleDiameter, form_->length, form_->bladeLength})
        connect(input, &QLineEdit::editingFinished, this, &ToolEditor::refreshPreview);
    connect(form_->contour, &QPlainTextEdit::textChanged, this, &ToolEditor::refreshPreview);
    connect(form_->updateContour, &QPushButton::clicked, this, &ToolEditor::updateContour);
    connect(form_->importPicture, &QPushButton::clicked, this, &ToolEditor::importPicture);
    connect(form_->removePicture, &QPushButton::clicked, this, &ToolEditor::removePicture);
    connect(form_->accept, &QPushButton::clicked, this, [this] {
        SetupTool();
        close();
    });
}

void ToolEditor::setTool(ToolData* tool) {
    tool_ = tool;
    if (tool_ == nullptr)
        return;
    fillBoxes();
    const ToolRecord& record = tool_->record();
    {
        const QSignalBlocker quiet(form_->spindle);
        const int place = form_->spindle->findData(record.spindleNo);
        if (place >= 0)
            form_->spindle->setCurrentIndex(place);
    }
    SpindleComboboxChanged(form_->spindle->currentIndex());
    const int place = form_->toolNo->findData(record.toolNo);
    if (place >= 0)
        form_->toolNo->setCurrentIndex(place);
    else
        warn("FoundToolNoErrorMsg", this);
    fillInputs();
}

/// Machine and chain saw library may have changed since the last tool.
void ToolEditor::fillBoxes() {
    const QSignalBlocker quietSpindle(form_->spindle);
    const QSignalBlocker quietSaw(form_->chainSawType);
    const QString chosen = form_->spindle->currentText();
    form_->spindle->clear();
    for (const auto& spindle : ConfigReader::instance().description().spindles)
        form_->spindle->addItem(spindle->name, spindleNumber(*spindle));
    form_->spindle->setCurrentIndex(
        qMax(form_->spindle->findText(chosen), qMin(0, form_->spindle->count() - 1)));
    form_->chainSawType->clear();
    form_->chainSawType->addItems(ChainSawLibrary::groups());
}

void ToolEditor::fillInputs() {
    const ToolRecord& record = tool_->record();
    form_->index->setText(QString::number(record.index));
    form_->diameter->setText(floatText(record.diameter));
    form_->handleDiameter->setText(floatText(record.handleDiameter));
    form_->length->setText(floatText(record.length));
    form_->bladeLength->setText(floatText(record.bladeLength));
    form_->rpm->setText(floatText(record.rpm));
    form_->annotation->setText(record.annotation);
    for (std::size_t i = 0; i < form_->transform.size(); ++i)
        form_->transform[i]->setText(floatText(record.transform.value(static_cast<int>(i))));
    if (canReverse(chosenSpindle(*form_->spindle)))
        form_->direction->setCurrentIndex(record.direction == 0 ? 0 : 1);
    const QSignalBlocker quietSaw(form_->chainSawType);
    const QSignalBlocker quietType(form_->type);
    const QSignalBlocker quietContour(form_->contour);
    form_->chainSawType->setCurrentIndex(form_->chainSawType->findText(record.chainSaw));
    if (record.type >= 0 && record.type < form_->type->count())
        form_->type->setCurrentIndex(record.type);
    form_->contour->setPlainText(contourText(record.contour));
    picture_ = tool_->picture();
    pictureChanged_ = false;
    showPicture();
    typeChanged(form_->type->currentIndex());
}

void ToolEditor::typeChanged(int type) {
    form_->enableFor(type);
    form_->direction->setEnabled(type != static_cast<int>(ToolType::ChainSaw) &&
                                 canReverse(chosenSpindle(*form_->spindle)));
    refreshPreview();
}

void ToolEditor::SpindleComboboxChanged(int index) {
    bool ok = false;
    const int number = form_->spindle->itemData(index).toInt(&ok);
    const spindleStruct* spindle = ok ? ConfigReader::instance().description().findSpindle(number) : nullptr;
    if (spindle == nullptr)
        qFatal("Not found corrent spindle");
    const int count = qBound(1, spindle->range.trimmed().toInt(), kMostToolNumbers);
    const QString chosen = form_->toolNo->currentText();
    form_->toolNo->clear();
    for (int toolNo = 1; toolNo <= count; ++toolNo)
        form_->toolNo->addItem(QString::number(toolNo), toolNo);
    form_->toolNo->setCurrentIndex(qMax(0, form_->toolNo->findText(chosen)));
    if (!canReverse(spindle))
        form_->direction->setCurrentIndex(0);
    form_->direction->setEnabled(canReverse(spindle));
}

bool ToolEditor::indexIsTaken(int index) const {
    const QTreeWidgetItem* root = tool_->parent();
    for (int row = 0; root != nullptr && row < root->childCount(); ++row) {
        const QTreeWidgetItem* other = root->child(row);
        if (other != tool_ && other->type() == ToolData::kItemType &&
            static_cast<const ToolData*>(other)->record().index == index)
            return true;
    }
    return false;
}

void ToolEditor::indexEdited() {
    if (tool_ == nullptr)
        return;
    bool ok = false;
    int index = form_->index->text().trimmed().toInt(&ok);
    if (ok && index < 0) {
        // Mended before the box opens: the loss of focus to it reports the same edit again.
        index = 0;
        form_->index->setText(QString::number(index));
        warn("IndexErrorMsg", this);
    }
    if (!ok || indexIsTaken(index))
        form_->index->setText(QString::number(tool_->record().index));
}

void ToolEditor::SetupTool() {
    if (tool_ == nullptr)
        return;
    ToolRecord& record = tool_->record();
    record.type = form_->type->currentIndex();
    if (record.isChainSaw()) {
        if (!form_->chainSawType->currentText().isEmpty())
            tool_->LoadChainSawData(form_->chainSawType->currentText());
        tool_->refreshRow();
        Q_EMIT accepted(tool_);
        return;
    }
    const spindleStruct* spindle = chosenSpindle(*form_->spindle);
    if (spindle == nullptr)
        qFatal("Spindle not found");
    record.spindleNo = form_->spindle->currentData().toInt();
    record.spName = QStringLiteral("T%1").arg(record.spindleNo);
    record.installationName = spindle->parent;
    record.toolNo = form_->toolNo->currentData().toInt();
    indexEdited();
    record.index = form_->index->text().trimmed().toInt();
    record.direction = form_->direction->currentIndex();
    readNumbers(record);
    readRpm(record);
    record.annotation = form_->annotation->text();
    storeContour(record);
    storePicture();
    tool_->refreshRow();
    Q_EMIT accepted(tool_);
}

void ToolEditor::readNumbers(ToolRecord& record) const {
    readInto(record.diameter, *form_->diameter);
    readInto(record.handleDiameter, *form_->handleDiameter);
    readInto(record.length, *form_->length);
    readInto(record.bladeLength, *form_->bladeLength);
    record.transform.resize(static_cast<int>(form_->transform.size()));
    for (std::size_t i = 0; i < form_->transform.size(); ++i)
        readInto(record.transform[static_cast<int>(i)], *form_->transform[i]);
}

void ToolEditor::readRpm(ToolRecord& record) {
    const std::optional<float> typed = numberOf(*form_->rpm);
    if (!typed)
        return;
    double rpm = static_cast<double>(*typed);
    SharedMethods::CheckRpmReverse(record.spindleNo, rpm, this);
    record.rpm = static_cast<float>(rpm);
    form_->rpm->setText(floatText(record.rpm));
}

void ToolEditor::storeContour(ToolRecord& record) {
    record.contour = contourOfType(record, form_->contour->toPlainText());
    if (record.type == static_cast<int>(ToolType::UserTool))
        return;
    const QSignalBlocker quiet(form_->contour);
    form_->contour->setPlainText(contourText(record.contour));
}

void ToolEditor::storePicture() {
    if (!pictureChanged_)
        return;
    tool_->setPicture(picture_);
    pictureChanged_ = false;
}

void ToolEditor::updateContour() {
    if (tool_ == nullptr)
        return;
    ToolRecord typed = tool_->record();
    typed.type = form_->type->currentIndex();
    readNumbers(typed);
    storeContour(typed);
    tool_->record().contour = typed.contour;
    refreshPreview();
}

void ToolEditor::importPicture() {
    const QString path =
        userDialogs().openFile(ToolEditorForm::text("ImortPixmapButton"), QDir::currentPath(),
                               QStringLiteral("Pixmap(*.png *.jpg *.jpeg);;All(*.*)"));
    if (path.isEmpty())
        return;
    const QImage image = toolImageFromFile(path);
    if (image.isNull()) {
        qWarning().noquote() << QStringLiteral(" load Image failed.ImagePath:") + path;
        return;
    }
    picture_ = QPixmap::fromImage(
        image.scaled(form_->picture->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
    pictureChanged_ = true;
    showPicture();
}

void ToolEditor::removePicture() {
    picture_ = QPixmap();
    pictureChanged_ = true;
    showPicture();
}

void ToolEditor::showPicture() {
    const QSize room = form_->picture->size();
    const bool fits = picture_.width() <= room.width() && picture_.height() <= room.height();
    form_->picture->setPixmap(fits ? picture_
                                   : picture_.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

/// What the tool would look like with the inputs as they stand.
void ToolEditor::refreshPreview() {
    if (tool_ == nullptr)
        return;
    ToolData typed(tool_->record());
    ToolRecord& record = typed.record();
    record.type = form_->type->currentIndex();
    readNumbers(record);
    record.contour = contourOfType(record, form_->contour->toPlainText());
    form_->drawing->setContour(record.contour);
    if (!form_->view->isVisibleTo(this))
        return;
    if (record.isChainSaw() && !form_->chainSawType->currentText().isEmpty())
        typed.LoadChainSawData(form_->chainSawType->currentText());
    form_->view->setScene(typed.GetSeparator());
}

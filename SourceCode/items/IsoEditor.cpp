#include "items/IsoEditor.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSlider>
#include <QVector>
#include <algorithm>
#include <cmath>
#include <optional>
#include <typeinfo>

#include "core/UserDialogs.h"
#include "core/WindowKeys.h"
#include "items/IsoEditorForm.h"
#include "items/IsoItem.h"
#include "items/IsoSourceEdit.h"
#include "items/NumberInput.h"
#include "items/SourceFile.h"
#include "items/UserTopItem.h"
#include "machine/overStrock.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace TORNVALE {

namespace {

constexpr QSize kWindowSize(1000, 640);
constexpr double kSteps = 10;    // of the percentage slider
constexpr double kLeastT = 0.1;  // a document with 0 would come back with the default

IsoEditor* processEditor = nullptr;

QVector<IsoEditor*>& liveEditors() {
    static QVector<IsoEditor*> editors;
    return editors;
}

void setVector(const std::array<NumberInput*, 3>& inputs, const SbVec3f& vector) {
    for (int i = 0; i < 3; ++i) {
        NumberInput& input = *inputs[static_cast<std::size_t>(i)];
        if (!input.isTouched())
            input.setValue(static_cast<double>(vector[i]));
    }
}

SbVec3f vectorOf(const std::array<NumberInput*, 3>& inputs) {
    return {static_cast<float>(inputs[0]->value()), static_cast<float>(inputs[1]->value()),
            static_cast<float>(inputs[2]->value())};
}

}  // namespace

IsoEditor& IsoEditor::instance() {
    if (processEditor == nullptr)
        processEditor = new IsoEditor;  // owned by the process, never destroyed
    return *processEditor;
}

void IsoEditor::release(const CodeManagerItem* item) {
    for (IsoEditor* editor : liveEditors()) {
        if (editor->item_ != nullptr && (item == nullptr || editor->item_ == item))
            editor->close();
    }
}

IsoEditor::IsoEditor(QWidget* parent) : QWidget(parent), form_(std::make_unique<IsoEditorForm>(*this)) {
    setWindowTitle(IsoEditorForm::text("Title"));
    setWindowIcon(QIcon(QStringLiteral(":/Icon/Edit.png")));
    resize(kWindowSize);
    connectInputs();
    form_->say({}, false);
    showPercentage(form_->percentage->value());
    liveEditors().append(this);
    ToolsManager& tools = ToolsManager::instance();
    tools.addObserver(this, typeid(IsoEditor).name());
    toolList_ = tools.installedTools();
}

IsoEditor::~IsoEditor() {
    liveEditors().removeOne(this);
    if (processEditor == this)
        processEditor = nullptr;
    ToolsManager::instance().removeObserver(this);
}

void IsoEditor::connectInputs() {
    connect(form_->apply, &QPushButton::clicked, this, &IsoEditor::apply);
    connect(form_->accept, &QPushButton::clicked, this, &IsoEditor::accept);
    connect(form_->reject, &QPushButton::clicked, this, &IsoEditor::reject);
    connect(form_->animation, &QPushButton::clicked, this, &IsoEditor::play);
    connect(form_->limits, &QPushButton::clicked, this, &IsoEditor::checkLimits);
    connect(form_->open, &QPushButton::clicked, this, &IsoEditor::openFile);
    connect(form_->percentage, &QSlider::valueChanged, this, &IsoEditor::showPercentage);
    connect(form_->tool, QOverload<int>::of(&QComboBox::activated), this, &IsoEditor::toolChosen);
    for (const QLineEdit* line : findChildren<QLineEdit*>())
        connect(line, &QLineEdit::returnPressed, this, &IsoEditor::accept);
    for (const char* keys : {"Ctrl+Return", "Ctrl+Enter"}) {
        auto* shortcut = new QShortcut(QKeySequence(QLatin1String(keys)), this);  // owned by this window
        connect(shortcut, &QShortcut::activated, this, &IsoEditor::apply);
    }
    auto* escape = new QShortcut(Qt::Key_Escape, this);  // owned by this window
    connect(escape, &QShortcut::activated, this, &IsoEditor::leave);
    form_->apply->setToolTip(QStringLiteral("Ctrl+Enter"));
    form_->accept->setToolTip(QStringLiteral("Enter"));
    form_->reject->setToolTip(QStringLiteral("Esc"));
}

// --- from the item ---

void IsoEditor::edit(IsoItem& item) {
    load(item);
    show();
    raise();
    activateWindow();
    form_->source->setFocus();
}

void IsoEditor::load(IsoItem& item) {
    const bool isSame = item_ == &item;
    item_ = &item;
    follow();
    forgetTouches();
    if (!isSame || form_->source->isEdited())
        form_->source->setSource(item.iso().sourceCodeString);
    sync();
}

void IsoEditor::follow() {
    disconnect(following_);
    const UserTopItem* group = item_->group();
    if (group == nullptr)
        return;
    following_ = connect(group, &UserTopItem::itemRefreshed, this, [this](const CodeManagerItem* changed) {
        if (changed == item_ && !busy_)
            sync();
    });
}

void IsoEditor::forgetTouches() {
    loadedMirror_ = form_->mirror->currentIndex();
    loadedSystem_ = form_->userSystem->currentIndex();
    loadedPercentage_ = form_->percentage->value();
    loadedTool_ = form_->tool->currentText();
    loadedAnnotation_ = form_->annotation->text();
    form_->axisShift->setValue(0);
    form_->rpm->setValue(0);
    for (const auto& inputs : {form_->translation, form_->offset}) {
        for (NumberInput* input : inputs)
            input->setValue(0);
    }
}

void IsoEditor::sync() {
    syncPlacement();
    syncProgram();
    showOutcome();
}

void IsoEditor::syncPlacement() {
    const ItemRecord& record = item_->record();
    if (form_->mirror->currentIndex() == loadedMirror_) {
        const int angle = item_->iso().mirrorAngle;
        if (form_->mirror->findData(angle) < 0)
            form_->mirror->addItem(IsoEditorForm::angleText(angle), angle);
        loadedMirror_ = form_->mirror->findData(angle);
        form_->mirror->setCurrentIndex(loadedMirror_);
    }
    if (!form_->axisShift->isTouched())
        form_->axisShift->setValue(item_->iso().axisShift);
    fillSystems();
    setVector(form_->translation, record.translation);
    setVector(form_->offset, record.offset);
    if (form_->percentage->value() == loadedPercentage_) {
        form_->percentage->setValue(static_cast<int>(std::lround(record.t * kSteps)));
        loadedPercentage_ = form_->percentage->value();
    }
    form_->time->setText(QString::number(record.Time, 'f', 3));
}

void IsoEditor::fillSystems() {
    QComboBox& box = *form_->userSystem;
    const bool isTouched = box.currentIndex() != loadedSystem_;
    const QVariant chosen = isTouched ? box.currentData() : QVariant(item_->record().UserCoordiSystemId);
    box.clear();
    for (const int id : item_->userCoordinateIds())
        box.addItem(QString::number(id), id);
    loadedSystem_ = box.findData(item_->record().UserCoordiSystemId);
    box.setCurrentIndex(box.findData(chosen));
}

void IsoEditor::syncProgram() {
    fillTools();
    if (!form_->rpm->isTouched())
        form_->rpm->setValue(item_->record().ItemRpm);
    const IsoRecord& iso = item_->iso();
    form_->file->setText(iso.sourceCodeName);
    form_->file->setToolTip(iso.sourceCodePath);
    if (form_->annotation->text() == loadedAnnotation_) {
        form_->annotation->setText(item_->record().Annotation);
        loadedAnnotation_ = form_->annotation->text();
    }
    if (!form_->source->isEdited() && form_->source->source() != iso.sourceCodeString)
        form_->source->setSource(iso.sourceCodeString);
}

/// The installed tools, and the item's own when it is not among them.
void IsoEditor::fillTools() {
    QComboBox& box = *form_->tool;
    const QString own = item_->tool().displayText();
    const QString chosen = box.currentText() == loadedTool_ ? own : box.currentText();
    box.clear();
    for (const ToolData* tool : std::as_const(toolList_))
        box.addItem(tool->displayText());
    if (box.findText(own) < 0)
        box.addItem(own);
    box.setCurrentIndex(std::max(0, box.findText(box.findText(chosen) < 0 ? own : chosen)));
    loadedTool_ = own;
}

void IsoEditor::UpdateToolList(QList<ToolData*> tools) {
    toolList_ = std::move(tools);
    if (item_ != nullptr && !busy_)
        fillTools();
}

void IsoEditor::toolChosen() {
    // As the item will when it takes the tool; a speed of the user's own stays.
    const int index = form_->tool->currentIndex();
    if (item_ == nullptr || index >= toolList_.size() || form_->rpm->isTouched())
        return;
    form_->rpm->setText(QString::number(static_cast<double>(toolList_[index]->record().rpm), 'f', 0));
}

void IsoEditor::showPercentage(int value) {
    form_->percentageValue->setText(QStringLiteral("%1 %").arg(value * 100 / static_cast<int>(kSteps)));
}

void IsoEditor::showOutcome() {
    // In a text that is being edited the lines have moved, and so must not the cursor.
    if (!form_->source->isEdited())
        form_->source->markLine(item_->iso().problem.line);
    if (!item_->problem().isEmpty())
        form_->say(item_->problem(), true);
    else if (form_->source->isCut())
        form_->say(IsoEditorForm::text("TooLargeMsg"), false);
    else
        form_->say(item_->isActive() ? QString() : IsoEditorForm::text("UncheckedMsg"), false);
}

// --- into the item ---

bool IsoEditor::apply() {
    if (item_ == nullptr || busy_)
        return false;
    if (item_->group() == nullptr) {
        close();  // it was taken out of the program
        return false;
    }
    if (NumberInput* bad = form_->firstBadNumber()) {
        form_->say(bad->rule(), true);
        bad->setFocus();
        bad->selectAll();
        return false;
    }
    const QPointer<UserTopItem> group = item_->group();
    {
        const QScopedValueRollback<bool> busy(busy_, true);
        storePlacement();
        storeProgram();
        item_->regenerate();
    }
    if (group != nullptr)
        Q_EMIT group->edited(QStringLiteral("EditItem"));
    if (item_ != nullptr)
        load(*item_);
    return true;
}

void IsoEditor::storePlacement() {
    item_->editIso().mirrorAngle = form_->mirror->currentData().toInt();
    item_->editIso().axisShift = form_->axisShift->value();
    const QVariant system = form_->userSystem->currentData();
    if (system.isValid() && system.toInt() != item_->record().UserCoordiSystemId)
        item_->changeUserCoordinateSystem(system.toInt());
    ItemRecord& record = item_->editRecord();
    record.translation = vectorOf(form_->translation);
    record.offset = vectorOf(form_->offset);
    if (form_->percentage->value() != loadedPercentage_)
        record.t = std::max(kLeastT, form_->percentage->value() / kSteps);
}

void IsoEditor::storeProgram() {
    const QString chosen = form_->tool->currentText();
    const auto tool = std::find_if(toolList_.begin(), toolList_.end(), [&chosen](const ToolData* candidate) {
        return candidate->displayText() == chosen;
    });
    if (tool != toolList_.end())
        item_->SetTool(*tool, false);
    item_->editRecord().ItemRpm = form_->rpm->value();
    item_->editRecord().Annotation = form_->annotation->text();
    item_->editIso().sourceCodeString = form_->source->takeSource();
}

void IsoEditor::accept() {
    if (apply())
        close();
}

void IsoEditor::reject() {
    close();
}

/// A program that was typed is not lost by one key: the first Escape goes to the reject button.
void IsoEditor::leave() {
    if (!form_->source->isEdited() || form_->reject->hasFocus()) {
        reject();
        return;
    }
    form_->say(IsoEditorForm::text("NotAppliedMsg"), false);
    form_->reject->setFocus();
}

void IsoEditor::play() {
    if (apply() && item_ != nullptr)
        item_->play();
}

void IsoEditor::checkLimits() {
    if (!apply() || item_ == nullptr)
        return;
    delete limits_;
    if (item_->IsoCode().isEmpty())
        return;  // nothing to check: all limits would be green
    limits_ = new overStrock(item_->chainName(), item_->joinedCode(), this);  // owned by this window
    limits_->setAttribute(Qt::WA_DeleteOnClose);
    closeOnEscape(*limits_);
    limits_->adjustSize();
    limits_->move(mapToGlobal(rect().center() - limits_->rect().center()));
    limits_->show();
}

void IsoEditor::openFile() {
    const QString path =
        userDialogs().openFile(IsoEditorForm::text("Title"), QStringLiteral("."),
                               QStringLiteral("Text Files (*.anc *.nc *.txt);;All Files (*)"));
    if (path.isEmpty() || item_ == nullptr)
        return;
    const std::optional<QString> source = readSourceFile(path);
    if (!source)
        return;
    // The item has the file's text from here on, also when the user then rejects. It must stay so.
    IsoRecord& iso = item_->editIso();
    iso.sourceCodeString = *source;
    iso.sourceCodePath = path;
    iso.sourceCodeName = QFileInfo(path).fileName();
    form_->source->setSource(*source);
    syncProgram();
    showOutcome();
    if (UserTopItem* group = item_->group())
        Q_EMIT group->edited(QStringLiteral("EditItem"));
}

void IsoEditor::closeEvent(QCloseEvent* event) {
    disconnect(following_);
    item_ = nullptr;
    delete limits_;
    form_->source->setSource({});  // a long program is given back
    QWidget::closeEvent(event);
}

}  // namespace TORNVALE

#include "nc/HeaderTailEditor.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "core/LanguageReader.h"
#include "machine/readConfig.h"
#include "nc/AxisPositionForm.h"
#include "nc/calc/HeaderTail.h"
#include "nc/calc/HeaderTailForm.h"

namespace TORNVALE {

namespace {

const MachineDescription& machine() {
    return ConfigReader::instance().description();
}

/// A group box with room for one form.
QGroupBox* formBox(const QString& title, QWidget* window) {
    auto* box = new QGroupBox(title, window);  // owned by the window
    new QVBoxLayout(box);                      // owned by the box
    return box;
}

/// Replaces the form of a box.
AxisPositionForm* newForm(QGroupBox& box, AxisPositionForm* old, const QMap<int, QString>& axes) {
    if (old != nullptr) {
        box.layout()->removeWidget(old);
        old->setParent(nullptr);
        old->deleteLater();
    }
    auto* form = new AxisPositionForm(axes, &box);  // owned by the box
    box.layout()->addWidget(form);
    form->show();  // at once: what is not visible yet has no place in the tab order
    return form;
}

void pointTo(QLineEdit& input) {
    input.setFocus();
    input.selectAll();
}

}  // namespace

HeaderTailEditor& HeaderTailEditor::instance() {
    static auto* const editor = new HeaderTailEditor;  // owned by the process, never destroyed
    return *editor;
}

HeaderTailEditor::HeaderTailEditor(QWidget* parent)
    : QWidget(parent),
      chain_(new QComboBox(this)),                          // owned by this widget
      headerBox_(formBox(QStringLiteral("Header"), this)),  // owned by this widget
      tailBox_(formBox(QStringLiteral("Tail"), this)),      // owned by this widget
      fault_(new QLabel(this)),                             // owned by this widget
      buttons_(new QButtonGroup(this)) {                    // owned by this widget
    setWindowFlag(Qt::Window);
    setAttribute(Qt::WA_QuitOnClose, false);  // the program ends with its main window
    setWindowTitle(
        LanguageReader::instance().text(QStringLiteral("HeaderTailEditor"), QStringLiteral("Title")));
    setWindowIcon(QIcon(QStringLiteral(":/Icon/startEnd.png")));
    auto* layout = new QGridLayout(this);  // owned by this widget
    layout->addWidget(chain_, 0, 0, 1, 2);
    layout->addWidget(headerBox_, 1, 0);
    layout->addWidget(tailBox_, 1, 1);
    layout->addWidget(fault_, 2, 0, 1, 2);
    layout->setRowStretch(1, 1);
    fault_->setWordWrap(true);
    fault_->hide();
    makeButtons();
    connect(chain_, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &HeaderTailEditor::makeForms);
    connect(buttons_, &QButtonGroup::idClicked, this, &HeaderTailEditor::buttonClicked);
}

HeaderTailEditor::~HeaderTailEditor() = default;

void HeaderTailEditor::makeButtons() {
    auto* row = new QHBoxLayout;  // owned by the window's layout
    const char* const texts[] = {"Optimal", "Reset", "Apply", "Ok"};
    for (int id = kOptimal; id <= kOk; ++id) {
        auto* button = new QPushButton(QLatin1String(texts[id]), this);  // owned by this widget
        button->setAutoDefault(true);  // Enter presses the button that has the focus
        buttons_->addButton(button, id);
        row->addWidget(button);
    }
    static_cast<QGridLayout*>(layout())->addLayout(row, 3, 0, 1, 2);
}

void HeaderTailEditor::Edit(FormatItems* items) {
    if (life_ != nullptr)
        disconnect(life_, nullptr, this, nullptr);
    if (items == nullptr) {
        forget();
        return;
    }
    items_ = items;
    life_ = items->life();
    connect(items->life(), &QObject::destroyed, this, &HeaderTailEditor::forget);
    {
        const QSignalBlocker once(chain_);
        chain_->clear();
        chain_->addItems(items->headerTail.chains());
        chain_->setCurrentIndex(chain_->count() > 0 ? 0 : -1);
    }
    makeForms();
    adjustSize();
    show();
    raise();
    activateWindow();
    if (auto* first = header_->findChild<QLineEdit*>()) {
        first->setFocus();
        first->selectAll();
    }
}

/// The group has gone.
void HeaderTailEditor::forget() {
    items_ = nullptr;
    life_.clear();
    const QSignalBlocker quiet(chain_);
    chain_->clear();
    close();
}

HeaderTailRecord* HeaderTailEditor::record() const {
    return items_ == nullptr ? nullptr : items_->headerTail.record(chain_->currentText());
}

void HeaderTailEditor::makeForms() {
    if (items_ == nullptr)
        return;
    QMap<int, QString> axes;
    if (chain_->count() > 0)
        axes = formAxes(machine(), chain_->currentText(), items_->auxiliaryAxis.get());
    header_ = newForm(*headerBox_, header_, axes);
    tail_ = newForm(*tailBox_, tail_, axes);
    for (AxisPositionForm* form : {header_.data(), tail_.data()})
        connect(form, &AxisPositionForm::marksChanged, this, &HeaderTailEditor::showFault);
    showFault();
    tail_->followInTabOrder(header_->followInTabOrder(chain_));  // new widgets would come last
    showRecord();
}

void HeaderTailEditor::showRecord() {
    const HeaderTailRecord* const shown = record();
    const QString header = shown == nullptr ? QString() : shown->header;
    const QString tail = shown == nullptr ? QString() : shown->tail;
    const QString chain = chain_->currentText();
    const AuxiliaryAxis* const auxiliary = items_->auxiliaryAxis.get();
    header_->setValues(valuesFromLine(machine(), chain, auxiliary, header));
    tail_->setValues(valuesFromLine(machine(), chain, auxiliary, tail));
}

void HeaderTailEditor::showFault() {
    const QLineEdit* bad = header_->firstMarked();
    if (bad == nullptr)
        bad = tail_->firstMarked();
    fault_->setText(bad == nullptr ? QString() : bad->toolTip());
    fault_->setVisible(bad != nullptr);
}

void HeaderTailEditor::buttonClicked(int id) {
    if (id == kOk && (items_ == nullptr || chain_->count() == 0 || apply()))
        close();
    else if (id == kApply)
        apply();
    else if (id == kOptimal)
        changeRecord([](HeaderTailRecord& record) { proposeOptimal(machine(), record); });
    else if (id == kReset)
        changeRecord([](HeaderTailRecord& record) { resetToHome(machine(), record); });
}

/// False, and nothing stored, while an input holds no number.
bool HeaderTailEditor::apply() {
    if (items_ == nullptr || chain_->count() == 0)
        return false;
    const QString chain = chain_->currentText();
    const AuxiliaryAxis* const auxiliary = items_->auxiliaryAxis.get();
    const auto header = header_->readValues();
    const auto tail = tail_->readValues();
    if (!header || !tail) {
        QLineEdit* const bad = header ? tail_->firstMarked() : header_->firstMarked();
        pointTo(*bad);
        return false;
    }
    items_->headerTail.add(machine(), chain);  // the record may have gone while the window was open
    changeRecord([&](HeaderTailRecord& record) {
        record.header = lineFromValues(machine(), chain, auxiliary, *header).value_or(record.header);
        record.tail = lineFromValues(machine(), chain, auxiliary, *tail).value_or(record.tail);
    });
    return true;
}

void HeaderTailEditor::changeRecord(const std::function<void(HeaderTailRecord&)>& change) {
    HeaderTailRecord* const edited = record();
    if (edited == nullptr)
        return;
    const HeaderTailRecord before = *edited;
    change(*edited);
    const bool isAnother = !(before == *edited);
    showRecord();
    if (isAnother)
        Q_EMIT changed(chain_->currentText());
}

void HeaderTailEditor::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        buttonClicked(kOk);
    else
        QWidget::keyPressEvent(event);
}

}  // namespace TORNVALE

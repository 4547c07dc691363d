#include "machine/SpindlePanel.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QVBoxLayout>

#include "core/LanguageReader.h"
#include "core/WindowKeys.h"
#include "machine/calc/SpindleRecord.h"
#include "tools/calc/ToolRecord.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("SpindleNode"), QString::fromLatin1(key));
}

}  // namespace

SpindlePanel::SpindlePanel(QWidget* parent) : QWidget(parent) {
    closeOnEscape(*this);
    auto* layout = new QVBoxLayout(this);  // owned by this widget
    auto* form = new QFormLayout;          // owned by the layout
    layout->addLayout(form);
    for (const char* key : {"Name", "Id", "InitialPara", "Start", "ToolChange", "Range", "Coxial", "Path"})
        addRow(*form, key);
    auto* group = new QGroupBox(textOf("ToolInfo"));  // owned by this widget
    group->setObjectName(QStringLiteral("ToolInfo"));
    layout->addWidget(group);
    auto* tool = new QFormLayout(group);  // owned by the group
    for (const char* key : {"ToolNo", "Diameter", "Length", "Type", "Rpm"})
        addRow(*tool, key);
    layout->addStretch();
}

QLineEdit* SpindlePanel::addRow(QFormLayout& form, const char* key) {
    auto* edit = new QLineEdit;  // owned by this widget
    edit->setObjectName(QString::fromLatin1(key));
    edit->setReadOnly(true);
    form.addRow(textOf(key), edit);
    return edit;
}

void SpindlePanel::setText(const char* key, const QString& text) {
    findChild<QLineEdit*>(QString::fromLatin1(key))->setText(text);
}

void SpindlePanel::setSpindle(const SpindleRecord& spindle) {
    const auto number = [](float value) { return QString::number(static_cast<double>(value)); };
    setText("Name", spindle.name);
    setText("Id", QString::number(spindle.number));
    setText("InitialPara", QStringLiteral("%1 %2 %3 %4")
                               .arg(number(spindle.offset[0]), number(spindle.offset[1]),
                                    number(spindle.offset[2]), number(spindle.angle_deg)));
    setText("Start", spindle.startString);
    setText("ToolChange", spindle.toolChangeString);
    setText("Range", QString::number(spindle.range));
    setText("Coxial", spindle.coaxial);
}

void SpindlePanel::setPath(const QString& path) {
    setText("Path", path);
}

void SpindlePanel::setTool(const ToolRecord& tool, const QString& typeText) {
    setText("ToolNo", QString::number(tool.toolNo));
    setText("Diameter", QString::number(static_cast<double>(tool.diameter)));
    setText("Length", QString::number(static_cast<double>(tool.length)));
    setText("Type", typeText);
}

void SpindlePanel::setSpeed(const QString& text) {
    setText("Rpm", text);
}

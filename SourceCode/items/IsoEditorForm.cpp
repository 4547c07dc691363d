#include "items/IsoEditorForm.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include "core/LanguageReader.h"
#include "items/IsoSourceEdit.h"
#include "items/NumberInput.h"

namespace TORNVALE {

namespace {

constexpr const char* kPlacement = "LeftParaGroupBox";
constexpr const char* kProgram = "MiddleParaGroupBox";
constexpr const char* kOperation = "RightParaGroupBox";
constexpr std::array<const char*, 3> kLetters{"X", "Y", "Z"};
constexpr std::array kMirrorAngles_deg{0, 90, 180, 270, -90, -180};
constexpr double kFarthest_mm = 100'000;
constexpr double kFastest_rpm = 1'000'000;
constexpr int kPlacementWidth = 250;

template <typename Widget>
Widget* named(Widget* widget, const QString& key) {
    widget->setObjectName(key);
    return widget;
}

template <typename Widget>
Widget* made(QWidget& window, const char* key) {
    return named(new Widget(&window), QLatin1String(key));  // owned by the window
}

NumberInput* number(QWidget& window, const QString& name, const QString& title, double most, int decimals) {
    const NumberRange range{title, -most, most, IsoEditorForm::text("NumberErrorMsg")};
    return named(new NumberInput(range, decimals, &window), name);  // owned by the window
}

std::array<NumberInput*, 3> vectorInputs(QWidget& window, const char* key) {
    std::array<NumberInput*, 3> inputs{};
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const QString title = IsoEditorForm::text(key, kPlacement) + QLatin1Char(' ') +
                              IsoEditorForm::text(kLetters[i], kPlacement);
        inputs[i] = number(window, QLatin1String(key) + QLatin1String(kLetters[i]), title, kFarthest_mm, 3);
    }
    return inputs;
}

QPushButton* button(QWidget& window, const char* key, const char* box, const char* icon) {
    auto* button = new QPushButton(QIcon(QLatin1String(icon)), IsoEditorForm::text(key, box),
                                   &window);  // owned by the window
    button->setAutoDefault(true);             // Return presses it
    return named(button, QLatin1String(key));
}

QLabel* label(const QString& text, QWidget* input, QWidget* parent) {
    auto* label = new QLabel(text, parent);  // owned by the parent
    label->setWordWrap(true);
    label->setBuddy(input);
    return label;
}

}  // namespace

QString IsoEditorForm::text(const char* key, const char* box) {
    const QString group = QStringLiteral("IsoEditor");
    return LanguageReader::instance().text(box ? group + QLatin1Char('/') + QLatin1String(box) : group,
                                           QLatin1String(key));
}

QString IsoEditorForm::angleText(int angle_deg) {
    return QString::number(angle_deg) + QChar(u'\u00B0');
}

IsoEditorForm::IsoEditorForm(QWidget& window)
    : mirror(made<QComboBox>(window, "Mirror")),
      axisShift(number(window, QStringLiteral("ToolAxisShift"), text("ToolAxisShift", kPlacement),
                       kFarthest_mm, 3)),
      userSystem(made<QComboBox>(window, "UserCoordianteSystemId")),
      translation(vectorInputs(window, "Translation")),
      offset(vectorInputs(window, "Offset")),
      percentage(made<QSlider>(window, "Percentage")),
      percentageValue(made<QLabel>(window, "PercentageValue")),
      time(made<QLineEdit>(window, "Time")),
      tool(made<QComboBox>(window, "ToolList")),
      rpm(number(window, QStringLiteral("Rpm"), text("Rpm", kProgram), kFastest_rpm, 0)),
      file(made<QLineEdit>(window, "File")),
      open(button(window, "OpenButton", kProgram, ":/Icon/open.png")),
      annotation(made<QLineEdit>(window, "Annotation")),
      source(made<IsoSourceEdit>(window, "Source")),
      message(made<QLabel>(window, "Message")),
      animation(button(window, "AnimationButton", kOperation, ":/Icon/play.png")),
      accept(button(window, "AcceptButton", kOperation, ":/Icon/accept.png")),
      apply(button(window, "ApplyButton", kOperation, ":/Icon/update.png")),
      reject(button(window, "RejectButton", kOperation, ":/Icon/stop.png")),
      limits(button(window, "LimitedCheckButton", kOperation, ":/Icon/limited.png")) {
    for (const int angle : kMirrorAngles_deg)
        mirror->addItem(angleText(angle), angle);
    percentage->setOrientation(Qt::Horizontal);
    percentage->setRange(0, 10);
    percentage->setPageStep(1);
    for (QLineEdit* line : {time, file}) {
        line->setReadOnly(true);
        QPalette colours = line->palette();
        colours.setColor(QPalette::Base, colours.color(QPalette::Window));
        line->setPalette(colours);
    }
    message->setWordWrap(true);
    message->setTextFormat(Qt::PlainText);
    message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* row = new QHBoxLayout(&window);  // owned by the window
    row->addWidget(placementBox(window));
    row->addWidget(programBox(window), 1);
    row->addWidget(operationBox(window));
}

QWidget* IsoEditorForm::placementBox(QWidget& window) const {
    auto* group = new QGroupBox(text("Title", kPlacement), &window);  // owned by the window
    auto* grid = new QGridLayout(group);                              // owned by the group
    group->setFixedWidth(kPlacementWidth);
    int row = 0;
    const auto place = [&](const char* key, QWidget* input) {
        grid->addWidget(label(text(key, kPlacement), input, group), row, 0, 1, 2);
        grid->addWidget(input, row++, 2);
    };
    place("Mirror", mirror);
    place("ToolAxisShift", axisShift);
    place("UserCoordianteSystemId", userSystem);
    const auto placeVector = [&](const char* key, const std::array<NumberInput*, 3>& inputs) {
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            if (i == 0)
                grid->addWidget(label(text(key, kPlacement), nullptr, group), row, 0);
            grid->addWidget(label(text(kLetters[i], kPlacement), inputs[i], group), row, 1, Qt::AlignRight);
            grid->addWidget(inputs[i], row++, 2);
        }
    };
    placeVector("Translation", translation);
    placeVector("Offset", offset);
    grid->addWidget(label(text("Percentage", kPlacement), percentage, group), row, 0, 1, 2);
    grid->addWidget(percentageValue, row++, 2, Qt::AlignRight);
    grid->addWidget(percentage, row++, 0, 1, 3);
    place("Time", time);
    grid->setRowStretch(row, 1);
    grid->setColumnStretch(2, 1);
    return group;
}

QWidget* IsoEditorForm::programBox(QWidget& window) const {
    auto* group = new QGroupBox(text("Title", kProgram), &window);  // owned by the window
    auto* grid = new QGridLayout(group);                            // owned by the group
    constexpr int kRpmWidth = 90;
    grid->addWidget(label(text("ToolList", kProgram), tool, group), 0, 0);
    grid->addWidget(tool, 0, 1);
    tool->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    tool->setMinimumWidth(150);
    grid->addWidget(label(text("Rpm", kProgram), rpm, group), 0, 2);
    grid->addWidget(rpm, 0, 3);
    rpm->setFixedWidth(kRpmWidth);
    grid->addWidget(label(text("File", kProgram), file, group), 1, 0);
    grid->addWidget(file, 1, 1, 1, 2);
    grid->addWidget(open, 1, 3);
    grid->addWidget(label(text("Annotation", kProgram), annotation, group), 2, 0);
    grid->addWidget(annotation, 2, 1, 1, 3);
    grid->addWidget(source, 3, 0, 1, 4);
    grid->addWidget(message, 4, 0, 1, 4);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
    return group;
}

QWidget* IsoEditorForm::operationBox(QWidget& window) const {
    auto* group = new QGroupBox(text("Title", kOperation), &window);  // owned by the window
    auto* column = new QVBoxLayout(group);                            // owned by the group
    for (QPushButton* button : {animation, accept, apply, reject, limits})
        column->addWidget(button);
    column->addStretch();
    return group;
}

NumberInput* IsoEditorForm::firstBadNumber() const {
    for (NumberInput* input :
         {axisShift, translation[0], translation[1], translation[2], offset[0], offset[1], offset[2], rpm}) {
        if (!input->isGood())
            return input;
    }
    return nullptr;
}

void IsoEditorForm::say(const QString& text, bool isFault) const {
    message->setText(text);
    message->setVisible(!text.isEmpty());
    QPalette colours;
    if (isFault)
        colours.setColor(QPalette::WindowText, QColor(176, 0, 0));
    message->setPalette(colours);
}

}  // namespace TORNVALE
